// translate_neon.cpp - the row kernel with Advanced SIMD's table look-up
// (TBL), sixteen bytes at a time, on 64-bit ARM, where every processor has
// it.
#include <arm_neon.h>

#include "map/translate_rows.h"

namespace zelstr::map {
namespace {

struct Neon {
  static constexpr std::size_t kWidth = 16;
  using Vec = uint8x16_t;
  static Vec load(Byte const* p) { return vld1q_u8(p); }
  static void store(Byte* p, Vec v) { vst1q_u8(p, v); }
  static Vec table(Byte const (&t)[16]) { return vld1q_u8(t); }
  static Vec splat(Byte c) { return vdupq_n_u8(c); }
  static Vec shuffle(Vec table, Vec index) { return vqtbl1q_u8(table, index); }
  static Vec and_(Vec a, Vec b) { return vandq_u8(a, b); }
  static Vec high_nibbles(Vec v) { return vshrq_n_u8(v, 4); }
  static Vec eq(Vec a, Vec b) { return vceqq_u8(a, b); }
  static Vec select(Vec mask, Vec yes, Vec no) { return vbslq_u8(mask, yes, no); }
};

}  // namespace

TranslateKernel translate_neon() { return &translate_rows<Neon>; }

}  // namespace zelstr::map
