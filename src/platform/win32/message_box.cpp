// message_box.cpp - the system's message box.
#include "platform/message_box.h"

#include <windows.h>

namespace zelstr::platform {

int system_message_box(char const* text, char const* caption, unsigned style) {
  return MessageBoxA(nullptr, text, caption, style);
}

}  // namespace zelstr::platform
