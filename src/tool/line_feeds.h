// line_feeds.h - counting the line feeds of a text, sixteen bytes at a time
// with the compiler's generic vectors (every target turns them into its own
// instructions): line numbers are counted over whole stretches of input.
// And finding them one by one, from a mask of a block's line feeds, for
// the commands that go from line to line without a search call for each.
#ifndef ZELSTR_TOOL_LINE_FEEDS_H
#define ZELSTR_TOOL_LINE_FEEDS_H

#include <cstddef>
#include <cstdint>
#include <cstring>
#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace zelstr::tool {

inline std::uint64_t count_line_feeds(char const* text, std::size_t length) {
  typedef unsigned char Block __attribute__((vector_size(16)));
  Block const feed = {'\n', '\n', '\n', '\n', '\n', '\n', '\n', '\n',
                      '\n', '\n', '\n', '\n', '\n', '\n', '\n', '\n'};
  std::uint64_t count = 0;
  std::size_t i = 0;
  while (length - i >= 16) {
    // A lane counts up to 255 matches (each compare gives 0xFF, subtracted)
    // before the lanes are summed.
    Block sums = {};
    std::size_t const rounds = (length - i) / 16 < 255 ? (length - i) / 16 : 255;
    for (std::size_t r = 0; r < rounds; ++r, i += 16) {
      Block v;
      std::memcpy(&v, text + i, sizeof v);
      sums -= reinterpret_cast<Block>(v == feed);
    }
    for (int lane = 0; lane < 16; ++lane) count += sums[lane];
  }
  for (; i < length; ++i) count += text[i] == '\n';
  return count;
}

// Bit i is set when text[i] is a line feed, for the 64 bytes at `text`.
// Every x86-64 processor has SSE2's byte mask; elsewhere the bytes are
// tested one by one.
inline std::uint64_t line_feed_mask(char const* text) {
#if defined(__SSE2__)
  __m128i const feed = _mm_set1_epi8('\n');
  std::uint64_t mask = 0;
  for (int k = 0; k < 4; ++k) {
    __m128i const v = _mm_loadu_si128(reinterpret_cast<__m128i const*>(text + 16 * k));
    auto const bits = static_cast<std::uint32_t>(_mm_movemask_epi8(_mm_cmpeq_epi8(v, feed)));
    mask |= std::uint64_t{bits} << (16 * k);
  }
  return mask;
#else
  std::uint64_t mask = 0;
  for (int i = 0; i < 64; ++i) mask |= std::uint64_t{text[i] == '\n'} << i;
  return mask;
#endif
}

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
