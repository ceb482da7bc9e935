// record.h - a compiled expression: one heap block, header then program.
#ifndef ZELSTR_REGEX_RECORD_H
#define ZELSTR_REGEX_RECORD_H

#include <cstddef>
#include <cstdint>

#include "regex/program.h"

namespace zelstr::regex {

struct Automata;

// A set of byte values.
struct ByteSet {
  std::uint64_t bits[4];
  void add(unsigned char b) { bits[b >> 6] |= std::uint64_t{1} << (b & 63); }
  bool has(unsigned char b) const { return (bits[b >> 6] >> (b & 63) & 1) != 0; }
};

}  // namespace zelstr::regex

struct Tcl_RegExp_ {
  int groups_plus_one;  // the number of groups, plus one for the whole match

  // Hints: tests that settle most positions without running the program.
  char start_char;   // every match starts with it (0: no such character)
  bool anchored;     // matches only at the start of the subject
  char const* must;  // a literal every match contains (in the program), or NULL
  std::size_t must_length;
  bool one_literal;  // the expression is one literal and nothing else
  // The bytes a match can start with (bit b of entry b / 64), computed from
  // the program; valid when `first_bytes_known`, and then a position whose
  // byte is not in it is skipped without a try.
  bool first_bytes_known;
  zelstr::regex::ByteSet first_bytes;

  // For STAR and PLUS nodes: the bytes what follows the loop can start
  // with, so that only the counts after which such a byte stands are tried
  // (Spencer's rule for a following literal, widened to any known set).
  struct Follow {
    std::uint32_t node;  // the loop node's offset in the program
    zelstr::regex::ByteSet bytes;
  };
  static constexpr int kFollowRoom = 32;
  int follow_count;
  Follow follow[kFollowRoom];

  static constexpr std::size_t kAttachedRoom = 256;
  char attached[kAttachedRoom];  // the attached text, empty when none

  // Group letters: names[L - 'A'] is the group named L, 0 for none.
  unsigned char names[26];

  // The last match: start and end of the whole match (0) and of each group.
  char const* startp[zelstr::regex::kMaxGroups + 1];
  char const* endp[zelstr::regex::kMaxGroups + 1];

  // The program as automata, for the linear matchers (their own blocks,
  // released with the record); NULL when the walk alone can run it.
  zelstr::regex::Automata* automata;

  std::size_t program_size;
  char program[1];  // check byte, then the nodes (program_size bytes in all)
};

namespace zelstr::regex {

// The first node of the program.
inline char const* first_node(Tcl_RegExp_ const* re) { return re->program + 1; }

}  // namespace zelstr::regex

#endif  // ZELSTR_REGEX_RECORD_H
