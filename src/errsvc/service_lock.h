// service_lock.h - the one lock of the service's lists, and the storage
// of the objects that outlive the program's statics.
#ifndef ERRSVC_SERVICE_LOCK_H
#define ERRSVC_SERVICE_LOCK_H

#include <new>

#include "platform/critical_section.h"

namespace errsvc::detail {

// Guards the record list, the registrations and the module list.  Created on
// first use and never deleted, so a client that reports while the process
// winds down still finds it.
zelstr::platform::CriticalSection& service_lock() noexcept;

// A `T` made on first use in static storage and never destroyed: the lists
// of the service stay usable during static destruction, and making them
// (empty) needs no memory.
template <class T>
T& never_destroyed() noexcept {
  alignas(T) static unsigned char storage[sizeof(T)];
  static T* const object = ::new (static_cast<void*>(storage)) T();
  return *object;
}

}  // namespace errsvc::detail

#endif  // ERRSVC_SERVICE_LOCK_H
