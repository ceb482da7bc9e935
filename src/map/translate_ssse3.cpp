// translate_ssse3.cpp - the row kernel with SSSE3's byte shuffle, sixteen
// bytes at a time.  This file alone is compiled for SSSE3.
#include "frame/shuffle_ssse3.h"
#include "map/translate_rows.h"

namespace zelstr::map {

TranslateKernel translate_ssse3() { return &translate_rows<frame::Ssse3Shuffle>; }

}  // namespace zelstr::map
