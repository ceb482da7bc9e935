// verify.h - full comparison of the pattern at one text position.
#ifndef ZELSTR_STR_SEARCH_VERIFY_H
#define ZELSTR_STR_SEARCH_VERIFY_H

#include <cstdint>
#include <cstring>

#include "str/search/plan.h"

namespace zelstr::str::search {
// Internal linkage: the file built for AVX2 includes this too.
namespace {

// Two words of `m` bytes at `a` and `b`, read as their first and last
// eight (or four) bytes, which overlap when m is short of twice that: a
// pattern of up to sixteen bytes is compared in a few loads, not a call.
template <class Word>
bool same_ends(char const* a, char const* b, std::uint32_t m) {
  Word a0, a1, b0, b1;
  std::memcpy(&a0, a, sizeof a0);
  std::memcpy(&b0, b, sizeof b0);
  std::memcpy(&a1, a + m - sizeof a1, sizeof a1);
  std::memcpy(&b1, b + m - sizeof b1, sizeof b1);
  return ((a0 ^ b0) | (a1 ^ b1)) == 0;
}

inline bool same_bytes(char const* a, char const* b, std::uint32_t m) {
  if (m >= 8 && m <= 16) return same_ends<std::uint64_t>(a, b, m);
  if (m >= 4 && m < 8) return same_ends<std::uint32_t>(a, b, m);
  return std::memcmp(a, b, m) == 0;
}

// True when the pattern occurs at `s`.  `known` is where the text is known
// to reach without a terminator: up to there the bytes are compared whole;
// beyond, one by one, which stops at the terminator since the pattern holds
// no zero byte.
inline bool matches_at(char const* s, char const* pattern, Plan const& plan, char const* known) {
  std::uint32_t const m = plan.length;
  if (plan.fold == nullptr) {
    if (s + m <= known) return same_bytes(s, pattern, m);
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
