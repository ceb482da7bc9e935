// kernels.cpp - choosing the pair scan: AVX2 or SSE2 on x86-64, the
// generic-vector kernel everywhere else (and on x86-64 when ZELSTR_ISA
// asks for it).
#include "str/search/kernels.h"

namespace zelstr::str::search {

Found pair_scan_vector(char const* text, char const* pattern, Plan const& plan,
                       Visitor const& visitor, std::uintptr_t limit);
#if ZELSTR_X86_KERNELS
Found pair_scan_sse2(char const* text, char const* pattern, Plan const& plan,
                     Visitor const& visitor, std::uintptr_t limit);
Found pair_scan_avx2(char const* text, char const* pattern, Plan const& plan,
                     Visitor const& visitor, std::uintptr_t limit);
#endif

PairScan pair_scan_for(frame::Isa isa) {
  switch (isa) {
#if ZELSTR_X86_KERNELS
    case frame::Isa::kAvx2:
      return &pair_scan_avx2;
    case frame::Isa::kSsse3:
    case frame::Isa::kSse2:
      return &pair_scan_sse2;
#endif
    case frame::Isa::kPortable:
      return &pair_scan_vector;
    default:
      return nullptr;
  }
}

PairScan pair_scan_kernel() {
  static PairScan const kernel = [] {
    PairScan const wanted = pair_scan_for(frame::kernel_isa());
    return wanted != nullptr ? wanted : &pair_scan_vector;
  }();
  return kernel;
}

}  // namespace zelstr::str::search
