// Reserved words by version, against sets derived here from the word lists
// and the rules that build each version from an older one.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "sql/reserved_sets.h"
#include "support/warnings.h"
#include "zelstr/reserved.h"

namespace {

using zelstr::test::filed_exactly;
using zelstr::test::filed_nothing;
using zelstr::test::handled;
using zelstr::test::oracle_sets;
using zelstr::test::tsql_sets;
using zelstr::test::Words;
namespace sql = zelstr::sql;

// Every listed word, the rules' own words, their near misses (one byte
// short, one too many, the last byte changed) and a few that no list
// holds, each in upper, lower and mixed case.
std::vector<std::string> candidates() {
  Words listed;
  for (auto const& sets : {tsql_sets(), oracle_sets()}) {
    for (auto const& [version, set] : sets) listed.insert(set.begin(), set.end());
  }
  for (auto const* list : {&sql::kTsql10Removed}) {
    listed.insert(std::begin(*list), std::end(*list));
  }
  Words all = listed;
  for (std::string const& w : listed) {
    all.insert(w.substr(0, w.size() - 1));
    all.insert(w + "_");
    all.insert(w.substr(0, w.size() - 1) + static_cast<char>(w.back() + 1));
  }
  for (char const* w : {"A", "ZZZ", "SELECT\xC9", "CURRENT_TIMESTAMP_AND_MORE",
                        "ABCDEFGHIJKLMNOPQRSTUVWX", "ABCDEFGHIJKLMNOPQRSTUVWXY"}) {
    all.insert(w);
  }
  std::vector<std::string> out;
  for (std::string w : all) {
    out.push_back(w);
    for (std::size_t i = 0; i < w.size(); i += 2)
      w[i] = static_cast<char>(std::tolower(static_cast<unsigned char>(w[i])));
    out.push_back(w);
    std::transform(w.begin(), w.end(), w.begin(), [](unsigned char c) { return std::tolower(c); });
    out.push_back(w);
  }
  return out;
}

std::string upper(std::string w) {
  std::transform(w.begin(), w.end(), w.begin(), [](unsigned char c) { return std::toupper(c); });
  return w;
}

// The words whose answer differs from the derived set, for each version in
// its short and its year form.
TEST(ReservedWords, TsqlVersionsAndYearForms) {
  std::vector<std::string> const words = candidates();
  for (auto const& [version, set] : tsql_sets()) {
    if (set.empty()) continue;  // unhandled: see UnhandledVersions
    std::vector<std::string> wrong;
    for (std::string const& w : words) {
      if (_zistsqlresword(w.c_str(), version) != static_cast<int>(set.count(upper(w))))
        wrong.push_back(w);
    }
    EXPECT_EQ(std::vector<std::string>{}, wrong) << "version " << version;
  }
}

TEST(ReservedWords, OracleVersions) {
  std::vector<std::string> const words = candidates();
  for (auto const& [version, set] : oracle_sets()) {
    if (set.empty()) continue;
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
  std::set<int> const handled_t = handled(tsql_sets());
  std::set<int> const handled_o = handled(oracle_sets());
  for (int v = -2; v <= 2020; ++v) {
    bool const t_ok = handled_t.count(v) != 0;
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
