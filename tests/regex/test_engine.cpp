// The engine beyond the classic table: every compile error text, bracket
// classes and the backslash switch, named groups, attached texts, limits,
// long subjects, and the two caches.
#include <gtest/gtest.h>

#include <string>

#include "support/warnings.h"
#include "zelstr/zelstr.h"

namespace {

using zelstr::test::filed_exactly;
using zelstr::test::filed_nothing;

// The whole match of `pattern` in `subject`, "<none>" without one, or
// "<error: TEXT>" when the pattern does not compile.
std::string first_match(char const* pattern, char const* subject, int group = 0) {
  Tcl_RegExp_* const re = Tcl_RegExpCompile(pattern);
  if (re == nullptr) return std::string("<error: ") + Tcl_GetRegError() + ">";
  std::string out = "<none>";
  if (Tcl_RegExpMatch(subject, re) == 1) {
    char const *start, *end;
    Tcl_RegExpRange(re, group, &start, &end);
    out = start == nullptr ? "<no part>" : std::string(start, end);
  }
  Tcl_DeleteInterp(re);
  return out;
}

TEST(RegexCompile, EveryErrorHasItsText) {
  struct Case {
    char const* pattern;
    char const* text;
  } const kCases[] = {
      {"(a", "Unmatched '(' in TCL reg.exp."},
      {"a)", "Unexpected ')' found in TCL reg.exp."},
      {"a**", "Illegal quantifier '*', '?', '+' following another quantifier."},
      {"a+?", "Illegal quantifier '*', '?', '+' following another quantifier."},
      {"(a*)*", "'*' disallowed on possibly empty TCL sub-reg.exp."},
      {"(a*)+", "'+' disallowed on possibly empty TCL sub-reg.exp."},
      {"^*", "'*' disallowed on possibly empty TCL sub-reg.exp."},
      {"[b-a]", "Ill-formed range of characters inside a TCL reg.exp."},
      {"[abc", "Unmatched '[' found in a TCL reg.exp."},
      {"[]", "Unmatched '[' found in a TCL reg.exp."},
      {"*a", "Quantifier '*' follows nothing in a TCL reg.exp.."},
      {"a|+", "Quantifier '+' follows nothing in a TCL reg.exp.."},
      {"(?)", "Quantifier '?' follows nothing in a TCL reg.exp.."},
      {"ab\\", "Unexpected trailing \\ in a TCL reg.exp."},
      {"(@A=(x)(@A=(y)))", "Submatch @A already assigned to parenthesized subexpression #1."},
      {"((x)=B@)((y)=B@)", "Submatch @B already assigned to parenthesized sub-expression #1."},
  };
  for (Case const& c : kCases) {
    EXPECT_EQ(Tcl_RegExpCompile(c.pattern), nullptr) << c.pattern;
    ASSERT_NE(Tcl_GetRegError(), nullptr) << c.pattern;
    EXPECT_STREQ(Tcl_GetRegError(), c.text) << c.pattern;
  }
  EXPECT_EQ(Tcl_RegExpCompile(nullptr), nullptr);
  EXPECT_STREQ(Tcl_GetRegError(), "Invalid NULL reg.exp. required to be compiled by TCL.");
  // A good compile clears the text.
  Tcl_RegExp_* const re = Tcl_RegExpCompile("a");
  EXPECT_EQ(Tcl_GetRegError(), nullptr);
  EXPECT_EQ(Tcl_RegExpMatch(nullptr, re), -1);
  EXPECT_STREQ(Tcl_GetRegError(), "Invalid NULL parameter.");
  EXPECT_EQ(Tcl_RegExpMatch("xa", re), 1);
  EXPECT_EQ(Tcl_GetRegError(), nullptr);
  Tcl_DeleteInterp(re);
}

TEST(RegexCompile, GroupAndSizeLimits) {
  std::string groups;
  for (int i = 0; i < 120; ++i) groups += "(a)";
  Tcl_RegExp_* const re = Tcl_RegExpCompile(groups.c_str());
  ASSERT_NE(re, nullptr);
  EXPECT_EQ(Tcl_GetGroupsCount(re), 120);
  EXPECT_EQ(Tcl_RegExpMatch(std::string(120, 'a').c_str(), re), 1);
  char const *start, *end;
  EXPECT_EQ(Tcl_RegExpRange(re, 120, &start, &end), 1);
  EXPECT_EQ(Tcl_RegExpRange(re, 121, &start, &end), 0);
  EXPECT_EQ(start, nullptr);
  Tcl_DeleteInterp(re);
  EXPECT_EQ(Tcl_RegExpCompile((groups + "(a)").c_str()), nullptr);
  EXPECT_STREQ(Tcl_GetRegError(),
               "Reg.exp. contains too many parentheses (whatever nested or not).");

  // A literal of n bytes takes 3 + n + 1; with the check byte and the
  // BRANCH and END nodes, 65535 bytes of program hold 65524 literal bytes.
  std::string literal(65524, 'x');
  Tcl_RegExp_* const big = Tcl_RegExpCompile(literal.c_str());
  EXPECT_NE(big, nullptr);
  Tcl_DeleteInterp(big);
  literal += 'x';
  EXPECT_EQ(Tcl_RegExpCompile(literal.c_str()), nullptr);
  EXPECT_STREQ(Tcl_GetRegError(), "Reg.exp. too big (more than 65535 chars long).");
  EXPECT_EQ(Tcl_RegExpCompile(std::string(200000, 'y').c_str()), nullptr);
}

TEST(RegexBrackets, NamedClassesAndTheBackslashSwitch) {
  struct Case {
    char const* pattern;
    char const* subject;
    char const* match;
  } const kCases[] = {
      {"[[:ALPHA:]]+", "12abC3", "abC"},
      {"[[:digit:]]+", "ab123c", "123"},
      {"[[:w:]]+", "-a_1-", "a_1"},
      {"[[:xdigit:]]+", "xfF09g", "fF09"},
      {"[^[:space:]]+", " \t\x1c ab ", "ab"},
      {"[[:s:]]+", "a\x1f\r\n b", "\x1f\r\n "},
      {"[[:Lu:]]+", "abCDe", "CD"},
      {"[[:Zs:]]", "a\tb c", " "},
      {"[[:foo:]]+", "x:]]", ":]]"},
      {"[]a]+", "x]a]y", "]a]"},
      {"[a-]+", "x-a-y", "-a-"},
      {"[\\]]", "a\\]", "\\]"},
      {"[[:d:]-]+", "a1-2b", "1-2"},
  };
  for (Case const& c : kCases) EXPECT_EQ(first_match(c.pattern, c.subject), c.match) << c.pattern;
  // With the switch on, a backslash in a list escapes the next character.
  Tcl_TemporarilyDefineWhetherBackslashesInIntervalsAreHandled const on(1);
  EXPECT_EQ(Tcl_GetIfBackslashesInIntervalsAreHandled(), 1);
  EXPECT_EQ(first_match("[\\]]", "a\\]"), "]");
  EXPECT_EQ(first_match("[\\-a]+", "x-a\\"), "-a");
}

TEST(RegexBrackets, TheSwitchIsRestored) {
  int previous = -1;
  Tcl_SetWhetherBackslashesInIntervalsAreHandled(0, previous);
  {
    Tcl_TemporarilyDefineWhetherBackslashesInIntervalsAreHandled const on(7);
    EXPECT_EQ(Tcl_GetIfBackslashesInIntervalsAreHandled(), 7);
  }
  EXPECT_EQ(Tcl_GetIfBackslashesInIntervalsAreHandled(), 0);
}

TEST(RegexMatch, GroupsNamesAndAttachedTexts) {
  EXPECT_EQ(first_match("(a|b)*c", "xababcy", 1), "b");
  EXPECT_EQ(first_match("((a)|b)*", "ab", 2), "a");  // the last pass that took part
  EXPECT_EQ(first_match("(a)|b", "b", 1), "<no part>");
  // Names, and an attached text naming the range index 0 stands for.
  EXPECT_EQ(first_match("x(@A=(y)z)$$$(A)", "wxyzw"), "yz");
  EXPECT_EQ(first_match("x((y)=C@)z$$$(C)", "xyz"), "y");
  EXPECT_EQ(first_match("x@(y)(z)$$$(2)", "x@yz"), "z");
  EXPECT_EQ(first_match("x(y)$$$(@)", "xyz"), "xy");
  // The backward form: the pattern after ")$$$" is reversed.
  EXPECT_EQ(first_match("(1)$$$c)b(@a", "za@bc"), "b");
}

// Loops over long subjects run on the heap, not the thread's stack.
TEST(RegexMatch, MegabyteSubjects) {
  std::string subject(1 << 20, 'a');
  subject += 'b';
  EXPECT_EQ(first_match(".*b", subject.c_str()).size(), subject.size());
  EXPECT_EQ(first_match("(a)*b", subject.c_str()).size(), subject.size());
  EXPECT_EQ(first_match("(aa|a)*b", subject.c_str(), 1), "aa");
}

// A required literal missing from the subject rejects it before any try:
// trying these positions would take far longer than the test may run.
TEST(RegexMatch, RequiredStringRejectsAtOnce) {
  Tcl_RegExp_* const re = Tcl_RegExpCompile("a*a*a*a*a*a*a*a*a*a*a*a*a*a*a*a*xyz");
  ASSERT_NE(re, nullptr);
  std::string const subject(2000, 'a');
  EXPECT_EQ(Tcl_RegExpMatch(subject.c_str(), re), 0);
  EXPECT_EQ(Tcl_RegExpMatch((subject + "xyz").c_str(), re), 1);
  Tcl_DeleteInterp(re);
}

TEST(RegexMatch, BoundedMatchRestoresTheByte) {
  Tcl_RegExp_* const re = Tcl_RegExpCompile("c$");
  char subject[] = "abcd";
  EXPECT_EQ(Tcl_RegExpMatch(subject, 3, re), 1);
  EXPECT_STREQ(subject, "abcd");
  EXPECT_EQ(Tcl_RegExpMatch(subject, re), 0);
  Tcl_DeleteInterp(re);
}

TEST(RegexMatch, InterpsAndTheProgramWalk) {
  Tcl_Interp* const interp = Tcl_CreateInterp();
  ASSERT_NE(interp, nullptr);
  EXPECT_EQ(interp->result, interp->buffer);
  Tcl_RegExp_* const re = Tcl_RegExpCompile(interp, "ab");
  EXPECT_EQ(Tcl_RegExpMatch(interp, "xab", nullptr, re), 1);
  Tcl_DeleteInterp(interp, re);  // marks and frees both
  EXPECT_EQ(Tcl_GetGroupsCount(nullptr), 0);
  EXPECT_EQ(Tcl_IsValidRegularExpression("a(b"), 0);
  EXPECT_EQ(Tcl_IsValidRegularExpression("a(b)"), 1);
  EXPECT_EQ(TCL_DigNextPointer(nullptr), nullptr);
  char s[] = "abc";
  EXPECT_STREQ(_zstrrev(s), "cba");
  char escaped[] = "a\\tb\\.c";
  EXPECT_STREQ(Tcl_ReplaceRegExpEscapedChars(escaped), "a\tb\\.c");
}

class RegexCaches : public zelstr::test::WarningsTest {
 protected:
  void TearDown() override {
    Tcl_Interp* interp;
    Tcl_RegExp_* re;
    Tcl_CompileRE(reinterpret_cast<char const*>(-1), interp, re, 0);
  }
};

TEST_F(RegexCaches, HitsEvictionAndFailures) {
  Tcl_Interp* interp;
  Tcl_RegExp_* first;
  ASSERT_EQ(Tcl_CompileRE("p0", interp, first, 0), 1);
  Tcl_RegExp_* again;
  EXPECT_EQ(Tcl_CompileRE("p0", interp, again, 0), 1);
  EXPECT_EQ(again, first);  // a hit hands out the same expression
  Tcl_RegExp_* other;
  EXPECT_EQ(Tcl_CompileRE("p0", interp, other, 1), 1);
  EXPECT_NE(other, first);  // another switch value is another entry
  // More patterns than the list holds: the oldest make room.
  Tcl_RegExp_* re;
  for (int i = 1; i <= 255; ++i) {
    std::string pattern = std::to_string(i);
    pattern.insert(pattern.begin(), 'p');
    Tcl_CompileRE(pattern.c_str(), interp, re, 0);
  }
  EXPECT_EQ(Tcl_CompileRE("p1", interp, re, 0), 1);
  EXPECT_TRUE(filed_nothing());
  // A bad pattern is cached with its error, and warns each time.
  for (int i = 0; i < 2; ++i) {
    EXPECT_EQ(Tcl_CompileRE("a(", interp, re, 0), 0);
    EXPECT_EQ(re, nullptr);
    EXPECT_EQ(interp, nullptr);
  }
  std::string const text =
      "CompileRE(\"a(\"): Error \"Unmatched '(' in TCL reg.exp.\" during regular expression "
      "compilation by TCL.";
  EXPECT_TRUE(filed_exactly({{-1, text, 4, "regexptcl"}, {-1, text, 4, "regexptcl"}}));
  // A cached failure quotes the current error text: none after a good
  // compile, the last one after a bad one.
  errsvc::clear();
  Tcl_DeleteInterp(Tcl_RegExpCompile("x"));
  EXPECT_EQ(Tcl_CompileRE("a(", interp, re, 0), 0);
  EXPECT_EQ(Tcl_MatchRE("x", "b("), 0);
  EXPECT_EQ(Tcl_MatchRE("x", "[x"), 0);
  Tcl_DeleteInterp(Tcl_RegExpCompile("x"));
  EXPECT_EQ(Tcl_MatchRE("x", "b("), 0);
  Tcl_DeleteInterp(Tcl_RegExpCompile("c)"));
  EXPECT_EQ(Tcl_CompileRE("a(", interp, re, 0), 0);
  EXPECT_TRUE(filed_exactly(
      {{-1, "CompileRE(\"a(\"): Error during regular expression compilation by TCL.", 4,
        "regexptcl"},
       {-1,
        "MatchRE(...,\"b(\"): Error \"Unmatched '(' in TCL reg.exp.\" during regular expression "
        "compilation by TCL.",
        4, "regexptcl"},
       {-1,
        "MatchRE(...,\"[x\"): Error \"Unmatched '[' found in a TCL reg.exp.\" during regular "
        "expression compilation by TCL.",
        4, "regexptcl"},
       {-1, "MatchRE(...,\"b(\"): Error during regular expression compilation by TCL.", 4,
        "regexptcl"},
       {-1,
        "CompileRE(\"a(\"): Error \"Unexpected ')' found in TCL reg.exp.\" during regular "
        "expression compilation by TCL.",
        4, "regexptcl"}}));
  errsvc::clear();
  EXPECT_EQ(Tcl_CompileRE(nullptr, interp, re, 0), 0);
  EXPECT_EQ(Tcl_CompileRE("", interp, re, 0), 0);
  EXPECT_TRUE(filed_exactly(
      {{-1, "CompileRE(): Invalid NULL TCL reg.exp. given in argument.", 4, "regexptcl"},
       {-1, "CompileRE(): Invalid empty TCL reg.exp. given in argument.", 4, "regexptcl"}}));
}

// A cached failure is not compiled again, so the error text is left as it
// was; once the entry is evicted (by 256 newer patterns), it is.
TEST_F(RegexCaches, TheLeastRecentlyUsedEntryIsEvicted) {
  Tcl_Interp* interp;
  Tcl_RegExp_* re;
  auto cached = [&] {
    Tcl_DeleteInterp(Tcl_RegExpCompile("x"));  // clears the error text
    Tcl_CompileRE("a(", interp, re, 0);
    return Tcl_GetRegError() == nullptr;
  };
  EXPECT_FALSE(cached());
  EXPECT_TRUE(cached());
  auto add = [&](int from, int to) {
    for (int i = from; i < to; ++i) {
      std::string pattern = std::to_string(i);
      pattern.insert(pattern.begin(), 'q');
      Tcl_CompileRE(pattern.c_str(), interp, re, 0);
    }
  };
  add(0, 255);  // 256 entries: "a(" is the oldest
  EXPECT_TRUE(cached());
  add(255, 511);  // 256 newer ones
  EXPECT_FALSE(cached());
}

TEST_F(RegexCaches, MatchRE) {
  EXPECT_EQ(Tcl_MatchRE("create procedure x", "^create[ \\t]+proc"), 1);
  EXPECT_EQ(Tcl_MatchRE("create\tprocedure x", "^create[ \\t]+proc"), 1);  // \t replaced
  EXPECT_EQ(Tcl_MatchRE("select 1", "elec"), 1);                           // plain text
  EXPECT_EQ(Tcl_MatchRE("select 1", "^elec"), 0);
  EXPECT_TRUE(filed_nothing());
  EXPECT_EQ(Tcl_MatchRE(nullptr, "a"), 0);
  EXPECT_EQ(Tcl_MatchRE("a", nullptr), 0);
  EXPECT_EQ(Tcl_MatchRE("a", "a**"), 0);
  EXPECT_TRUE(filed_exactly(
      {{-1, "MatchRE(NULL,...): Invalid NULL <string> given in argument.", 4, "regexptcl"},
       {-1, "MatchRE(...,NULL): Invalid NULL <reg_exp> given in argument.", 4, "regexptcl"},
       {-1,
        "MatchRE(...,\"a**\"): Error \"Illegal quantifier '*', '?', '+' following another "
        "quantifier.\" during regular expression compilation by TCL.",
        4, "regexptcl"}}));
  EXPECT_EQ(Tcl_MatchRE(reinterpret_cast<char const*>(-1), nullptr), 1);  // empties the cache
}

}  // namespace

