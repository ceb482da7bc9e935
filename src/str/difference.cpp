// difference.cpp - _zstrdiffpoint, _zstrneq: where two strings part.
#include <cctype>

#include "str/report.h"
#include "zelstr/compare.h"

using namespace zelstr::str;

namespace {

// The first position of `s1` whose byte differs from `s2`'s (the terminator
// of `s1` when it ends first); NULL when the strings are equal.
char const* first_difference(char const* s1, char const* s2, bool case_sensitive) {
  for (;; ++s1, ++s2) {
    unsigned char const a = static_cast<unsigned char>(*s1);
    unsigned char const b = static_cast<unsigned char>(*s2);
    bool const same = case_sensitive ? a == b : std::toupper(a) == std::toupper(b);
    if (!same) return s1;
    if (a == '\0') return nullptr;
  }
}

}  // namespace

char const* _zstrdiffpoint(char const* s1, char const* s2, int case_sensitive) noexcept {
  if (s1 == nullptr) return nullptr;
  if (s2 == nullptr) return s1;
  return first_difference(s1, s2, case_sensitive != 0);
}

// The texts of 147 and 148 name the argument that was given, not the NULL
// one; the pairing of ids to cases is kept as callers know it.
char* _zstrneq(char* s1, char* s2) noexcept {
  if (s1 == nullptr && s2 == nullptr) {
    warn(msg::kNeqBothNull);
    return nullptr;
  }
  if (s2 == nullptr) {
    warn(msg::kNeqString1Null);
    return s1;
  }
  if (s1 == nullptr) {
    warn(msg::kNeqString2Null);
    return nullptr;
  }
  return const_cast<char*>(first_difference(s1, s2, true));
}
