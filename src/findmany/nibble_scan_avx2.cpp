// nibble_scan_avx2.cpp - the filter's scan with AVX2, thirty-two places at
// a time (the shuffle works within each 128-bit half, so the tables are
// repeated in both).  This file alone is compiled for AVX2.
#include <immintrin.h>

#include "findmany/nibble_scan.h"

namespace zelstr::findmany {
namespace {

struct Avx2 {
  static constexpr std::size_t kWidth = 32;
  using Vec = __m256i;
  static Vec load(Byte const* p) { return _mm256_loadu_si256(reinterpret_cast<Vec const*>(p)); }
  static Vec table(Byte const (&t)[16]) {
    return _mm256_broadcastsi128_si256(_mm_loadu_si128(reinterpret_cast<__m128i const*>(t)));
  }
  static Vec splat(Byte c) { return _mm256_set1_epi8(static_cast<char>(c)); }
  static Vec shuffle(Vec table, Vec index) { return _mm256_shuffle_epi8(table, index); }
  static Vec and_(Vec a, Vec b) { return _mm256_and_si256(a, b); }
  static Vec high_nibbles(Vec v) { return _mm256_and_si256(_mm256_srli_epi16(v, 4), splat(15)); }
  static std::uint32_t nonzero_lanes(Vec v) {
    return ~static_cast<std::uint32_t>(
        _mm256_movemask_epi8(_mm256_cmpeq_epi8(v, _mm256_setzero_si256())));
  }
};

}  // namespace

NibbleScan nibble_scan_avx2() { return &scan_any_width<Avx2>; }

}  // namespace zelstr::findmany
