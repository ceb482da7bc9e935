// failing_allocator.h - the allocator of the allocation-failure suite.
//
// The program that links failing_allocator.cpp replaces the C library's
// malloc family and the global operator new and delete for the whole
// process, the libraries included.  Allocations made while a LibraryCall
// is alive are counted; once armed, the N-th of them fails (malloc gives
// NULL, operator new throws std::bad_alloc, its nothrow form gives NULL),
// either alone or with every later one.  Blocks allocated inside library
// calls are remembered until they are freed, wherever that happens, so that
// a test can tell how many the library still holds.
//
// Linux only (the replacements forward to the C library's __libc_ entry
// points), and not under the sanitizers, which replace the same functions.
#ifndef ZELSTR_TESTS_SUPPORT_FAILING_ALLOCATOR_H
#define ZELSTR_TESTS_SUPPORT_FAILING_ALLOCATOR_H

#include <cstddef>

namespace zelstr::test::alloc {

enum class Failing {
  kNothing,     // count only
  kOnce,        // the N-th allocation fails, the later ones succeed
  kFromThenOn,  // the N-th allocation and every later one fail
};

// Marks the code that runs while it is alive as a call into the library:
// its allocations are counted, and the blocks it allocates remembered.
class LibraryCall {
 public:
  LibraryCall() noexcept;
  ~LibraryCall();
  LibraryCall(LibraryCall const&) = delete;
  LibraryCall& operator=(LibraryCall const&) = delete;
};

// Starts counting from zero; the allocation numbered `n` (from 1) fails as
// `how` says.
void arm(std::size_t n, Failing how) noexcept;

// Allocations counted since arm(), and how many of them were failed.
std::size_t counted() noexcept;
std::size_t failed() noexcept;

// Blocks allocated inside library calls and not freed yet.
std::size_t live_blocks() noexcept;

}  // namespace zelstr::test::alloc

#endif  // ZELSTR_TESTS_SUPPORT_FAILING_ALLOCATOR_H
