// random_expressions.h - random expressions and texts for the tests that
// compare the matchers, drawn from a seeded generator: alternatives of
// branches of 1 to 4 pieces, a piece an atom of the caller's list or (above
// depth 3) a group, each with a quantifier of the caller's list.
#ifndef ZELSTR_TESTS_REGEX_RANDOM_EXPRESSIONS_H
#define ZELSTR_TESTS_REGEX_RANDOM_EXPRESSIONS_H

#include <cstring>
#include <random>
#include <string>
#include <vector>

namespace zelstr::test {

class RandomExpressions {
 public:
  // A branch is followed by another alternative with odds 1 in
  // `alternation_odds`.
  RandomExpressions(unsigned seed, std::vector<char const*> atoms,
                    std::vector<char const*> quantifiers, unsigned alternation_odds)
      : m_random(seed),
        m_atoms(std::move(atoms)),
        m_quantifiers(std::move(quantifiers)),
        m_alternation_odds(alternation_odds) {}

  unsigned pick(unsigned n) { return static_cast<unsigned>(m_random() % n); }

  std::string expression(int depth = 0) {
    std::string out = branch(depth);
    while (pick(m_alternation_odds) == 0) out += '|' + branch(depth);
    return out;
  }

  // `length` bytes drawn from `alphabet`.
  std::string text(std::size_t length, char const* alphabet) {
    std::string s(length, ' ');
    auto const n = static_cast<unsigned>(std::strlen(alphabet));
    for (char& c : s) c = alphabet[pick(n)];
    return s;
  }

 private:
  std::string branch(int depth) {
    std::string out;
    for (unsigned n = 1 + pick(4); n > 0; --n) out += piece(depth);
    return out;
  }

  std::string piece(int depth) {
    std::string atom = depth < 3 && pick(4) == 0
                           ? '(' + expression(depth + 1) + ')'
                           : m_atoms[pick(static_cast<unsigned>(m_atoms.size()))];
    return atom + m_quantifiers[pick(static_cast<unsigned>(m_quantifiers.size()))];
  }

  std::mt19937 m_random;
  std::vector<char const*> m_atoms;
  std::vector<char const*> m_quantifiers;
  unsigned m_alternation_odds;
};

}  // namespace zelstr::test

#endif  // ZELSTR_TESTS_REGEX_RANDOM_EXPRESSIONS_H
