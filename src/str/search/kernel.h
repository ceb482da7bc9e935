// kernel.h - the pair scan, written once over a vector width.
//
// Included by one source file per instruction set (each compiled with its
// own flags); everything here has internal linkage so that no copy built for
// one instruction set can stand in for another.
//
// The scan walks the text in aligned blocks.  An aligned block never crosses
// a page, so loading it is safe as long as the string reaches into it, even
// when the terminator lies inside: bytes past the terminator are loaded but
// masked off.  The loads of the other byte of the pair start d = k2 - k1
// bytes earlier, inside text already known to be free of the terminator.
// Those reads past the terminator are deliberate, so the address sanitizer
// does not watch this function; the full comparisons it calls are watched.
#ifndef ZELSTR_STR_SEARCH_KERNEL_H
#define ZELSTR_STR_SEARCH_KERNEL_H

#include <cstdint>
#include <cstring>

#include "str/search/plan.h"
#include "str/search/verify.h"

// Marks the scan and the vector loads it makes (which may run past the
// terminator inside an aligned block) as unwatched by the address sanitizer.
#define ZELSTR_PAST_TERMINATOR __attribute__((no_sanitize_address))

namespace zelstr::str::search {
namespace {

inline unsigned lowest_bit(std::uint32_t mask) {
  return static_cast<unsigned>(__builtin_ctz(mask));
}

// True when the budget of failed full comparisons is spent: more than one
// per eight bytes scanned means the pair is too common in this text.
inline bool too_many_misses(std::size_t misses, std::size_t scanned) {
  return misses > 16 + scanned / 8;
}

template <class V, bool kTwoVariants>
ZELSTR_PAST_TERMINATOR Found pair_scan(char const* text, char const* pattern, Plan const& plan) {
  std::size_t const width = V::kWidth;
  std::size_t const d = plan.k2 - plan.k1;
  // Positions before the first aligned block that can hold a k2 byte.
  auto const first_block =
      (reinterpret_cast<std::uintptr_t>(text) + plan.k2 + width - 1) & ~std::uintptr_t{width - 1};
  char const* a = text + (first_block - reinterpret_cast<std::uintptr_t>(text));
  std::size_t const head = static_cast<std::size_t>(a - text);
  std::size_t const short_length = ::strnlen(text, head);
  if (short_length < head) {
    return Found{naive_find(text, short_length, pattern, plan), text + short_length, nullptr};
  }
  for (std::size_t s = 0; s + plan.k2 < head; ++s) {
    if (matches_at(text + s, pattern, plan, a)) return Found{text + s, nullptr, nullptr};
  }

  auto const want1a = V::splat(plan.c1[0]), want1b = V::splat(plan.c1[1]);
  auto const want2a = V::splat(plan.c2[0]), want2b = V::splat(plan.c2[1]);
  auto const zero = V::splat(0);
  std::size_t misses = 0;
  for (;; a += width) {
    auto const at_k2 = V::load_aligned(a);
    auto const at_k1 = V::load_unaligned(a - d);
    auto hit2 = V::eq(at_k2, want2a);
    auto hit1 = V::eq(at_k1, want1a);
    if (kTwoVariants) {
      hit2 = V::or_(hit2, V::eq(at_k2, want2b));
      hit1 = V::or_(hit1, V::eq(at_k1, want1b));
    }
    std::uint32_t candidates = V::mask(V::and_(hit1, hit2));
    std::uint32_t const zeros = V::mask(V::eq(at_k2, zero));
    char const* known = a + width;  // the text is known to reach here
    if (zeros != 0) {
      unsigned const t = lowest_bit(zeros);
      candidates &= (std::uint32_t{1} << t) - 1;
      known = a + t;
    }
    while (candidates != 0) {
      char const* const s = a + lowest_bit(candidates) - plan.k2;
      if (matches_at(s, pattern, plan, known)) {
        return Found{s, zeros != 0 ? known : nullptr, nullptr};
      }
      candidates &= candidates - 1;
      if (too_many_misses(++misses, static_cast<std::size_t>(a - text))) {
        return Found{nullptr, zeros != 0 ? known : nullptr, s + 1};
      }
    }
    if (zeros != 0) return Found{nullptr, known, nullptr};
  }
}

template <class V>
Found pair_scan_dispatch(char const* text, char const* pattern, Plan const& plan) {
  return plan.two_variants ? pair_scan<V, true>(text, pattern, plan)
                           : pair_scan<V, false>(text, pattern, plan);
}

}  // namespace
}  // namespace zelstr::str::search

#endif  // ZELSTR_STR_SEARCH_KERNEL_H
