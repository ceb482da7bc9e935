// The required strings of an expression, and the search for them.  The set
// is only a filter, so a wrong one shows as a match that holds none of its
// strings: random expressions of literals, lists, groups and loops, both
// compile modes, every match of random subjects checked, and the automata
// that jump by the set give the walk's results.  The search is
// checked against a walk of every place, over texts long enough to cross
// the pieces it measures the text in.
#include <gtest/gtest.h>

#include <cstring>
#include <random>
#include <string>
#include <vector>

#include "regex/literal_search.h"
#include "regex/literal_set.h"
#include "regex/match_outcome.h"
#include "regex/random_expressions.h"
#include "zelstr/regex.h"

namespace {

using zelstr::regex::LiteralSearch;
using zelstr::regex::LiteralSet;
using zelstr::regex::Strategy;
using zelstr::test::match_outcome;

// Expressions rich in literals, short lists and groups.
class Words : public zelstr::test::RandomExpressions {
 public:
  explicit Words(unsigned seed)
      : RandomExpressions(seed,
                          {"a", "b", "ab", "ba", "abc", "Ab", "[ab]", "[aA]", "[bc]", ".", "^", "$",
                           "[^a]", "cab", "B", "[abcAB]"},
                          {"", "", "", "*", "+", "?"}, 3) {}
};

unsigned char image(unsigned char c, bool folded) {
  return folded && c >= 'A' && c <= 'Z' ? static_cast<unsigned char>(c | 0x20) : c;
}

// Whether one of the set's strings begins at `at` (within [at, end)).
bool begins_with_one(LiteralSet const& set, char const* at, char const* end) {
  for (std::string const& s : set.strings) {
    if (static_cast<std::size_t>(end - at) < s.size()) continue;
    bool same = true;
    for (std::size_t j = 0; same && j < s.size(); ++j) {
      same = image(static_cast<unsigned char>(at[j]), set.folded) == static_cast<unsigned char>(s[j]);
    }
    if (same) return true;
  }
  return false;
}

TEST(RegexLiteralSet, EveryMatchHoldsOneOfTheStrings) {
  Words gen(1127);
  int with_set = 0, matches = 0;
  for (int round = 0; round < 3000; ++round) {
    std::string const pattern = gen.expression();
    bool const fold = gen.pick(3) == 0;
    Tcl_RegExp_* const re =
        fold ? Tcl_RegExpCompileNoCase(pattern.c_str()) : Tcl_RegExpCompile(pattern.c_str());
    if (re == nullptr) continue;
    LiteralSet const set = zelstr::regex::required_literals(re);
    if (!set.strings.empty()) ++with_set;
    for (std::string const& s : set.strings) ASSERT_FALSE(s.empty()) << pattern;
    ASSERT_LE(set.strings.size(), zelstr::regex::kMostLiterals);
    for (int i = 0; i < 6 && !set.strings.empty(); ++i) {
      // The walk, the reference, may take exponential time on long subjects.
      std::string const subject = gen.text(gen.pick(16), "aabbcABC-");
      std::size_t const from = gen.pick(static_cast<unsigned>(subject.size() + 1));
      std::vector<long> const walk = match_outcome(Strategy::kWalk, re, subject, from);
      ASSERT_EQ(match_outcome(Strategy::kAuto, re, subject, from), walk)
          << "/" << pattern << "/" << (fold ? "i" : "") << " on \"" << subject << "\" from "
          << from;
      char const* const s = subject.c_str();
      if (Tcl_RegExpMatch(s, re) != 1) continue;
      char const *start = nullptr, *end = nullptr;
      Tcl_RegExpRange(re, 0, &start, &end);
      ++matches;
      bool held = false;
      for (char const* at = start; !held && at <= end; ++at) held = begins_with_one(set, at, end);
      ASSERT_TRUE(held) << "/" << pattern << "/" << (fold ? "i" : "") << " on \"" << subject
                        << "\": the match \"" << std::string(start, end) << "\" holds none of "
                        << set.strings.size() << " strings, the first \"" << set.strings[0]
                        << "\"";
      if (set.prefix) {
        ASSERT_TRUE(begins_with_one(set, start, end)) << pattern << " on " << subject;
      }
    }
    Tcl_DeleteInterp(re);
  }
  // The generator must give sets, and matches to check them on.
  EXPECT_GT(with_set, 1000);
  EXPECT_GT(matches, 1500);
}

TEST(RegexLiteralSet, SetsOfKnownExpressions) {
  struct Case {
    char const* pattern;
    bool fold;
    std::vector<std::string> strings;
    bool prefix;
  };
  Case const cases[] = {
      {"SELECT|INSERT|UPDATE", false, {"INSERT", "SELECT", "UPDATE"}, true},
      {"[A-Za-z_]+_(ID|Id|id)", false, {"_ID", "_Id", "_id"}, false},
      {"x[ \t]+(ab|cd)", false, {"x\t", "x "}, true},
      {"customers", true, {"customers"}, true},
      {"(a|b)*cde", false, {"cde"}, false},
      {"ab?c", false, {"abc", "ac"}, true},
      {".*", false, {}, false},
  };
  for (Case const& c : cases) {
    Tcl_RegExp_* const re =
        c.fold ? Tcl_RegExpCompileNoCase(c.pattern) : Tcl_RegExpCompile(c.pattern);
    ASSERT_NE(re, nullptr) << c.pattern;
    LiteralSet const set = zelstr::regex::required_literals(re);
    EXPECT_EQ(set.strings, c.strings) << c.pattern;
    if (!c.strings.empty()) {
      EXPECT_EQ(set.prefix, c.prefix) << c.pattern;
      EXPECT_EQ(set.folded, c.fold) << c.pattern;
    }
    Tcl_DeleteInterp(re);
  }
}

TEST(RegexLiteralSearch, FindsThePlacesAWalkFinds) {
  Words gen(2511);
  for (int round = 0; round < 400; ++round) {
    LiteralSet set;
    set.folded = gen.pick(2) == 0;
    unsigned const count = 1 + gen.pick(gen.pick(2) == 0 ? 3 : 70);
    for (unsigned i = 0; i < count; ++i) {
      std::string s = gen.text(1 + gen.pick(5), "abcdAB\n");
      if (set.folded) {
        for (char& c : s) c = static_cast<char>(image(static_cast<unsigned char>(c), true));
      }
      set.strings.push_back(s);
    }
    LiteralSearch search;
    search.prepare(set, gen.pick(2) == 0);
    // A set whose first bytes vary too much is not searched for.
    if (!search.active()) continue;
    // Some texts long enough for several of the pieces the search measures,
    // of filler with a few of the strings put in at random (at a piece's
    // last places too).
    bool const sparse = gen.pick(4) == 0;
    std::size_t const length = sparse ? 4000 + gen.pick(40000) : gen.pick(4000);
    std::string text = gen.text(length, sparse ? "xyzw" : gen.pick(2) ? "abcdABxyz\n" : "xyzwaB");
    for (unsigned k = sparse ? 1 + gen.pick(6) : 0; k > 0; --k) {
      std::string const& s = set.strings[gen.pick(static_cast<unsigned>(set.strings.size()))];
      // The first just before 256 bytes, where the first piece ends.
      std::size_t const at = k == 1 ? 256 - s.size() - gen.pick(48)
                                    : gen.pick(static_cast<unsigned>(text.size() - s.size()));
      text.replace(at, s.size(), s);
    }
    char const* const t = text.c_str();
    char const* const end = t + text.size();
    for (char const* p = sparse ? t : t + gen.pick(static_cast<unsigned>(text.size() + 1));;) {
      char const* expected = p;
      while (expected < end && !begins_with_one(set, expected, end)) ++expected;
      if (expected == end) expected = nullptr;
      char const* const found = search.next(p);
      ASSERT_EQ(found, expected) << "round " << round << " from " << (p - t);
      if (found == nullptr) break;
      p = found + 1;
    }
  }
}

}  // namespace
