// ctype_key.cpp - the runtime names its LC_CTYPE locale; a new name means a
// new mapping.
#include "platform/ctype_key.h"

#include <clocale>
#include <cstring>

namespace zelstr::platform {

bool ctype_changed() {
  static char t_name[128] = {};
  char const* const name = std::setlocale(LC_CTYPE, nullptr);
  if (name == nullptr || std::strncmp(name, t_name, sizeof t_name - 1) == 0) {
    return t_name[0] == '\0';
  }
  std::strncpy(t_name, name, sizeof t_name - 1);
  return true;
}

}  // namespace zelstr::platform
