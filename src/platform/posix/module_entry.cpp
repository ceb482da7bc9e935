// module_entry.cpp - runs the module's entry when the shared object is loaded
// and unloaded.
//
// A static object constructed after the source units have registered (and so
// destroyed before their module object goes) calls the same entry function
// that the Windows loader calls: reason 1 (attach) at load, 0 (detach) at
// unload.
#include "frame/init_order.h"
#include "frame/module.h"
#include "platform/module_handle.h"

namespace zelstr::platform {
namespace {

struct ModuleEntryCaller {
  ModuleEntryCaller() : m_pInstance(this_module()) {
    frame::module_entry(m_pInstance, frame::kProcessAttach, nullptr);
  }
  ~ModuleEntryCaller() { frame::module_entry(m_pInstance, frame::kProcessDetach, nullptr); }
  void* m_pInstance;
};

ZELSTR_INIT_ENTRY ModuleEntryCaller g_entry_caller;

}  // namespace
}  // namespace zelstr::platform
