// nibble_filter.h - a vector filter of the places where one of a few dozen
// strings may begin.
//
// The strings are dealt into eight buckets, and each of their first n
// bytes (n from 1 to 3, no longer than the shortest string) is recorded as
// two 16-entry tables per position: for a low nibble and for a high
// nibble, the buckets of the strings whose byte at that position has that
// nibble.  A text byte looks both of its nibbles up with one byte shuffle
// each, sixteen or thirty-two bytes at a time, and the bucket bits of the
// n bytes from a place are ANDed: a place survives when some bucket has a
// string whose first n bytes each share both nibbles with the text's.  The
// filter only ever passes too much, never too little, and a place that
// survives is then checked exactly.  (The shuffle-table design is the one
// published for Hyperscan's Teddy matcher.)
//
// Case folding and maps need no translation of the text: a string's byte
// is recorded for every text byte whose image it is.
//
// The scan is written once over the vector width; the source files of the
// instruction sets that have a byte shuffle (SSSE3, AVX2) instantiate it,
// and the processor's features choose among them at run time
// (frame/processor.h).  Without one the same tables are read byte by byte.
#ifndef ZELSTR_FINDMANY_NIBBLE_FILTER_H
#define ZELSTR_FINDMANY_NIBBLE_FILTER_H

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace zelstr::findmany {

using Byte = unsigned char;

struct NibbleTables {
  int width = 0;          // n: the bytes of a place that are looked at (0: no filter)
  Byte low[3][16] = {};   // per position: buckets by the low nibble
  Byte high[3][16] = {};  // per position: buckets by the high nibble

  // The buckets a place passes with (0: it begins no string).  Reads
  // `width` bytes from `p`.
  Byte buckets_at(Byte const* p) const {
    Byte b = 0xFF;
    for (int j = 0; j < width; ++j) b &= low[j][p[j] & 15] & high[j][p[j] >> 4];
    return b;
  }
};

// The tables for `images` (none empty), each byte recorded for every byte
// whose image it is through `table`; width 0 (no filter) when the images
// begin in more than kNibbleFilterMostPrefixes ways, where the filter
// would pass nearly every place.
inline constexpr std::size_t kNibbleFilterMostPrefixes = 64;
NibbleTables build_nibble_tables(std::vector<std::string const*> const& images, Byte const* table);

// A scan over one instruction set, from `p`, among the places whose whole
// vector fits before `end`: the first vector with a place that passes,
// with those places as bits of `lanes` (bit i: the place `at + i`) and
// `next` the first place after the vectors looked at; `lanes` 0 when no
// place passes, `next` then the first place not looked at.
struct Candidates {
  Byte const* at;
  std::uint64_t lanes;
  Byte const* next;
};
using NibbleScan = Candidates (*)(NibbleTables const&, Byte const* p, Byte const* end);
NibbleScan nibble_scan_ssse3();
NibbleScan nibble_scan_avx2();
NibbleScan nibble_scan_neon();

// The scan of this processor, chosen on first need; nullptr where there
// is none, and the tables are read byte by byte.
NibbleScan nibble_vector_scan();

// The places in [*p, end) that a vector scan finds are handed to `accept`,
// in order, until one passes (returned) or the scan finds no more (`end`
// returned, `*p` the first place not looked at).  The exact test is the
// caller's `accept(place)`, inlined: with a few dozen strings the filter
// passes a place in ten or so, and a call for each would cost more than
// the test.
template <class Accept>
Byte const* scan_places(NibbleScan scan, NibbleTables const& t, Byte const** p, Byte const* end,
                        Accept const& accept) {
  for (;;) {
    Candidates const found = scan(t, *p, end);
    *p = found.next;
    if (found.lanes == 0) return end;
    for (std::uint64_t lanes = found.lanes; lanes != 0; lanes &= lanes - 1) {
      Byte const* const at = found.at + __builtin_ctzll(lanes);
      if (accept(at)) return at;
    }
  }
}

// The same by reading the tables byte by byte, over every place with
// `width` bytes before `end`; `*p` ends at the first place not looked at.
template <class Accept>
Byte const* read_places(NibbleTables const& t, Byte const** p, Byte const* end,
                        Accept const& accept) {
  Byte const* at = *p;
  for (Byte const* const last = end - (t.width - 1); at < last; ++at) {
    if (t.buckets_at(at) != 0 && accept(at)) {
      *p = at;
      return at;
    }
  }
  *p = at;
  return end;
}

// The first place in [p, end) that passes the filter and `accept`, or
// `end`, for a caller with more text after `end` (measured a piece at a
// time): only the places a whole vector reaches are looked at, so that no
// place is read byte by byte at the piece's end; when none passes,
// `*rest` is the first place not looked at (where the next piece begins)
// and `end` is returned.  Without a vector scan, every place with `width`
// bytes before `end` is looked at.
template <class Accept>
Byte const* next_place_ahead(NibbleTables const& t, Byte const* p, Byte const* end,
                             Byte const** rest, Accept const& accept) {
  *rest = p;
  if (end - p < t.width) return end;
  if (NibbleScan const scan = nibble_vector_scan(); scan != nullptr) {
    return scan_places(scan, t, rest, end, accept);
  }
  return read_places(t, rest, end, accept);
}

// The same at the text's end: the places the vectors leave are read byte
// by byte, so that every place with `width` bytes before `end` is looked at
// (no string fits in the others).
template <class Accept>
Byte const* next_place(NibbleTables const& t, Byte const* p, Byte const* end,
                       Accept const& accept) {
  Byte const* rest = p;
  Byte const* const at = next_place_ahead(t, p, end, &rest, accept);
  return at != end ? at : read_places(t, &rest, end, accept);
}

}  // namespace zelstr::findmany

#endif  // ZELSTR_FINDMANY_NIBBLE_FILTER_H
