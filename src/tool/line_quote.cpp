// line_quote.cpp - quote over whole blocks of a stretch (see line_quote.h).
#include "tool/line_quote.h"

#include <cstdint>
#include <cstring>

#include "frame/byte_mask.h"
#include "tool/line_blocks.h"

namespace zelstr::tool {

// A line's end and the next line's start are next to each other: each line
// end gives way to the quote, the end and the next line's quote, so that a
// line costs one piece of copy.  The stretch's first line opens with its
// quote; after its last, the quote that would open a line after a last line
// feed is taken back, and a last line without one is closed.
std::size_t quote_lines(char const* text, std::size_t length, char quote, char* out) {
  char const joints[2][4] = {{quote, '\n', quote, 0}, {quote, '\r', '\n', quote}};
  if (length == 0) return 0;
  char* end = out;
  *end++ = quote;
  std::size_t skip = 0;          // bytes of the next block already written
  std::uint64_t feed_taken = 0;  // bit 0: the next block's first byte ends a CR LF
  for_each_line_block(text, length, [&](char const* bytes, std::size_t size, std::size_t at) {
    frame::Bytes64 const block = frame::load64(bytes + at);
    std::uint64_t const feeds = frame::equal_mask64(block, '\n');
    // A line's end is its line feed or the carriage return of its CR LF,
    // whose line feed is then no end of its own.
    std::uint64_t const returns = crlf_returns(block, bytes, size, at, feeds);
    std::uint64_t const ends = returns | (feeds & ~((returns << 1) | feed_taken));
    feed_taken = returns >> 63;
    std::size_t from = skip;
    for (std::uint64_t marks = ends; marks != 0; marks &= marks - 1) {
      std::size_t const mark = static_cast<std::size_t>(__builtin_ctzll(marks));
      std::size_t const crlf = (returns >> mark) & 1;
      end = copy_piece(end, bytes + at + from, mark - from);
      std::memcpy(end, joints[crlf], 4);
      end += 3 + crlf;
      from = mark + 1 + crlf;
    }
    std::size_t const n = size - at < kLineBlock ? size - at : kLineBlock;
    skip = from > n ? from - n : 0;
    from -= skip;
    end = copy_piece(end, bytes + at + from, n - from);
  });
  if (text[length - 1] == '\n') return static_cast<std::size_t>(end - 1 - out);
  *end++ = quote;  // a last line without its line feed
  return static_cast<std::size_t>(end - out);
}

}  // namespace zelstr::tool
