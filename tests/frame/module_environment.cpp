// Runs the module's entry around the internal suite, as the loader would
// around a module built from the same objects.
#include <gtest/gtest.h>

#include "frame/module.h"
#include "platform/module_handle.h"

namespace {

class ModuleEnvironment : public ::testing::Environment {
 public:
  void SetUp() override {
    zelstr::frame::module_entry(zelstr::platform::this_module(), zelstr::frame::kProcessAttach,
                                nullptr);
  }
  void TearDown() override {
    zelstr::frame::module_entry(zelstr::platform::this_module(), zelstr::frame::kProcessDetach,
                                nullptr);
  }
};

::testing::Environment* const g_environment =
    ::testing::AddGlobalTestEnvironment(new ModuleEnvironment);

}  // namespace
