// allocation.h - where CGrwStr gets its memory, with a hook that lets the
// tests make allocations fail.
#ifndef ZELSTR_GRWSTR_ALLOCATION_H
#define ZELSTR_GRWSTR_ALLOCATION_H

#include <cstddef>

namespace zelstr::grwstr {

// A new array of `n` elements, or NULL when memory is short (or a failure
// was asked for); the failure is counted either way.
template <class T>
T* allocate(std::size_t n) noexcept;

// Makes the next `count` allocations of CGrwStr fail (tests only).
void fail_next_allocations(unsigned count) noexcept;

}  // namespace zelstr::grwstr

#endif  // ZELSTR_GRWSTR_ALLOCATION_H
