// line_feeds.h - the line feeds of a text, sixteen bytes at a time
// (frame/byte_mask.h): counted, for line numbers over whole stretches of
// input, and found one by one from a mask of a block's line feeds, for the
// commands that go from line to line without a search call for each.
#ifndef ZELSTR_TOOL_LINE_FEEDS_H
#define ZELSTR_TOOL_LINE_FEEDS_H

#include <cstddef>
#include <cstdint>
#include <cstring>

#include "frame/byte_mask.h"

namespace zelstr::tool {

inline std::uint64_t count_line_feeds(char const* text, std::size_t length) {
  frame::Bytes16 const feed = frame::splat16('\n');
  std::uint64_t count = 0;
  std::size_t i = 0;
  while (length - i >= 64) {
    // A lane counts up to 255 matches (each compare gives 0xFF, subtracted)
    // before the lanes are summed; four blocks of sixteen a round.
    frame::Bytes16 sums = {};
    std::size_t const rounds = (length - i) / 64 < 63 ? (length - i) / 64 : 63;
    for (std::size_t r = 0; r < rounds; ++r, i += 64) {
      for (int k = 0; k < 4; ++k) {
        sums -= reinterpret_cast<frame::Bytes16>(frame::load16(text + i + 16 * k) == feed);
      }
    }
    for (int lane = 0; lane < 16; ++lane) count += sums[lane];
  }
  frame::Bytes16 sums = {};  // at most three blocks of sixteen are left
  for (; length - i >= 16; i += 16) {
    sums -= reinterpret_cast<frame::Bytes16>(frame::load16(text + i) == feed);
  }
  for (int lane = 0; lane < 16; ++lane) count += sums[lane];
  for (; i < length; ++i) count += text[i] == '\n';
  return count;
}

// Bit i is set when text[i] is a line feed, for the 64 bytes at `text`.
inline std::uint64_t line_feed_mask(char const* text) { return frame::equal_mask64(text, '\n'); }

// Calls `at(feed)` for every line feed of [text, end), in order.
template <class At>
void for_each_line_feed(char* text, char* end, At at) {
  char* block = text;
  for (; end - block >= 64; block += 64) {
    for (std::uint64_t bits = line_feed_mask(block); bits != 0; bits &= bits - 1) {
      at(block + __builtin_ctzll(bits));
    }
  }
  for (; block < end; ++block) {
    if (*block == '\n') at(block);
  }
}

}  // namespace zelstr::tool

#endif  // ZELSTR_TOOL_LINE_FEEDS_H
