// The linear-time matchers against the backtracking walk, which defines the
// results: on random expressions over a small alphabet (classes, groups,
// alternatives, the three quantifiers, anchors) and random subjects, the
// automata and Pike's machine must give the walk's answer, whole match and
// every group's range, from every starting offset.  Also: a pattern that
// makes the walk exponential runs in linear time, and a subject that fills
// the automata's cache is still matched right.
#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

#include "regex/match_outcome.h"
#include "regex/matcher.h"
#include "zelstr/regex.h"

namespace {

using zelstr::regex::Strategy;

using zelstr::test::match_outcome;

class Generator {
 public:
  explicit Generator(unsigned seed) : m_random(seed) {}

  std::string expression(int depth = 0) {
    std::string out = branch(depth);
    while (pick(4) == 0) {
      out += '|';
      out += branch(depth);
    }
    return out;
  }

  std::string subject() {
    static char const kAlphabet[] = "aabbc-";
    std::string s(pick(13), ' ');
    for (char& c : s) c = kAlphabet[pick(sizeof kAlphabet - 1)];
    return s;
  }

  unsigned pick(unsigned n) { return static_cast<unsigned>(m_random() % n); }

 private:
  std::string branch(int depth) {
    std::string out;
    for (unsigned n = 1 + pick(4); n > 0; --n) out += piece(depth);
    return out;
  }

  std::string piece(int depth) {
    static char const* const kAtoms[] = {"a",           "b",      "c",   "ab", ".", "[ab]", "[^a]",
                                         "[[:alpha:]]", "[a-b-]", "\\-", "^",  "$", "-"};
    std::string atom;
    if (depth < 3 && pick(4) == 0) {
      atom += '(';
      atom += expression(depth + 1);
      atom += ')';
    } else {
      atom = kAtoms[pick(sizeof kAtoms / sizeof *kAtoms)];
    }
    static char const* const kQuantifiers[] = {"", "", "*", "+", "?"};
    atom += kQuantifiers[pick(5)];
    return atom;
  }

  std::mt19937 m_random;
};

TEST(RegexLinear, EveryMatcherGivesTheWalksResults) {
  Generator gen(20261125);
  int compared = 0;
  while (compared < 100000) {
    std::string const pattern = gen.expression();
    Tcl_RegExp_* const re = Tcl_RegExpCompile(pattern.c_str());
    if (re == nullptr) continue;
    for (int i = 0; i < 4; ++i, ++compared) {
      std::string const subject = gen.subject();
      std::size_t const from = gen.pick(static_cast<unsigned>(subject.size() + 1));
      std::vector<long> const walk = match_outcome(Strategy::kWalk, re, subject, from);
      ASSERT_EQ(match_outcome(Strategy::kAuto, re, subject, from), walk)
          << "/" << pattern << "/ on \"" << subject << "\" from " << from;
      ASSERT_EQ(match_outcome(Strategy::kPike, re, subject, from), walk)
          << "/" << pattern << "/ on \"" << subject << "\" from " << from;
    }
    Tcl_DeleteInterp(re);
  }
}

TEST(RegexLinear, ThePatternThatHangsTheWalkTakesLinearTime) {
  std::string pattern;
  for (int i = 0; i < 12; ++i) pattern += "a*";
  Tcl_RegExp_* const re = Tcl_RegExpCompile((pattern + "b").c_str());
  std::string const subject(24 * 1024, 'a');
  EXPECT_EQ(Tcl_RegExpMatch(subject.c_str(), re), 0);
  EXPECT_EQ(Tcl_RegExpMatch((subject + "b").c_str(), re), 1);
  Tcl_DeleteInterp(re);
}

// Many distinct states: the cache is emptied and rebuilt along the way, and
// the answers stay those of the walk.
TEST(RegexLinear, AFullCacheIsRebuiltWithoutChangingResults) {
  Tcl_RegExp_* const re =
      Tcl_RegExpCompile("(a|b)*a(a|b)(a|b)(a|b)(a|b)(a|b)(a|b)(a|b)(a|b)(a|b)(a|b)(a|b)c");
  std::mt19937 random(7);
  std::string subject;
  for (int i = 0; i < 200000; ++i) subject += "ab"[random() % 2];
  std::vector<long> const walk = match_outcome(Strategy::kPike, re, subject + "c", 0);
  EXPECT_EQ(match_outcome(Strategy::kAuto, re, subject + "c", 0), walk);
  EXPECT_EQ(match_outcome(Strategy::kAuto, re, subject, 0),
            match_outcome(Strategy::kPike, re, subject, 0));
  Tcl_DeleteInterp(re);
}

}  // namespace
