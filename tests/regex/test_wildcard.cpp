// Wildcard MATCH and LIKE: written cases, the warnings, and the promise
// that each answer is the engine's answer for the translated expression,
// checked on seeded random patterns and subjects.
#include <gtest/gtest.h>

#include <random>
#include <string>

#include "support/library_text.h"
#include "support/warnings.h"
#include "support/random_text.h"
#include "zelstr/zelstr.h"

namespace {

using zelstr::test::filed_exactly;
using zelstr::test::filed_nothing;
using zelstr::test::owned;

class Wildcard : public zelstr::test::WarningsTest {};

struct Case {
  char const* string;
  char const* pattern;
  int match, imatch;  // MATCH, or LIKE without an escape, plain and ignoring case
};

TEST_F(Wildcard, Match) {
  Case const cases[] = {
      {"usp_Orders", "usp_*", 1, 1},   {"Orders", "*ord*", 0, 1},    {"abc", "a?c", 1, 1},
      {"ac", "a?c", 0, 0},             {"a*c", "a[*]c", 1, 1},       {"abc", "a[!b]c", 0, 0},
      {"axc", "a[^b]c", 1, 1},         {"a]c", "a[]]c", 1, 1},       {"a-c", "a[b-]c", 1, 1},
      {"a[c", "a[c", 1, 1},            {"ab", "a[z-b]", 0, 0},       {"", "*", 1, 1},
      {"", "?", 0, 0},                 {"aXb", "A[x]B", 0, 1},       {"abab", "*ab", 1, 1},
      {"abxd", "a*b?d", 1, 1},        {"ab", "a**b", 1, 1},         {"\xE9t\xE9", "?t?", 1, 1},
  };
  for (Case const& c : cases) {
    EXPECT_EQ(c.match, _zstrmatch(c.string, c.pattern)) << c.string << " " << c.pattern;
    EXPECT_EQ(c.imatch, _zstrimatch(c.string, c.pattern)) << c.string << " " << c.pattern;
  }
  EXPECT_TRUE(filed_nothing());
}

TEST_F(Wildcard, Like) {
  Case const cases[] = {
      {"usp_Orders", "usp[_]%", 1, 1}, {"uspXOrders", "usp[_]%", 0, 0}, {"Orders", "%ORD%", 0, 1},
      {"a!c", "a[!]c", 1, 1},          {"abc", "a[^b]c", 0, 0},         {"abc", "_b_", 1, 1},
      {"abc  ", "abc", 1, 1},          {"abc  ", "abc ", 1, 1},         {"abc", "abc ", 0, 0},
      {" abc", "abc", 0, 0},           {"a%", "a[%]", 1, 1},            {"a[b", "a[b", 1, 1},
      {"x1", "%[0-9]", 1, 1},          {"a b", "a_b", 1, 1},
  };
  for (Case const& c : cases) {
    EXPECT_EQ(c.match, _zstrlike(c.string, c.pattern)) << c.string << " " << c.pattern;
    EXPECT_EQ(c.imatch, _zstrilike(c.string, c.pattern)) << c.string << " " << c.pattern;
  }
  EXPECT_EQ(1, _zstrlike("10%", "10!%", '!'));
  EXPECT_EQ(0, _zstrlike("100", "10!%", '!'));
  EXPECT_EQ(1, _zstrlike("a!b", "a!!b", '!'));
  EXPECT_EQ(1, _zstrlike("a_b", "a[!_]b", '!'));  // in a set the escape is a member
  EXPECT_TRUE(filed_nothing());
}

TEST_F(Wildcard, ThroughAMap) {
  void* const lower = _zmapdefine("a-z=A-Z");
  EXPECT_EQ(1, _zmapstrmatch(lower, "ORDERS", "ord*"));
  EXPECT_EQ(1, _zmapstrmatch(lower, "orders", "[N-P]RD*"));
  EXPECT_EQ(1, _zmapstrlike(lower, "Usp_X", "USP!_%", '!'));
  EXPECT_EQ(0, _zmapstrmatch(nullptr, "ORDERS", "ord*"));  // the plain form
  EXPECT_TRUE(filed_nothing());
  EXPECT_EQ(1, _zmapstrlike(ZEAL_STR_BAD_MAP, "abc", "a%"));
  EXPECT_TRUE(filed_exactly({{-1,
                              "_zmapstrlike() - Warning: An invalid map was given in argument to "
                              "function: the result of _zstrlike(...) was returned."}}));
  _zmapfree(lower);
}

TEST_F(Wildcard, BadArgumentsWarnAndGiveZero) {
  EXPECT_EQ(0, _zstrmatch(nullptr, "a"));
  EXPECT_EQ(0, _zstrilike("a", nullptr));
  EXPECT_EQ(0, _zstrlike("a!", "a!", '!'));
  EXPECT_EQ(nullptr, _zstrlike2re("a!", '!', 0));
  EXPECT_EQ(nullptr, _zstrmatch2re(nullptr, 0));
  EXPECT_TRUE(filed_exactly({
      {-1, "_zstrmatch() - Warning: <string> or <pattern> given in argument is NULL: 0 was returned as result of matching."},
      {-1, "_zstrilike() - Warning: <string> or <pattern> given in argument is NULL: 0 was returned as result of matching."},
      {-1, "_zstrlike() - Warning: <pattern> ends with its escape character: 0 was returned as result of matching."},
      {-1, "_zstrlike2re() - Warning: <pattern> ends with its escape character: NULL was returned as result."},
      {-1, "_zstrmatch2re() - Warning: <pattern> given in argument is NULL: NULL was returned as result."},
  }));
  errsvc::clear();
  auto const one = reinterpret_cast<char const*>(1);
  EXPECT_EQ(0, _zstrmatch(one, one));  // empties the cache: no warning
  EXPECT_EQ(0, _zmapstrlike(reinterpret_cast<void*>(1), one, one));
  EXPECT_TRUE(filed_nothing());
}

TEST_F(Wildcard, Translations) {
  EXPECT_EQ("^usp_.*$", owned(_zstrlike2re("usp[_]%", 0, 0)));
  EXPECT_EQ("^[Aa].*[^Xx].$", owned(_zstrmatch2re("a*[!x]?", 1)));
  EXPECT_EQ("^\\*\\.[]-]$", owned(_zstrmatch2re("[*].[]-]", 0)));
  EXPECT_EQ("^10\\%$", owned(_zstrlike2re("10!%", '!', 0)));
  EXPECT_EQ("^[-^]\\[$", owned(_zstrmatch2re("[-^][", 0)));
}

// Many stars cost one pass per token, not a pass per way to place them.
TEST_F(Wildcard, ManyStarsStayCheap) {
  std::string const as(100000, 'a');
  EXPECT_EQ(0, _zstrlike(as.c_str(), "%a%a%a%a%a%a%b"));
  EXPECT_EQ(0, _zstrmatch(as.c_str(), "*a*a*a*a*a*a*a*a*a*a*a*a*b"));
  EXPECT_EQ(1, _zstrmatch((as + "b").c_str(), "*a*a*a*a*a*a*a*a*a*a*a*a*b"));
}

// ---- The engine as the model ------------------------------------------------

using zelstr::test::random_text;

// The engine's answer for the translation, with LIKE's trailing blanks
// dropped one by one.
int engine_answer(char const* expression, std::string const& subject, bool like) {
  Tcl_RegExp_* const re = Tcl_RegExpCompile(expression);
  EXPECT_NE(nullptr, re) << expression << ": " << Tcl_GetRegError();
  if (re == nullptr) return -1;
  std::string s = subject;
  int answer = 0;
  for (;;) {
    answer = Tcl_RegExpMatch(s.c_str(), re);
    if (answer != 0 || !like || s.empty() || s.back() != ' ') break;
    s.pop_back();
  }
  Tcl_DeleteInterp(re);
  return answer;
}

TEST_F(Wildcard, AnswersAsTheTranslatedExpression) {
  std::mt19937 rng(20261125);
  char const* const pattern_bytes = "abA*?[]!^-%_ \\.$(|+\xE9";
  char const* const subject_bytes = "abAB*?[]!^-%_ \\.\xE9\xC9";
  for (int i = 0; i < 6000; ++i) {
    bool const like = i % 2 == 1;
    bool const fold = i % 3 == 0;
    std::string const pattern = random_text(rng, pattern_bytes, 7);
    std::string const subject = random_text(rng, subject_bytes, 8);
    char const escape = like && i % 5 == 0 ? '!' : '\0';
    if (escape != '\0' && !pattern.empty() && pattern.back() == '!') continue;
    char* const expression = like ? _zstrlike2re(pattern.c_str(), escape, fold)
                                  : _zstrmatch2re(pattern.c_str(), fold);
    ASSERT_NE(nullptr, expression) << pattern;
    int const got = like ? (fold ? _zstrilike : _zstrlike)(subject.c_str(), pattern.c_str(), escape)
                         : (fold ? _zstrimatch : _zstrmatch)(subject.c_str(), pattern.c_str());
    EXPECT_EQ(engine_answer(expression, subject, like), got)
        << (like ? "LIKE " : "MATCH ") << pattern << " on '" << subject << "' as " << expression;
    owned(expression);
  }
  // A lower-casing map gives the answers of ASCII folding.
  void* const lower = _zmapdefine("a-z=A-Z");
  for (int i = 0; i < 2000; ++i) {
    std::string const pattern = random_text(rng, "abAB*?[]%_-", 6);
    std::string const subject = random_text(rng, "abAB-", 6);
    EXPECT_EQ(_zstrimatch(subject.c_str(), pattern.c_str()),
              _zmapstrmatch(lower, subject.c_str(), pattern.c_str()));
    EXPECT_EQ(_zstrilike(subject.c_str(), pattern.c_str()),
              _zmapstrlike(lower, subject.c_str(), pattern.c_str()));
  }
  _zmapfree(lower);
  EXPECT_TRUE(filed_nothing());
}

// The common shapes (literals and any-one tokens, "lit%", "%lit%") are
// answered without a program and segments between stars are found by a
// block scan: on subjects long enough to cross its blocks, at every
// alignment, the answers are still the engine's, and those of a
// lower-casing map (which always runs the program) for the i forms.
TEST_F(Wildcard, CommonShapesOnLongSubjectsAtEveryAlignment) {
  std::mt19937 rng(20261126);
  void* const lower = _zmapdefine("a-z=A-Z");
  for (int i = 0; i < 4000; ++i) {
    bool const like = i % 2 == 1;
    bool const fold = i % 3 == 0;
    std::string const star = like ? "%" : "*", any = like ? "_" : "?";
    std::string lit(1, 'a');
    lit += random_text(rng, "abAB", 3);
    std::string const lit2 = random_text(rng, "bB", 2);
    std::string const shapes[] = {
        star + lit + star,      lit + star, lit + any + lit2, star + lit + star + lit2 + star, lit,
        star + any + lit + star};
    std::string const& pattern = shapes[rng() % 6];
    std::string const subject = random_text(rng, "abAB ", 40);
    std::string const buffer = std::string(i % 16, 'x') + subject;
    char const* const at = buffer.c_str() + i % 16;
    char* const expression =
        like ? _zstrlike2re(pattern.c_str(), 0, fold) : _zstrmatch2re(pattern.c_str(), fold);
    int const got = like ? (fold ? _zstrilike : _zstrlike)(at, pattern.c_str(), 0)
                         : (fold ? _zstrimatch : _zstrmatch)(at, pattern.c_str());
    ASSERT_EQ(engine_answer(expression, subject, like), got)
        << (like ? "LIKE " : "MATCH ") << pattern << " on '" << subject << "'";
    if (fold) {
      EXPECT_EQ(got, like ? _zmapstrlike(lower, at, pattern.c_str())
                          : _zmapstrmatch(lower, at, pattern.c_str()));
    }
    owned(expression);
  }
  _zmapfree(lower);
  EXPECT_TRUE(filed_nothing());
}

}  // namespace
