// processors.cpp - the processors of the process's affinity mask.
#include "platform/processors.h"

#include <sched.h>

#include <thread>

namespace zelstr::platform {

unsigned usable_processors() {
  cpu_set_t set;
  CPU_ZERO(&set);
  if (sched_getaffinity(0, sizeof set, &set) == 0 && CPU_COUNT(&set) > 0) {
    return static_cast<unsigned>(CPU_COUNT(&set));
  }
  unsigned const all = std::thread::hardware_concurrency();
  return all > 0 ? all : 1;
}

}  // namespace zelstr::platform
