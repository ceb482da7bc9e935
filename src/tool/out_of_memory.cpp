// out_of_memory.cpp - noting failed allocations and saying so once.
#include "tool/out_of_memory.h"

#include <atomic>
#include <cstdio>
#include <new>

#include "errsvc/errsvc.h"
#include "zelstr/alloc.h"

namespace zelstr::tool {
namespace {

std::atomic<bool> g_ran_out{false};
std::atomic<bool> g_reported{false};

// Called by operator new when the system refuses memory: the failure is
// noted and then happens as it would have (std::bad_alloc, or NULL for the
// nothrow form).  Returning instead would make operator new try again for
// ever.
[[noreturn]] void on_refused_new() {
  g_ran_out = true;
  throw std::bad_alloc();
}

}  // namespace

void watch_memory() noexcept { std::set_new_handler(on_refused_new); }

void note_out_of_memory() noexcept { g_ran_out = true; }

bool memory_ran_out() noexcept {
  return g_ran_out || zelstr::allocation_failures() != 0 || errsvc::null_record_count() != 0;
}

void report_out_of_memory() noexcept {
  if (!g_reported.exchange(true)) std::fputs("zelstr: out of memory\n", stderr);
}

}  // namespace zelstr::tool
