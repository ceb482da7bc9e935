// line_trim.cpp - trim over whole blocks of a stretch (see line_trim.h).
#include "tool/line_trim.h"

#include <cstring>

#include "frame/byte_mask.h"
#include "tool/line_blocks.h"

namespace zelstr::tool {

namespace {

constexpr std::uint64_t kOne = 1;
// The largest set whose bytes are each compared with a whole block.
constexpr std::size_t kComparedSet = 8;

std::uint64_t reverse_bits(std::uint64_t x) {
  x = __builtin_bswap64(x);
  x = ((x >> 4) & 0x0F0F0F0F0F0F0F0Fu) | ((x & 0x0F0F0F0F0F0F0F0Fu) << 4);
  x = ((x >> 2) & 0x3333333333333333u) | ((x & 0x3333333333333333u) << 2);
  return ((x >> 1) & 0x5555555555555555u) | ((x & 0x5555555555555555u) << 1);
}

// Every run of `blanks` that holds a bit of `firsts`, each bit of which is
// the first (lowest) of its run.
std::uint64_t runs_from(std::uint64_t blanks, std::uint64_t firsts) {
  return blanks & ~(blanks + firsts);
}

}  // namespace

// A block's line ends (line feeds, and the carriage returns of CR LFs) and
// blanks (the set's bytes that are not ends), bit i for byte i.
struct LineTrim::Block {
  std::uint64_t ends;
  std::uint64_t blanks;
};

// What goes from one block to the next.
struct LineTrim::Carry {
  std::uint64_t line_start = 1;  // bit 0: a line's head goes on at the next block's first byte
  char const* text = nullptr;    // the text the offsets below are in
  // The first byte that is no blank at or after some block's end, and
  // whether it ends a line: every block whose end is before it looks the
  // same up (a long run of blanks is gone over once).
  std::size_t blanks_to = 0;
  bool blanks_end_a_line = false;
};

LineTrim::LineTrim(char const* set, bool head, bool tail) : m_head(head), m_tail(tail) {
  for (; *set != '\0'; ++set) {
    unsigned char const c = static_cast<unsigned char>(*set);
    if (!m_in_set[c]) m_set.push_back(*set);
    m_in_set[c] = true;
  }
}

inline bool LineTrim::ends_line(char const* text, std::size_t length, std::size_t at) {
  return at == length || text[at] == '\n' ||
         (text[at] == '\r' && at + 1 < length && text[at + 1] == '\n');
}

inline bool LineTrim::blank(char const* text, std::size_t length, std::size_t at) const {
  return m_in_set[static_cast<unsigned char>(text[at])] && !ends_line(text, length, at);
}

// A stretch shorter than a block is padded with zero bytes, which are in
// no line and never trimmed.
[[gnu::always_inline]] inline LineTrim::Block LineTrim::masks(char const* text, std::size_t length,
                                                              std::size_t at) const {
  frame::Bytes64 const bytes = frame::load64(text + at);
  std::uint64_t set = 0;
  if (m_set.size() <= kComparedSet) {
    for (char const c : m_set) set |= frame::equal_mask64(bytes, static_cast<unsigned char>(c));
  } else {  // a compare for each of many bytes would cost more than a look-up for each byte
    for (std::size_t i = 0; i < kLineBlock; ++i) {
      set |= std::uint64_t{m_in_set[static_cast<unsigned char>(text[at + i])]} << i;
    }
  }
  std::uint64_t const feeds = frame::equal_mask64(bytes, '\n');
  std::uint64_t ends = feeds | crlf_returns(bytes, text, length, at, feeds);
  // The stretch's end in the block ends a last line without its line feed.
  if (length - at < kLineBlock) ends |= kOne << (length - at);
  return {ends, set & ~ends};
}

[[gnu::always_inline]] inline std::uint64_t LineTrim::dropped(Block const& block, char const* text,
                                                              std::size_t length, std::size_t at,
                                                              Carry& carry) const {
  std::uint64_t drop = 0;
  if (m_head) {
    drop = runs_from(block.blanks, block.blanks & ((block.ends << 1) | carry.line_start));
    carry.line_start = ((block.ends | drop) >> 63) & 1;
  }
  if (m_tail) {
    // The last blank of each run just before a line's end.
    std::uint64_t lasts = block.blanks & (block.ends >> 1);
    if (block.blanks >> 63) {
      std::size_t const next = at + kLineBlock;
      if (next > carry.blanks_to) {
        std::size_t q = next;
        while (q < length && blank(text, length, q)) ++q;
        carry.blanks_to = q;
        carry.blanks_end_a_line = ends_line(text, length, q);
      }
      if (carry.blanks_end_a_line) lasts |= kOne << 63;
    }
    // Reversed, a run's last bit is its first.
    if (lasts != 0) {
      std::uint64_t const reversed = reverse_bits(block.blanks);
      drop |= reverse_bits(runs_from(reversed, reverse_bits(lasts)));
    }
  }
  return drop;
}

std::size_t LineTrim::trim(char const* text, std::size_t length, char* out) const {
  if (length == 0) return 0;
  Carry carry;
  char* end = out;
  for_each_line_block(text, length, [&](char const* bytes, std::size_t size, std::size_t at) {
    if (bytes != carry.text) carry = {carry.line_start, bytes};  // offsets of another text
    std::uint64_t keep =
        ~dropped(masks(bytes, size, at), bytes, size, at, carry) & in_stretch(size, at);
    while (keep != 0) {
      int const first = __builtin_ctzll(keep);
      std::uint64_t const run = ~(keep >> first);
      int const n = run == 0 ? 64 : __builtin_ctzll(run);
      end = copy_piece(end, bytes + at + first, static_cast<std::size_t>(n));
      keep = first + n == 64 ? 0 : keep & (~std::uint64_t{0} << (first + n));
    }
  });
  return static_cast<std::size_t>(end - out);
}

}  // namespace zelstr::tool
