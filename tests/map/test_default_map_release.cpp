// The default map is released by the module's unload sequence.
#include <gtest/gtest.h>

#include "errsvc/errsvc.h"
#include "map/default_map.h"
#include "support/module_reload.h"
#include "zelstr/map.h"

namespace {

TEST(DefaultMap, UnloadReleasesItAndLeavesTheSpecialHandlesAlone) {
  for (char const* definition : {"A-Z=a-z", "a-", ""}) {  // a map, the invalid map, NULL
    errsvc::clear();
    zelstr::map::default_map() = _zmapdefine(definition);
    errsvc::clear();
    zelstr::test::reload_module();
    EXPECT_EQ(zelstr::map::default_map(), nullptr) << definition;
    // The invalid map is not handed to _zmapfree (which would warn).
    EXPECT_TRUE(errsvc::records().empty()) << definition;
  }
}

}  // namespace
