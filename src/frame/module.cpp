// module.cpp - the module's entry and its load and unload sequences.
#include "frame/module.h"

namespace zelstr::frame {
namespace {

// Constant-initialised, so hooks declared by any unit during static
// initialisation find the tables ready.
void (*g_load_steps[static_cast<int>(LoadStep::kCount)])() = {};
void (*g_unload_steps[static_cast<int>(UnloadStep::kCount)])() = {};

void* g_instance = nullptr;
platform::CriticalSection g_critical_sections[kCriticalSectionCount];

void attach(void* instance) {
  g_instance = instance;
  for (int i = kCriticalSectionCount - 1; i >= 0; --i) g_critical_sections[i].Initialize();
  for (auto* run : g_load_steps) {
    if (run != nullptr) run();
  }
}

void detach() {
  for (auto* run : g_unload_steps) {
    if (run != nullptr) run();
  }
  for (auto& cs : g_critical_sections) cs.Delete();
}

}  // namespace

int module_entry(void* instance, unsigned long reason, void* /*reserved*/) {
  if (reason == kProcessAttach) attach(instance);
  if (reason == kProcessDetach) detach();
  return 1;
}

void* module_instance() { return g_instance; }

LoadHook::LoadHook(LoadStep step, void (*run)()) { g_load_steps[static_cast<int>(step)] = run; }

UnloadHook::UnloadHook(UnloadStep step, void (*run)()) {
  g_unload_steps[static_cast<int>(step)] = run;
}

platform::CriticalSection& critical_section(int index) { return g_critical_sections[index]; }

}  // namespace zelstr::frame
