// naive_search.h - the plainest answer to "does the pattern stand here",
// for the searches' model tests.
#ifndef ZELSTR_TESTS_SUPPORT_NAIVE_SEARCH_H
#define ZELSTR_TESTS_SUPPORT_NAIVE_SEARCH_H

#include <cctype>
#include <cstddef>
#include <string>

namespace zelstr::test {

// Two bytes alike: equal, or with `fold` of the same toupper.
inline bool same(unsigned char a, unsigned char b, bool fold) {
  return fold ? std::toupper(a) == std::toupper(b) : a == b;
}

// Whether `p` stands in `t` at `s`.
inline bool occurs_at(std::string const& t, std::size_t s, std::string const& p, bool fold) {
  if (s + p.size() > t.size()) return false;
  for (std::size_t j = 0; j < p.size(); ++j) {
    if (!same(t[s + j], p[j], fold)) return false;
  }
  return true;
}

}  // namespace zelstr::test

#endif  // ZELSTR_TESTS_SUPPORT_NAIVE_SEARCH_H
