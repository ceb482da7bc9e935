// translate_rows.h - the row kernel, written once over a vector width.
//
// Included by one source file per instruction set (each compiled with its
// own flags); everything here has internal linkage so that no copy built
// for one instruction set can stand in for another.  V gives the vector
// type and its operations: unaligned load and store, splat, the byte
// shuffle of a 16-entry table (repeated in every 128-bit lane), and, the
// high nibbles, the lanes that are equal, and the choice between two
// vectors by a mask.
#ifndef ZELSTR_MAP_TRANSLATE_ROWS_H
#define ZELSTR_MAP_TRANSLATE_ROWS_H

#include "map/translate.h"

namespace zelstr::map {
namespace {

// Lanes 0 to n-1 of a vector loaded from kFirstLanes + 32 - n are all ones,
// the others zero (n from 0 to 32).
alignas(64) constexpr Byte kFirstLanes[64] = {
    0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF,
    0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF};

// A span of a vector or more is translated whole: its last vector is
// loaded before anything is stored, and stored last, over the end of the
// one before it, so that no byte is left to a loop.  A shorter span is
// translated in one vector when a vector's width from `from` lies before
// `limit` (the bytes after `to` are written back as they were), and left
// to the caller otherwise.
template <class V>
Byte* translate_rows(TableRows const& t, Byte* from, Byte* to, Byte const* limit) {
  using Vec = typename V::Vec;
  std::size_t const length = static_cast<std::size_t>(to - from);
  if (length < V::kWidth && static_cast<std::size_t>(limit - from) < V::kWidth) return from;
  Vec images[16], row_of[16];
  for (int k = 0; k < t.count; ++k) {
    images[k] = V::table(t.images[k]);
    row_of[k] = V::splat(t.rows[k]);
  }
  Vec const low = V::splat(15);
  auto const translated = [&](Vec v) {
    Vec const index = V::and_(v, low), row = V::high_nibbles(v);
    Vec out = v;
    for (int k = 0; k < t.count; ++k) {
      out = V::select(V::eq(row, row_of[k]), V::shuffle(images[k], index), out);
    }
    return out;
  };
  if (length < V::kWidth) {
    Vec const v = V::load(from);
    V::store(from, V::select(V::load(kFirstLanes + 32 - length), translated(v), v));
    return to;
  }
  Vec const last = V::load(to - V::kWidth);
  for (Byte* p = from; static_cast<std::size_t>(to - p) > V::kWidth; p += V::kWidth) {
    V::store(p, translated(V::load(p)));
  }
  V::store(to - V::kWidth, translated(last));
  return to;
}

}  // namespace
}  // namespace zelstr::map

#endif  // ZELSTR_MAP_TRANSLATE_ROWS_H
