// kernel_avx2.cpp - the pair scan with AVX2, used when the processor has it.
// This file alone is compiled for AVX2.
#include <immintrin.h>

#include "str/search/kernel.h"

namespace zelstr::str::search {
namespace {

struct Avx2 {
  static constexpr std::size_t kWidth = 32;
  using Vec = __m256i;
  static Vec splat(unsigned char c) { return _mm256_set1_epi8(static_cast<char>(c)); }
  ZELSTR_PAST_TERMINATOR static Vec load_aligned(char const* p) {
    return _mm256_load_si256(reinterpret_cast<Vec const*>(p));
  }
  ZELSTR_PAST_TERMINATOR static Vec load_unaligned(char const* p) {
    return _mm256_loadu_si256(reinterpret_cast<Vec const*>(p));
  }
  static Vec eq(Vec a, Vec b) { return _mm256_cmpeq_epi8(a, b); }
  static Vec or_(Vec a, Vec b) { return _mm256_or_si256(a, b); }
  static Vec and_(Vec a, Vec b) { return _mm256_and_si256(a, b); }
  static std::uint32_t mask(Vec v) { return static_cast<std::uint32_t>(_mm256_movemask_epi8(v)); }
};

}  // namespace

Found pair_scan_avx2(char const* text, char const* pattern, Plan const& plan,
                     Visitor const& visitor, std::uintptr_t limit) {
  return pair_scan_dispatch<Avx2>(text, pattern, plan, visitor, limit);
}

}  // namespace zelstr::str::search
