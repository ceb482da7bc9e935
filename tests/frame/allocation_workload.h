// allocation_workload.h - the workload of the allocation-failure suite: a
// list of steps that together reach every family of the interface that
// allocates (directly, or through the warning records it files).
//
// A family added to the library adds its steps here.
#ifndef ZELSTR_TESTS_FRAME_ALLOCATION_WORKLOAD_H
#define ZELSTR_TESTS_FRAME_ALLOCATION_WORKLOAD_H

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

namespace zelstr::test {

// One step: a call (or a short series of calls) into the library, each made
// inside an alloc::LibraryCall, whose results are shown as a text.  A text
// holding '!' reports a broken promise of the interface (the growing string
// not emptied by a failed growth, say): it must never appear.
struct Step {
  char const* family;
  char const* name;
  std::function<std::string()> run;
  // For a single call: the text its fallback value gives when one of its
  // allocations fails, and the warning that must then be filed (nullptr:
  // none).  nullptr for a series of calls, whose texts show their own checks.
  char const* fallback = nullptr;
  char const* named = nullptr;
};

// What one step gave.
struct Outcome {
  std::string result;
  std::vector<std::string> warnings;  // "id/severity function: text", in order
  std::size_t null_records = 0;       // NULL records handed to the service
  std::size_t failed = 0;             // allocations failed during the step
  std::size_t counted_to = 0;         // allocations counted up to its end
};

// The families of the interface the workload reaches, and the steps of one.
// A family's steps depend on no other family's.
std::vector<char const*> families();
std::vector<Step> workload(std::string const& family);

// After a run: releases the objects the steps kept from one to the next.
void end_run();

// Releases the library's caches (and the service's records), as far as the
// interface lets a program: what the library then still holds is kept for
// the life of the module.
void release_caches();

}  // namespace zelstr::test

#endif  // ZELSTR_TESTS_FRAME_ALLOCATION_WORKLOAD_H
