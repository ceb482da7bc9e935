// case_compare.cpp - the _stricmp rule: bytes lowered with the CRT's
// tolower (current locale) and compared as unsigned values.  Written out
// rather than called, because some runtimes that stand in for msvcrt compare
// the bytes as signed chars, which orders bytes above 127 differently.
#include "platform/case_compare.h"

#include <cctype>

namespace zelstr::platform {

int case_compare_n(char const* s1, char const* s2, std::size_t count) {
  for (; count != 0; --count, ++s1, ++s2) {
    int const a = std::tolower(static_cast<unsigned char>(*s1));
    int const b = std::tolower(static_cast<unsigned char>(*s2));
    if (a != b || a == 0) return a - b;
  }
  return 0;
}

int case_compare(char const* s1, char const* s2) {
  return case_compare_n(s1, s2, static_cast<std::size_t>(-1));
}

}  // namespace zelstr::platform
