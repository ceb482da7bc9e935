// nibble_scan.h - the filter's scan, written once over a vector width.
//
// Included by one source file per instruction set (each compiled with its
// own flags); everything here has internal linkage so that no copy built
// for one instruction set can stand in for another.  V gives the vector
// type and its operations: load (unaligned), splat, the byte shuffle of a
// 16-entry table (repeated in every 128-bit lane), and, the high nibbles,
// and the mask of non-zero lanes.
#ifndef ZELSTR_FINDMANY_NIBBLE_SCAN_H
#define ZELSTR_FINDMANY_NIBBLE_SCAN_H

#include "findmany/nibble_filter.h"

namespace zelstr::findmany {
namespace {

template <class V, int kBytes>
Byte const* scan(NibbleTables const& t, Byte const* p, Byte const* end, Byte const** rest,
                 Accept accept, void const* context) {
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
  std::size_t const reach = V::kWidth + kBytes - 1;  // the bytes one vector of places reads
  for (; static_cast<std::size_t>(end - p) >= reach; p += V::kWidth) {
    for (std::uint32_t lanes = V::nonzero_lanes(buckets(p)); lanes != 0; lanes &= lanes - 1) {
      Byte const* const at = p + __builtin_ctz(lanes);
      if (accept(at, context)) return at;
    }
  }
  *rest = p;
  return end;
}

template <class V>
Byte const* scan_any_width(NibbleTables const& t, Byte const* p, Byte const* end, Byte const** rest,
                           Accept accept, void const* context) {
  switch (t.width) {
    case 1:
      return scan<V, 1>(t, p, end, rest, accept, context);
    case 2:
      return scan<V, 2>(t, p, end, rest, accept, context);
    default:
      return scan<V, 3>(t, p, end, rest, accept, context);
  }
}

}  // namespace
}  // namespace zelstr::findmany

#endif  // ZELSTR_FINDMANY_NIBBLE_SCAN_H
