// ctype_key.cpp - the runtime names its LC_CTYPE locale; a new name means a
// new mapping.
#include "platform/ctype_key.h"

#include <clocale>
#include <cstring>

namespace zelstr::platform {

bool ctype_changed(CtypeKey& key) {
  char const* const name = std::setlocale(LC_CTYPE, nullptr);
  if (name == nullptr || std::strncmp(name, key.name, sizeof key.name - 1) == 0) {
    return key.name[0] == '\0';
  }
  std::strncpy(key.name, name, sizeof key.name - 1);
  return true;
}

}  // namespace zelstr::platform
