// per_thread.h - state that each thread keeps for itself between calls.
//
// The library remembers things from one call to the next: the last search
// pattern and its tables, result buffers that stay valid until the next call
// of the same function, rotating arenas, the regular-expression engine's
// work buffer, error text and caches.  Each thread has its own of each, so
// that calls on different threads never see each other's state.
//
// A family declares its state as a slot:
//
//   using SearchSlot = frame::PerThread<SearchStates, frame::ThreadSlot::kSearch>;
//   SearchStates& mine = SearchSlot::get();
//
// A thread's object is made on its first get() and destroyed when the
// thread ends.  The unload sequence destroys what every thread still holds
// (kThreadStates, its last step), and a family's own unload step may empty
// every thread's object before that (for_each).
//
// Each slot has one static object, made in place without allocating.  The
// first thread that needs state uses the static objects (so a program with
// one thread allocates nothing for its state); later threads get objects
// on the heap.  When memory for a thread's object is short, get() counts
// the failure and gives the static object: such a thread then shares it
// with its owner, as every call shared the library's state before state
// was kept per thread, and tries again at its next call.
//
// Invariants: an object is only reached from its own thread, except by
// for_each and the unload step, which run when no other call is running.
// The list of threads' blocks is guarded by its own lock.
#ifndef ZELSTR_FRAME_PER_THREAD_H
#define ZELSTR_FRAME_PER_THREAD_H

#include <new>

#include "platform/thread_key.h"

namespace zelstr::frame {

// One slot per family that keeps state between calls.
enum class ThreadSlot : int {
  kSearch,       // forward search: patterns, plans, skip tables, delimiters
  kReplace,      // replacement: the purge buffers
  kQuote,        // results of _zstrquoted and _zstrencapsulated
  kUnquote,      // results of _zstrunquoted and _zstrunencapsulated
  kExtract,      // the walks of _zstrextract and _zstriextract
  kCloneArena,   // _zstrclone
  kPrintArena,   // _zstrprintf
  kVprintArena,  // _zstrvprintf
  kUpperFold,    // the toupper table of the thread's locale
  kSetDef,       // the last compiled set definitions
  kMap,          // the map dump's buffer
  kRegexState,   // engine: error text, backslash switch
  kRegexWork,    // engine: the compile work buffer
  kRegexStack,   // engine: the backtracking walk's stack
  kRegexCaches,  // Tcl_CompileRE and Tcl_MatchRE
  kWildcard,     // the patterns the MATCH and LIKE workers read last
  kNthToken,     // the result of _zstrgetNth
  kCrack,        // the tokens of _zstrcrack
  kSqlObjects,   // the look-up cache of the connection-keyed objects
  kSqlSettings,  // the look-up cache of the dialect settings
  kSqlCharsets,  // the tables of identifier characters
  kNameLength,   // where the T-SQL name functions write a name's length
  kCount
};

namespace detail {

// A thread's pointer leads to its block, whose first member is the array of
// its objects, one per slot (NULL until made).
inline void* existing(ThreadSlot slot) noexcept {
  void* const* const objects = static_cast<void* const*>(platform::thread_pointer());
  return objects != nullptr ? objects[static_cast<int>(slot)] : nullptr;
}

struct SlotKind {
  void* (*make)() noexcept;         // a new object on the heap, NULL without memory
  void (*destroy)(void*) noexcept;  // deletes one made by make
  void* (*fallback)() noexcept;     // the shared object, made in place on first need
  void (*reset)(void*) noexcept;    // empties the fallback (destroys and remakes it)
};

// Makes this thread's object of `slot` (or gives the fallback).
void* make(ThreadSlot slot, SlotKind const& kind) noexcept;
// Calls `visit` with every thread's object of `slot` and the fallback, if made.
void visit_all(ThreadSlot slot, void (*visit)(void*, void*), void* context) noexcept;
// Destroys every thread's object of `slot` and empties the fallback.
void release_slot(ThreadSlot slot) noexcept;

}  // namespace detail

template <class T, ThreadSlot kSlot>
class PerThread {
 public:
  static T& get() noexcept {
    if (void* const p = detail::existing(kSlot)) return *static_cast<T*>(p);
    return *static_cast<T*>(detail::make(kSlot, kind));
  }

  // Destroys every thread's object (each thread makes a new one at its next
  // get()) and empties the fallback: the memory a family's state holds goes
  // back before the module's last step.  For the unload sequence; no other
  // call may run meanwhile.
  static void release_every_thread() noexcept { detail::release_slot(kSlot); }

  // Calls `visit` on every thread's object and on the fallback.  For the
  // unload sequence and for tests; no other call may run meanwhile.
  template <class Visit>
  static void for_each(Visit visit) noexcept {
    detail::visit_all(
        kSlot, [](void* object, void* v) { (*static_cast<Visit*>(v))(*static_cast<T*>(object)); },
        &visit);
  }

 private:
  // Default-initialised: an arena's bytes are not cleared (nor touched).
  static void* make_object() noexcept { return new (std::nothrow) T; }
  static void destroy_object(void* p) noexcept { delete static_cast<T*>(p); }
  alignas(T) static inline unsigned char s_storage[sizeof(T)];
  // Made in place and never destroyed by a static destructor: the unload
  // sequence, which may run after static destruction, still empties it.
  static void* fallback() noexcept {
    static T* const made = ::new (s_storage) T;
    return made;
  }
  static void reset(void* p) noexcept {
    static_cast<T*>(p)->~T();
    ::new (p) T;
  }
  static constexpr detail::SlotKind kind{&make_object, &destroy_object, &fallback, &reset};
};

}  // namespace zelstr::frame

#endif  // ZELSTR_FRAME_PER_THREAD_H
