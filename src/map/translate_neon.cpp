// translate_neon.cpp - the row kernel with Advanced SIMD's table look-up
// (TBL), sixteen bytes at a time, on 64-bit ARM, where every processor has
// it.
#include "frame/shuffle_neon.h"
#include "map/translate_rows.h"

namespace zelstr::map {

TranslateKernel translate_neon() { return &translate_rows<frame::NeonShuffle>; }

}  // namespace zelstr::map
