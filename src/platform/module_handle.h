// module_handle.h - the handle of the module that holds the library's code.
#ifndef ZELSTR_PLATFORM_MODULE_HANDLE_H
#define ZELSTR_PLATFORM_MODULE_HANDLE_H

namespace zelstr::platform {

// The instance handle of the executable or shared object this code was
// linked into: what the loader gives the module's entry.
void* this_module();

}  // namespace zelstr::platform

#endif  // ZELSTR_PLATFORM_MODULE_HANDLE_H
