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
//
// A limit short of the terminator ends the scan too: no occurrence may end
// after it, and the text need not go on past it (a buffer of that length
// with no terminator is searched safely).  Candidates past the limit are
// dropped, and the scan stops before a group whose candidates all are: a
// group that is read holds a byte before the limit, so its aligned loads
// stay in a page the text reaches into, as at the terminator.
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

// The pair's matches in the block at `a` (bit i: the candidate whose k2
// byte is a[i]), and the block's zero bytes.
template <class V, bool kTwoVariants>
struct PairTest {
  typename V::Vec want1a, want1b, want2a, want2b, zero;
  std::size_t d;

  PairTest(Plan const& plan)
      : want1a(V::splat(plan.c1[0])),
        want1b(V::splat(plan.c1[1])),
        want2a(V::splat(plan.c2[0])),
        want2b(V::splat(plan.c2[1])),
        zero(V::splat(0)),
        d(plan.k2 - plan.k1) {}

  // Candidates or zeros, as one vector: cheap to test for "anything here".
  ZELSTR_PAST_TERMINATOR typename V::Vec hits(char const* a, typename V::Vec* zeros) const {
    auto const at_k2 = V::load_aligned(a);
    auto const at_k1 = V::load_unaligned(a - d);
    auto hit2 = V::eq(at_k2, want2a);
    auto hit1 = V::eq(at_k1, want1a);
    if (kTwoVariants) {
      hit2 = V::or_(hit2, V::eq(at_k2, want2b));
      hit1 = V::or_(hit1, V::eq(at_k1, want1b));
    }
    *zeros = V::eq(at_k2, zero);
    return V::and_(hit1, hit2);
  }
};

// Hands every occurrence that ends by `limit` to `visitor`, skipping
// candidates that start before the position the visitor gave last.
template <class V, bool kTwoVariants>
ZELSTR_PAST_TERMINATOR Found pair_scan(char const* text, char const* pattern, Plan const& plan,
                                       Visitor const& visitor, std::uintptr_t limit) {
  // The last start an occurrence may have, as an address.
  std::uintptr_t const last_start =
      limit - reinterpret_cast<std::uintptr_t>(text) < plan.length ? 0 : limit - plan.length;
  auto beyond = [last_start](char const* s) {
    return reinterpret_cast<std::uintptr_t>(s) > last_start;
  };
  std::size_t const width = V::kWidth;
  // Blocks are taken four at a time from an address aligned to four blocks:
  // such a group lies within one page.
  std::size_t const group = 4 * width;
  // Positions before the first aligned block that can hold a k2 byte.
  auto const first_block =
      (reinterpret_cast<std::uintptr_t>(text) + plan.k2 + width - 1) & ~std::uintptr_t{width - 1};
  char const* a = text + (first_block - reinterpret_cast<std::uintptr_t>(text));
  std::size_t const head = static_cast<std::size_t>(a - text);
  // The head is measured only as far as the limit allows.
  std::size_t const room = limit - reinterpret_cast<std::uintptr_t>(text);
  if (room < plan.length) return Found{};  // no occurrence fits
  std::size_t const asked = head < room ? head : room;
  std::size_t const short_length = ::strnlen(text, asked);
  if (short_length < head || room < head) {
    // A terminator counts only when it lies before the limit.
    char const* const end = short_length < asked ? text + short_length : nullptr;
    return Found{naive_walk(text, short_length < room ? short_length : room, text, pattern, plan,
                            visitor),
                 end, nullptr};
  }
  char const* allowed = text;  // no occurrence may start before this
  for (char const* s = text; s + plan.k2 < a; ++s) {
    if (beyond(s)) return Found{};
    if (s < allowed || !matches_at(s, pattern, plan, a)) continue;
    allowed = visitor(s);
    if (allowed == nullptr) return Found{s, nullptr, nullptr};
  }

  PairTest<V, kTwoVariants> const test(plan);
  std::size_t misses = 0;
  Found found;
  // Examines the block at `b`: true when the scan ends there (`found` says
  // how).
  auto ends_in_block = [&](char const* b) {
    typename V::Vec zero_vec;
    std::uint32_t candidates = V::mask(test.hits(b, &zero_vec));
    std::uint32_t const zeros = V::mask(zero_vec);
    char const* known = b + width;  // the text is known to reach here
    if (zeros != 0) {
      unsigned const t = lowest_bit(zeros);
      candidates &= (std::uint32_t{1} << t) - 1;
      known = b + t;
    }
    // A zero at or past the limit is no terminator of the searched text.
    char const* const end =
        zeros != 0 && reinterpret_cast<std::uintptr_t>(known) < limit ? known : nullptr;
    while (candidates != 0) {
      char const* const s = b + lowest_bit(candidates) - plan.k2;
      candidates &= candidates - 1;
      if (beyond(s)) {
        found = Found{};
        return true;
      }
      if (s < allowed) continue;
      if (matches_at(s, pattern, plan, known)) {
        allowed = visitor(s);
        if (allowed == nullptr) {
          found = Found{s, end, nullptr};
          return true;
        }
        continue;
      }
      if (too_many_misses(++misses, static_cast<std::size_t>(b - text))) {
        found = Found{nullptr, end, s + 1 > allowed ? s + 1 : allowed};
        return true;
      }
    }
    if (zeros == 0) return false;
    found = Found{nullptr, end, nullptr};
    return true;
  };

  for (; reinterpret_cast<std::uintptr_t>(a) % group != 0; a += width) {
    if (ends_in_block(a)) return found;
  }
  for (;; a += group) {
    if (beyond(a - plan.k2)) return Found{};
    typename V::Vec z0, z1, z2, z3;
    auto const h0 = test.hits(a, &z0);
    auto const h1 = test.hits(a + width, &z1);
    auto const h2 = test.hits(a + 2 * width, &z2);
    auto const h3 = test.hits(a + 3 * width, &z3);
    auto const any =
        V::or_(V::or_(V::or_(h0, z0), V::or_(h1, z1)), V::or_(V::or_(h2, z2), V::or_(h3, z3)));
    if (V::mask(any) == 0) continue;
    for (std::size_t i = 0; i < 4; ++i) {
      if (ends_in_block(a + i * width)) return found;
    }
  }
}

template <class V>
Found pair_scan_dispatch(char const* text, char const* pattern, Plan const& plan,
                         Visitor const& visitor, std::uintptr_t limit) {
  return plan.two_variants ? pair_scan<V, true>(text, pattern, plan, visitor, limit)
                           : pair_scan<V, false>(text, pattern, plan, visitor, limit);
}

}  // namespace
}  // namespace zelstr::str::search

#endif  // ZELSTR_STR_SEARCH_KERNEL_H
