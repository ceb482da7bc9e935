// Differential fuzzing of the matchers: for any pattern (up to 128 bytes,
// compiled with the backslash switch either way, ignoring case or not) and subjects up to 4 KB,
// the automata, Pike's machine and the backtracking walk, which defines the
// results, give the same answer and the same range for every group, from
// any starting offset.  The walk is given a step limit, past which it gives
// up and that subject is compared between the two linear matchers only.
// Tcl_RegExpFindLine finds, in each subject taken as lines, the lines the
// automata find matching each line alone.
#include <fuzzer/FuzzedDataProvider.h>

#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

#include "regex/match_outcome.h"
#include "regex/matcher.h"
#include "require.h"
#include "zelstr/regex.h"

namespace {

using zelstr::regex::Strategy;

using zelstr::test::match_outcome;

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
  FuzzedDataProvider in(data, size);
  bool const backslashes = in.ConsumeBool();
  bool const fold_case = in.ConsumeBool();
  std::string const pattern = in.ConsumeRandomLengthString(128);
  Tcl_TemporarilyDefineWhetherBackslashesInIntervalsAreHandled const scope(backslashes);
  Tcl_RegExp_* const re =
      fold_case ? Tcl_RegExpCompileNoCase(pattern.c_str()) : Tcl_RegExpCompile(pattern.c_str());
  if (re == nullptr) return 0;
  zelstr::regex::set_walk_limit(100000);
  for (int i = 0; i < 3 && in.remaining_bytes() > 0; ++i) {
    std::string const subject = in.ConsumeRandomLengthString(4096);
    std::size_t const from = in.ConsumeIntegralInRange<std::size_t>(0, subject.size());
    std::vector<long> const automata = match_outcome(Strategy::kAuto, re, subject, from);
    require(match_outcome(Strategy::kPike, re, subject, from) == automata);
    std::vector<long> const walk = match_outcome(Strategy::kWalk, re, subject, from);
    require(walk[0] == zelstr::regex::kWalkGaveUp || walk == automata);
    // The subject's lines (cut at its first zero byte), each alone and all
    // at once.
    std::string const text(subject.c_str());
    char const* const t = text.c_str();
    char const* found = Tcl_RegExpFindLine(re, t);
    for (char const* line = t; *line != '\0';) {
      char const* const lf = std::strchr(line, '\n');
      std::size_t length = lf != nullptr ? static_cast<std::size_t>(lf - line) : std::strlen(line);
      if (lf != nullptr && length > 0 && line[length - 1] == '\r') --length;
      bool const matches = Tcl_RegExpMatch(std::string(line, length).c_str(), re) == 1;
      require(matches == (found == line));
      if (matches) found = lf != nullptr ? Tcl_RegExpFindLine(re, lf + 1) : nullptr;
      if (lf == nullptr) break;
      line = lf + 1;
    }
    require(found == nullptr);
  }
  zelstr::regex::set_strategy(Strategy::kAuto);
  zelstr::regex::set_walk_limit(0);
  Tcl_DeleteInterp(re);
  return 0;
}
