// processor.cpp - the instruction set the kernels are chosen by.
#include "frame/processor.h"

#include <cstdlib>
#include <cstring>

namespace zelstr::frame {

Isa processor_isa() noexcept {
#if ZELSTR_X86_KERNELS
  if (__builtin_cpu_supports("avx2")) return Isa::kAvx2;
  if (__builtin_cpu_supports("ssse3")) return Isa::kSsse3;
  return Isa::kSse2;  // every x86-64 processor has it
#elif ZELSTR_NEON_KERNELS
  return Isa::kNeon;  // part of the 64-bit ARM architecture
#else
  return Isa::kPortable;
#endif
}

namespace {

// The set ZELSTR_ISA names, or `widest` when it names none.
Isa asked_isa(Isa widest) {
  struct Name {
    char const* text;
    Isa isa;
  };
  static constexpr Name kNames[] = {{"portable", Isa::kPortable},
                                    {"sse2", Isa::kSse2},
                                    {"ssse3", Isa::kSsse3},
                                    {"avx2", Isa::kAvx2},
                                    {"neon", Isa::kNeon}};
  char const* const asked = std::getenv("ZELSTR_ISA");
  if (asked != nullptr) {
    for (Name const& name : kNames) {
      if (std::strcmp(asked, name.text) == 0) return name.isa;
    }
  }
  return widest;
}

}  // namespace

Isa kernel_isa() noexcept {
  static Isa const isa = [] {
    Isa const widest = processor_isa();
    Isa const asked = asked_isa(widest);
    return asked < widest ? asked : widest;
  }();
  return isa;
}

}  // namespace zelstr::frame
