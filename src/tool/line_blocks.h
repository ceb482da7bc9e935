// line_blocks.h - a stretch of whole lines gone over 64 bytes at a time, for
// the commands that rewrite lines without a step for each line (trim,
// quote): each block's bytes are compared at once into masks, bit i for
// byte i (frame/byte_mask.h), and its output is copied in pieces of one
// 64-byte copy each, the output having room for the overshoot.
#ifndef ZELSTR_TOOL_LINE_BLOCKS_H
#define ZELSTR_TOOL_LINE_BLOCKS_H

#include <cstddef>
#include <cstdint>
#include <cstring>

#include "frame/byte_mask.h"

namespace zelstr::tool {

inline constexpr std::size_t kLineBlock = 64;
// What a piece's copy may write beyond the piece (see copy_piece).
inline constexpr std::size_t kPieceOvershoot = kLineBlock;

// Calls `each(text, length, at)` for each block of the stretch
// [text, text + length), in order, where 128 bytes can be read from
// text + at: the stretch itself while that holds, then a copy of its last
// bytes (less than two blocks) padded with zero bytes, with the length and
// offsets of the copy.  (One call site, so that `each` is inlined.)
template <class Each>
void for_each_line_block(char const* text, std::size_t length, Each each) {
  std::size_t const in_place = length >= 2 * kLineBlock ? (length - kLineBlock) / kLineBlock : 0;
  std::size_t const done = in_place * kLineBlock;
  char rest[4 * kLineBlock] = {};
  std::memcpy(rest, text + done, length - done);
  char const* bytes = text;
  std::size_t size = length, stop = done;
  for (int part = 0; part < 2; ++part) {
    for (std::size_t at = 0; at < stop; at += kLineBlock) each(bytes, size, at);
    bytes = rest;
    size = stop = length - done;
  }
}

// The carriage returns of the block at text + at that end a line, each
// just before a line feed (`feeds`, and the next block's first byte).
inline std::uint64_t crlf_returns(frame::Bytes64 const& bytes, char const* text, std::size_t length,
                                  std::size_t at, std::uint64_t feeds) {
  std::uint64_t const returns = frame::equal_mask64(bytes, '\r');
  std::uint64_t const feed_after = at + kLineBlock < length && text[at + kLineBlock] == '\n';
  return returns & ((feeds >> 1) | (feed_after << 63));
}

// The bits of a block's bytes before the stretch's end.
inline std::uint64_t in_stretch(std::size_t length, std::size_t at) {
  return length - at >= kLineBlock ? ~std::uint64_t{0} : (std::uint64_t{1} << (length - at)) - 1;
}

// Copies `n` bytes (at most 64) from `from` to `out` as one 64-byte copy.
inline char* copy_piece(char* out, char const* from, std::size_t n) {
  std::memcpy(out, from, kLineBlock);
  return out + n;
}

}  // namespace zelstr::tool

#endif  // ZELSTR_TOOL_LINE_BLOCKS_H
