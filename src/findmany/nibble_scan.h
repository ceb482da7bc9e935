// nibble_scan.h - the filter's scan, written once over a vector width.
//
// Included by one source file per instruction set (each compiled with its
// own flags); everything here has internal linkage so that no copy built
// for one instruction set can stand in for another.  V gives the vector
// type and its operations: load (unaligned), splat, the byte shuffle of a
// 16-entry table (repeated in every 128-bit lane), and, or, the high
// nibbles, and the mask of non-zero lanes.
//
// The scan only finds the vectors with a passing place and leaves the exact
// test to its caller: with no call in its loop, the tables stay in
// registers for the whole scan.
#ifndef ZELSTR_FINDMANY_NIBBLE_SCAN_H
#define ZELSTR_FINDMANY_NIBBLE_SCAN_H

#include "findmany/nibble_filter.h"

namespace zelstr::findmany {
namespace {

template <class V, int kBytes>
Candidates scan(NibbleTables const& t, Byte const* p, Byte const* end) {
  using Vec = typename V::Vec;
  Vec low[kBytes], high[kBytes];
  for (int j = 0; j < kBytes; ++j) {
    low[j] = V::table(t.low[j]);
    high[j] = V::table(t.high[j]);
  }
  Vec const nibble = V::splat(15);
  // The buckets of the places of one vector, from the `kBytes` loads that
  // begin there, at p, p + 1, ...
  auto const buckets = [&](Byte const* at) {
    Vec r = V::splat(0xFF);
    for (int j = 0; j < kBytes; ++j) {
      Vec const v = V::load(at + j);
      r = V::and_(r, V::and_(V::shuffle(low[j], V::and_(v, nibble)),
                             V::shuffle(high[j], V::high_nibbles(v))));
    }
    return r;
  };
  constexpr std::size_t kWidth = V::kWidth;
  // Two vectors a step, so that one test and branch serve both.
  for (; static_cast<std::size_t>(end - p) >= 2 * kWidth + kBytes - 1; p += 2 * kWidth) {
    Vec const a = buckets(p);
    Vec const b = buckets(p + kWidth);
    if (V::nonzero_lanes(V::or_(a, b)) == 0) continue;
    std::uint64_t const lanes = V::nonzero_lanes(a) | std::uint64_t{V::nonzero_lanes(b)} << kWidth;
    return Candidates{p, lanes, p + 2 * kWidth};
  }
  if (static_cast<std::size_t>(end - p) >= kWidth + kBytes - 1) {
    if (std::uint64_t const lanes = V::nonzero_lanes(buckets(p)); lanes != 0) {
      return Candidates{p, lanes, p + kWidth};
    }
    p += kWidth;
  }
  return Candidates{p, 0, p};
}

template <class V>
Candidates scan_any_width(NibbleTables const& t, Byte const* p, Byte const* end) {
  switch (t.width) {
    case 1:
      return scan<V, 1>(t, p, end);
    case 2:
      return scan<V, 2>(t, p, end);
    default:
      return scan<V, 3>(t, p, end);
  }
}

}  // namespace
}  // namespace zelstr::findmany

#endif  // ZELSTR_FINDMANY_NIBBLE_SCAN_H
