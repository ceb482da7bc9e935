// message_box.cpp - the system's message box.
#include <windows.h>

#include "platform/message_box.h"

namespace zelstr::platform {

int system_message_box(char const* text, char const* caption, unsigned style) {
  return MessageBoxA(nullptr, text, caption, style);
}

}  // namespace zelstr::platform
