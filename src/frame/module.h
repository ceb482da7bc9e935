// module.h - the module's entry, its load and unload sequences, and the
// state that lives from load to unload.
//
// Subsystems that keep caches between calls hook their release into the
// unload sequence with a static UnloadHook naming their step; the steps run
// in the order of UnloadStep, whatever order the hooks were declared in.
// Hooks are declared ZELSTR_MODULE_HOOK, so that they are in place before
// the module's entry runs at load:
//
//   namespace { void release_regex_cache() { ... }
//               ZELSTR_MODULE_HOOK frame::UnloadHook g_hook(
//                   frame::UnloadStep::kRegexCache, &release_regex_cache); }
#ifndef ZELSTR_FRAME_MODULE_H
#define ZELSTR_FRAME_MODULE_H

#include "frame/init_order.h"
#include "platform/critical_section.h"

// Static hook objects are built with the source units, before the entry.
#define ZELSTR_MODULE_HOOK ZELSTR_INIT_UNITS

namespace zelstr::frame {

// Reasons the loader gives the entry.
inline constexpr unsigned long kProcessDetach = 0;
inline constexpr unsigned long kProcessAttach = 1;
inline constexpr unsigned long kThreadAttach = 2;
inline constexpr unsigned long kThreadDetach = 3;

// The module's entry.  At attach: keeps `instance`, initialises the three
// critical sections (third, second, first) and runs the load steps.  At
// detach: runs the unload steps in order, then deletes the critical sections.
// A hook that throws is abandoned, the others still run.  Returns 1 (TRUE)
// for every reason.
int module_entry(void* instance, unsigned long reason, void* reserved) noexcept;

// The instance handle kept at attach (used to load resource strings).
void* module_instance() noexcept;

// Work done at load, after the critical sections exist.
enum class LoadStep {
  kThreadKey,   // the key of the threads' own state (frame/per_thread.h)
  kCaseTables,  // build the ASCII case tables
  kCount
};

// Releases done at unload, in this order.
enum class UnloadStep {
  kConnectionArena,    // drop every connection's settings
  kObjectList,         // delete the module-wide list of objects
  kModuleArrays,       // release the five module-wide arrays
  kPurgeBuffers,       // the cached buffers of _zstrpurge
  kMatchWorkerCaches,  // mapped MATCH, LIKE and MATCH workers, in that order
  kRegexCache,         // the compiled-expression cache
  kMatchReCache,       // the cache of Tcl_MatchRE
  kCrackBuffers,       // the module buffer and the name-cracking buffers
  kDefaultMap,         // the default character map
  kThreadStates,       // what every thread still keeps (frame/per_thread.h)
  kCount
};

// Declaring one of these (as a ZELSTR_MODULE_HOOK static object) makes `run`
// part of the load or unload sequence at `step`.  A step runs its hooks in
// the order they were declared; it holds kHooksPerStep at most.
inline constexpr int kHooksPerStep = 4;
struct LoadHook {
  LoadHook(LoadStep step, void (*run)());
};
struct UnloadHook {
  UnloadHook(UnloadStep step, void (*run)());
};

// The module's three critical sections, created at load and deleted at
// unload: index 0 is the first, 2 the third.
inline constexpr int kCriticalSectionCount = 3;
platform::CriticalSection& critical_section(int index);

}  // namespace zelstr::frame

#endif  // ZELSTR_FRAME_MODULE_H
