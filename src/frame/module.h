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
//
// The steps keep the places of the module's historic sequence; the state
// they release is each thread's now (frame/per_thread.h), every thread's
// at once:
//   2 (kObjectList): the list of objects deleted through their destructors
//     is the SQL families' objects that point into the connection arena of
//     step 1 (the look-up caches of the registries and the tables of
//     identifier characters), then the caller's plural words.
//   3 (kModuleArrays): the five arrays are the result arrays that stay
//     valid until a later call: the clone arena, the two print arenas, and
//     the results of the quoting and of the unquoting functions.
//   8 (kModuleBuffer, then kCrackBuffers): the one allocated buffer is
//     _zstrgetNth's result; then the name-cracking buffers.
enum class UnloadStep {
  kConnectionArena,    // 1: drop every connection's settings
  kObjectList,         // 2: the SQL look-up caches and identifier tables, plural words
  kModuleArrays,       // 3: the clone, print and quoting result arrays
  kPurgeBuffers,       // 4: the cached buffers of _zstrpurge
  kMatchWorkerCaches,  // 5: mapped MATCH, LIKE and MATCH workers, in that order
  kRegexCache,         // 6: the compiled-expression cache
  kMatchReCache,       // 7: the cache of Tcl_MatchRE
  kModuleBuffer,       // 8, first: the result buffer of _zstrgetNth
  kCrackBuffers,       // 8, then: the name-cracking buffers
  kDefaultMap,         // 9: the default character map
  kThreadStates,       // what every thread still keeps (frame/per_thread.h)
  kCount
};

// Runs the hooks of one unload step, as the sequence would: for tests of
// what a step releases.  No other call may run meanwhile.
void run_unload_step(UnloadStep step) noexcept;

// Declaring one of these (as a ZELSTR_MODULE_HOOK static object) makes `run`
// part of the load or unload sequence at `step`.  A step runs its hooks in
// the order they were declared; it holds kHooksPerStep at most.
inline constexpr int kHooksPerStep = 6;
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
