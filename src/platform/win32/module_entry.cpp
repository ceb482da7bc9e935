// module_entry.cpp - the DLL's entry point, handed straight to the module's
// entry function.
#include <windows.h>

#include "frame/module.h"

extern "C" BOOL WINAPI DllMain(HINSTANCE instance, DWORD reason, LPVOID reserved) {
  return zelstr::frame::module_entry(instance, reason, reserved);
}
