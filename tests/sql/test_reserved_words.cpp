// Reserved words by version, against sets derived here from the word lists
// and the rules that build each version from an older one.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "sql/reserved_lists.h"
#include "support/warnings.h"
#include "zelstr/reserved.h"

namespace {

using zelstr::test::filed_exactly;
using zelstr::test::filed_nothing;
using Words = std::set<std::string>;
namespace sql = zelstr::sql;

template <std::size_t N>
Words words(char const* const (&list)[N]) {
  return Words(std::begin(list), std::end(list));
}

// A version's set: an older version's set (0: none) plus and minus words.
struct Rule {
  int version;
  int base;
  Words added;
  Words removed;
};

std::map<int, Words> derive(std::vector<Rule> const& rules) {
  std::map<int, Words> sets;
  for (Rule const& r : rules) {
    Words s = r.base == 0 ? Words{} : sets.at(r.base);
    s.insert(r.added.begin(), r.added.end());
    for (std::string const& w : r.removed) s.erase(w);
    sets[r.version] = s;
  }
  return sets;
}

std::map<int, Words> tsql_sets() {
  return derive({
      {4, 0, words(sql::kTsql4), {}},
      {6, 0, words(sql::kTsql6), {}},
      {7, 6, words(sql::kTsql7Added), {}},
      {8, 4, words(sql::kTsql8Added), {}},
      {9, 6, words(sql::kTsql9Added), {}},
      {10,
       8,
       {"COLLATE", "FILE", "FUNCTION", "OPENDATASOURCE", "OPENXML"},
       words(sql::kTsql10Removed)},
      {11, 9, {"IDENTITY_GAP", "JOIN", "MODIFY", "QUIESCE"}, {}},
      {12,
       11,
       {"DETERMINISTIC", "FUNC", "FUNCTION", "INOUT", "JAR", "OUT", "REMOVE", "RETURNS"},
       {"DOUBLE", "PRECISION"}},
      {13, 12, {}, {}},
      {14, 10, {"PIVOT", "REVERT", "UNPIVOT", "TABLESAMPLE"}, {}},
      {15, 12, {}, {}},
      {16, 14, {}, {}},
      {17, 14, {}, {}},
  });
}

std::map<int, Words> oracle_sets() {
  std::map<int, Words> const chain = derive({
      {102, 0, words(sql::kOracleBase), {}},
      {103, 102, words(sql::kOracleSecond), {}},
      {104, 103, words(sql::kOracleThird), {}},
  });
  std::map<int, Words> sets;
  for (int v : {102, 110}) sets[v] = chain.at(102);
  for (int v : {103, 120, 1160}) sets[v] = chain.at(103);
  for (int v : {104, 105, 107, 108, 109, 130, 140, 150, 151, 152, 1161, 1162, 1163, 1164, 1165}) {
    sets[v] = chain.at(104);
  }
  return sets;
}

// Every listed word, the rules' own words, and a few that no list holds, in
// upper and lower case.
std::vector<std::string> candidates() {
  Words all;
  for (auto const& sets : {tsql_sets(), oracle_sets()}) {
    for (auto const& [version, set] : sets) all.insert(set.begin(), set.end());
  }
  for (auto const* list : {&sql::kTsql10Removed}) all.insert(std::begin(*list), std::end(*list));
  for (char const* w :
       {"A", "ZZZ", "SELECTS", "SELEC", "TABLESAMPLEX", "CURRENT_TIMESTAMP_AND_MORE_TEXT"}) {
    all.insert(w);
  }
  std::vector<std::string> out(all.begin(), all.end());
  for (std::string w : all) {
    std::transform(w.begin(), w.end(), w.begin(), [](unsigned char c) { return std::tolower(c); });
    out.push_back(w);
  }
  return out;
}

std::string upper(std::string w) {
  std::transform(w.begin(), w.end(), w.begin(), [](unsigned char c) { return std::toupper(c); });
  return w;
}

// The words whose answer differs from the derived set, for each form of
// each version.
TEST(ReservedWords, TsqlVersionsAndYearForms) {
  std::vector<std::string> const words = candidates();
  for (auto const& [version, set] : tsql_sets()) {
    std::vector<int> forms = {version};
    if (version == 4 || version >= 6) forms.push_back(2000 + version);
    for (int form : forms) {
      std::vector<std::string> wrong;
      for (std::string const& w : words) {
        if (_zistsqlresword(w.c_str(), form) != static_cast<int>(set.count(upper(w))))
          wrong.push_back(w);
      }
      EXPECT_EQ(std::vector<std::string>{}, wrong) << "version " << form;
    }
  }
}

TEST(ReservedWords, OracleVersions) {
  std::vector<std::string> const words = candidates();
  for (auto const& [version, set] : oracle_sets()) {
    std::vector<std::string> wrong;
    for (std::string const& w : words) {
      if (_zisosqlresword(w.c_str(), version) != static_cast<int>(set.count(upper(w))))
        wrong.push_back(w);
    }
    EXPECT_EQ(std::vector<std::string>{}, wrong) << "version " << version;
  }
}

class ReservedWordWarnings : public zelstr::test::WarningsTest {};

TEST_F(ReservedWordWarnings, UnhandledVersions) {
  std::set<int> handled_t, handled_o;
  for (auto const& [v, s] : tsql_sets()) handled_t.insert(v);
  for (auto const& [v, s] : oracle_sets()) handled_o.insert(v);
  for (int v = -2; v <= 2020; ++v) {
    bool const t_ok = handled_t.count(v) != 0 || (v >= 2004 && v <= 2017 && v != 2005);
    errsvc::clear();
    EXPECT_EQ(0, _zistsqlresword("NOTAWORD", v));
    if (t_ok) {
      ASSERT_TRUE(filed_nothing()) << v;
    } else {
      ASSERT_TRUE(filed_exactly({{-1,
                                  "_zistsqlresword(): Error - T-SQL version #" + std::to_string(v) +
                                      " given to this function is unhandled!",
                                  4, "zelstrsqlserverfnc"}}));
    }
    errsvc::clear();
    EXPECT_EQ(0, _zisosqlresword(nullptr, v));
    if (handled_o.count(v) != 0) {
      ASSERT_TRUE(filed_nothing()) << v;
    } else {
      ASSERT_TRUE(filed_exactly({{-1,
                                  "_zisosqlresword(): Error - Oracle-SQL version #" +
                                      std::to_string(v) + " given to this function is unhandled!",
                                  4, "zelstroraclefnc"}}));
    }
  }
}

// A word that does not begin with a letter is refused before the version
// is looked at.
TEST_F(ReservedWordWarnings, NonWordsAreNotReservedWithoutAWarning) {
  for (char const* w : {"_X", "1", "", "#TMP", "@VAR", "[SELECT]"}) {
    EXPECT_EQ(0, _zistsqlresword(w, 5)) << w;
  }
  EXPECT_EQ(0, _zistsqlresword(nullptr, 5));
  EXPECT_TRUE(filed_nothing());
}

// The lists are what the searches assume: sorted, upper case, of the sizes
// documented.
TEST(ReservedWords, ListsAreSortedUpperCaseWords) {
  struct List {
    char const* const* words;
    std::size_t size;
    std::size_t expected;
  } const lists[] = {
      {sql::kOracleBase, std::size(sql::kOracleBase), 142},
      {sql::kOracleSecond, std::size(sql::kOracleSecond), 62},
      {sql::kOracleThird, std::size(sql::kOracleThird), 49},
      {sql::kTsql4, std::size(sql::kTsql4), 183},
      {sql::kTsql6, std::size(sql::kTsql6), 174},
      {sql::kTsql7Added, std::size(sql::kTsql7Added), 15},
      {sql::kTsql8Added, std::size(sql::kTsql8Added), 14},
      {sql::kTsql9Added, std::size(sql::kTsql9Added), 14},
      {sql::kTsql10Removed, std::size(sql::kTsql10Removed), 29},
  };
  for (List const& l : lists) {
    EXPECT_EQ(l.expected, l.size);
    for (std::size_t i = 0; i < l.size; ++i) {
      EXPECT_EQ(std::strspn(l.words[i], "ABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789_"),
                std::strlen(l.words[i]));
      if (i == 0) continue;
      EXPECT_LT(std::strcmp(l.words[i - 1], l.words[i]), 0) << l.words[i];
    }
  }
}

}  // namespace
