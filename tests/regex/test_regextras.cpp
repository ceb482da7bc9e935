// Substitution with templates, pattern reversal and the expression of a
// user's text: written cases, warnings, and properties on seeded random
// patterns and texts.
#include <gtest/gtest.h>

#include <random>
#include <string>

#include "support/library_text.h"
#include "support/warnings.h"
#include "zelstr/zelstr.h"

namespace {

using zelstr::test::filed_exactly;
using zelstr::test::filed_nothing;
using zelstr::test::owned;

class RegExtras : public zelstr::test::WarningsTest {};

TEST_F(RegExtras, Substitutes) {
  struct Case {
    char const* string;
    char const* pattern;
    char const* replacement;
    int all;
    char const* expected;
  };
  Case const cases[] = {
      {"select a from t", "([a-z]+) from", "\\1 FROM", 0, "select a FROM t"},
      {"a,b,c", ",", ";", 1, "a;b;c"},
      {"a,b,c", ",", ";", 0, "a;b,c"},
      {"abc", "b", "[&]<\\0>\\&\\\\", 0, "a[b]<b>&\\c"},
      {"xay", "(b)?a", "<\\1>", 0, "x<>y"},  // a group that took no part
      {"ab", "x*", "-", 1, "-a-b-"},          // empty matches, one byte further each
      {"aaa", "^a", "b", 1, "baa"},           // ^ stays the subject's start
      {"", "^$", "empty", 1, "empty"},
      {"abc", "z", "y", 1, "abc"},
  };
  for (Case const& c : cases) {
    EXPECT_EQ(c.expected, owned(_zstrregsub(c.string, c.pattern, c.replacement, c.all)))
        << c.pattern << " on " << c.string;
  }
  CGrwStr out;
  out.strcpy("> ");
  EXPECT_EQ(2, _zstrregsub(out, "a.b.c", "\\.", "::", 1));
  EXPECT_STREQ("> a::b::c", out);
  EXPECT_TRUE(filed_nothing());
}

TEST_F(RegExtras, BadArgumentsWarn) {
  CGrwStr out;
  out.strcpy("kept");
  EXPECT_EQ(nullptr, _zstrregsub("a", "(", "x", 0));
  EXPECT_EQ(-1, _zstrregsub(out, "a", "(a)", "\\2", 0));
  EXPECT_EQ(nullptr, _zstrregsub("a", "a", "\\x", 0));
  EXPECT_EQ(nullptr, _zstrregsub(nullptr, "a", "x", 0));
  EXPECT_EQ(nullptr, _zstrregrev("(@A=(a)b)"));
  EXPECT_EQ(nullptr, _zstr2regex(std::string(40000, '.').c_str(), 0));
  EXPECT_STREQ("kept", out);
  EXPECT_TRUE(filed_exactly({
      {-1, "_zstrregsub() - Warning: pattern '(' does not compile (Unmatched '(' in TCL reg.exp.): NULL was returned as result.", 4, "regexptcl"},
      {-1, "_zstrregsub() - Warning: replacement template '\\2' is not valid (a backslash goes before a digit naming a group of the pattern, '&' or a backslash): -1 was returned as result.", 4, "regexptcl"},
      {-1, "_zstrregsub() - Warning: replacement template '\\x' is not valid (a backslash goes before a digit naming a group of the pattern, '&' or a backslash): NULL was returned as result.", 4, "regexptcl"},
      {-1, "_zstrregsub() - Warning: <string>, <pattern> or <replacement> given in argument is NULL: NULL was returned as result.", 4, "regexptcl"},
      {-1, "_zstrregrev() - Warning: pattern '(@A=(a)b)' cannot be reversed (a named group or an attached text): NULL was returned as result.", 4, "regexptcl"},
      {-1, "_zstr2regex() - Warning: the expression of <text> would be 80000 bytes long, longer than the engine takes: NULL was returned as result.", 4, "regexptcl"},
  }));
}

TEST_F(RegExtras, Reverses) {
  EXPECT_EQ("^(c|ed)*ba", owned(_zstrregrev("ab(c|de)*$")));
  EXPECT_EQ("[]a-c]x|\\.y", owned(_zstrregrev("x[]a-c]|y\\.")));
  EXPECT_EQ("((b)a)+", owned(_zstrregrev("(a(b))+")));
  // "[:" before a name that is no class is two members, and the list ends
  // at the first "]" after it, as the compiler reads it.
  EXPECT_EQ("1[x[:y[[:][[]", owned(_zstrregrev("[[][x[:y[[:]1")));
  EXPECT_EQ("b[[:alpha:]]a", owned(_zstrregrev("a[[:alpha:]]b")));
}

// A small grammar of patterns every construct of which reverses.
std::string random_pattern(std::mt19937& rng, int depth) {
  static char const* const kAtoms[] = {"a", "b", ".", "[ab]", "[^a]", "\\.", "c"};
  std::string out;
  for (int n = 1 + static_cast<int>(rng() % 3); n > 0; --n) {
    int const k = static_cast<int>(rng() % 10);
    if (k == 0 && depth < 2) {
      out += zelstr::test::cat(
          {"(", random_pattern(rng, depth + 1), "|", random_pattern(rng, depth + 1), ")"});
    } else if (k == 1 && out.empty()) {
      out += "^";
      continue;
    } else {
      out += kAtoms[rng() % 7];
    }
    if (rng() % 3 == 0) out += "*+?"[rng() % 3];
  }
  if (rng() % 4 == 0) out += "$";
  return out;
}

TEST_F(RegExtras, ReversalMatchesTheReversedSubjects) {
  std::mt19937 rng(7);
  int tried = 0;
  for (int i = 0; i < 3000; ++i) {
    std::string const pattern = random_pattern(rng, 0);
    Tcl_RegExp_* const re = Tcl_RegExpCompile(pattern.c_str());
    if (re == nullptr) continue;  // a star on what can match nothing, say
    std::string const reversed = owned(_zstrregrev(pattern.c_str()));
    Tcl_RegExp_* const back = Tcl_RegExpCompile(reversed.c_str());
    ASSERT_NE(nullptr, back) << pattern << " reversed as " << reversed;
    for (int k = 0; k < 8; ++k) {
      std::string subject;
      for (int n = static_cast<int>(rng() % 7); n > 0; --n) subject += "abc."[rng() % 4];
      std::string const mirror(subject.rbegin(), subject.rend());
      EXPECT_EQ(Tcl_RegExpMatch(subject.c_str(), re), Tcl_RegExpMatch(mirror.c_str(), back))
          << pattern << " / " << reversed << " on " << subject;
    }
    Tcl_DeleteInterp(re);
    Tcl_DeleteInterp(back);
    ++tried;
  }
  EXPECT_GT(tried, 1000);
  EXPECT_TRUE(filed_nothing());
}

TEST_F(RegExtras, UserTextMatchesExactlyItself) {
  std::mt19937 rng(11);
  for (int i = 0; i < 3000; ++i) {
    std::string text;
    for (int n = static_cast<int>(rng() % 12); n > 0; --n) text += static_cast<char>(1 + rng() % 255);
    std::string const expression = owned(_zstr2regex(text.c_str(), 0));
    Tcl_RegExp_* const re = Tcl_RegExpCompile(expression.c_str());
    ASSERT_NE(nullptr, re) << expression;
    ASSERT_EQ(1, Tcl_RegExpMatch(text.c_str(), re)) << expression;
    char const* start = nullptr;
    char const* end = nullptr;
    Tcl_RegExpRange(re, 0, &start, &end);
    EXPECT_EQ(text.c_str(), start);
    EXPECT_EQ(text.c_str() + text.size(), end);
    Tcl_DeleteInterp(re);
  }
  EXPECT_EQ("Order.*s\\..", owned(_zstr2regex("Order**s.?", 1)));
  EXPECT_EQ("a\\*b\\?\\[\\(", owned(_zstr2regex("a*b?[(", 0)));
  EXPECT_TRUE(filed_nothing());
}

}  // namespace
