// reserved_set.h - the reserved words of one T-SQL or Oracle version, as the
// library answers them, for the peers of the reserved-word benchmark.
//
// The candidates are every word of the library's lists plus the few words
// its version rules add in code; the set of a version is the candidates the
// library calls reserved in that version.  A word added to those rules must
// be added to kRuleWords too (the benchmark checks the peers against the
// library on every corpus word, so a miss shows there).
#ifndef ZELSTR_BENCH_RESERVED_SET_H
#define ZELSTR_BENCH_RESERVED_SET_H

#include <iterator>
#include <set>
#include <string>
#include <vector>

#include "sql/reserved_lists.h"
#include "zelstr/reserved.h"

namespace zelstr::bench {

enum class Dialect { tsql, oracle };

// Words named by the version rules rather than by a list.
inline constexpr char const* kRuleWords[] = {
    "COLLATE",      "DETERMINISTIC", "DOUBLE",      "FILE",      "FUNC",    "FUNCTION",
    "IDENTITY_GAP", "INOUT",         "JAR",         "JOIN",      "MODIFY",  "OPENDATASOURCE",
    "OPENXML",      "OUT",           "PIVOT",       "PRECISION", "QUIESCE", "REMOVE",
    "RETURNS",      "REVERT",        "TABLESAMPLE", "UNPIVOT",
};

// The reserved words of `version`, upper case, in ascending byte order.
inline std::vector<std::string> reserved_words(Dialect dialect, int version) {
  std::set<std::string> candidates(std::begin(kRuleWords), std::end(kRuleWords));
  auto add = [&candidates](auto const& list) {
    candidates.insert(std::begin(list), std::end(list));
  };
  add(sql::kTsql4);
  add(sql::kTsql6);
  add(sql::kTsql7Added);
  add(sql::kTsql8Added);
  add(sql::kTsql9Added);
  add(sql::kTsql10Removed);
  add(sql::kOracleBase);
  add(sql::kOracleSecond);
  add(sql::kOracleThird);
  std::vector<std::string> words;
  for (std::string const& w : candidates) {
    int const reserved = dialect == Dialect::tsql ? _zistsqlresword(w.c_str(), version)
                                                  : _zisosqlresword(w.c_str(), version);
    if (reserved == 1) words.push_back(w);
  }
  return words;
}

}  // namespace zelstr::bench

#endif  // ZELSTR_BENCH_RESERVED_SET_H
