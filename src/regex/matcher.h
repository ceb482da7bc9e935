// matcher.h - running a compiled program over a subject.
#ifndef ZELSTR_REGEX_MATCHER_H
#define ZELSTR_REGEX_MATCHER_H

struct Tcl_RegExp_;

namespace zelstr::regex {

// Finds the first position of `subject`, from `from` on, where the program
// matches and keeps the ranges in the record: 1, 0 for no match, -1 on an
// error (its text set).  '^' matches at `subject` only.  `re`, `subject`
// and `from` are not NULL, `from` lies in the subject, and the check byte
// was tested.
int execute(Tcl_RegExp_* re, char const* subject, char const* from);

// Which matcher runs: the automata (kAuto, always but in tests), the
// backtracking walk, or Pike's machine.  The tests that compare them set
// it; it is not guarded.
enum class Strategy { kAuto, kWalk, kPike };
void set_strategy(Strategy strategy);

// A limit on the nodes the walk may visit in one match (0: none, as when
// the library is loaded), past which the match returns kWalkGaveUp: for
// the tests that compare the matchers on patterns the walk would take
// exponential time over.
inline constexpr int kWalkGaveUp = -2;
void set_walk_limit(long steps);

}  // namespace zelstr::regex

#endif  // ZELSTR_REGEX_MATCHER_H
