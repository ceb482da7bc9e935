// translate_ssse3.cpp - the row kernel with SSSE3's byte shuffle, sixteen
// bytes at a time.  This file alone is compiled for SSSE3.
#include <tmmintrin.h>

#include "map/translate_rows.h"

namespace zelstr::map {
namespace {

struct Ssse3 {
  static constexpr std::size_t kWidth = 16;
  using Vec = __m128i;
  static Vec load(Byte const* p) { return _mm_loadu_si128(reinterpret_cast<Vec const*>(p)); }
  static void store(Byte* p, Vec v) { _mm_storeu_si128(reinterpret_cast<Vec*>(p), v); }
  static Vec table(Byte const (&t)[16]) { return load(t); }
  static Vec splat(Byte c) { return _mm_set1_epi8(static_cast<char>(c)); }
  static Vec shuffle(Vec table, Vec index) { return _mm_shuffle_epi8(table, index); }
  static Vec and_(Vec a, Vec b) { return _mm_and_si128(a, b); }
  static Vec high_nibbles(Vec v) { return _mm_and_si128(_mm_srli_epi16(v, 4), splat(15)); }
  static Vec eq(Vec a, Vec b) { return _mm_cmpeq_epi8(a, b); }
  static Vec select(Vec mask, Vec yes, Vec no) {
    return _mm_or_si128(_mm_and_si128(mask, yes), _mm_andnot_si128(mask, no));
  }
};

}  // namespace

TranslateKernel translate_ssse3() { return &translate_rows<Ssse3>; }

}  // namespace zelstr::map
