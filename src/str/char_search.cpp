// char_search.cpp - _zstrchr, _zstrichr, _zstrrchr, _zstrrichr.
#include <cstring>

#include "chars/upper_fold.h"
#include "str/report.h"
#include "str/search/walks.h"
#include "zelstr/position.h"

using namespace zelstr::str;

namespace {

// The first (or last) byte of `s` whose upper case is that of `c`; c = 0
// finds the terminator.
char const* find_folded(char const* s, char c, bool last) {
  return zelstr::str::search::find_byte(s, c, zelstr::chars::upper_fold().upper, last);
}

}  // namespace

char const* _zstrchr(char const* s, char c) noexcept {
  if (s == nullptr) {
    warn(msg::kChrNullString);
    return nullptr;
  }
  return std::strchr(s, c);
}

char const* _zstrichr(char const* s, char c) noexcept {
  if (s == nullptr) {
    warn(msg::kChrNullString);
    return nullptr;
  }
  return find_folded(s, c, false);
}

char const* _zstrrchr(char const* s, char c) noexcept {
  if (s == nullptr) {
    warn(msg::kRchrNullString);
    return nullptr;
  }
  return std::strrchr(s, c);
}

char const* _zstrrichr(char const* s, char c) noexcept {
  if (s == nullptr) {
    warn(msg::kRchrNullString);
    return nullptr;
  }
  return find_folded(s, c, true);
}

char* _zstrchr(char* s, char c) noexcept {
  return const_cast<char*>(_zstrchr(static_cast<char const*>(s), c));
}
char* _zstrichr(char* s, char c) noexcept {
  return const_cast<char*>(_zstrichr(static_cast<char const*>(s), c));
}
char* _zstrrchr(char* s, char c) noexcept {
  return const_cast<char*>(_zstrrchr(static_cast<char const*>(s), c));
}
char* _zstrrichr(char* s, char c) noexcept {
  return const_cast<char*>(_zstrrichr(static_cast<char const*>(s), c));
}
