// nibble_scan_avx2.cpp - the filter's scan with AVX2, thirty-two places at
// a time (the shuffle works within each 128-bit half, so the tables are
// repeated in both).  This file alone is compiled for AVX2.
#include "findmany/nibble_scan.h"
#include "frame/shuffle_avx2.h"

namespace zelstr::findmany {

NibbleScan nibble_scan_avx2() { return &scan_any_width<frame::Avx2Shuffle>; }

}  // namespace zelstr::findmany
