// packed_word.h - a short word as three 64-bit numbers.
//
// A word of at most 24 bytes is kept as three 64-bit numbers holding its
// bytes big-endian, padded with zero bytes.  Comparing two packed words
// number by number compares the words byte by byte (unsigned bytes, the
// first difference decides, a shorter word that is a prefix of the other
// first), and two words are equal when their three numbers are.
//
// Words are packed upper-cased (ASCII letters only, as the C run-time
// does), in two ways that give the same numbers: byte by byte for the
// compiler, which builds the word sets, and by whole loads at run time,
// where a word is packed for each look-up.
#ifndef ZELSTR_SQL_PACKED_WORD_H
#define ZELSTR_SQL_PACKED_WORD_H

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>

namespace zelstr::sql {

inline constexpr std::size_t kPackedBytes = 24;

struct PackedWord {
  std::uint64_t part[3] = {};

  constexpr bool operator==(PackedWord const&) const = default;
  constexpr bool operator<(PackedWord const& o) const {
    for (int i = 0; i < 3; ++i) {
      if (part[i] != o.part[i]) return part[i] < o.part[i];
    }
    return false;
  }
};

// Upper case by the C run-time rules: ASCII letters only.
constexpr unsigned char upper_ascii(char c) {
  auto const u = static_cast<unsigned char>(c);
  return (u >= 'a' && u <= 'z') ? static_cast<unsigned char>(u - 'a' + 'A') : u;
}

// The upper case of the `length` (at most 24) bytes at `word`, packed one
// byte at a time.
constexpr PackedWord pack_upper(char const* word, std::size_t length) {
  PackedWord packed;
  for (std::size_t i = 0; i < length; ++i) {
    packed.part[i / 8] |= std::uint64_t{upper_ascii(word[i])} << (8 * (7 - i % 8));
  }
  return packed;
}

// The number of bytes of a packed word.
constexpr std::size_t packed_length(PackedWord const& w) {
  std::size_t n = 0;
  while (n < kPackedBytes && ((w.part[n / 8] >> (8 * (7 - n % 8))) & 0xFF) != 0) ++n;
  return n;
}

namespace packing {

inline constexpr std::uint64_t kEachByte = 0x0101010101010101;

// `n` (1, 2, 4 or 8) bytes at `p` as a big-endian number.
template <typename Number>
std::uint64_t load_big_endian(char const* p) {
  Number n;
  std::memcpy(&n, p, sizeof n);
  if constexpr (std::endian::native == std::endian::little) {
    if constexpr (sizeof n == 8) n = __builtin_bswap64(n);
    if constexpr (sizeof n == 4) n = __builtin_bswap32(n);
    if constexpr (sizeof n == 2) n = __builtin_bswap16(n);
  }
  return n;
}

// The `n` (0 to 8) bytes at `p` in the top bytes of a number, the rest
// zero.  Two loads that may overlap cover 2 to 7 bytes; bytes read twice
// are the same, so or-ing them does no harm.  Nothing past p + n is read.
inline std::uint64_t load_top(char const* p, std::size_t n) {
  if (n >= 4) {
    if (n == 8) return load_big_endian<std::uint64_t>(p);
    return (load_big_endian<std::uint32_t>(p) << 32) |
           (load_big_endian<std::uint32_t>(p + n - 4) << (8 * (8 - n)));
  }
  if (n >= 2) {
    return (load_big_endian<std::uint16_t>(p) << 48) |
           (load_big_endian<std::uint16_t>(p + n - 2) << (8 * (8 - n)));
  }
  return n == 0 ? 0 : std::uint64_t{static_cast<unsigned char>(*p)} << 56;
}

// The upper case of eight bytes at once: a byte from 'a' to 'z' loses its
// 0x20 bit.  Below 0x80, adding 0x1F sets a byte's top bit exactly when it
// is 'a' or above, adding 0x05 exactly when it is above 'z'; neither sum
// carries into the next byte.  Bytes of 0x80 and above are left alone.
inline std::uint64_t upper_ascii8(std::uint64_t x) {
  std::uint64_t const low7 = x & (0x7F * kEachByte);
  std::uint64_t const from_a = low7 + (0x80 - 'a') * kEachByte;
  std::uint64_t const past_z = low7 + (0x80 - 'z' - 1) * kEachByte;
  std::uint64_t const lower = from_a & ~past_z & ~x & (0x80 * kEachByte);
  return x ^ (lower >> 2);
}

}  // namespace packing

// The same as pack_upper, by whole loads: for words packed at run time.
inline PackedWord pack_upper_loaded(char const* word, std::size_t length) {
  PackedWord packed;
  for (std::size_t i = 0; i < 3 && 8 * i < length; ++i) {
    std::size_t const n = length - 8 * i < 8 ? length - 8 * i : 8;
    packed.part[i] = packing::upper_ascii8(packing::load_top(word + 8 * i, n));
  }
  return packed;
}

}  // namespace zelstr::sql

#endif  // ZELSTR_SQL_PACKED_WORD_H
