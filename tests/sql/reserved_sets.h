// reserved_sets.h - the reserved words of each version, derived for the
// tests from the word lists and the rules that build each version's set
// from an older one.
#ifndef ZELSTR_TESTS_SQL_RESERVED_SETS_H
#define ZELSTR_TESTS_SQL_RESERVED_SETS_H

#include <iterator>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "sql/reserved_lists.h"

namespace zelstr::test {

using Words = std::set<std::string>;

template <std::size_t N>
Words list(char const* const (&words)[N]) {
  return Words(std::begin(words), std::end(words));
}

// A version's set: the set of `base` (none for 0) plus `added`, minus
// `removed`.
struct Rule {
  int version, base;
  Words added = {}, removed = {};
};

inline std::map<int, Words> build(std::vector<Rule> const& rules) {
  std::map<int, Words> sets;
  for (Rule const& r : rules) {
    Words s = r.base == 0 ? Words{} : sets.at(r.base);
    s.insert(r.added.begin(), r.added.end());
    for (std::string const& w : r.removed) s.erase(w);
    sets[r.version] = s;
  }
  return sets;
}

// Every T-SQL version, short and year forms, and the unhandled 5 and 2005
// (empty sets).
// clang-format off
inline std::map<int, Words> tsql_sets() {
  namespace sql = zelstr::sql;
  std::vector<Rule> rules = {
      {4, 0, list(sql::kTsql4)}, {6, 0, list(sql::kTsql6)},
      {7, 6, list(sql::kTsql7Added)}, {8, 4, list(sql::kTsql8Added)},
      {9, 6, list(sql::kTsql9Added)},
      {10, 8, {"COLLATE", "FILE", "FUNCTION", "OPENDATASOURCE", "OPENXML"},
              list(sql::kTsql10Removed)},
      {11, 9, {"IDENTITY_GAP", "JOIN", "MODIFY", "QUIESCE"}},
      {12, 11, {"DETERMINISTIC", "FUNC", "FUNCTION", "INOUT", "JAR", "OUT", "REMOVE", "RETURNS"},
               {"DOUBLE", "PRECISION"}},
      {13, 12}, {15, 12}, {14, 10, {"PIVOT", "REVERT", "UNPIVOT", "TABLESAMPLE"}},
      {16, 14}, {17, 14}, {2004, 4}};
  for (int year = 2006; year <= 2017; ++year) rules.push_back({year, year - 2000});
  std::map<int, Words> sets = build(rules);
  sets[5] = sets[2005] = Words{};  // unhandled
  return sets;
}

// Every Oracle version, and the unhandled 106 (an empty set).
inline std::map<int, Words> oracle_sets() {
  namespace sql = zelstr::sql;
  std::vector<Rule> rules = {
      {102, 0, list(sql::kOracleBase)}, {110, 102},
      {103, 102, list(sql::kOracleSecond)}, {120, 103}, {1160, 103},
      {104, 103, list(sql::kOracleThird)}};
  for (int v : {105, 107, 108, 109, 130, 140, 150, 151, 152, 1161, 1162, 1163, 1164, 1165}) {
    rules.push_back({v, 104});
  }
  std::map<int, Words> sets = build(rules);
  sets[106] = Words{};  // unhandled
  return sets;
}
// clang-format on

// The versions a function handles: those with a non-empty set.
inline std::set<int> handled(std::map<int, Words> const& sets) {
  std::set<int> out;
  for (auto const& [version, words] : sets) {
    if (!words.empty()) out.insert(version);
  }
  return out;
}

}  // namespace zelstr::test

#endif  // ZELSTR_TESTS_SQL_RESERVED_SETS_H
