// dynamic_library_win32.cpp - LoadLibraryA and FreeLibrary.
#include <windows.h>

#include "support/dynamic_library.h"

namespace zelstr::test {

void* load_module(char const* path) { return LoadLibraryA(path); }

bool unload_module(void* module) { return FreeLibrary(static_cast<HMODULE>(module)) != 0; }

std::string last_load_error() { return "error " + std::to_string(GetLastError()); }

}  // namespace zelstr::test
