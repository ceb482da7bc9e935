// expand.cpp - writing a string in place of each occurrence of a byte.
#include "str/expand.h"

#include <cstring>

namespace zelstr::str {

void expand_each(char* string, char c, char const* s) {
  std::size_t const n = std::strlen(s);
  std::size_t const length = std::strlen(string);
  std::size_t count = 0;
  for (std::size_t i = 0; i < length; ++i) count += string[i] == c;
  if (count == 0) return;
  char* w = string + length + count * (n - 1);
  *w = '\0';
  for (char const* r = string + length; r-- > string;) {
    if (*r == c) {
      w -= n;
      std::memcpy(w, s, n);
    } else {
      *--w = *r;
    }
  }
}

}  // namespace zelstr::str
