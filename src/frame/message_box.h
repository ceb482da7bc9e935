// message_box.h - the library's two direct messages to the user.
#ifndef ZELSTR_FRAME_MESSAGE_BOX_H
#define ZELSTR_FRAME_MESSAGE_BOX_H

namespace zelstr::frame {

// Exclamation icon, OK button, system-modal.
inline constexpr unsigned kWarningBoxStyle = 4144;

// Shows `text` through the installed handler, or the system's message box.
int show_message_box(char const* text, char const* caption, unsigned style) noexcept;

}  // namespace zelstr::frame

#endif  // ZELSTR_FRAME_MESSAGE_BOX_H
