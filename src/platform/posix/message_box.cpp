// message_box.cpp - without message boxes, the message goes to standard error.
#include "platform/message_box.h"

#include <cstdio>

namespace zelstr::platform {

int system_message_box(char const* text, char const* caption, unsigned /*style*/) {
  std::fprintf(stderr, "%s: %s\n", caption ? caption : "", text ? text : "");
  return 1;
}

}  // namespace zelstr::platform
