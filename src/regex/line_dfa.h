// line_dfa.h - which lines of a text an expression matches, in one pass.
//
// A tool that prints the matching lines of a file would match each line
// alone; this automaton reads many lines in one pass instead and gives the
// same answers.  A state is the set of instructions (nfa.h) the ways under
// way have reached: only whether a line matches counts here, not which
// match, so the order of preference plays no part.  Each line is read from
// the start state, where '^' holds; a line feed (or a carriage return
// before one) ends the line, where '$' holds, and a line matches as soon
// as a state holds the match.  The program's search loop starts it again
// at every position, as a search of the line alone would.
//
// When every match holds one of a few strings (literal_set.h), the lines
// without any are skipped by the search for them, and only the lines that
// hold one are read.
//
// States and transitions are made on first need in a cache of bounded size
// (emptied when full, the search going on from the state it stands in), so
// a byte costs one table look-up once its transition is known.
#ifndef ZELSTR_REGEX_LINE_DFA_H
#define ZELSTR_REGEX_LINE_DFA_H

#include <cstddef>
#include <cstdint>
#include <string>
#include <unordered_map>
#include <vector>

#include "regex/literal_search.h"

struct Tcl_RegExp_;

namespace zelstr::regex {

class Nfa;

class LineDfa {
 public:
  // The most memory the states and transitions take.
  static constexpr std::size_t kCacheLimit = std::size_t{1} << 20;

  LineDfa(Nfa const& nfa, Tcl_RegExp_ const* re);
  LineDfa(LineDfa const&) = delete;
  LineDfa& operator=(LineDfa const&) = delete;

  // The start of the first line, from the line that starts at `from` to
  // the text's terminator, that the expression matches; NULL when none
  // does.  A line ends at a line feed, or at a carriage return just before
  // one, or at the terminator.  Throws std::bad_alloc.
  char const* first_matching_line(char const* from);

 private:
  using StateId = std::int32_t;
  static constexpr StateId kUnknown = -1;
  // A transition as the loop reads it: the target's row in the table
  // (state times classes), shifted past the target's loop flags (kAccepts,
  // kDead, kIdle); negative when not made yet, or for a line end (the
  // loop's slow path).
  using Link = std::int32_t;
  static constexpr int kFlagBits = 4;
  static constexpr Link kUnknownLink = -1;
  static constexpr Link kSlowLink = -2;
  static constexpr std::uint32_t kLeaveLoop = 0x80000000u | ((1u << kFlagBits) - 1);
  // kAccepts, kDead, kIdle, kStays: what the loop checks; then whether a
  // line end after the state completes a match, once worked out (for a
  // line that ended where it began, and for any other).
  enum Flag : std::uint8_t {
    kAccepts = 1,
    kDead = 2,
    kIdle = 4,
    kStays = 8,  // the state stays itself on all bytes but its exits
    kEndKnown = 16,
    kEndMatches = 32,
    kEmptyEndKnown = 64,
    kEmptyEndMatches = 128,
  };
  enum SpecialClass : unsigned char { kEndClass = 0, kLineFeedClass = 1, kReturnClass = 2 };

  void build_classes();
  void flush();
  StateId state_for(std::vector<std::uint32_t> const& leaves);
  std::string exits_of(std::vector<std::uint32_t> const& leaves);
  void close(std::vector<std::uint32_t>& seeds, bool at_start, bool at_end,
             std::vector<std::uint32_t>& leaves);
  StateId line_start_state();
  StateId idle_state();
  StateId transition(StateId from, unsigned char c);
  Link link_to(StateId state) const {
    return static_cast<Link>((state * m_classes) << kFlagBits |
                             (m_flags[static_cast<std::size_t>(state)] & ((1 << kFlagBits) - 1)));
  }
  StateId state_of(Link link) const { return (link >> kFlagBits) / m_classes; }
  bool matches_at_line_end(StateId state, bool at_start);
  bool ends_a_match(StateId state, bool at_start);
  char const* scan(unsigned char const* p, bool one_line, unsigned char const** next);

  Nfa const& m_nfa;
  std::uint32_t m_search_start;
  // The strings of which every match holds one, when the program tells:
  // only the lines that hold one are read.
  LiteralSearch m_literals;
  unsigned char m_class[256] = {};
  int m_classes = 0;

  std::unordered_map<std::string, StateId> m_ids;
  std::vector<std::vector<std::uint32_t>> m_lists;
  std::vector<std::uint8_t> m_flags;
  // Per state flagged kStays: the bytes that take it elsewhere, line ends
  // included, for the C library's strcspn.
  std::vector<std::string> m_exits;
  std::vector<Link> m_next;  // m_classes per state
  StateId m_start = kUnknown;
  StateId m_idle = kUnknown;
  // The bytes a match can start with and the line ends: in the idle state
  // (nothing under way inside a line) the search jumps to the next of
  // them with the C library; empty when they are too many for that.
  std::string m_stops;
  std::size_t m_memory = 0;

  std::vector<std::uint32_t> m_mark;  // generation numbers by instruction
  std::uint32_t m_generation = 0;
  std::vector<std::uint32_t> m_stack;
};

}  // namespace zelstr::regex

#endif  // ZELSTR_REGEX_LINE_DFA_H
