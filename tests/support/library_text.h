// library_text.h - small helpers for tests that look at the library's texts.
#ifndef ZELSTR_TESTS_SUPPORT_LIBRARY_TEXT_H
#define ZELSTR_TESTS_SUPPORT_LIBRARY_TEXT_H

#include <cstdarg>
#include <initializer_list>
#include <string>
#include <string_view>

#include "zelstr/zelstr.h"

namespace zelstr::test {

// The text of a heap copy the library handed out (released here), or
// "<null>".
inline std::string owned(char const* copy) {
  std::string const text = copy == nullptr ? "<null>" : copy;
  char* p = const_cast<char*>(copy);
  _zstrdupfree(p);
  return text;
}

// _zstrvprintf, called the way a caller's own variadic function does.
inline char* vprint(char const* format, ...) {
  va_list args;
  va_start(args, format);
  char* const result = _zstrvprintf(format, args);
  va_end(args);
  return result;
}

// Joins its parts (GCC 12 warns wrongly about some chains of string +).
inline std::string cat(std::initializer_list<std::string_view> parts) {
  std::string out;
  for (std::string_view part : parts) out.append(part);
  return out;
}

}  // namespace zelstr::test

#endif  // ZELSTR_TESTS_SUPPORT_LIBRARY_TEXT_H
