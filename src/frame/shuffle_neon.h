// shuffle_neon.h - the vector operations of the kernels built on a byte
// shuffle (16-entry tables looked up by nibble), with Advanced SIMD's
// table look-up (TBL), sixteen bytes at a time, on 64-bit ARM, where every
// processor has it.  Internal linkage, as for the x86-64 forms.
#ifndef ZELSTR_FRAME_SHUFFLE_NEON_H
#define ZELSTR_FRAME_SHUFFLE_NEON_H

#include <arm_neon.h>

#include <cstddef>
#include <cstdint>

namespace zelstr::frame {
namespace {

struct NeonShuffle {
  using Byte = unsigned char;
  static constexpr std::size_t kWidth = 16;
  using Vec = uint8x16_t;
  static Vec load(Byte const* p) { return vld1q_u8(p); }
  static void store(Byte* p, Vec v) { vst1q_u8(p, v); }
  static Vec table(Byte const (&t)[16]) { return vld1q_u8(t); }
  static Vec splat(Byte c) { return vdupq_n_u8(c); }
  static Vec shuffle(Vec table, Vec index) { return vqtbl1q_u8(table, index); }
  static Vec and_(Vec a, Vec b) { return vandq_u8(a, b); }
  static Vec or_(Vec a, Vec b) { return vorrq_u8(a, b); }
  static Vec high_nibbles(Vec v) { return vshrq_n_u8(v, 4); }
  static Vec eq(Vec a, Vec b) { return vceqq_u8(a, b); }
  static Vec select(Vec mask, Vec yes, Vec no) { return vbslq_u8(mask, yes, no); }
  // ARM has no byte mask instruction: most blocks have no place at all,
  // which one maximum across the lanes tells; the others weigh each
  // non-zero lane by its bit and add each half across.
  static std::uint32_t nonzero_lanes(Vec v) {
    if (vmaxvq_u8(v) == 0) return 0;
    static constexpr Byte kBits[16] = {1, 2, 4, 8, 16, 32, 64, 128, 1, 2, 4, 8, 16, 32, 64, 128};
    Vec const bits = vandq_u8(vtstq_u8(v, v), vld1q_u8(kBits));
    return vaddv_u8(vget_low_u8(bits)) | std::uint32_t{vaddv_u8(vget_high_u8(bits))} << 8;
  }
};

}  // namespace
}  // namespace zelstr::frame

#endif  // ZELSTR_FRAME_SHUFFLE_NEON_H
