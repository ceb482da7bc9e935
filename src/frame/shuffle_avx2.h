// shuffle_avx2.h - the vector operations of the kernels built on a byte
// shuffle (16-entry tables looked up by nibble), with AVX2, thirty-two
// bytes at a time: the shuffle works within each 128-bit half, so a table
// is repeated in both.  Included only by files compiled for AVX2; internal
// linkage, so that no copy built for one instruction set stands in for
// another.
#ifndef ZELSTR_FRAME_SHUFFLE_AVX2_H
#define ZELSTR_FRAME_SHUFFLE_AVX2_H

#include <immintrin.h>

#include <cstddef>
#include <cstdint>

namespace zelstr::frame {
namespace {

struct Avx2Shuffle {
  using Byte = unsigned char;
  static constexpr std::size_t kWidth = 32;
  using Vec = __m256i;
  static Vec load(Byte const* p) { return _mm256_loadu_si256(reinterpret_cast<Vec const*>(p)); }
  static void store(Byte* p, Vec v) { _mm256_storeu_si256(reinterpret_cast<Vec*>(p), v); }
  static Vec table(Byte const (&t)[16]) {
    return _mm256_broadcastsi128_si256(_mm_loadu_si128(reinterpret_cast<__m128i const*>(t)));
  }
  static Vec splat(Byte c) { return _mm256_set1_epi8(static_cast<char>(c)); }
  static Vec shuffle(Vec table, Vec index) { return _mm256_shuffle_epi8(table, index); }
  static Vec and_(Vec a, Vec b) { return _mm256_and_si256(a, b); }
  static Vec or_(Vec a, Vec b) { return _mm256_or_si256(a, b); }
  static Vec high_nibbles(Vec v) { return _mm256_and_si256(_mm256_srli_epi16(v, 4), splat(15)); }
  static Vec eq(Vec a, Vec b) { return _mm256_cmpeq_epi8(a, b); }
  static Vec select(Vec mask, Vec yes, Vec no) { return _mm256_blendv_epi8(no, yes, mask); }
  static std::uint32_t nonzero_lanes(Vec v) {
    return ~static_cast<std::uint32_t>(
        _mm256_movemask_epi8(_mm256_cmpeq_epi8(v, _mm256_setzero_si256())));
  }
};

}  // namespace
}  // namespace zelstr::frame

#endif  // ZELSTR_FRAME_SHUFFLE_AVX2_H
