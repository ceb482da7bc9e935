// nibble_scan_ssse3.cpp - the filter's scan with SSSE3's byte shuffle,
// sixteen places at a time.  This file alone is compiled for SSSE3.
#include <tmmintrin.h>

#include "findmany/nibble_scan.h"

namespace zelstr::findmany {
namespace {

struct Ssse3 {
  static constexpr std::size_t kWidth = 16;
  using Vec = __m128i;
  static Vec load(Byte const* p) { return _mm_loadu_si128(reinterpret_cast<Vec const*>(p)); }
  static Vec table(Byte const (&t)[16]) { return load(t); }
  static Vec splat(Byte c) { return _mm_set1_epi8(static_cast<char>(c)); }
  static Vec shuffle(Vec table, Vec index) { return _mm_shuffle_epi8(table, index); }
  static Vec and_(Vec a, Vec b) { return _mm_and_si128(a, b); }
  static Vec high_nibbles(Vec v) { return _mm_and_si128(_mm_srli_epi16(v, 4), splat(15)); }
  static std::uint32_t nonzero_lanes(Vec v) {
    return ~static_cast<std::uint32_t>(_mm_movemask_epi8(_mm_cmpeq_epi8(v, _mm_setzero_si128()))) &
           0xFFFFu;
  }
};

}  // namespace

NibbleScan nibble_scan_ssse3() { return &scan_any_width<Ssse3>; }

}  // namespace zelstr::findmany
