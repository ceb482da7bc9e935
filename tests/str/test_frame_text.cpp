// Quoting, framing, head and tail tests, trims and extraction: trims against
// a model on random strings; the rest on the cases callers rely on, with
// their exact warnings.
#include <gtest/gtest.h>

#include <cstring>
#include <random>
#include <string>

#include "support/warnings.h"
#include "zelstr/zelstr.h"

namespace {

using zelstr::test::ExpectedWarning;
using zelstr::test::filed_exactly;
using FrameText = zelstr::test::WarningsTest;

std::string trimmed(std::string s, std::string const& list, bool left, bool right) {
  if (right) {
    while (!s.empty() && list.find(s.back()) != std::string::npos) s.pop_back();
  }
  if (left) {
    std::size_t i = 0;
    while (i < s.size() && list.find(s[i]) != std::string::npos) ++i;
    s.erase(0, i);
  }
  return s;
}

TEST_F(FrameText, TrimsMatchTheirModel) {
  std::mt19937 rng(47);
  for (int round = 0; round < 5000; ++round) {
    std::string s(rng() % 10, ' ');
    for (char& c : s) c = " \tx,"[rng() % 4];
    SCOPED_TRACE("'" + s + "'");
    auto run = [&s](char* (*f)(char*)) {
      std::string b = s;
      return std::string(f(b.data()));
    };
    auto run_ex = [&s](char* (*f)(char*, char const*), char const* list) {
      std::string b = s;
      return std::string(f(b.data(), list));
    };
    ASSERT_EQ(run(_zstrltrim), trimmed(s, " ", true, false));
    ASSERT_EQ(run(_zstrrtrim), trimmed(s, " ", false, true));
    ASSERT_EQ(run(_zstrbtrim), trimmed(s, " ", true, true));
    ASSERT_EQ(run_ex(_zstrltrimex, " ,"), trimmed(s, " ,", true, false));
    ASSERT_EQ(run_ex(_zstrrtrimex, "\t"), trimmed(s, "\t", false, true));
    ASSERT_EQ(run_ex(_zstrbtrimex, "x \t,"), trimmed(s, "x \t,", true, true));
    ASSERT_EQ(run_ex(_zstrbtrimex, ""), s);
  }
  char lines[] = "a  \t\r\nb \t\nc \t";
  EXPECT_STREQ(_zstrrtrimlines(lines), "a\r\nb\nc");
  char out[16];
  EXPECT_STREQ(_zstrrtrimlines(out, "x\t \ny"), "x\ny");
  EXPECT_TRUE(zelstr::test::filed_nothing());
}

TEST_F(FrameText, QuotingKeepsAWholeFrame) {
  std::string const fits(2047, 'q'), over(2048, 'q');
  EXPECT_EQ(std::string(_zstrquoted(fits.c_str(), '\'')), "'" + fits + "'");
  EXPECT_EQ(std::string(_zstrquoted(over.c_str(), '\'')), "'" + fits + "'");
  EXPECT_STREQ(_zstrquoted(nullptr, '"'), "\"\"");
  EXPECT_STREQ(_zstrencapsulated("x", '[', ']'), "[x]");
  EXPECT_EQ(std::string(_zstrencapsulated(over.c_str(), '(', ')')),
            "(" + std::string(511, 'q') + ")");
  char buf[16] = "abc";
  EXPECT_STREQ(_zstrenquote(buf, '\''), "'abc'");
  EXPECT_STREQ(_zstrencapsulate(buf, '[', ']'), "['abc']");
  EXPECT_EQ(_zstrenquote(nullptr, '\''), nullptr);
  EXPECT_TRUE(filed_exactly(
      {{207,
        "_zstrquoted() - Warning: <string> given in argument was too long (exceeded size of "
        "internal buffer): quoted string returned as result was a truncated form of your "
        "argument."},
       {138,
        "_zstrquoted() - Warning: <string> given in argument was NULL: an empty quoted "
        "string was returned as result of quoting."},
       {208,
        "_zstrencapsulated() - Warning: <string> given in argument was too long (exceeded "
        "size of internal buffer): encapsulated string returned as result was a truncated "
        "form of your argument."},
       {-1,
        "_zstrenquote() - Warning: The given <string> is NULL: function returned NULL as result "
        "of enquoting.",
        2}}));
}

TEST_F(FrameText, UnquotingReportsWhatIsWrong) {
  EXPECT_STREQ(_zstrunquoted("'abc'", '\'', nullptr), "abc");
  EXPECT_STREQ(_zstrunquoted("[abc]", '\0', nullptr), "abc");
  char dest[8];
  EXPECT_EQ(_zstrunquoted("\"x\"", '"', dest), dest);
  EXPECT_STREQ(dest, "x");
  EXPECT_STREQ(_zstrunquoted("a", '\0', nullptr), "a");
  EXPECT_STREQ(_zstrunquoted("abc'", '\'', nullptr), "abc'");
  EXPECT_STREQ(_zstrunquoted("'abc", '\'', nullptr), "'abc");
  std::string const longer = "'" + std::string(2060, 'z') + "'";
  EXPECT_EQ(std::string(_zstrunquoted(longer.c_str(), '\'', nullptr)), longer.substr(0, 2049));
  EXPECT_TRUE(filed_exactly(
      {{-1, "_zstrunquoted(\"a\",'\\0') - Warning: String given in argument is too small."},
       {-1,
        "_zstrunquoted(\"abc'\",''') - Warning: String given in argument does not start "
        "with the expected quote."},
       {-1,
        "_zstrunquoted(\"'abc\",''') - Warning: String given in argument does not finish by "
        "the expected quote."},
       {209,
        "_zstrunquoted() - Warning: <string> given in argument was too long (exceeded size "
        "of internal buffer): unquoted string returned as result was a truncated form of "
        "your argument."}}));
  errsvc::clear();
  char framed[] = "(x)";
  EXPECT_STREQ(_zstrunencapsulated(framed, '(', ')'), "x");
  EXPECT_EQ(_zstrunencapsulated(framed, '[', ')'), framed);
  EXPECT_EQ(_zstrunquoted(nullptr, '\'', nullptr), nullptr);
  EXPECT_TRUE(filed_exactly(
      {{85,
        "_zstrunencapsulated() - Warning: <string> given in argument was not encapsulated by "
        "characters specified by <c1> or/and <c2>: function has returned its argument "
        "<string> untouched."},
       {140,
        "_zstrunquoted() - Warning: <string> given in argument was NULL: a NULL string was "
        "returned as result of unquoting."}}));
}

TEST_F(FrameText, DoublingAndHeads) {
  char buf[16] = "it's 'x'";
  _zstrdoubleq(buf, '\'');
  EXPECT_STREQ(buf, "it''s ''x''");
  EXPECT_STREQ(_zstrdoubleq(static_cast<char const*>("a'b"), '\''), "a''b");
  EXPECT_EQ(_zstrishead("SELECT x", "select", 0), 1);
  EXPECT_EQ(_zstrishead("SELECT x", "select", 1), 0);
  EXPECT_EQ(_zstrishead("x", "", 1), 1);
  EXPECT_EQ(_zstristail("x.sql", ".SQL", 0), 1);
  EXPECT_EQ(_zstristail("x", "longer", 0), 0);
  EXPECT_EQ(_zstrishead(nullptr, nullptr, 0), 1);
  EXPECT_EQ(_zstristail("x", nullptr, 0), 0);
  EXPECT_TRUE(filed_exactly(
      {{127,
        "_zstrishead() - Warning: <string> and <head> given in argument were NULL: TRUE was "
        "returned as result of string-heading comparison."},
       {130,
        "_zstristail() - Warning: <string> xor <tail> given in argument was NULL: FALSE was "
        "returned as result of string-ending comparison."}}));
}

TEST_F(FrameText, ExtractionWalksThePiecesAndRestoresTheText) {
  char text[] = "[a][b]";
  EXPECT_STREQ(_zstrextract(text, "[", "]", 1), "a");
  EXPECT_STREQ(_zstrextract(nullptr, "[", "]", 1), "b");
  EXPECT_EQ(_zstrextract(nullptr, "[", "]", 1), nullptr);
  EXPECT_EQ(_zstrextract(nullptr, "[", "]", 0), nullptr);
  EXPECT_STREQ(text, "[a][b]");
  char sql[] = "x BEGIN 1 END y begin 2 end";
  EXPECT_STREQ(_zstriextract(sql, "begin", "end", 1), " 1 ");
  EXPECT_STREQ(_zstriextract(nullptr, "begin", "end", 1), " 2 ");
  EXPECT_EQ(_zstriextract(nullptr, "begin", "end", 0), nullptr);
  char list[] = "a,b,c";
  EXPECT_STREQ(_zstrextract(list, "", ",", 1), "a");
  EXPECT_STREQ(_zstrextract(nullptr, "", ",", 1), "b");
  EXPECT_EQ(_zstrextract(nullptr, "", ",", 1), nullptr);  // no footer after the last piece
  EXPECT_EQ(_zstrextract(nullptr, "", ",", 0), nullptr);
  EXPECT_STREQ(list, "a,b,c");
  EXPECT_TRUE(zelstr::test::filed_nothing());
  EXPECT_EQ(_zstrextract(list, "[", "]", 2), nullptr);
  EXPECT_EQ(_zstrextract(nullptr, "[", "]", 1), nullptr);
  EXPECT_EQ(_zstrextract(list, nullptr, "]", 1), nullptr);
  EXPECT_TRUE(filed_exactly(
      {{0,
        "_zstrextract() - Warning: Error on value of argument <finished> which should be TRUE "
        "or FALSE: NULL was returned as result of string extraction."},
       {126,
        "_zstrextract() - Warning: <string> has to be different of NULL when function is "
        "called for the 1st time: NULL was returned as result of string extraction."},
       {124,
        "_zstrextract() - Warning: <header> and/or <footer> given in argument was/were "
        "NULL: NULL was returned as result of string extraction."}}));
}

}  // namespace
