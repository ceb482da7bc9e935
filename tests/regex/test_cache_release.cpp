// The unload sequence empties the compile cache: a failed pattern, cached
// before, is compiled again after a reload (and so sets the error text).
#include <gtest/gtest.h>

#include "frame/module.h"
#include "platform/module_handle.h"
#include "zelstr/regex.h"

namespace {

namespace frame = zelstr::frame;

TEST(RegexCacheRelease, UnloadEmptiesTheCaches) {
  Tcl_Interp* interp;
  Tcl_RegExp_* re;
  Tcl_CompileRE("b(", interp, re, 0);
  ASSERT_EQ(Tcl_MatchRE("xy", "x.?y"), 1);
  Tcl_DeleteInterp(Tcl_RegExpCompile("x"));  // clears the error text
  Tcl_CompileRE("b(", interp, re, 0);
  EXPECT_EQ(Tcl_GetRegError(), nullptr);  // cached: not compiled again

  frame::module_entry(zelstr::platform::this_module(), frame::kProcessDetach, nullptr);
  frame::module_entry(zelstr::platform::this_module(), frame::kProcessAttach, nullptr);
  Tcl_DeleteInterp(Tcl_RegExpCompile("x"));
  Tcl_CompileRE("b(", interp, re, 0);
  EXPECT_STREQ(Tcl_GetRegError(), "Unmatched '(' in TCL reg.exp.");
  EXPECT_EQ(Tcl_MatchRE("xy", "x.?y"), 1);  // compiled anew, work buffer and all
}

}  // namespace
