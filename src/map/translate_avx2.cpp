// translate_avx2.cpp - the row kernel with AVX2, thirty-two bytes at a time
// (the shuffle works within each 128-bit half, so the rows are repeated in
// both).  This file alone is compiled for AVX2.
#include <immintrin.h>

#include "map/translate_rows.h"

namespace zelstr::map {
namespace {

struct Avx2 {
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
  static Vec high_nibbles(Vec v) { return _mm256_and_si256(_mm256_srli_epi16(v, 4), splat(15)); }
  static Vec eq(Vec a, Vec b) { return _mm256_cmpeq_epi8(a, b); }
  static Vec select(Vec mask, Vec yes, Vec no) { return _mm256_blendv_epi8(no, yes, mask); }
};

}  // namespace

TranslateKernel translate_avx2() { return &translate_rows<Avx2>; }

}  // namespace zelstr::map
