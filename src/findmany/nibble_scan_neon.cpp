// nibble_scan_neon.cpp - the filter's scan with Advanced SIMD's table
// look-up (TBL), sixteen places at a time, on 64-bit ARM, where every
// processor has it.
//
// Cost as designed, per sixteen places and for each of the (up to three)
// first bytes looked at: one load, an AND and a shift for the two nibbles,
// two TBL and three ANDs, seven instructions; then one UMAXV and a branch.
// With three bytes that is about 23 instructions per 16 bytes of text
// (under 1.5 a byte), all independent across the three bytes.
#include "findmany/nibble_scan.h"
#include "frame/shuffle_neon.h"

namespace zelstr::findmany {

NibbleScan nibble_scan_neon() { return &scan_any_width<frame::NeonShuffle>; }

}  // namespace zelstr::findmany
