// service_lock.cpp - the one lock of the service's lists.
#include "service_lock.h"

namespace errsvc::detail {

zelstr::platform::CriticalSection& service_lock() noexcept {
  static zelstr::platform::CriticalSection* const lock = [] {
    auto* const cs = &never_destroyed<zelstr::platform::CriticalSection>();
    cs->Initialize();
    return cs;
  }();
  return *lock;
}

}  // namespace errsvc::detail
