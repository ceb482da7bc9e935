// linear.h - matching in time linear in the subject, with the results of
// the backtracking walk.
//
// The walk tries one way at a time and may try exponentially many.  Here
// the automaton (nfa.h) is followed along every way at once, one subject
// byte at a time (Thompson's construction run as Pike's machine): a state
// reached twice at the same position is kept once, for the way the walk
// would have tried first, since what follows depends only on the state and
// the position.  Ways started at earlier positions come first, and a match
// cuts off the ways the walk would have tried after it, so the match found
// is the walk's: the leftmost start, and from there the first way, by the
// walk's order, that reaches the end of the program.
//
// Group ranges are then found inside that match only: by a walk over the
// automaton that remembers each (state, position) it has left behind
// without a match (so no pair is tried twice), or, when the match is too
// long for that memory, by the machine above keeping every group's range
// with each way.  Either way a group holds what its last pass on the
// winning way recorded, as in the walk.
#ifndef ZELSTR_REGEX_LINEAR_H
#define ZELSTR_REGEX_LINEAR_H

#include <cstdint>
#include <vector>

struct Tcl_RegExp_;

namespace zelstr::regex {

class Nfa;
struct Automata;

// The memory the search for group ranges works in, kept from one match to
// the next.
struct GroupScratch {
  struct Step {
    std::uint32_t pc;
    int slot;  // -1: try pc at `at`; else put `at` back into the slot
    char const* at;
  };
  std::vector<std::uint64_t> seen;  // (state, position) pairs left behind
  std::vector<Step> stack;
  std::vector<char const*> slots;
};

// The first match at or after `from` in the subject that starts at
// `subject`, as the walk finds it, with its group ranges written to the
// record; 1, or 0 when there is none.  `from` lies in the subject.
// Throws std::bad_alloc.
int linear_match(Tcl_RegExp_* re, Nfa const& nfa, char const* subject, char const* from);

// The same match found with the automata (dfa.h): the forward automaton
// finds where it ends, the reverse one where it starts, and the group
// ranges are found inside it as above.
int automata_match(Tcl_RegExp_* re, Automata& automata, char const* subject, char const* from);

}  // namespace zelstr::regex

#endif  // ZELSTR_REGEX_LINEAR_H
