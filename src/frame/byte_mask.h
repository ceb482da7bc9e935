// byte_mask.h - sixteen bytes compared at once with the compiler's generic
// vectors (every target turns them into its own instructions), and which
// of them a compare set, as the bits of a number: bit i for byte i.
//
// A compare gives 0xFF in each lane that holds and 0 elsewhere.  Every
// x86-64 processor has SSE2, whose byte-mask instruction gathers the lanes'
// top bits at once.  Elsewhere each half is read as a number, its lanes'
// low bits kept, and one multiply moves the eight bits side by side into
// its top byte.
#ifndef ZELSTR_FRAME_BYTE_MASK_H
#define ZELSTR_FRAME_BYTE_MASK_H

#include <bit>
#include <cstdint>
#include <cstring>
#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace zelstr::frame {

typedef unsigned char Bytes16 __attribute__((vector_size(16)));

inline Bytes16 load16(void const* p) {
  Bytes16 v;
  std::memcpy(&v, p, sizeof v);
  return v;
}

inline Bytes16 splat16(unsigned char c) { return Bytes16{} + c; }

// Bit i is set when lane i of `hit`, a compare's result, is: the form
// without the byte-mask instruction.
inline std::uint32_t byte_mask_by_multiply(Bytes16 hit) {
  std::uint64_t halves[2];
  std::memcpy(halves, &hit, sizeof halves);
  std::uint32_t mask = 0;
  for (int half = 0; half < 2; ++half) {
    std::uint64_t x = halves[half];
    if constexpr (std::endian::native == std::endian::big) x = __builtin_bswap64(x);
    x = (x >> 7) & 0x0101010101010101u;
    mask |= static_cast<std::uint32_t>((x * 0x0102040810204080u) >> 56) << (8 * half);
  }
  return mask;
}

inline std::uint32_t byte_mask(Bytes16 hit) {
#if defined(__SSE2__)
  __m128i h;
  std::memcpy(&h, &hit, sizeof h);
  return static_cast<std::uint32_t>(_mm_movemask_epi8(h));
#else
  return byte_mask_by_multiply(hit);
#endif
}

// 64 bytes, loaded once for many compares.
struct Bytes64 {
  Bytes16 part[4];
};

inline Bytes64 load64(void const* bytes) {
  Bytes64 v;
  for (int k = 0; k < 4; ++k) v.part[k] = load16(static_cast<char const*>(bytes) + 16 * k);
  return v;
}

// Bit i is set when byte i of `bytes` is `c`.
inline std::uint64_t equal_mask64(Bytes64 const& bytes, unsigned char c) {
  Bytes16 const splat = splat16(c);
  std::uint64_t mask = 0;
  for (int k = 0; k < 4; ++k) {
    auto const hit = reinterpret_cast<Bytes16>(bytes.part[k] == splat);
    mask |= std::uint64_t{byte_mask(hit)} << (16 * k);
  }
  return mask;
}

inline std::uint64_t equal_mask64(void const* bytes, unsigned char c) {
  return equal_mask64(load64(bytes), c);
}

}  // namespace zelstr::frame

#endif  // ZELSTR_FRAME_BYTE_MASK_H
