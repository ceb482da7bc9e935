// The default map is released by the module's unload sequence.
#include <gtest/gtest.h>

#include "errsvc/errsvc.h"
#include "frame/module.h"
#include "map/default_map.h"
#include "platform/module_handle.h"
#include "zelstr/map.h"

namespace {

namespace frame = zelstr::frame;

// Unloads and loads the module again, as the loader would around a reload.
void reload() {
  frame::module_entry(zelstr::platform::this_module(), frame::kProcessDetach, nullptr);
  frame::module_entry(zelstr::platform::this_module(), frame::kProcessAttach, nullptr);
}

TEST(DefaultMap, UnloadReleasesItAndLeavesTheSpecialHandlesAlone) {
  for (char const* definition : {"A-Z=a-z", "a-", ""}) {  // a map, the invalid map, NULL
    errsvc::clear();
    zelstr::map::default_map() = _zmapdefine(definition);
    errsvc::clear();
    reload();
    EXPECT_EQ(zelstr::map::default_map(), nullptr) << definition;
    // The invalid map is not handed to _zmapfree (which would warn).
    EXPECT_TRUE(errsvc::records().empty()) << definition;
  }
}

}  // namespace