namespace {

// Every match of `pattern` in `subject` in turn, each search starting where
// the last match ended (one byte further after an empty one), joined by
// "|": what Tcl_RegExpExec is for.
std::string every_match(char const* pattern, char const* subject) {
  Tcl_RegExp_* const re = Tcl_RegExpCompile(pattern);
  std::string out;
  char const* const end_of_subject = subject + std::char_traits<char>::length(subject);
  for (char const* from = subject; from <= end_of_subject;) {
    if (Tcl_RegExpExec(nullptr, re, from, subject) != 1) break;
    char const *start, *end;
    Tcl_RegExpRange(re, 0, &start, &end);
    out += std::string(start, end) + "|";
    from = end == start ? end + 1 : end;
  }
  Tcl_DeleteInterp(re);
  return out;
}

}  // namespace

TEST(RegexExec, FindsEveryMatchWithTheAnchorsOfTheWholeText) {
  struct Case {
    char const* pattern;
    char const* subject;
    char const* matches;
  } const kCases[] = {
      {"ab", "ab xab ab", "ab|ab|ab|"},
      {"^a", "aaa", "a|"},  // '^' is the text's start, not the search's
      {"a$", "aaa", "a|"},
      {"x*", "axxb", "|xx|||"},  // empty matches at a, at b and at the end
      {"s[a-z]+", "sys.sp_who", "sys|sp|"},
      {"[0-9]+|z", "1z22", "1|z|22|"},
  };
  for (Case const& c : kCases) EXPECT_EQ(every_match(c.pattern, c.subject), c.matches) << c.pattern;
}

TEST(RegexExec, RefusesWhatItCannotMatch) {
  Tcl_RegExp_* const re = Tcl_RegExpCompile("b");
  char const text[] = "abc";
  EXPECT_EQ(Tcl_RegExpExec(nullptr, re, text, text + 1), -1);  // before the text's start
  EXPECT_STREQ(Tcl_GetRegError(), "Invalid call. ");
  EXPECT_EQ(Tcl_RegExpExec(nullptr, re, text + 1, nullptr), -1);
  EXPECT_STREQ(Tcl_GetRegError(), "Invalid NULL parameter.");
  EXPECT_EQ(Tcl_RegExpExec(nullptr, nullptr, text, text), -1);
  EXPECT_EQ(Tcl_RegExpExec(nullptr, re, text + 2, text), 0);  // "b" lies before
  EXPECT_EQ(Tcl_GetRegError(), nullptr);
  Tcl_DeleteInterp(re);
}
