// T-SQL names: source form and system form under a connection's settings,
// and qualified names split as the server's PARSENAME splits them.
#include <gtest/gtest.h>

#include <cstring>
#include <random>
#include <string>
#include <thread>
#include <vector>

#include "support/library_text.h"
#include "support/warnings.h"
#include "zelstr/zelstr.h"

namespace {

using zelstr::test::cat;
using zelstr::test::filed_exactly;
using zelstr::test::filed_nothing;
using zelstr::test::owned;

// Connections: SQL Server 2016 with quoted identifiers on, brackets by
// default and names of up to 128 characters; Sybase 15 with both flags
// off; SQL Server with the bracket as default mark and quoted identifiers
// off.
char g_keys[3];
void const* const kServer = &g_keys[0];
void const* const kSybase = &g_keys[1];
void const* const kBrackets = &g_keys[2];

class TsqlNames : public zelstr::test::WarningsTest {
 protected:
  static void SetUpTestSuite() {
    ASSERT_EQ(1, _ztsqlsetdefaults(kServer, 2016, 129, 1, 0, '"', nullptr));
    ASSERT_EQ(1, _ztsqlsetdefaults(kSybase, 15, 129, 0, 0, '"', nullptr));
    ASSERT_EQ(1, _ztsqlsetdefaults(kBrackets, 2016, 129, 0, 0, '[', nullptr));
  }
};

zelstr::test::ExpectedWarning tsql_warning(char const* text, std::string function = "<unknown>") {
  return {-1, text, 4, "connfortsqlstrfncs", std::move(function)};
}

struct Conversion {
  void const* connection;
  char const* given;
  char const* expected;  // NULL: refused, the name left as it was
};

TEST_F(TsqlNames, SourceToSystem) {
  std::string const longest = std::string(128, 'n');
  std::string const too_long = std::string(129, 'n');
  Conversion const cases[] = {
      {kServer, "Orders", "Orders"},  // case kept
      {kServer, "#tmp", "#tmp"},
      {kServer, "@v", "@v"},
      {kServer, "[a]]b]", "a]b"},
      {kServer, "\"a\"\"b\"", "a\"b"},
      {kServer, "[Order Details]", "Order Details"},
      {kServer, "[a.b]", "a.b"},
      {kServer, longest.c_str(), longest.c_str()},
      {kServer, too_long.c_str(), nullptr},
      {kServer, "[abc", nullptr},   // unterminated
      {kServer, "[a]b]", nullptr},  // an inner ] not doubled
      {kServer, "[a]x", nullptr},   // text after the delimiter
      {kServer, "[]", nullptr},     // empty system name
      {kServer, "a b", nullptr},    // not regular
      {kServer, "1abc", nullptr},
      {kServer, "", nullptr},
      {kSybase, "[a]", nullptr},    // brackets off on Sybase
      {kSybase, "\"a\"", nullptr},  // a string literal there
      {kSybase, "plain", "plain"},
      {kBrackets, "\"a\"", nullptr},  // quoted identifiers off
      {kBrackets, "[a\"b]", "a\"b"},
  };
  int length = 0;
  ASSERT_EQ(1, WRITE_NAME_LENGTH(&length));
  for (Conversion const& c : cases) {
    errsvc::clear();
    std::string buffer = c.given;
    int const result = _ztsql2sysname(c.connection, buffer.data());
    EXPECT_EQ(result, c.expected != nullptr ? 1 : 0) << c.given;
    EXPECT_EQ(length, c.expected != nullptr ? static_cast<int>(std::strlen(c.expected)) : -1);
    length = 0;
    EXPECT_EQ(CHTSQL(c.connection).IsValidCodeName(c.given), result);
    EXPECT_EQ(length, result == 1 ? static_cast<int>(std::strlen(c.expected)) : -1);
    EXPECT_EQ(buffer.c_str(), std::string(c.expected != nullptr ? c.expected : c.given)) << c.given;
    EXPECT_EQ(owned(_ztsql2sysname(c.connection, c.given)), c.expected ? c.expected : "<null>");
    EXPECT_EQ(length, c.expected != nullptr ? static_cast<int>(std::strlen(c.expected)) : -1);
    if (c.expected == nullptr) {
      EXPECT_TRUE(filed_exactly({tsql_warning(ErrHand_Msg_ERRSVC_BAD_ARGUMENT()),
                                 tsql_warning(ErrHand_Msg_ERRSVC_BAD_ARGUMENT())}))
          << c.given;
    }
  }
  ASSERT_EQ(1, WRITE_NAME_LENGTH(nullptr));
  length = 7;
  EXPECT_EQ(owned(_ztsql2sysname(kServer, "[a]")), "a");
  EXPECT_EQ(length, 7);  // withdrawn: nothing written
}

// The name-length command: one address at a time, per thread; the system
// name's length (before delimiting) or -1, from every function that reads
// a name.
TEST_F(TsqlNames, NameLengthCommand) {
  int length = 0, other = 0;
  ASSERT_EQ(1, WRITE_NAME_LENGTH(&length));
  EXPECT_EQ(0, WRITE_NAME_LENGTH(&other));  // ignored: `length` stays registered
  EXPECT_EQ(owned(_zsysname2tsql(kServer, "a b", 0)), "\"a b\"");
  EXPECT_EQ(length, 3);
  EXPECT_EQ(_ztsqlvalidsysname(kServer, "a b", 0), 0);
  EXPECT_EQ(length, -1);
  EXPECT_EQ(_ztsqlvalidsysname(kServer, "ab", 0), 1);
  EXPECT_EQ(length, 2);
  std::thread([&other] {  // another thread's own registration
    EXPECT_EQ(1, WRITE_NAME_LENGTH(&other));
    _ztsqlvalidsysname(kServer, "abcd", 0);
  }).join();
  EXPECT_EQ(other, 4);
  EXPECT_EQ(length, 2);
  EXPECT_EQ(1, WRITE_NAME_LENGTH(nullptr));
  EXPECT_EQ(0, WRITE_NAME_LENGTH(nullptr));  // nothing to withdraw
  auto const complaint = [](char const* text) {
    return zelstr::test::ExpectedWarning{-1, text, 8, "connfortsqlstrfncs"};
  };
  EXPECT_TRUE(filed_exactly(
      {complaint("Static variable <pnNameLength> already contains an address: command "
                 "WRITE_NAME_LENGTH() ignored!"),
       complaint("Static variable <pnNameLength> contains no address: command "
                 "WRITE_NAME_LENGTH() cannot be taken into account!")}));
}

TEST_F(TsqlNames, SystemToSource) {
  Conversion const cases[] = {
      {kServer, "Orders", "Orders"},     {kServer, "Order Details", "\"Order Details\""},
      {kServer, "a\"b", "\"a\"\"b\""},   {kServer, "1st", "\"1st\""},
      {kServer, "$x", "\"$x\""},         {kServer, "a.b", "\"a.b\""},
      {kServer, "##global", "##global"}, {kServer, "@var", "@var"},
      {kServer, "select", "\"select\""},  // reserved
      {kServer, "Select", "\"Select\""}, {kBrackets, "a]b", "[a]]b]"},
      {kBrackets, "a b", "[a b]"},
  };
  for (Conversion const& c : cases) {
    std::string buffer = c.given;
    buffer.resize(2 * buffer.size() + 3);
    EXPECT_EQ(_zsysname2tsql(c.connection, buffer.data(), 0), 1) << c.given;
    EXPECT_STREQ(buffer.c_str(), c.expected) << c.given;
    EXPECT_EQ(owned(_zsysname2tsql(c.connection, c.given, 0)), c.expected);
  }
  // Where nothing delimits, a name that needs delimiters cannot be written.
  errsvc::clear();
  EXPECT_EQ(owned(_zsysname2tsql(kSybase, "a b", 0)), "<null>");
  EXPECT_EQ(owned(_zsysname2tsql(kSybase, "ab", 0)), "ab");
  EXPECT_TRUE(filed_exactly({tsql_warning(ErrHand_Msg_ERRSVC_BAD_ARGUMENT())}));
  // Flags 1 keep reserved words; other flags are refused.
  EXPECT_EQ(owned(_zsysname2tsql(kServer, "select", 1)), "select");
  errsvc::clear();
  EXPECT_EQ(owned(_zsysname2tsql(kServer, "a", 2)), "<null>");
  EXPECT_TRUE(filed_exactly({tsql_warning(ErrHand_Msg_ERRSVC_INCOHERENT_FLAG())}));
}

TEST_F(TsqlNames, NullArgumentsWarnAndFallBack) {
  EXPECT_EQ(_ztsqlvalidsysname(nullptr, 0), 0);
  EXPECT_EQ(_ztsql2sysname(static_cast<char*>(nullptr)), 0);
  EXPECT_EQ(_ztsql2sysname(static_cast<char const*>(nullptr)), nullptr);
  EXPECT_EQ(_zsysname2tsql(static_cast<char*>(nullptr), 0), 0);
  EXPECT_EQ(_zsysname2tsql(static_cast<char const*>(nullptr), 0), nullptr);
  CHTSQL const object(kServer);
  EXPECT_EQ(object.IsValidCodeName(nullptr), 0);
  char** parts = reinterpret_cast<char**>(&parts);
  EXPECT_EQ(object.SplitQualCodeName(nullptr, &parts, 0), 0);
  EXPECT_EQ(parts, nullptr);
  EXPECT_EQ(object.SplitQualCodeName("a.b", &parts, 7), 0);
  char const* const bad = ErrHand_Msg_ERRSVC_BAD_ARGUMENT();
  EXPECT_TRUE(filed_exactly(
      {tsql_warning(bad), tsql_warning(bad), tsql_warning(bad), tsql_warning(bad),
       tsql_warning(bad), tsql_warning(bad, "CHTSQL::IsValidCodeName()"),
       tsql_warning(bad, "CHTSQL::SplitQualCodeName()"),
       tsql_warning(ErrHand_Msg_ERRSVC_INCOHERENT_FLAG(), "CHTSQL::SplitQualCodeName()")}));
}

TEST_F(TsqlNames, ValidNames) {
  CHTSQL const server(kServer), sybase(kSybase);
  EXPECT_EQ(_ztsqlvalidsysname(kServer, "Orders", 0), 1);
  EXPECT_EQ(_ztsqlvalidsysname(kServer, "a b", 0), 0);
  EXPECT_EQ(_ztsqlvalidsysname(kServer, std::string(129, 'x').c_str(), 0), 0);
  EXPECT_EQ(server.IsValidCodeName("[a b]"), 1);
  EXPECT_EQ(server.IsValidCodeName("\"a b\""), 1);
  EXPECT_EQ(sybase.IsValidCodeName("\"a b\""), 0);
  EXPECT_EQ(server.IsValidCodeName("[a b"), 0);
  EXPECT_EQ(server.IsValidCodeName("a b"), 0);
  EXPECT_TRUE(filed_nothing());
}

// The parts `SplitQualCodeName` gives, joined by "|", or "error".
std::string split(void const* connection, char const* name, unsigned long flags = 0) {
  CHTSQL const object(connection);
  char** parts = nullptr;
  int const n = object.SplitQualCodeName(name, &parts, flags);
  if (n == 0) return parts == nullptr ? "error" : "error, yet parts";
  std::string joined;
  int count = 0;
  for (char** p = parts; *p != nullptr; ++p, ++count) joined += cat({count > 0 ? "|" : "", *p});
  CHSQL::DeleteComponents(&parts, nullptr);
  return count == n ? joined : "count differs";
}

// Names and their parts as PARSENAME gives them (its NULL parts empty here),
// first to last; "error" where PARSENAME gives NULL for every part.
struct Split {
  std::string name;
  std::string parts;
};

std::vector<Split> parsename_table() {
  std::string const p128(128, 'p');
  std::string const p129(129, 'p');
  return {
      {"a", "a"},
      {"a.b", "a|b"},
      {"a.b.c", "a|b|c"},
      {"a.b.c.d", "a|b|c|d"},
      {"a.b.c.d.e", "error"},
      {"srv.db..t", "srv|db||t"},
      {"a..b", "a||b"},
      {"..a", "||a"},
      {"...a", "|||a"},
      {"....a", "error"},
      {".a", "|a"},
      {"a.", "a|"},
      {".", "|"},
      {"...", "|||"},
      {"[a.b].c", "a.b|c"},
      {"[a]]b].c", "a]b|c"},
      {"[a]].b]", "a].b"},
      {"[a]", "a"},
      {"[]", ""},
      {"[].[]", "|"},
      {"\"a\"", "a"},
      {"\"a\"\".b\"", "a\".b"},
      {"\"a.b\".\"c\"", "a.b|c"},
      {"[a\"b].c", "a\"b|c"},
      {"\"a]b\".c", "a]b|c"},
      {"[Sales].dbo.\"Order Details\"", "Sales|dbo|Order Details"},
      {"a . b", "a|b"},
      {"a .b", "a|b"},
      {"a. b", "a|b"},
      {" a.b ", "a|b"},
      {"\ta\t.\tb", "a|b"},
      {"[a] . [b]", "a|b"},
      {"[ a ].b", " a |b"},
      {"a b.c", "a b|c"},
      {"#tmp", "#tmp"},
      {"tempdb..#tmp", "tempdb||#tmp"},
      {"@v", "@v"},
      {"dbo.[select]", "dbo|select"},
      {"1.2", "1|2"},
      {"a'b.c", "a'b|c"},
      {"[abc", "error"},
      {"[abc.d", "error"},
      {"\"abc", "error"},
      {"a\"b", "error"},
      {"\"", "error"},
      {"a]b", "error"},
      {"a[b", "error"},
      {"[a]b", "error"},
      {"[a] b", "error"},
      {"[a][b]", "error"},
      {"\"a\"\"", "error"},
      {"[a]]", "error"},
      {"a.[b", "error"},
      {"a.b.c.d.", "error"},
      {".a.b.c.d", "error"},
      {"[a.b.c.d.e]", "a.b.c.d.e"},
      {"[a.b].[c.d].[e.f].[g.h]", "a.b|c.d|e.f|g.h"},
      {p128, p128},
      {p129, "error"},
      {cat({"x.", p128}), cat({"x|", p128})},
      {cat({"x.", p129}), "error"},
      {cat({"[", p128, "]"}), p128},
      {cat({"[", p129, "]"}), "error"},
      {cat({"[", std::string(127, 'q'), "]]]"}), cat({std::string(127, 'q'), "]"})},
  };
}

TEST_F(TsqlNames, SplitsAsParsenameDoes) {
  for (Split const& s : parsename_table()) {
    EXPECT_EQ(split(kServer, s.name.c_str()), s.parts) << s.name;
  }
  EXPECT_TRUE(filed_nothing());
}

TEST_F(TsqlNames, SplitWithTheConnectionsDelimiters) {
  EXPECT_EQ(split(kSybase, "[a.b].c", 1), "error");
  EXPECT_EQ(split(kSybase, "\"a.b\".c", 1), "error");
  EXPECT_EQ(split(kBrackets, "[a.b].c", 1), "a.b|c");
  EXPECT_EQ(split(kBrackets, "\"a.b\".c", 1), "error");
  EXPECT_EQ(split(kServer, "\"a.b\".c", 1), "a.b|c");
}

// Random system-form parts (dots, blanks, both closing marks, reserved
// words, digits first): written in source form part by part, joined and
// split again, they come back; and for any name that splits, denormalizing
// it keeps its parts.
TEST_F(TsqlNames, DenormalizedNamesSplitBackToTheirParts) {
  std::mt19937 rng(16);
  char const alphabet[] = "ab Z_.#@$1]\"[x";
  char const* const words[] = {"select", "table", "Order", "t"};
  for (void const* connection : {kServer, kBrackets}) {
    CHTSQL const object(connection);
    for (int round = 0; round < 2000; ++round) {
      int const count = 1 + static_cast<int>(rng() % 4);
      std::string expected, source;
      for (int i = 0; i < count; ++i) {
        std::string part;
        if (rng() % 5 == 0) {
          part = words[rng() % 4];
        } else {
          for (int n = static_cast<int>(rng() % 6); n > 0; --n) part += alphabet[rng() % 14];
        }
        expected += cat({i > 0 ? "|" : "", part});
        source += i > 0 ? "." : "";
        if (!part.empty()) source += owned(_zsysname2tsql(connection, part.c_str(), 0));
      }
      if (source.empty()) continue;  // one empty part: no name at all
      ASSERT_EQ(split(connection, source.c_str()), expected) << source;
      std::string const again = owned(object.GetDenormalizedQualId(source.c_str(), 0));
      ASSERT_EQ(again, source) << "source form is already minimal";
    }
  }
  EXPECT_TRUE(filed_nothing());
}

TEST_F(TsqlNames, DenormalizingKeepsTheParts) {
  CHTSQL const object(kServer);
  for (Split const& s : parsename_table()) {
    if (s.parts == "error" || s.parts.empty()) continue;  // "[]" has no name left to write
    std::string buffer = s.name;
    buffer.resize(2 * s.name.size() + 9);
    ASSERT_EQ(object.DenormalizeQualId(buffer.data(), 0), 1) << s.name;
    EXPECT_EQ(split(kServer, buffer.c_str()), s.parts) << s.name << " -> " << buffer.c_str();
  }
  EXPECT_EQ(owned(object.GetDenormalizedQualId("[dbo] . [Orders]", 0)), "dbo.Orders");
  EXPECT_EQ(owned(object.GetDenormalizedQualId("dbo.[Order Details]", 0)), "dbo.\"Order Details\"");
  EXPECT_TRUE(filed_nothing());
}

}  // namespace
