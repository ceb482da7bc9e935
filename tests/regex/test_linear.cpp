// The linear-time matchers against the backtracking walk, which defines the
// results: on random expressions over a small alphabet (classes, groups,
// alternatives, the three quantifiers, anchors) and random subjects, the
// automata and Pike's machine must give the walk's answer, whole match and
// every group's range, from every starting offset.  Also: a pattern that
// makes the walk exponential runs in linear time, and a subject that fills
// the automata's cache is still matched right.
#include <gtest/gtest.h>

#include <cstring>
#include <random>
#include <string>
#include <vector>

#include "regex/match_outcome.h"
#include "regex/matcher.h"
#include "regex/random_expressions.h"
#include "zelstr/regex.h"

namespace {

using zelstr::regex::Strategy;

using zelstr::test::match_outcome;

// Expressions over a small alphabet: classes, groups, alternatives, the
// three quantifiers, anchors; subjects of up to 12 bytes.
class Generator : public zelstr::test::RandomExpressions {
 public:
  explicit Generator(unsigned seed)
      : RandomExpressions(seed,
                          {"a", "b", "c", "ab", ".", "[ab]", "[^a]", "[[:alpha:]]", "[a-b-]", "\\-",
                           "^", "$", "-"},
                          {"", "", "*", "+", "?"}, 4) {}

  std::string subject() { return text(pick(13), "aabbc-"); }
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

// The lines Tcl_RegExpFindLine finds in a text of many lines are those a
// match of each line alone finds: random expressions, lines ending in LF,
// CR LF or nothing, stray carriage returns, empty lines.
TEST(RegexLinear, FindLineGivesTheLinesEachLinesMatchGives) {
  Generator gen(2911);
  int compared = 0;
  while (compared < 20000) {
    std::string const pattern = gen.expression();
    Tcl_RegExp_* const re = Tcl_RegExpCompile(pattern.c_str());
    if (re == nullptr) continue;
    for (int i = 0; i < 4; ++i, ++compared) {
      std::string text;
      std::vector<std::size_t> starts;
      std::vector<std::string> lines;
      for (unsigned n = gen.pick(6); n > 0; --n) {
        std::string line = gen.subject();
        if (gen.pick(8) == 0)
          line.insert(gen.pick(static_cast<unsigned>(line.size() + 1)), 1, '\r');
        starts.push_back(text.size());
        text += line;
        bool const crlf = gen.pick(3) == 0;
        if (crlf) text.push_back('\r');
        text.push_back('\n');
        // A carriage return just before the line feed ends the line.
        if (!crlf && !line.empty() && line.back() == '\r') line.pop_back();
        lines.push_back(line);
      }
      std::string const last = gen.subject();
      if (!last.empty() && gen.pick(2) == 0) {  // a last line without its end
        starts.push_back(text.size());
        lines.push_back(last);
        text += last;
      }
      std::vector<long> expected, found;
      for (std::size_t k = 0; k < lines.size(); ++k) {
        if (Tcl_RegExpMatch(lines[k].c_str(), re) == 1) {
          expected.push_back(static_cast<long>(starts[k]));
        }
      }
      char const* const t = text.c_str();
      for (char const* at = Tcl_RegExpFindLine(re, t); at != nullptr;) {
        found.push_back(at - t);
        char const* const lf = std::strchr(at, '\n');
        at = lf != nullptr ? Tcl_RegExpFindLine(re, lf + 1) : nullptr;
      }
      ASSERT_EQ(expected, found) << "/" << pattern << "/ on \"" << text << "\"";
    }
    Tcl_DeleteInterp(re);
  }
  EXPECT_EQ(nullptr, Tcl_RegExpFindLine(nullptr, "x"));
  EXPECT_STREQ("Invalid NULL parameter.", Tcl_GetRegError());
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
