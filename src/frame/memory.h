// memory.h - how the library's code gets memory of its own.
//
// Nothing the library allocates may throw out of it: every allocation is
// made in a form that gives NULL (or is caught where the standard library
// throws), and the caller answers with its fallback.  Each failure is
// counted first, so that a program can tell a fallback caused by short
// memory from an ordinary result (zelstr::allocation_failures, alloc.h).
#ifndef ZELSTR_FRAME_MEMORY_H
#define ZELSTR_FRAME_MEMORY_H

#include <cstddef>
#include <new>

namespace zelstr::frame {

// Counts one allocation the library could not make.
void note_allocation_failure() noexcept;

// A new array of `n` elements (release it with delete[]), or NULL, counted,
// when memory is short.
template <class T>
T* new_array(std::size_t n) noexcept {
  T* const p = new (std::nothrow) T[n];
  if (p == nullptr) note_allocation_failure();
  return p;
}

// Tells whether an allocation of the library failed while it was alive: a
// caller that gets "not found" from a search it made can tell whether the
// search could run at all.
class FailureWatch {
 public:
  FailureWatch() noexcept;
  bool failed() const noexcept;

 private:
  unsigned long m_before;
};

}  // namespace zelstr::frame

#endif  // ZELSTR_FRAME_MEMORY_H
