// The compile that ignores case: on any subject it matches as the pattern
// written in lower case matches the subject in lower case (for patterns
// whose ranges join no letter to a non-letter), with the same ranges.
#include <gtest/gtest.h>

#include <cctype>
#include <random>
#include <string>
#include <vector>

#include "zelstr/zelstr.h"

namespace {

std::string lower(std::string s) {
  for (char& c : s) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  return s;
}

// Every group's range of the first match in `subject`, as offsets (-1 for
// none), after the result.
std::vector<long> outcome(Tcl_RegExp_* re, std::string const& subject) {
  char const* const s = subject.c_str();
  std::vector<long> out{Tcl_RegExpMatch(s, re)};
  if (out[0] != 1) return out;
  for (int g = 0; g <= Tcl_GetGroupsCount(re); ++g) {
    char const *start, *end;
    Tcl_RegExpRange(re, g, &start, &end);
    out.push_back(start == nullptr ? -1 : start - s);
    out.push_back(end == nullptr ? -1 : end - s);
  }
  return out;
}

// A random pattern of letters of both cases, a digit, escapes, lists (also
// negated, with ranges of one case and a class), groups, alternatives and
// quantifiers.
std::string random_pattern(std::mt19937& rng) {
  static char const* const kAtoms[] = {"a",   "B",    "c",     "Ab",     "1",      ".",
                                       "\\A", "\\b",  "[aB]",  "[^a]",   "[A-Cx]", "[^b-c1]",
                                       "x",   "AbC",  "[[:alpha:]]", "[^[:digit:]]", "_"};
  std::string p;
  int open = 0;
  int const pieces = 1 + static_cast<int>(rng() % 6);
  for (int i = 0; i < pieces; ++i) {
    switch (rng() % 8) {
      case 0:
        p += "(";
        ++open;
        break;
      case 1:
        if (open > 0 && p.back() != '(' && p.back() != '|') {
          p += ")";
          --open;
        }
        break;
      case 2:
        if (!p.empty() && p.back() != '(' && p.back() != '|') p += "|";
        break;
      default:
        break;
    }
    p += kAtoms[rng() % std::size(kAtoms)];
    if (rng() % 4 == 0) p += "*+?"[rng() % 3];
  }
  while (open-- > 0) p += ")";
  return p;
}

TEST(RegexNoCase, MatchesAsTheLowerCasedPatternMatchesTheLowerCasedSubject) {
  std::mt19937 rng(20261127);
  int matched = 0;
  for (int round = 0; round < 20000; ++round) {
    std::string const pattern = random_pattern(rng);
    std::string subject;
    for (int n = static_cast<int>(rng() % 12); n > 0; --n) subject += "aAbBcCxX1_ "[rng() % 11];
    Tcl_RegExp_* const folded = Tcl_RegExpCompileNoCase(pattern.c_str());
    Tcl_RegExp_* const model = Tcl_RegExpCompile(lower(pattern).c_str());
    ASSERT_EQ(model == nullptr, folded == nullptr) << pattern;
    if (model != nullptr) {
      std::vector<long> const want = outcome(model, lower(subject));
      ASSERT_EQ(want, outcome(folded, subject)) << pattern << " on " << subject;
      matched += want[0] == 1;
    }
    Tcl_DeleteInterp(folded);
    Tcl_DeleteInterp(model);
  }
  EXPECT_GT(matched, 2000);  // the draws are not all misses
}

TEST(RegexNoCase, FindLineAndNullAsTheOtherCompile) {
  Tcl_RegExp_* const re = Tcl_RegExpCompileNoCase("sel[e]ct|FROM");
  ASSERT_NE(nullptr, re);
  char const text[] = "x\nSeLeCt 1\nfrom t\n";
  EXPECT_EQ(text + 2, Tcl_RegExpFindLine(re, text));
  EXPECT_EQ(text + 11, Tcl_RegExpFindLine(re, text + 4));
  Tcl_DeleteInterp(re);
  EXPECT_EQ(nullptr, Tcl_RegExpCompileNoCase(nullptr));
  EXPECT_STREQ("Invalid NULL reg.exp. required to be compiled by TCL.", Tcl_GetRegError());
}

}  // namespace
