// nibble_scan_ssse3.cpp - the filter's scan with SSSE3's byte shuffle,
// sixteen places at a time.  This file alone is compiled for SSSE3.
#include "findmany/nibble_scan.h"
#include "frame/shuffle_ssse3.h"

namespace zelstr::findmany {

NibbleScan nibble_scan_ssse3() { return &scan_any_width<frame::Ssse3Shuffle>; }

}  // namespace zelstr::findmany
