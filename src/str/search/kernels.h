// kernels.h - the pair scan (kernel.h) this processor runs.
#ifndef ZELSTR_STR_SEARCH_KERNELS_H
#define ZELSTR_STR_SEARCH_KERNELS_H

#include <cstdint>

#include "frame/processor.h"
#include "str/search/plan.h"

namespace zelstr::str::search {

using PairScan = Found (*)(char const* text, char const* pattern, Plan const& plan,
                           Visitor const& visitor, std::uintptr_t limit);

// The kernel of the instruction set frame::kernel_isa() names, chosen once.
PairScan pair_scan_kernel();

// The kernel the build has for `isa`, whether or not this processor runs
// it; NULL when there is none (the x86-64 kernels elsewhere).
PairScan pair_scan_for(frame::Isa isa);

}  // namespace zelstr::str::search

#endif  // ZELSTR_STR_SEARCH_KERNELS_H
