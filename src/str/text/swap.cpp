// swap.cpp - _zstrswapchr, _zstrswap, _zstrswapped: two characters or two
// substrings exchanged throughout a string in one pass.
#include <cstring>

#include "str/report.h"
#include "str/text/writer.h"
#include "zelstr/textutil.h"

using namespace zelstr::str;
using namespace zelstr::str::text;

namespace {

struct Pair {
  char const* a;
  std::size_t na;
  char const* b;
  std::size_t nb;
};

// Writes `s` with the pair exchanged: at each place the longer is tried
// first, `a` when they are as long; the bytes between the places where
// either can begin go out in one piece.
void put_swapped(Writer& out, char const* s, Pair const& pair) {
  bool const a_first = pair.na >= pair.nb;
  char const* const first = a_first ? pair.a : pair.b;
  char const* const second = a_first ? pair.b : pair.a;
  std::size_t const n1 = a_first ? pair.na : pair.nb;
  std::size_t const n2 = a_first ? pair.nb : pair.na;
  char const starts[3] = {pair.a[0], pair.b[0], '\0'};
  for (char const* p = s;;) {
    char const* const q = std::strpbrk(p, starts);
    if (q == nullptr) {
      out.put(p, std::strlen(p));
      return;
    }
    out.put(p, static_cast<std::size_t>(q - p));
    if (std::strncmp(q, first, n1) == 0) {
      out.put(second, n2);
      p = q + n1;
    } else if (std::strncmp(q, second, n2) == 0) {
      out.put(first, n1);
      p = q + n2;
    } else {
      out.put(*q);
      p = q + 1;
    }
  }
}

bool checked(char const* string, char const* a, char const* b, char const* function) {
  char const* const missing = string == nullptr ? "string" : a == nullptr ? "a" : b == nullptr ? "b" : nullptr;
  if (missing != nullptr) {
    warn_format(msg::kTextNullArgumentFormat, function, missing, "NULL");
    return false;
  }
  if (*a == '\0' || *b == '\0') {
    warn_format(msg::kTextOutOfRangeFormat, function, *a == '\0' ? "a" : "b", "NULL");
    return false;
  }
  return true;
}

}  // namespace

char* _zstrswapchr(char* string, char a, char b) noexcept {
  if (string == nullptr) {
    warn_format(msg::kTextNullArgumentFormat, "_zstrswapchr", "string", "NULL");
    return nullptr;
  }
  if (a == '\0' || b == '\0') return string;
  for (char* p = string; *p != '\0'; ++p) {
    if (*p == a) {
      *p = b;
    } else if (*p == b) {
      *p = a;
    }
  }
  return string;
}

char* _zstrswap(char* string, char const* a, char const* b) noexcept {
  if (!checked(string, a, b, "_zstrswap")) return nullptr;
  Pair const pair{a, std::strlen(a), b, std::strlen(b)};
  std::size_t const n = std::strlen(string);
  if (pair.na == pair.nb) {  // every byte written where it was read
    Writer out(string, n + 1);
    put_swapped(out, string, pair);
    out.finish();
    return string;
  }
  // Lengths differ: written in the arena, then copied back when it fits.
  char* const copy = into_arena([&](Writer& out) { put_swapped(out, string, pair); });
  std::size_t const length = std::strlen(copy);
  if (length > n) return copy;
  std::memcpy(string, copy, length + 1);
  return string;
}

char* _zstrswapped(char const* string, char const* a, char const* b) noexcept {
  if (!checked(string, a, b, "_zstrswapped")) return nullptr;
  Pair const pair{a, std::strlen(a), b, std::strlen(b)};
  return into_arena([&](Writer& out) { put_swapped(out, string, pair); });
}
