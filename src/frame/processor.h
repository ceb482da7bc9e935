// processor.h - which of the library's vector kernels this processor runs.
//
// The kernels live beside the code that uses them (str/search, findmany);
// each of those picks its kernel once, from kernel_isa().  The x86-64
// kernels are built only for x86-64 (the build defines ZELSTR_X86_KERNELS
// then); every other processor runs the kernels written in the compiler's
// generic vectors (Advanced SIMD on 64-bit ARM) or byte by byte.
#ifndef ZELSTR_FRAME_PROCESSOR_H
#define ZELSTR_FRAME_PROCESSOR_H

namespace zelstr::frame {

// Instruction sets, narrowest first.
enum class Isa : int {
  kPortable = 0,  // the generic-vector and byte-by-byte kernels
  kSse2 = 1,
  kSsse3 = 2,
  kAvx2 = 3,
};

// The widest instruction set this processor has among those the library
// has kernels for (kPortable on processors other than x86-64).
Isa processor_isa() noexcept;

// processor_isa(), no wider than the environment variable ZELSTR_ISA asks
// ("portable", "sse2", "ssse3" or "avx2"; any other value asks nothing), so
// that tests and benchmarks can run each kernel the build has.  Read once.
Isa kernel_isa() noexcept;

}  // namespace zelstr::frame

#endif  // ZELSTR_FRAME_PROCESSOR_H
