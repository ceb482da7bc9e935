// allocation.cpp - CGrwStr's memory, and the failure hook of the tests.
#include "grwstr/allocation.h"

#include <atomic>

#include "frame/memory.h"

namespace zelstr::grwstr {
namespace {

// Allocations still to fail; only the tests set it.
std::atomic<unsigned> g_failures{0};

// Takes one failure off the count; false when none is left.
bool take_failure() {
  unsigned n = g_failures.load(std::memory_order_relaxed);
  while (n != 0 && !g_failures.compare_exchange_weak(n, n - 1, std::memory_order_relaxed)) {
  }
  return n != 0;
}

}  // namespace

template <class T>
T* allocate(std::size_t n) noexcept {
  if (take_failure()) {
    frame::note_allocation_failure();
    return nullptr;
  }
  return frame::new_array<T>(n);
}

template char* allocate<char>(std::size_t) noexcept;
template char** allocate<char*>(std::size_t) noexcept;
template char*** allocate<char**>(std::size_t) noexcept;

void fail_next_allocations(unsigned count) noexcept {
  g_failures.store(count, std::memory_order_relaxed);
}

}  // namespace zelstr::grwstr
