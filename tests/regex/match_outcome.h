// match_outcome.h - one match as the tests that compare the matchers see
// it, shared by the random test and the differential fuzz target.
#ifndef ZELSTR_TESTS_REGEX_MATCH_OUTCOME_H
#define ZELSTR_TESTS_REGEX_MATCH_OUTCOME_H

#include <string>
#include <vector>

#include "regex/matcher.h"
#include "regex/record.h"
#include "zelstr/regex.h"

namespace zelstr::test {

// The result of matching `subject` from offset `from` with `strategy`,
// then each group's range as offsets: -1 for a group that took no part, -2
// for a range the match left alone.  The ranges are read from the record
// itself, so that Tcl_RegExpRange's reading of an attached text does not
// hide them.
inline std::vector<long> match_outcome(regex::Strategy strategy, Tcl_RegExp_* re,
                                       std::string const& subject, std::size_t from) {
  char const* const untouched = "untouched";
  for (int g = 0; g < re->groups_plus_one; ++g) re->startp[g] = re->endp[g] = untouched;
  regex::set_strategy(strategy);
  char const* const s = subject.c_str();
  std::vector<long> out{Tcl_RegExpExec(nullptr, re, s + from, s)};
  regex::set_strategy(regex::Strategy::kAuto);
  auto const offset = [&](char const* p) {
    return p == untouched ? -2 : p == nullptr ? -1 : p - s;
  };
  for (int g = 0; g <= Tcl_GetGroupsCount(re); ++g) {
    out.push_back(offset(re->startp[g]));
    out.push_back(offset(re->endp[g]));
  }
  return out;
}

}  // namespace zelstr::test

#endif  // ZELSTR_TESTS_REGEX_MATCH_OUTCOME_H
