// translate_avx2.cpp - the row kernel with AVX2, thirty-two bytes at a time
// (the shuffle works within each 128-bit half, so the rows are repeated in
// both).  This file alone is compiled for AVX2.
#include "frame/shuffle_avx2.h"
#include "map/translate_rows.h"

namespace zelstr::map {

TranslateKernel translate_avx2() { return &translate_rows<frame::Avx2Shuffle>; }

}  // namespace zelstr::map
