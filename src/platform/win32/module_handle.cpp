// module_handle.cpp - the handle of the DLL (or executable) holding this code.
#include "platform/module_handle.h"

#include <windows.h>

namespace zelstr::platform {

void* this_module() {
  HMODULE module = nullptr;
  GetModuleHandleExA(
      GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
      reinterpret_cast<LPCSTR>(&this_module), &module);
  return module;
}

}  // namespace zelstr::platform
