// processors.cpp - the processors of the process's affinity mask.
#include "platform/processors.h"

#include <windows.h>

#include <bitset>

namespace zelstr::platform {

unsigned usable_processors() {
  DWORD_PTR process = 0, system = 0;
  if (GetProcessAffinityMask(GetCurrentProcess(), &process, &system) && process != 0) {
    return static_cast<unsigned>(std::bitset<sizeof process * 8>(process).count());
  }
  return 1;
}

}  // namespace zelstr::platform
