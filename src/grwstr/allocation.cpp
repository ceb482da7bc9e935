// allocation.cpp - CGrwStr's memory, and the failure hook of the tests.
#include "grwstr/allocation.h"

#include <new>

namespace zelstr::grwstr {
namespace {

unsigned g_failures = 0;

}  // namespace

template <class T>
T* allocate(std::size_t n) {
  if (g_failures != 0) {
    --g_failures;
    return nullptr;
  }
  return new (std::nothrow) T[n];
}

template char* allocate<char>(std::size_t);
template char** allocate<char*>(std::size_t);
template char*** allocate<char**>(std::size_t);

void fail_next_allocations(unsigned count) { g_failures = count; }

}  // namespace zelstr::grwstr
