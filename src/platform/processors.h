// processors.h - how many processors the process may run on.
#ifndef ZELSTR_PLATFORM_PROCESSORS_H
#define ZELSTR_PLATFORM_PROCESSORS_H

namespace zelstr::platform {

// The processors the process's affinity allows (at least 1).
unsigned usable_processors();

}  // namespace zelstr::platform

#endif  // ZELSTR_PLATFORM_PROCESSORS_H
