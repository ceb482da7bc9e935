// require.h - a fuzz target's check: a broken promise stops the run.
#ifndef ZELSTR_FUZZ_REQUIRE_H
#define ZELSTR_FUZZ_REQUIRE_H

#include <cstdlib>

inline void require(bool condition) {
  if (!condition) std::abort();
}

#endif  // ZELSTR_FUZZ_REQUIRE_H
