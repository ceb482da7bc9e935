// Tokens and qualified-name parts: _zstrgetNth and _zstrcrack against a
// small model over random strings, quoting and the thread's buffers by
// example; _zstrsplitqname by example (Oracle links included) and against
// the T-SQL splitter over random names.
#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

#include "support/warnings.h"
#include "zelstr/zelstr.h"

namespace {

using zelstr::test::filed_exactly;
using zelstr::test::filed_nothing;

class Tokens : public zelstr::test::WarningsTest {};

// The tokens of `s`: runs of bytes outside `separators`.
std::vector<std::string> model(std::string const& s, std::string const& separators) {
  std::vector<std::string> out;
  std::string token;
  for (char c : s) {
    if (separators.find(c) != std::string::npos) {
      if (!token.empty()) out.push_back(token);
      token.clear();
    } else {
      token += c;
    }
  }
  if (!token.empty()) out.push_back(token);
  return out;
}

std::vector<std::string> cracked(char const* s, char const* separators, char const* quotes) {
  char const* const* tokens = nullptr;
  int const n = _zstrcrack(s, separators, quotes, &tokens);
  std::vector<std::string> out;
  for (int i = 0; i < n; ++i) out.emplace_back(tokens[i]);
  EXPECT_EQ(tokens == nullptr ? nullptr : tokens[n], nullptr);
  return out;
}

TEST_F(Tokens, AgreeWithTheModel) {
  std::mt19937 rng(20);
  for (int round = 0; round < 3000; ++round) {
    std::string s;
    for (int n = static_cast<int>(rng() % 24); n > 0; --n) s += "ab ,;x."[rng() % 7];
    bool const as_set = rng() % 2 == 0;
    char const* const separators = as_set ? "[ ,;]" : " ,;";
    std::vector<std::string> const expected = model(s, " ,;");
    ASSERT_EQ(cracked(s.c_str(), separators, nullptr), expected) << s;
    for (int k = 1; k <= static_cast<int>(expected.size()) + 1; ++k) {
      char const* const nth = _zstrgetNth(s.c_str(), k, separators);
      if (k <= static_cast<int>(expected.size())) {
        ASSERT_NE(nth, nullptr) << s << " #" << k;
        ASSERT_EQ(std::string(nth), expected[k - 1]) << s << " #" << k;
      } else {
        ASSERT_EQ(nth, nullptr) << s << " #" << k;
      }
    }
  }
  EXPECT_TRUE(filed_nothing());
}

TEST_F(Tokens, QuotesKeepSeparatorsInside) {
  using V = std::vector<std::string>;
  EXPECT_EQ(cracked("[a.b].c", ".", "[]"), (V{"[a.b]", "c"}));
  EXPECT_EQ(cracked("x 'a b' y", " ", "''"), (V{"x", "'a b'", "y"}));
  EXPECT_EQ(cracked("'it''s here' now", " ", "''"), (V{"'it''s here'", "now"}));
  EXPECT_EQ(cracked("\"a,b\",[c,d],e", ",", "\"\"[]"), (V{"\"a,b\"", "[c,d]", "e"}));
  EXPECT_EQ(cracked("a 'b c", " ", "''"), (V{"a", "'b c"}));  // never closed: to the end
  EXPECT_EQ(cracked("", " ", nullptr), V{});
  EXPECT_TRUE(filed_nothing());
}

TEST_F(Tokens, ResultsLiveInTheThreadsBuffers) {
  char const* const* tokens = nullptr;
  ASSERT_EQ(_zstrcrack("one two", " ", nullptr, &tokens), 2);
  char const* const first = _zstrgetNth("alpha beta", 2, " ");
  EXPECT_STREQ(tokens[1], "two");  // another function's call leaves them
  EXPECT_STREQ(first, "beta");
  char own[4];
  EXPECT_STREQ(_zstrgetNth("alpha beta", 1, " ", own, sizeof own), "alp");
  EXPECT_STREQ(first, "beta");
  EXPECT_EQ(_zstrcrack(nullptr, nullptr, nullptr, nullptr), 0);  // releases them
  EXPECT_TRUE(filed_nothing());
}

TEST_F(Tokens, BadArgumentsWarn) {
  char const* const* tokens = reinterpret_cast<char const* const*>(&tokens);
  EXPECT_EQ(_zstrgetNth(nullptr, 1, " "), nullptr);
  EXPECT_EQ(_zstrgetNth("a", 0, " "), nullptr);
  EXPECT_EQ(_zstrgetNth("a", 1, "[a-]"), nullptr);
  EXPECT_EQ(_zstrcrack("a", nullptr, nullptr, &tokens), 0);
  EXPECT_EQ(tokens, nullptr);
  char** parts = nullptr;
  EXPECT_EQ(_zstrsplitqname("a.b", "[x", &parts), 0);
  EXPECT_TRUE(filed_exactly({
      {-1,
       "_zstrgetNth() - Warning: <string> or <separators> given in argument is NULL: NULL was "
       "returned as result.",
       2},
      {-1,
       "_zstrgetNth() - Warning: <n> given in argument is smaller than 1: NULL was returned as "
       "result.",
       2},
      {-1,
       "_zstrgetNth() - Warning: <separators> given in argument is not a valid set definition: "
       "NULL was returned as result.",
       2},
      {-1,
       "_zstrcrack() - Warning: <string>, <separators> or <tokens> given in argument is NULL, or "
       "<separators> is not a valid set definition: 0 was returned as number of tokens.",
       2},
      {-1,
       "_zstrsplitqname() - Warning: <name> or <parts> given in argument is NULL, or <delimiters> "
       "holds a character other than '[' and '\"': 0 was returned as number of parts.",
       2},
  }));
}

std::string split_qname(char const* name, char const* delimiters) {
  char** parts = nullptr;
  int const n = _zstrsplitqname(name, delimiters, &parts);
  if (n == 0) return parts == nullptr ? "error" : "error, yet parts";
  std::string joined;
  for (int i = 0; i < n; ++i) joined.append(i > 0 ? "|" : "").append(parts[i]);
  CHSQL::DeleteComponents(&parts, nullptr);
  return joined;
}

TEST_F(Tokens, QualifiedNamesByExample) {
  struct Case {
    char const* name;
    char const* delimiters;
    char const* parts;
  } const cases[] = {
      {"scott.emp", "\"", "scott|emp"},
      {"scott.emp@sales.example.com", "\"", "scott|emp|@sales.example.com"},
      {"\"Scott\".\"Emp.2\"@link", "\"", "Scott|Emp.2|@link"},
      {"\"a\"\"b\".c", "\"", "a\"b|c"},
      {"[a.b].c", "\"", "[a|b]|c"},  // brackets do not delimit here
      {"[a.b].c", "[", "a.b|c"},
      {"[a]]b] . \"c\"", nullptr, "a]b|c"},
      {"db..t", nullptr, "db||t"},
      {"a.b.c.d.e.f", nullptr, "a|b|c|d|e|f"},
      {"\"abc", nullptr, "error"},
      {"\"a\"b.c", nullptr, "error"},
  };
  for (Case const& c : cases) EXPECT_EQ(split_qname(c.name, c.delimiters), c.parts) << c.name;
  char a[8], b[8], c[8];
  char* into[] = {a, b, c};
  EXPECT_EQ(_zstrsplitqname("dbo.[Order Details]", "[", into, 3, sizeof a), 2);
  EXPECT_STREQ(a, "dbo");
  EXPECT_STREQ(b, "Order D");                                        // cut to the buffer
  EXPECT_EQ(_zstrsplitqname("w.x.y.z", "[", into, 3, sizeof a), 0);  // more parts than buffers
  EXPECT_TRUE(filed_nothing());
}

// Names of up to four parts without links split alike here and in the
// T-SQL splitter (both delimiters on).
TEST_F(Tokens, AgreesWithTheTsqlSplitter) {
  std::mt19937 rng(21);
  CHTSQL const tsql(nullptr);
  char const* const pieces[] = {"a", "b c", "[x.y]", "\"q\"\"r\"", "[]]]", " ", "", "1"};
  for (int round = 0; round < 2000; ++round) {
    std::string name;
    for (int n = 1 + static_cast<int>(rng() % 4), i = 0; i < n; ++i) {
      name.append(i > 0 ? "." : "").append(pieces[rng() % 8]);
    }
    char** parts = nullptr;
    int const n = tsql.SplitQualCodeName(name.c_str(), &parts, 0);
    std::string expected = n == 0 ? "error" : "";
    for (int i = 0; i < n; ++i) expected.append(i > 0 ? "|" : "").append(parts[i]);
    CHSQL::DeleteComponents(&parts, nullptr);
    ASSERT_EQ(split_qname(name.c_str(), nullptr), expected) << name;
  }
}

}  // namespace
