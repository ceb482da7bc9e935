// memory.cpp - the count of the allocations the library could not make.
#include "frame/memory.h"

#include <atomic>

#include "zelstr/alloc.h"

namespace zelstr::frame {
namespace {

std::atomic<unsigned long> g_failures{0};

}  // namespace

void note_allocation_failure() noexcept { g_failures.fetch_add(1, std::memory_order_relaxed); }

FailureWatch::FailureWatch() noexcept : m_before(g_failures.load(std::memory_order_relaxed)) {}

bool FailureWatch::failed() const noexcept {
  return g_failures.load(std::memory_order_relaxed) != m_before;
}

}  // namespace zelstr::frame

unsigned long zelstr::allocation_failures() noexcept {
  return frame::g_failures.load(std::memory_order_relaxed);
}
