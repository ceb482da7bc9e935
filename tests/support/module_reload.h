// module_reload.h - unloading and loading the library's objects again, as
// the loader would around a reload (suites linked with the objects only).
#ifndef ZELSTR_TESTS_SUPPORT_MODULE_RELOAD_H
#define ZELSTR_TESTS_SUPPORT_MODULE_RELOAD_H

#include "frame/module.h"
#include "platform/module_handle.h"

namespace zelstr::test {

inline void reload_module() {
  frame::module_entry(platform::this_module(), frame::kProcessDetach, nullptr);
  frame::module_entry(platform::this_module(), frame::kProcessAttach, nullptr);
}

}  // namespace zelstr::test

#endif  // ZELSTR_TESTS_SUPPORT_MODULE_RELOAD_H
