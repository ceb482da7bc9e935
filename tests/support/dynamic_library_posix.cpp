// dynamic_library_posix.cpp - dlopen and dlclose.
#include <dlfcn.h>

#include "support/dynamic_library.h"

namespace zelstr::test {

void* load_module(char const* path) { return dlopen(path, RTLD_NOW | RTLD_LOCAL); }

bool unload_module(void* module) { return dlclose(module) == 0; }

std::string last_load_error() {
  char const* e = dlerror();
  return e ? e : "";
}

}  // namespace zelstr::test
