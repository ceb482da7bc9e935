// kernel_sse2.cpp - the pair scan with SSE2 (every x86-64 processor).
#include <emmintrin.h>

#include "str/search/kernel.h"

namespace zelstr::str::search {
namespace {

struct Sse2 {
  static constexpr std::size_t kWidth = 16;
  using Vec = __m128i;
  static Vec splat(unsigned char c) { return _mm_set1_epi8(static_cast<char>(c)); }
  ZELSTR_PAST_TERMINATOR static Vec load_aligned(char const* p) {
    return _mm_load_si128(reinterpret_cast<Vec const*>(p));
  }
  ZELSTR_PAST_TERMINATOR static Vec load_unaligned(char const* p) {
    return _mm_loadu_si128(reinterpret_cast<Vec const*>(p));
  }
  static Vec eq(Vec a, Vec b) { return _mm_cmpeq_epi8(a, b); }
  static Vec or_(Vec a, Vec b) { return _mm_or_si128(a, b); }
  static Vec and_(Vec a, Vec b) { return _mm_and_si128(a, b); }
  static std::uint32_t mask(Vec v) { return static_cast<std::uint32_t>(_mm_movemask_epi8(v)); }
};

}  // namespace

Found pair_scan_sse2(char const* text, char const* pattern, Plan const& plan,
                     Visitor const& visitor, std::uintptr_t limit) {
  return pair_scan_dispatch<Sse2>(text, pattern, plan, visitor, limit);
}

}  // namespace zelstr::str::search
