// dfa.h - deterministic automata built from the instructions as the
// subjects need them, to find where the match ends and where it starts.
//
// A state of the forward automaton is the ordered list of the instructions
// (nfa.h) that the ways under way have reached: those that take a byte,
// the match, and end-of-subject tests waiting for the terminator.  Its
// order is the walk's order of preference; everything after a match in the
// list is dropped, since the walk would only try it after that match.  A
// search starts each way at every position through a loop of the lowest
// preference ("any byte, then start again"), so that earlier starts come
// first and a match stops further starts.  Running the bytes of a subject
// through the states gives, at the last position where a state held a
// match, the end of the match the walk finds.
//
// The reverse automaton runs from that end back towards the start of the
// search over the instructions' edges turned around; order does not
// matter there, only which states are reached.  The furthest position back
// where the program's start is reached is where the match starts (the
// leftmost start that can reach that end, which is the walk's).
//
// States and their transitions are made on first need and kept in a cache
// of bounded size per automaton: when it is full it is emptied and the
// search goes on from the state it stands in.  A byte costs one table
// look-up once its transition is known, and at most one state made (in
// time proportional to the instructions) when it is not: linear either
// way.
#ifndef ZELSTR_REGEX_DFA_H
#define ZELSTR_REGEX_DFA_H

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

#include "regex/literal_search.h"

struct Tcl_RegExp_;

namespace zelstr::regex {

class Nfa;

class Dfa {
 public:
  // The most memory the states and transitions of one automaton take.
  static constexpr std::size_t kCacheLimit = std::size_t{1} << 20;

  enum class Direction { kForward, kReverse };
  Dfa(Nfa const& nfa, Tcl_RegExp_ const* re, Direction direction);
  Dfa(Dfa const&) = delete;
  Dfa& operator=(Dfa const&) = delete;

  // Whether the subject, from the search's start, has a position where
  // the program's hints let a match begin (the backtracking walk tries
  // there): known when the search jumped from its start, else kUnknown.
  enum class Starts { kUnknown, kNone, kSome };

  // Forward: the end of the first match at or after `from` in the subject
  // that starts at `subject`, or NULL.
  char const* match_end(char const* subject, char const* from, Starts& starts);
  // Reverse: where the match that ends at `end` starts, no earlier than
  // `from`, or NULL.
  char const* match_start(char const* subject, char const* from, char const* end);

 private:
  using StateId = std::int32_t;
  static constexpr StateId kUnknown = -1;
  static constexpr StateId kDead = 0;
  // The flags of a state.  The first four are also carried by the links
  // that lead to it, so that the search loop sees at once whether the next
  // state needs a closer look.
  enum Flag : std::uint8_t {
    kHasMatch = 1,  // forward: a match ends here; reverse: the program's start is reached
    kIdle = 2,      // forward: nothing under way, the next start may be skipped to
    kDeadEnd = 4,   // no way goes on
    kStays = 8,     // forward: the state stays itself on every byte but its exits
    kEndKnown = 16,
    kMatchAtEnd = 32,
  };
  static constexpr int kLinkFlags = 15;
  static constexpr int kFlagShift = 4;
  // A link the search loop leaves to its slow path: flagged, or not made
  // yet (negative).
  static constexpr std::int32_t kSlowLink = kLinkFlags | std::int32_t{-0x7fffffff - 1};
  // A transition: the target state's first table entry, shifted, with its
  // flags; negative when not made yet.
  using Link = std::int32_t;

  struct Seeds;  // instructions to close over, with the position's conditions

  StateId start_state(bool at_start, bool at_end) {
    StateId const known = m_starts[(at_start ? 2 : 0) + (at_end ? 1 : 0)];
    return known != kUnknown ? known : make_start_state(at_start, at_end);
  }
  StateId make_start_state(bool at_start, bool at_end);
  StateId state_for(std::vector<std::uint32_t> const& leaves);
  StateId transition(StateId from, unsigned char c, bool at_start);
  Link link_to(StateId state) const {
    return static_cast<Link>((state * m_classes) << kFlagShift |
                             (m_flags[static_cast<std::size_t>(state)] & kLinkFlags));
  }
  StateId state_of(Link link) const { return (link >> kFlagShift) / m_classes; }
  bool stays(std::vector<std::uint32_t> const& leaves, std::string& exits);
  bool start_rules_out_most_bytes();
  char const* skip(char const* subject, char const* p, bool* any_first);
  bool holds_required(char const* p);
  bool matches_at_end(StateId state, bool at_start);
  void close(Seeds const& seeds, std::vector<std::uint32_t>& leaves);
  void close_forward(Seeds const& seeds, std::vector<std::uint32_t>& leaves);
  void close_reverse(Seeds const& seeds, std::vector<std::uint32_t>& leaves);
  void flush();
  void build_classes();
  void build_reverse_edges();

  Nfa const& m_nfa;
  Tcl_RegExp_ const* m_re;
  Direction m_direction;
  std::uint32_t m_search_start = 0;  // forward: the instruction searches start from

  unsigned char m_class[256] = {};  // bytes that every instruction treats alike
  int m_classes = 0;

  // Reverse: for each instruction, the instructions that lead to it
  // without taking a byte (with the test on the position they need) and
  // those that lead to it by taking one.
  std::vector<std::vector<std::uint32_t>> m_empty_into, m_taking_into;

  // The cache: states by their instruction lists, their flags, and the
  // transitions, m_classes a state.
  std::unordered_map<std::string, StateId> m_ids;
  std::vector<std::vector<std::uint32_t>> m_lists;
  std::vector<std::uint8_t> m_flags;
  std::vector<Link> m_next;
  // Forward, per state flagged kStays: the bytes that take it elsewhere,
  // for the C library's strcspn (which also stops at the terminator).
  std::vector<std::string> m_exits;
  // Forward: what lets a search jump over text where no match can be.
  std::string m_first_list;  // the bytes a match can start with, when few and without the
                             // terminator
  bool m_can_skip = false;
  bool m_tests_start = false;  // the program holds a caret
  // Strings of which every match begins with one (the jumps go to the
  // next), or else holds one (looked for once before the automaton runs);
  // inactive when the program tells of none.
  LiteralSearch m_beginnings;
  bool m_first_is_literals = false;  // the strings' first byte is all a match begins with
  LiteralSearch m_required;
  StateId m_starts[4] = {kUnknown, kUnknown, kUnknown, kUnknown};
  std::size_t m_memory = 0;
  std::uint32_t m_flushes = 0;

  // Scratch of the closures.
  std::vector<std::uint32_t> m_mark;  // generation numbers by instruction
  std::uint32_t m_generation = 0;
  std::vector<std::uint32_t> m_stack;
};

}  // namespace zelstr::regex

#endif  // ZELSTR_REGEX_DFA_H
