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

// Whole vectors only: the bytes after the last one are left to the caller.
template <class V>
Byte* translate_rows(TableRows const& t, Byte* from, Byte* to) {
  using Vec = typename V::Vec;
  Vec images[16], row_of[16];
  for (int k = 0; k < t.count; ++k) {
    images[k] = V::table(t.images[k]);
    row_of[k] = V::splat(t.rows[k]);
  }
  Vec const low = V::splat(15);
  Byte* p = from;
  for (; static_cast<std::size_t>(to - p) >= V::kWidth; p += V::kWidth) {
    Vec const v = V::load(p);
    Vec const index = V::and_(v, low), row = V::high_nibbles(v);
    Vec out = v;
    for (int k = 0; k < t.count; ++k) {
      out = V::select(V::eq(row, row_of[k]), V::shuffle(images[k], index), out);
    }
    V::store(p, out);
  }
  return p;
}

}  // namespace
}  // namespace zelstr::map

#endif  // ZELSTR_MAP_TRANSLATE_ROWS_H
