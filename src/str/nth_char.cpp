// nth_char.cpp - _zstrNthchr, _zstrNthichr, _zstrNthrchr, _zstrNthrichr:
// the N-th occurrence of a byte from the start or from the end.
//
// From the end is from the start once the bytes are counted: the N-th last
// of k occurrences is the (k - N + 1)-th, and both passes run on the C
// library's byte search where case matters.
#include <cstring>

#include "chars/upper_fold.h"
#include "str/report.h"
#include "str/search/walks.h"
#include "zelstr/position.h"

using namespace zelstr::str;

namespace {

// The n-th (n >= 1) byte of `s` equal to `c`, or whose image through `fold`
// is c's; c != 0.
char const* nth_from_start(char const* s, char c, std::size_t n, unsigned char const* fold) {
  if (fold == nullptr) {
    for (char const* p = std::strchr(s, c); p != nullptr; p = std::strchr(p + 1, c)) {
      if (--n == 0) return p;
    }
    return nullptr;
  }
  unsigned char const wanted = fold[static_cast<unsigned char>(c)];
  for (auto const* p = reinterpret_cast<unsigned char const*>(s); *p != 0; ++p) {
    if (fold[*p] == wanted && --n == 0) return reinterpret_cast<char const*>(p);
  }
  return nullptr;
}

char const* nth(char const* s, char c, int n, bool ignore_case, bool from_end,
                char const* function) {
  if (s == nullptr) {
    warn_format(msg::kNthChrNullStringFormat, function);
    return nullptr;
  }
  if (n < 1) {
    warn_format(msg::kNthChrBadNumberFormat, function);
    return nullptr;
  }
  if (c == '\0') return n == 1 ? s + std::strlen(s) : nullptr;
  unsigned char const* const fold = ignore_case ? zelstr::chars::upper_fold().upper : nullptr;
  auto const wanted = static_cast<std::size_t>(n);
  if (!from_end) return nth_from_start(s, c, wanted, fold);
  std::size_t const count = search::count_bytes(s, c, fold);
  return wanted > count ? nullptr : nth_from_start(s, c, count - wanted + 1, fold);
}

}  // namespace

char const* _zstrNthchr(char const* s, char c, int n) noexcept {
  return nth(s, c, n, false, false, "_zstrNthchr");
}
char const* _zstrNthichr(char const* s, char c, int n) noexcept {
  return nth(s, c, n, true, false, "_zstrNthichr");
}
char const* _zstrNthrchr(char const* s, char c, int n) noexcept {
  return nth(s, c, n, false, true, "_zstrNthrchr");
}
char const* _zstrNthrichr(char const* s, char c, int n) noexcept {
  return nth(s, c, n, true, true, "_zstrNthrichr");
}
char* _zstrNthchr(char* s, char c, int n) noexcept {
  return const_cast<char*>(_zstrNthchr(static_cast<char const*>(s), c, n));
}
char* _zstrNthichr(char* s, char c, int n) noexcept {
  return const_cast<char*>(_zstrNthichr(static_cast<char const*>(s), c, n));
}
char* _zstrNthrchr(char* s, char c, int n) noexcept {
  return const_cast<char*>(_zstrNthrchr(static_cast<char const*>(s), c, n));
}
char* _zstrNthrichr(char* s, char c, int n) noexcept {
  return const_cast<char*>(_zstrNthrichr(static_cast<char const*>(s), c, n));
}
