// alloc.h - heap copies of strings, owned by the caller.
//
// A heap copy is released with _zstrdupfree (never with free or delete).
// None of these functions reports a warning: a NULL source gives NULL.
//
// Memory: no function of the library throws, here or in any other header
// (the C++17 helpers of zelstr.hpp excepted: they build std::strings).  When
// an allocation fails, a function returns the failure value its header
// names (NULL, 0, FALSE, its input unchanged) or, where its header says so,
// files the warning that goes with it; allocation_failures() below counts
// every such failure.  The state a function keeps between calls (zelstr.h)
// is static for the first thread that keeps any; every other thread
// allocates its own on first use, family by family.  Without memory for it
// the failure is counted and the call uses the static state, shared with
// the first thread: such calls are then safe one thread at a time only, and
// the thread tries again at its next call.
//
// Threads: every function here may run on several threads at once; none
// shares library-wide state.  A CStringAlloc, with the copies that share its
// text, belongs to one thread at a time.
#ifndef ZELSTR_ALLOC_H
#define ZELSTR_ALLOC_H

#include "zelstr/export.h"

// Returns a new block of strlen(src) + extra + 1 bytes holding a copy of
// `src` with its terminator; the `extra` bytes after the terminator are left
// as they are.  NULL when `src` is NULL or memory is short.
ZELSTR_API char* _zstrdupalloc(char const* src, unsigned int extra) noexcept;

// Returns a new block of n + extra + 1 bytes: the first `n` bytes of `src`
// copied as they stand (an earlier terminator is not looked for, so `src`
// must have `n` readable bytes) and a zero at position `n`.  NULL when `src`
// is NULL or memory is short.
ZELSTR_API char* _zstrdupnalloc(char const* src, unsigned int n, unsigned int extra) noexcept;

// Releases a block from _zstrdupalloc or _zstrdupnalloc, if `p` is not NULL,
// and sets `p` to NULL.
ZELSTR_API void _zstrdupfree(char*& p) noexcept;

// Owns a heap copy of a string (or NULL).
//
// Copying a CStringAlloc copies the pointer only: the copy and its source
// share one text, and destroying both releases that text twice.  Keep exactly
// one owner; pass the others as plain pointers.
class ZELSTR_API CStringAlloc {
 public:
  // Copies `src` (strlen + 1 bytes); holds NULL when `src` is NULL or
  // memory is short.
  CStringAlloc(char const* src) noexcept;
  // Releases the copy and sets the member to NULL.
  virtual ~CStringAlloc();

  CStringAlloc(CStringAlloc const&) = default;
  CStringAlloc& operator=(CStringAlloc const&) = default;

  operator char const*() const noexcept { return m_pszString; }
  operator char*() noexcept { return m_pszString; }

 private:
  char* m_pszString;
};

namespace zelstr {

// How many allocations the library could not make since it was loaded: each
// one was answered with a fallback value or warning.  A program that must
// tell such a fallback from an ordinary result (NULL from a search, say)
// compares the count before and after its calls.
ZELSTR_API unsigned long allocation_failures() noexcept;

}  // namespace zelstr

#endif  // ZELSTR_ALLOC_H
