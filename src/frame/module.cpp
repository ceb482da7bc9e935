// module.cpp - the module's entry and its load and unload sequences.
#include "frame/module.h"

#include <cstdlib>

namespace zelstr::frame {
namespace {

using Hook = void (*)();

// The hooks of one step, in the order they were declared.
struct Step {
  Hook hooks[kHooksPerStep];
  void add(Hook run) {
    for (Hook& slot : hooks) {
      if (slot == nullptr) {
        slot = run;
        return;
      }
    }
    std::abort();  // more hooks than a step holds: a mistake of the build
  }
  // The module's entry runs from the loader (or a static destructor), where
  // an exception would end the process: a hook that throws, for lack of
  // memory say, is abandoned and the next hooks still run.
  void run_all() const noexcept {
    for (Hook run : hooks) {
      if (run == nullptr) continue;
      try {
        run();
      } catch (...) {
      }
    }
  }
};

// Constant-initialised, so hooks declared by any unit during static
// initialisation find the tables ready.
Step g_load_steps[static_cast<int>(LoadStep::kCount)] = {};
Step g_unload_steps[static_cast<int>(UnloadStep::kCount)] = {};

void* g_instance = nullptr;
platform::CriticalSection g_critical_sections[kCriticalSectionCount];

void attach(void* instance) {
  g_instance = instance;
  for (int i = kCriticalSectionCount - 1; i >= 0; --i) g_critical_sections[i].Initialize();
  for (Step const& step : g_load_steps) step.run_all();
}

void detach() {
  for (Step const& step : g_unload_steps) step.run_all();
  for (auto& cs : g_critical_sections) cs.Delete();
}

}  // namespace

int module_entry(void* instance, unsigned long reason, void* /*reserved*/) noexcept {
  if (reason == kProcessAttach) attach(instance);
  if (reason == kProcessDetach) detach();
  return 1;
}

void* module_instance() noexcept { return g_instance; }

LoadHook::LoadHook(LoadStep step, void (*run)()) { g_load_steps[static_cast<int>(step)].add(run); }

UnloadHook::UnloadHook(UnloadStep step, void (*run)()) {
  g_unload_steps[static_cast<int>(step)].add(run);
}

void run_unload_step(UnloadStep step) noexcept { g_unload_steps[static_cast<int>(step)].run_all(); }

platform::CriticalSection& critical_section(int index) { return g_critical_sections[index]; }

}  // namespace zelstr::frame
