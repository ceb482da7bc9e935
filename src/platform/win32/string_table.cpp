// string_table.cpp - the module's STRINGTABLE resource and the system's error
// texts.
#include <windows.h>

#include "platform/resources.h"

namespace zelstr::platform {

int load_string(void* module, unsigned id, char* buffer, int size) {
  return LoadStringA(static_cast<HINSTANCE>(module), id, buffer, size);
}

unsigned long last_error() { return GetLastError(); }

void system_error_text(unsigned long code, char* buffer, unsigned size) {
  if (buffer == nullptr || size == 0) return;
  // From the system, inserts ignored (4608), neutral language (1024).
  DWORD const n =
      FormatMessageA(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr, code,
                     MAKELANGID(LANG_NEUTRAL, SUBLANG_DEFAULT), buffer, size, nullptr);
  if (n == 0) buffer[0] = '\0';
}

}  // namespace zelstr::platform
