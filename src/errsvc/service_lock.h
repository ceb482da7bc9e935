// service_lock.h - the one lock of the service's lists.
#ifndef ERRSVC_SERVICE_LOCK_H
#define ERRSVC_SERVICE_LOCK_H

#include "platform/critical_section.h"

namespace errsvc::detail {

// Guards the record list, the registrations and the module list.  Created on
// first use and never deleted, so a client that reports while the process
// winds down still finds it.
zelstr::platform::CriticalSection& service_lock();

}  // namespace errsvc::detail

#endif  // ERRSVC_SERVICE_LOCK_H
