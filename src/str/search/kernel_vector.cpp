// kernel_vector.cpp - the pair scan in the compiler's generic vectors of
// sixteen bytes: Advanced SIMD (NEON) on 64-bit ARM, SSE2 on x86-64 (where
// it stands in only when ZELSTR_ISA asks for the portable kernels), words
// or single bytes on processors with no vectors, as the compiler lowers
// them.
//
// No instruction gathers a byte mask on ARM, so mask() gathers the top bit
// of each byte of each half with one multiplication: for a block with no
// candidate and no zero byte (the usual case) the scan pays four logical
// operations, two compares, two loads and the two multiplications of the
// group's test per sixteen bytes.
#include <bit>
#include <cstdint>
#include <cstring>

#include "str/search/kernel.h"

namespace zelstr::str::search {
namespace {

static_assert(std::endian::native == std::endian::little);

typedef unsigned char Bytes16 __attribute__((vector_size(16)));
// Loads of the text's bytes: allowed to alias them, the second at any
// address.
typedef unsigned char Aligned16 __attribute__((vector_size(16), may_alias));
typedef unsigned char Unaligned16 __attribute__((vector_size(16), aligned(1), may_alias));

// Bit i: the top bit of byte i of `word`.
inline std::uint32_t top_bits(std::uint64_t word) {
  return static_cast<std::uint32_t>(((word & 0x8080808080808080u) * 0x0002040810204081u) >> 56);
}

struct Vector {
  static constexpr std::size_t kWidth = 16;
  using Vec = Bytes16;
  static Vec splat(unsigned char c) { return Vec{} + c; }
  ZELSTR_PAST_TERMINATOR static Vec load_aligned(char const* p) {
    return *reinterpret_cast<Aligned16 const*>(p);
  }
  ZELSTR_PAST_TERMINATOR static Vec load_unaligned(char const* p) {
    return *reinterpret_cast<Unaligned16 const*>(p);
  }
  static Vec eq(Vec a, Vec b) { return __builtin_convertvector(a == b, Vec); }
  static Vec or_(Vec a, Vec b) { return a | b; }
  static Vec and_(Vec a, Vec b) { return a & b; }
  static std::uint32_t mask(Vec v) {
    std::uint64_t halves[2];
    std::memcpy(halves, &v, sizeof halves);
    return top_bits(halves[0]) | top_bits(halves[1]) << 8;
  }
};

}  // namespace

Found pair_scan_vector(char const* text, char const* pattern, Plan const& plan,
                       Visitor const& visitor, std::uintptr_t limit) {
  return pair_scan_dispatch<Vector>(text, pattern, plan, visitor, limit);
}

}  // namespace zelstr::str::search
