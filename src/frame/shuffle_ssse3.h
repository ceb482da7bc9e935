// shuffle_ssse3.h - the vector operations of the kernels built on a byte
// shuffle (16-entry tables looked up by nibble), with SSSE3, sixteen bytes
// at a time.  Included only by files compiled for SSSE3; internal linkage,
// so that no copy built for one instruction set stands in for another.
#ifndef ZELSTR_FRAME_SHUFFLE_SSSE3_H
#define ZELSTR_FRAME_SHUFFLE_SSSE3_H

#include <tmmintrin.h>

#include <cstddef>
#include <cstdint>

namespace zelstr::frame {
namespace {

struct Ssse3Shuffle {
  using Byte = unsigned char;
  static constexpr std::size_t kWidth = 16;
  using Vec = __m128i;
  static Vec load(Byte const* p) { return _mm_loadu_si128(reinterpret_cast<Vec const*>(p)); }
  static void store(Byte* p, Vec v) { _mm_storeu_si128(reinterpret_cast<Vec*>(p), v); }
  static Vec table(Byte const (&t)[16]) { return load(t); }
  static Vec splat(Byte c) { return _mm_set1_epi8(static_cast<char>(c)); }
  static Vec shuffle(Vec table, Vec index) { return _mm_shuffle_epi8(table, index); }
  static Vec and_(Vec a, Vec b) { return _mm_and_si128(a, b); }
  static Vec or_(Vec a, Vec b) { return _mm_or_si128(a, b); }
  static Vec high_nibbles(Vec v) { return _mm_and_si128(_mm_srli_epi16(v, 4), splat(15)); }
  static Vec eq(Vec a, Vec b) { return _mm_cmpeq_epi8(a, b); }
  static Vec select(Vec mask, Vec yes, Vec no) {
    return _mm_or_si128(_mm_and_si128(mask, yes), _mm_andnot_si128(mask, no));
  }
  static std::uint32_t nonzero_lanes(Vec v) {
    return ~static_cast<std::uint32_t>(_mm_movemask_epi8(_mm_cmpeq_epi8(v, _mm_setzero_si128()))) &
           0xFFFFu;
  }
};

}  // namespace
}  // namespace zelstr::frame

#endif  // ZELSTR_FRAME_SHUFFLE_SSSE3_H
