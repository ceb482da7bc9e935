// case_compare.cpp - strcasecmp and strncasecmp.
#include "platform/case_compare.h"

#include <strings.h>

namespace zelstr::platform {

int case_compare(char const* s1, char const* s2) { return ::strcasecmp(s1, s2); }

int case_compare_n(char const* s1, char const* s2, std::size_t count) {
  return ::strncasecmp(s1, s2, count);
}

}  // namespace zelstr::platform
