// allocation.cpp - CGrwStr's memory, and the failure hook of the tests.
#include "grwstr/allocation.h"

#include "frame/memory.h"

namespace zelstr::grwstr {
namespace {

unsigned g_failures = 0;

}  // namespace

template <class T>
T* allocate(std::size_t n) noexcept {
  if (g_failures != 0) {
    --g_failures;
    frame::note_allocation_failure();
    return nullptr;
  }
  return frame::new_array<T>(n);
}

template char* allocate<char>(std::size_t) noexcept;
template char** allocate<char*>(std::size_t) noexcept;
template char*** allocate<char**>(std::size_t) noexcept;

void fail_next_allocations(unsigned count) noexcept { g_failures = count; }

}  // namespace zelstr::grwstr
