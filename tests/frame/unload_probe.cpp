// A module built from the library's objects whose load and unload steps
// report as they run, so that a test can watch the sequences through the
// error-handler service.  The hooks are declared out of order on purpose:
// the steps must run in the order of the sequence, not of declaration.
#include "frame/module.h"
#include "frame/report.h"

namespace {

using zelstr::frame::LoadHook;
using zelstr::frame::LoadStep;
using zelstr::frame::Message;
using zelstr::frame::UnloadHook;
using zelstr::frame::UnloadStep;

void say(char const* text) {
  zelstr::frame::report(zelstr::frame::Unit::dllmain, Message{-1, 4, text});
}

// The critical sections exist before the load steps run.
void load_step() {
  for (int i = 0; i < zelstr::frame::kCriticalSectionCount; ++i) {
    zelstr::frame::critical_section(i).Enter();
    zelstr::frame::critical_section(i).Leave();
  }
  say("load step");
}

template <int N>
void unload_step() {
  static char const kText[] = {
      'u', 'n', 'l', 'o', 'a', 'd', ' ', 's', 't', 'e', 'p', ' ', static_cast<char>('0' + N), '\0'};
  say(kText);
}

ZELSTR_MODULE_HOOK UnloadHook const g9(UnloadStep::kDefaultMap, unload_step<9>);
ZELSTR_MODULE_HOOK UnloadHook const g1(UnloadStep::kConnectionArena, unload_step<1>);
ZELSTR_MODULE_HOOK UnloadHook const g5(UnloadStep::kMatchWorkerCaches, unload_step<5>);
ZELSTR_MODULE_HOOK UnloadHook const g3(UnloadStep::kModuleArrays, unload_step<3>);
ZELSTR_MODULE_HOOK UnloadHook const g7(UnloadStep::kMatchReCache, unload_step<7>);
ZELSTR_MODULE_HOOK UnloadHook const g2(UnloadStep::kObjectList, unload_step<2>);
ZELSTR_MODULE_HOOK UnloadHook const g8(UnloadStep::kCrackBuffers, unload_step<8>);
ZELSTR_MODULE_HOOK UnloadHook const g8a(UnloadStep::kModuleBuffer, [] { say("unload step 8a"); });
ZELSTR_MODULE_HOOK UnloadHook const g4(UnloadStep::kPurgeBuffers, unload_step<4>);
ZELSTR_MODULE_HOOK UnloadHook const g6(UnloadStep::kRegexCache, unload_step<6>);
ZELSTR_MODULE_HOOK LoadHook const g0(LoadStep::kCaseTables, load_step);

}  // namespace
