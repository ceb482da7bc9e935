// processor.cpp - the instruction set the kernels are chosen by.
#include "frame/processor.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>

namespace zelstr::frame {

Isa processor_isa() noexcept {
#if ZELSTR_X86_KERNELS
  if (__builtin_cpu_supports("avx2")) return Isa::kAvx2;
  if (__builtin_cpu_supports("ssse3")) return Isa::kSsse3;
  return Isa::kSse2;  // every x86-64 processor has it
#else
  return Isa::kPortable;
#endif
}

namespace {

Isa asked_isa() {
  struct Name {
    char const* text;
    Isa isa;
  };
  static constexpr Name kNames[] = {
      {"portable", Isa::kPortable}, {"sse2", Isa::kSse2}, {"ssse3", Isa::kSsse3}, {"avx2", Isa::kAvx2}};
  char const* const asked = std::getenv("ZELSTR_ISA");
  if (asked != nullptr) {
    for (Name const& name : kNames) {
      if (std::strcmp(asked, name.text) == 0) return name.isa;
    }
  }
  return Isa::kAvx2;
}

}  // namespace

Isa kernel_isa() noexcept {
  static Isa const isa = std::min(processor_isa(), asked_isa());
  return isa;
}

}  // namespace zelstr::frame
