// own_lock.h - the locks of the library's shared registries.
//
// Each lock is made on first use and never destroyed, so it serves from
// static initialisation until after the unload sequence.  The locks are
// recursive: a warning reported under one may reach a handler that calls
// the library again on the same thread.
#ifndef ZELSTR_FRAME_OWN_LOCK_H
#define ZELSTR_FRAME_OWN_LOCK_H

#include "platform/critical_section.h"

namespace zelstr::frame {

enum class OwnLock : int {
  kSettings,  // the dialect settings registry
  kPlurals,   // the caller's plural words (str/text/plural.cpp)
  kPrograms,  // the compiled expressions every thread shares (regex/caches.cpp)
  kCount
};

platform::CriticalSection& own_lock(OwnLock which) noexcept;

}  // namespace zelstr::frame

#endif  // ZELSTR_FRAME_OWN_LOCK_H
