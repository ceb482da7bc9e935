// Dialect settings per connection: validation, fallbacks to the defaults,
// the derived set definitions and the allowed-character tables.
//
// The settings live for the whole process, so each test uses keys of its own
// and puts back any default it changes.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <string>
#include <vector>

#include "support/warnings.h"
#include "zelstr/zelstr.h"

namespace {

using zelstr::test::filed_exactly;
using zelstr::test::filed_nothing;

class Settings : public zelstr::test::WarningsTest {};

// Distinct keys: the addresses of these bytes (never dereferenced).
char g_keys[16];
void const* key(int i) { return &g_keys[i]; }

zelstr::test::ExpectedWarning env_warning(std::string text) {
  return {-1, std::move(text), 4, "connectionenv"};
}

std::string tsql_first(void const* connection) {
  char const* first = nullptr;
  _ztsqlgetdefaults(connection, nullptr, nullptr, nullptr, nullptr, nullptr, &first);
  return first == nullptr ? "<null>" : first;
}

// The members of a 256-entry table, as a string of bytes.
std::string members(char const* table) {
  std::string out;
  for (int c = 0; c < 256; ++c) {
    if (table[c] != 0) out += static_cast<char>(c);
  }
  return out;
}

// The members of a definition, read independently of the tables: a set
// definition through the span function, a plain list byte by byte.
std::string expected_members(char const* definition) {
  std::string out;
  for (int c = 1; c < 256; ++c) {
    char const one[2] = {static_cast<char>(c), '\0'};
    bool const member = definition[0] == '[' ? _zstrspnex(one, definition) == 1
                                             : std::strchr(definition, c) != nullptr;
    if (member) out += one[0];
  }
  return out;
}

std::string range(int lo, int hi) {
  std::string out;
  for (int c = lo; c <= hi; ++c) out += static_cast<char>(c);
  return out;
}

TEST_F(Settings, DefaultsOfBothLanguages) {
  int version = 0, max_name = 0, quoted = -1, bracketed = -1, db_link = 0;
  char quote = 0;
  char const* first = nullptr;
  EXPECT_EQ(1,
            _ztsqlgetdefaults(nullptr, &version, &max_name, &quoted, &bracketed, &quote, &first));
  EXPECT_EQ(15, version);
  EXPECT_EQ(1021, max_name);
  EXPECT_EQ(0, quoted);
  EXPECT_EQ(0, bracketed);
  EXPECT_EQ('"', quote);
  EXPECT_STREQ("[A-Za-z_#@\x80-\xFF]", first);
  // A connection without settings gets the defaults, and says so.
  EXPECT_EQ(0, _zplsqlgetdefaults(key(0), &version, &max_name, &db_link, &first));
  EXPECT_EQ(152, version);
  EXPECT_EQ(31, max_name);
  EXPECT_EQ(513, db_link);
  EXPECT_STREQ("[A-Z]", first);
  EXPECT_TRUE(filed_nothing());
}

// Every version from -5 to 2100 against the documented lists.
TEST_F(Settings, VersionsAcceptedAndRefused) {
  std::vector<int> tsql = {4, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16, 17};
  for (int year = 2004; year <= 2017; ++year) tsql.push_back(year);
  std::vector<int> plsql = {102, 103, 104, 105, 107, 108, 109, 110, 120, 130, 140, 150, 151, 152};
  for (int v = 1160; v <= 1165; ++v) plsql.push_back(v);
  auto listed = [](std::vector<int> const& list, int v) {
    return std::find(list.begin(), list.end(), v) != list.end();
  };
  for (int v = -5; v <= 2100; ++v) {
    errsvc::clear();
    bool const t_ok = listed(tsql, v);
    ASSERT_EQ(t_ok ? 1 : 0, _ztsqlsetdefaults(key(1), v, 100, 0, 0, '[', nullptr)) << v;
    if (t_ok) {
      ASSERT_TRUE(filed_nothing());
    } else {
      ASSERT_TRUE(
          filed_exactly({env_warning("_ztsqlsetdefaults() - Invalid value " + std::to_string(v) +
                                     " for <i_nTSqlVersion> - function call ignored.")}));
    }
    errsvc::clear();
    bool const p_ok = listed(plsql, v);
    ASSERT_EQ(p_ok ? 1 : 0, _zplsqlsetdefaults(key(1), v, 20, 40, nullptr)) << v;
    if (!p_ok) {
      ASSERT_TRUE(
          filed_exactly({env_warning("_zplsqlsetdefaults() - Invalid value " + std::to_string(v) +
                                     " for <i_nPlSqlVersion> - function call ignored.")}));
    }
  }
}

// A refused call changes nothing, whichever check refused it.
TEST_F(Settings, RefusalsLeaveTheSettingsAlone) {
  ASSERT_EQ(1, _ztsqlsetdefaults(key(2), 8, 128, 1, 1, '[', "[a-z]"));
  ASSERT_EQ(1, _zplsqlsetdefaults(key(2), 103, 25, 60, "[A-Z]"));
  errsvc::clear();
  EXPECT_EQ(0, _ztsqlsetdefaults(key(2), 8, 0, 0, 0, '[', nullptr));
  EXPECT_EQ(0, _ztsqlsetdefaults(key(2), 8, 50, 0, 0, '\'', nullptr));
  EXPECT_EQ(0, _ztsqlsetdefaults(key(2), 8, 50, 0, 0, '\0', nullptr));
  EXPECT_EQ(0, _zplsqlsetdefaults(key(2), 104, -3, 60, nullptr));
  EXPECT_EQ(0, _zplsqlsetdefaults(key(2), 104, 10, 0, nullptr));
  EXPECT_TRUE(filed_exactly({
      env_warning(
          "_ztsqlsetdefaults() - Invalid value 0 for <i_nMaxName> - function call ignored."),
      env_warning(
          "_ztsqlsetdefaults() - Invalid value ''' for <i_cDefltQuote> - function call ignored."),
      env_warning(
          "_ztsqlsetdefaults() - Invalid value '\\0' for <i_cDefltQuote> - function call ignored."),
      env_warning(
          "_zplsqlsetdefaults() - Invalid value -3 for <i_nMaxName> - function call ignored."),
      env_warning(
          "_zplsqlsetdefaults() - Invalid value 0 for <i_nMaxDbLinkName> - function call ignored."),
  }));
  int version = 0, max_name = 0, quoted = 0, bracketed = 0, db_link = 0;
  char quote = 0;
  EXPECT_EQ(1,
            _ztsqlgetdefaults(key(2), &version, &max_name, &quoted, &bracketed, &quote, nullptr));
  EXPECT_EQ((std::vector<int>{8, 128, 1, 1, '['}),
            (std::vector<int>{version, max_name, quoted, bracketed, quote}));
  EXPECT_EQ(1, _zplsqlgetdefaults(key(2), &version, &max_name, &db_link, nullptr));
  EXPECT_EQ((std::vector<int>{103, 25, 60}), (std::vector<int>{version, max_name, db_link}));
}

// The first-character definition as given, as stored, the other-character
// definition derived from it, and the warning when it is half bracketed.
struct DefinitionCase {
  char language;
  char const* given;
  char const* first;
  char const* others;
  bool warns;
};

TEST_F(Settings, DefinitionsAreNormalisedAndExtended) {
  std::string const t_default = "[A-Za-z_#@\x80-\xFF]";
  DefinitionCase const cases[] = {
      {'T', "[a-c]", "[a-c]", "[0-9$a-c]", false},
      {'T', "A-Z", "A-Z", "0123456789$A-Z", false},
      {'T', " \t[x]\r\n ", "[x]", "[0-9$x]", false},
      {'T', " \t \n", t_default.c_str(), "[0-9$A-Za-z_#@\x80-\xFF]", false},
      {'T', nullptr, t_default.c_str(), "[0-9$A-Za-z_#@\x80-\xFF]", false},
      {'T', "[A-Z", t_default.c_str(), "[0-9$A-Za-z_#@\x80-\xFF]", true},
      {'T', "A-Z] ", t_default.c_str(), "[0-9$A-Za-z_#@\x80-\xFF]", true},
      {'P', "[A-Z]", "[A-Z]", "[0-9$_#A-Z]", false},
      {'P', "ABC", "ABC", "0123456789$_#ABC", false},
      {'P', "]", "[A-Z]", "[0-9$_#A-Z]", true},
  };
  for (DefinitionCase const& c : cases) {
    errsvc::clear();
    std::string buffer = c.given == nullptr ? "" : c.given;
    char* const given = c.given == nullptr ? nullptr : buffer.data();
    std::string shown = c.given == nullptr ? "" : buffer;
    shown.erase(0, shown.find_first_not_of(" \t\r\n"));
    shown.erase(shown.find_last_not_of(" \t\r\n") + 1);
    char const* first = nullptr;
    if (c.language == 'T') {
      ASSERT_EQ(1, _ztsqlsetdefaults(key(3), 9, 30, 0, 0, '"', given));
      _ztsqlgetdefaults(key(3), nullptr, nullptr, nullptr, nullptr, nullptr, &first);
    } else {
      ASSERT_EQ(1, _zplsqlsetdefaults(key(3), 152, 30, 30, given));
      _zplsqlgetdefaults(key(3), nullptr, nullptr, nullptr, &first);
    }
    EXPECT_STREQ(c.first, first) << (c.given ? c.given : "NULL");
    if (c.warns) {
      std::string const what =
          c.language == 'T' ? "a T-SQL identifier" : "an Oracle SQL or of a PL/SQL identifier";
      EXPECT_TRUE(filed_exactly({env_warning(
          "CConnectionEnv::ComputeCharsetsFor1stAndNthChars(): Invalid definition '" + shown +
          "' provided for the set of characters allowed as being the 1st ones of " + what +
          ": the default charset will be used instead!")}));
    } else {
      EXPECT_TRUE(filed_nothing());
    }
    // The other-character definition shows through the tables it builds.
    char* first_table = nullptr;
    char* others_table = nullptr;
    int const built = c.language == 'T'
                          ? _zstr_build_tsql_allowed_charsets(first_table, others_table, key(3))
                          : _zstr_build_plsql_allowed_charsets(first_table, others_table, key(3));
    ASSERT_EQ(1, built);
    EXPECT_EQ(expected_members(c.others), members(others_table)) << c.others;
  }
}

// Trailing blanks are cut by a NUL written into the caller's own string.
TEST_F(Settings, TrailingBlanksAreCutInTheCallersString) {
  char definition[] = "  [a-d] \t ";
  ASSERT_EQ(1, _ztsqlsetdefaults(key(4), 10, 30, 0, 0, '"', definition));
  EXPECT_EQ(0, std::memcmp(definition, "  [a-d]\0\t ", sizeof definition));
  EXPECT_EQ("[a-d]", tsql_first(key(4)));
}

TEST_F(Settings, QuotedIdOfAConnectionWithoutSettingsChangesTheDefaults) {
  EXPECT_EQ(0, _ztsqlsetquotedid(key(5), 1));
  int quoted = 0;
  EXPECT_EQ(1, _ztsqlgetdefaults(nullptr, nullptr, nullptr, &quoted, nullptr, nullptr, nullptr));
  EXPECT_EQ(1, quoted);
  EXPECT_EQ(1, _ztsqlsetquotedid(nullptr, 0));  // put the default back
  ASSERT_EQ(1, _ztsqlsetdefaults(key(5), 4, 30, 0, 0, '"', nullptr));
  EXPECT_EQ(1, _ztsqlsetquotedid(key(5), 1));
  EXPECT_EQ(1, _ztsqlgetdefaults(key(5), nullptr, nullptr, &quoted, nullptr, nullptr, nullptr));
  EXPECT_EQ(1, quoted);
  EXPECT_EQ(1, _ztsqlgetdefaults(nullptr, nullptr, nullptr, &quoted, nullptr, nullptr, nullptr));
  EXPECT_EQ(0, quoted);
}

TEST_F(Settings, TablesOfTheDefaults) {
  // Setting the defaults again makes their tables be built anew.
  ASSERT_EQ(1, _ztsqlsetdefaults(nullptr, 15, 1021, 0, 0, '"', nullptr));
  ASSERT_EQ(1, _zplsqlsetdefaults(nullptr, 152, 31, 513, nullptr));
  char* first = nullptr;
  char* others = nullptr;
  ASSERT_EQ(1, _zstr_build_tsql_allowed_charsets(first, others, nullptr));
  EXPECT_EQ("#@" + range('A', 'Z') + "_" + range('a', 'z') + range(0x80, 0xFF), members(first));
  EXPECT_EQ(
      "#$" + range('0', '9') + "@" + range('A', 'Z') + "_" + range('a', 'z') + range(0x80, 0xFF),
      members(others));
  // A connection without settings is served the defaults' tables, with 0.
  EXPECT_EQ(0, _zstr_build_plsql_allowed_charsets(first, others, key(6)));
  EXPECT_EQ(range('A', 'Z'), members(first));
  EXPECT_EQ("#$" + range('0', '9') + range('A', 'Z') + "_", members(others));
}

// One pair of tables serves every connection: a connection whose tables are
// built already gets whatever was built last.
TEST_F(Settings, TablesAreSharedAndRebuiltOnlyAfterAChange) {
  ASSERT_EQ(1, _ztsqlsetdefaults(key(7), 8, 30, 0, 0, '"', "[a-c]"));
  ASSERT_EQ(1, _ztsqlsetdefaults(key(8), 8, 30, 0, 0, '"', "xyz"));
  char* first = nullptr;
  char* others = nullptr;
  ASSERT_EQ(1, _zstr_build_tsql_allowed_charsets(first, others, key(7)));
  EXPECT_EQ("abc", members(first));
  ASSERT_EQ(1, _zstr_build_tsql_allowed_charsets(first, others, key(8)));
  EXPECT_EQ("xyz", members(first));
  EXPECT_EQ("$0123456789xyz", members(others));
  ASSERT_EQ(1, _zstr_build_tsql_allowed_charsets(first, others, key(7)));
  EXPECT_EQ("xyz", members(first));
  ASSERT_EQ(1, _ztsqlsetdefaults(key(7), 8, 30, 0, 0, '"', "[a-c]"));  // a change: rebuilt
  ASSERT_EQ(1, _zstr_build_tsql_allowed_charsets(first, others, key(7)));
  EXPECT_EQ("abc", members(first));
}

TEST_F(Settings, UnreadableDefinitionGivesNoTables) {
  ASSERT_EQ(1, _zplsqlsetdefaults(key(9), 152, 30, 30, "[-A]"));
  errsvc::clear();
  char* first = reinterpret_cast<char*>(1);
  char* others = reinterpret_cast<char*>(1);
  EXPECT_EQ(0, _zstr_build_plsql_allowed_charsets(first, others, key(9)));
  EXPECT_EQ(nullptr, first);
  EXPECT_EQ(nullptr, others);
  EXPECT_TRUE(filed_exactly({env_warning(
      "_zstr_build_plsql_allowed_charsets() - Cannot construct <AllowedAs1st> from invalid "
      "definition '[-A]'.")}));
}

}  // namespace
