// line_trim.h - trim's work on a stretch of whole lines, 64 bytes at a
// time, with no step taken for each line.
//
// A block's bytes are compared at once (frame/byte_mask.h) into masks, bit
// i for byte i: its line feeds, its carriage returns and its bytes of the
// trimmed set.  A line's end is its line feed, or the carriage return of a
// CR LF; the set's bytes that are not an end are the line's blanks.  What
// trim drops is then found with arithmetic on the masks:
//   - a line's leading blanks are the run of blanks that starts just after
//     an end (or at the stretch's start): added to the run, a one at the
//     run's first bit carries through the whole run and clears it, so
//     blanks & ~(blanks + starts) is every such run and nothing else;
//   - a line's trailing blanks are the run that stops just before an end:
//     the same sum on the masks with their bits reversed, where a run's
//     last byte comes first.
// A run may go on into the next block: a leading one is carried as a start
// at the next block's first byte, and whether a trailing one reaches an
// end is looked up in the bytes after the block, one by one (that is rare:
// a blank must stand in the block's last byte).
// The bytes kept are then copied run by run, each run as one 64-byte copy
// (the output has room for the overshoot), so that a block costs a few
// copies whatever its lines.
#ifndef ZELSTR_TOOL_LINE_TRIM_H
#define ZELSTR_TOOL_LINE_TRIM_H

#include <cstddef>
#include <cstdint>
#include <string>

#include "tool/line_blocks.h"

namespace zelstr::tool {

class LineTrim {
 public:
  // Bytes an output needs beyond the trimmed text's length.
  static constexpr std::size_t kOvershoot = kPieceOvershoot;

  // Trims the bytes of `set` (its zero byte excepted, a line feed never in
  // a line) from each line's head, its tail, or both.
  LineTrim(char const* set, bool head, bool tail);

  // Writes the stretch [text, text + length) of whole lines (the last may
  // lack its line feed; no zero byte) with every line trimmed, line ends
  // kept, to `out`, which has room for length + kOvershoot bytes; returns
  // the length written.
  std::size_t trim(char const* text, std::size_t length, char* out) const;

 private:
  struct Block;
  struct Carry;
  static bool ends_line(char const* text, std::size_t length, std::size_t at);
  bool blank(char const* text, std::size_t length, std::size_t at) const;
  Block masks(char const* text, std::size_t length, std::size_t at) const;
  std::uint64_t dropped(Block const& block, char const* text, std::size_t length, std::size_t at,
                        Carry& carry) const;

  std::string m_set;  // the set's distinct bytes
  bool m_in_set[256] = {};
  bool m_head, m_tail;
};

}  // namespace zelstr::tool

#endif  // ZELSTR_TOOL_LINE_TRIM_H
