// module_handle.cpp - the module's handle: the base address of the shared
// object (or executable) holding this code.
#include "platform/module_handle.h"

#include <dlfcn.h>

namespace zelstr::platform {

void* this_module() {
  Dl_info info{};
  if (dladdr(reinterpret_cast<void*>(&this_module), &info) == 0) return nullptr;
  return info.dli_fbase;
}

}  // namespace zelstr::platform
