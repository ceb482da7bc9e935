// PL/SQL names between source form and system form, their validation and
// the server's upper case.
#include <gtest/gtest.h>

#include <cstring>
#include <random>
#include <string>

#include "support/library_text.h"
#include "support/warnings.h"
#include "zelstr/zelstr.h"

namespace {

using zelstr::test::filed_exactly;
using zelstr::test::filed_nothing;
using zelstr::test::owned;

// The character tables are shared by all connections and rebuilt only for
// settings that changed: setting the defaults again makes the defaults' own
// tables current, whatever other tests built last.
class PlsqlNames : public zelstr::test::WarningsTest {
 protected:
  void SetUp() override {
    ASSERT_EQ(1, _zplsqlsetdefaults(nullptr, 152, 31, 513, nullptr));
    WarningsTest::SetUp();
  }
};

char g_keys[4];
void const* key(int i) { return &g_keys[i]; }

struct Conversion {
  char const* given;
  int kind_or_flags;
  char const* expected;
  int result;
};

TEST_F(PlsqlNames, SourceToSystemInPlace) {
  std::string const thirty(30, 'x');
  Conversion const cases[] = {
      {"emp", 4, "EMP", 1},
      {"Emp_1#$", 1, "EMP_1#$", 1},  // kind 1 is checked as 4
      {"\"a\"b\"", 4, "a\"b", 0},    // an inner mark not doubled is kept
      {"\"x\"\"y\"", 4, "x\"y", 1},
      {"\"mixed Case\"", 4, "mixed Case", 1},  // delimited: no checks at all
      {"\"", 4, "", 1},
      {"1abc", 4, "1ABC", 0},
      {"1abc", 8, "1ABC", 1},
      {"db.link@x", 2, "DB.LINK@X", 1},
      {"db.link@x", 4, "DB.LINK@X", 0},
      {"a b", 6, "A B", 1},  // other kinds: length only
      {thirty.c_str(), 4, nullptr, 1},
      {"caf\xe9", 4, "CAF\xc9", 0},  // upper-cased by the server's rules, then refused
  };
  for (Conversion const& c : cases) {
    std::string buffer = c.given;
    std::string const expected = c.expected != nullptr ? c.expected : std::string(30, 'X');
    EXPECT_EQ(c.result, _zplsql2sysname(buffer.data(), c.kind_or_flags)) << c.given;
    EXPECT_STREQ(expected.c_str(), buffer.c_str()) << c.given;
    EXPECT_EQ(c.result ? expected : "<null>",
              owned(_zplsql2sysname(static_cast<char const*>(c.given), c.kind_or_flags)));
  }
  // Empty: a static empty string, no copy.
  EXPECT_STREQ("", _zplsql2sysname("", 4));
  EXPECT_EQ(_zplsql2sysname("", 4), _zsysname2plsql(""));
  EXPECT_EQ(1, _zplsql2sysname(static_cast<char*>(nullptr), 4));
  EXPECT_EQ(nullptr, _zplsql2sysname(static_cast<char const*>(nullptr), 4));
}

TEST_F(PlsqlNames, SystemToSourceInPlace) {
  Conversion const cases[] = {
      {"EMP", 0, "EMP", 1},           {"Emp", 0, "\"Emp\"", 1},
      {"VARRAY", 0, "\"VARRAY\"", 1},  // reserved in the default version 152
      {"VARRAY", 1, "VARRAY", 1},      // flags skip the reserved-word test
      {"A\"B", 0, "\"A\"\"B\"", 1},   {"\"", 0, "\"\"\"\"", 1},
      {"_X", 0, "\"_X\"", 1},         {"X_1$#", 0, "X_1$#", 1},
  };
  for (Conversion const& c : cases) {
    char buffer[32] = {};
    std::strcpy(buffer, c.given);
    EXPECT_EQ(c.result, _zsysname2plsql(buffer, c.kind_or_flags)) << c.given;
    EXPECT_STREQ(c.expected, buffer) << c.given;
    if (c.kind_or_flags == 0) {
      EXPECT_EQ(c.expected, owned(_zsysname2plsql(c.given)));
    }
  }
  EXPECT_EQ(1, _zsysname2plsql(static_cast<char*>(nullptr), 0));
  EXPECT_EQ(nullptr, _zsysname2plsql(static_cast<char const*>(nullptr)));
  EXPECT_TRUE(filed_nothing());
}

// The connection's settings: its version decides the reserved words and its
// result tells whether it had settings of its own.
TEST_F(PlsqlNames, SystemToSourceUnderAConnection) {
  ASSERT_EQ(1, _zplsqlsetdefaults(key(0), 102, 31, 513, nullptr));
  char buffer[16] = "VARRAY";
  EXPECT_EQ(1, _zsysname2plsql(key(0), buffer, 0));
  EXPECT_STREQ("VARRAY", buffer);  // not reserved in 102
  EXPECT_EQ(0, _zsysname2plsql(key(1), buffer, 0));
  EXPECT_STREQ("\"VARRAY\"", buffer);
  EXPECT_EQ("<null>", owned(_zsysname2plsql(key(1), "EMP")));
  EXPECT_EQ("EMP", owned(_zsysname2plsql(key(0), "EMP")));
}

TEST_F(PlsqlNames, Validation) {
  ASSERT_EQ(1, _zplsqlsetdefaults(key(2), 152, 5, 8, "[A-Z]"));
  struct Case {
    void const* connection;
    std::string name;
    int kind;
    int valid;
  } const cases[] = {
      {nullptr, std::string(30, 'Q'), 4, 1},
      {nullptr, std::string(30, 'q'), 4, 1},  // lower case is accepted
      {nullptr, std::string(31, 'Q'), 4, 0},
      {nullptr, std::string(512, 'L'), 2, 1},
      {nullptr, std::string(513, 'L'), 2, 0},
      {nullptr, "DB.LINK@X", 2, 1},
      {nullptr, "DB.LINK@X", 4, 0},
      {nullptr, ".DB", 2, 0},
      {nullptr, "9LIVES", 4, 0},
      {nullptr, "9LIVES", 8, 1},
      {nullptr, "NINE LIVES", 8, 0},
      {nullptr, "NINE LIVES", 6, 1},
      {nullptr, "NINE LIVES", 1, 1},
      {nullptr, std::string(31, ' '), 1, 0},
      {nullptr, "", 6, 0},
      {key(2), "ABCD", 4, 1},
      {key(2), "ABCDE", 4, 0},
      {key(2), "AB.C@DE", 2, 1},
      {key(2), "AB.C@DEF", 2, 0},
      {key(3), std::string(30, 'Q'), 4, 1},  // no settings: the defaults
  };
  for (Case const& c : cases) {
    EXPECT_EQ(c.valid, _zplsqlvalidsysname(c.connection, c.name.c_str(), c.kind))
        << c.name << " kind " << c.kind;
  }
  EXPECT_EQ(1, _zplsqlvalidsysname("EMP", 4));
  EXPECT_TRUE(filed_nothing());
  EXPECT_EQ(0, _zplsqlvalidsysname(key(2), nullptr, 4));
  EXPECT_TRUE(
      filed_exactly({{-1, "_zplsqlvalidsysname() - Invalid NULL pointer for <i_lpcszSysName>.", 4,
                      "connforplsqlstrfncs"}}));
}

// Random system names come back unchanged through source form: the round
// trip holds for every name short enough to be valid.
TEST_F(PlsqlNames, RoundTripOfRandomSystemNames) {
  std::mt19937 random(20261121);
  std::string const alphabet = "ABZaz09_#$\" .\xc9\xe9";
  for (int i = 0; i < 5000; ++i) {
    std::string name(1 + random() % 12, ' ');
    for (char& c : name) c = alphabet[random() % alphabet.size()];
    std::string const source = owned(_zsysname2plsql(name.c_str()));
    ASSERT_NE("<null>", source);
    bool const quoted = source != name;
    EXPECT_EQ(quoted, source.front() == '"') << name;
    EXPECT_EQ(name, owned(_zplsql2sysname(source.c_str(), 4))) << name << " via " << source;
  }
}

// The server's upper case of each byte of code page 1252.
TEST_F(PlsqlNames, UpperCaseOfTheCodePage) {
  std::string all;
  for (int c = 1; c < 256; ++c) all += static_cast<char>(c);
  std::string expected = all;
  for (char& ch : expected) {
    unsigned char const c = static_cast<unsigned char>(ch);
    if ((c >= 'a' && c <= 'z') || (c >= 0xE0 && c <= 0xFE && c != 0xF7))
      ch = static_cast<char>(c - 0x20);
    if (c == 0x9A || c == 0x9C || c == 0x9E) ch = static_cast<char>(c - 0x10);  // s, oe, z caron
    if (c == 0xFF) ch = static_cast<char>(0x9F);                                // y diaeresis
  }
  EXPECT_EQ(all.data(), _zplsqlstrupper(all.data()));
  for (std::size_t i = 0; i < all.size(); ++i) {
    EXPECT_EQ(static_cast<unsigned char>(expected[i]), static_cast<unsigned char>(all[i]))
        << "byte 0x" << std::hex << i + 1;
  }
  EXPECT_EQ(nullptr, _zplsqlstrupper(nullptr));
  EXPECT_TRUE(filed_exactly({{144,
                              "_zplsqlstrupper() - Warning: <string> given in argument is NULL: "
                              "NULL has been returned as result of turning string contents to "
                              "upper-case in the same way as Oracle server does.",
                              4, "zelstroraclefnc"}}));
}

}  // namespace
