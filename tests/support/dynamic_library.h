// dynamic_library.h - loading a module at run time, as a program would.
#ifndef ZELSTR_TESTS_SUPPORT_DYNAMIC_LIBRARY_H
#define ZELSTR_TESTS_SUPPORT_DYNAMIC_LIBRARY_H

#include <string>

namespace zelstr::test {

// Loads the module at `path` (dlopen / LoadLibraryA); NULL on failure.
void* load_module(char const* path);

// Unloads it (dlclose / FreeLibrary); true on success.
bool unload_module(void* module);

// The system's text for the last loading failure.
std::string last_load_error();

}  // namespace zelstr::test

#endif  // ZELSTR_TESTS_SUPPORT_DYNAMIC_LIBRARY_H
