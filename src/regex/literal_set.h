// literal_set.h - the strings of which every match holds one.
//
// A search for a pattern spends most of its time where no match is.  When
// every match must hold one of a few strings ("SELECT|INSERT" holds one of
// its two words, "[a-z]+_(ID|id)" one of "_ID" and "_id"), a search for
// those strings, a vector scan, passes over the text where none of them
// is, and the automata read only the rest.
//
// The strings are read off the program.  A chain of nodes is walked piece
// by piece; literals, short bracket lists and alternations of such pieces
// match exactly a known, finite set of strings, and adjacent ones multiply
// into a run (ab[xy] gives abx and aby).  A piece that matches too many
// strings ends the run; a loop piece ends it too, although "x+" still
// requires one x.  Of the runs met, the one that filters best is kept.
// An alternation requires one of the strings its alternatives require, so
// its set is the union of theirs when each has one.
#ifndef ZELSTR_REGEX_LITERAL_SET_H
#define ZELSTR_REGEX_LITERAL_SET_H

#include <string>
#include <vector>

struct Tcl_RegExp_;

namespace zelstr::regex {

struct LiteralSet {
  // None empty, none holding a zero byte; empty when the program requires
  // no useful set.
  std::vector<std::string> strings;
  // Compared without regard to ASCII case (the strings are in lower case):
  // a bracket list of a letter's two cases, as a case-insensitive compile
  // writes each letter, counts as the letter.
  bool folded = false;
  // Every match begins with one of the strings.
  bool prefix = false;
};

// The most strings a set holds, and the length past which a run stops
// growing (a longer literal of the pattern is kept whole).
inline constexpr std::size_t kMostLiterals = 64;
inline constexpr std::size_t kLongestRun = 32;

// The set for a freshly compiled program (strings.empty() when none).
// Throws std::bad_alloc.
LiteralSet required_literals(Tcl_RegExp_ const* re);

}  // namespace zelstr::regex

#endif  // ZELSTR_REGEX_LITERAL_SET_H
