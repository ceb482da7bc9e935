// verify.h - full comparison of the pattern at one text position.
#ifndef ZELSTR_STR_SEARCH_VERIFY_H
#define ZELSTR_STR_SEARCH_VERIFY_H

#include <cstdint>
#include <cstring>

#include "str/search/plan.h"

namespace zelstr::str::search {
// Internal linkage: the file built for AVX2 includes this too.
namespace {

// True when the pattern occurs at `s`.  `known` is where the text is known
// to reach without a terminator: up to there the bytes are compared whole;
// beyond, one by one, which stops at the terminator since the pattern holds
// no zero byte.
inline bool matches_at(char const* s, char const* pattern, Plan const& plan, char const* known) {
  std::uint32_t const m = plan.length;
  if (plan.fold == nullptr) {
    if (s + m <= known) return std::memcmp(s, pattern, m) == 0;
    for (std::uint32_t j = 0; j < m; ++j) {
      if (s[j] != pattern[j]) return false;
    }
    return true;
  }
  // Case-insensitive: `pattern` is the upper-cased pattern.
  for (std::uint32_t j = 0; j < m; ++j) {
    if (plan.fold[static_cast<unsigned char>(s[j])] != static_cast<unsigned char>(pattern[j])) {
      return false;
    }
  }
  return true;
}

// The occurrences in a text of known length `n`, tried at each start from
// `from`, handed to `visitor`; the one it stopped at, or NULL.
inline char const* naive_walk(char const* text, std::size_t n, char const* from,
                              char const* pattern, Plan const& plan, Visitor const& visitor) {
  for (char const* s = from; s != nullptr && s + plan.length <= text + n;) {
    if (!matches_at(s, pattern, plan, text + n)) {
      ++s;
      continue;
    }
    char const* const next = visitor(s);
    if (next == nullptr) return s;
    s = next;
  }
  return nullptr;
}

}  // namespace
}  // namespace zelstr::str::search

#endif  // ZELSTR_STR_SEARCH_VERIFY_H
