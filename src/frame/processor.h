// processor.h - which of the library's vector kernels this processor runs.
//
// The kernels live beside the code that uses them (str/search, findmany);
// each of those picks its kernel once, from kernel_isa().  The x86-64
// kernels are built only for x86-64 (the build defines ZELSTR_X86_KERNELS
// then), the Advanced SIMD ones only for 64-bit ARM (ZELSTR_NEON_KERNELS);
// every processor also runs the kernels written in the compiler's generic
// vectors, and byte by byte where a kernel has no form there.
#ifndef ZELSTR_FRAME_PROCESSOR_H
#define ZELSTR_FRAME_PROCESSOR_H

namespace zelstr::frame {

// Instruction sets, narrowest first within each architecture (x86-64:
// portable, sse2, ssse3, avx2; 64-bit ARM: portable, neon).
enum class Isa : int {
  kPortable = 0,  // the generic-vector and byte-by-byte kernels
  kSse2 = 1,
  kSsse3 = 2,
  kAvx2 = 3,
  kNeon = 4,  // Advanced SIMD, which every 64-bit ARM processor has
};

// The widest instruction set this processor has among those the library
// has kernels for (kPortable on processors that are neither x86-64 nor
// 64-bit ARM).
Isa processor_isa() noexcept;

// processor_isa(), or the narrower set the environment variable ZELSTR_ISA
// names ("portable", "sse2", "ssse3", "avx2" or "neon"; any other value,
// or a wider set, asks nothing), so that tests and benchmarks can run each
// kernel the build has.  Read once.
Isa kernel_isa() noexcept;

}  // namespace zelstr::frame

#endif  // ZELSTR_FRAME_PROCESSOR_H
