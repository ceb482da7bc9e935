// message_box.h - the system's own way of showing a message to the user.
#ifndef ZELSTR_PLATFORM_MESSAGE_BOX_H
#define ZELSTR_PLATFORM_MESSAGE_BOX_H

namespace zelstr::platform {

// Shows `text` under `caption` with the box style `style` (Windows values)
// and returns the button pressed; where there are no boxes, writes one line
// "caption: text" to standard error and returns 1 (OK).
int system_message_box(char const* text, char const* caption, unsigned style);

}  // namespace zelstr::platform

#endif  // ZELSTR_PLATFORM_MESSAGE_BOX_H
