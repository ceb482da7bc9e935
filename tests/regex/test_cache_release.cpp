// The unload sequence empties the compile cache: a failed pattern, cached
// before, is compiled again after a reload (and so sets the error text).
#include <gtest/gtest.h>

#include "support/module_reload.h"
#include "zelstr/regex.h"

namespace {

TEST(RegexCacheRelease, UnloadEmptiesTheCaches) {
  Tcl_Interp* interp;
  Tcl_RegExp_* re;
  Tcl_CompileRE("b(", interp, re, 0);
  ASSERT_EQ(Tcl_MatchRE("xy", "x.?y"), 1);
  Tcl_DeleteInterp(Tcl_RegExpCompile("x"));  // clears the error text
  Tcl_CompileRE("b(", interp, re, 0);
  EXPECT_EQ(Tcl_GetRegError(), nullptr);  // cached: not compiled again

  zelstr::test::reload_module();
  Tcl_DeleteInterp(Tcl_RegExpCompile("x"));
  Tcl_CompileRE("b(", interp, re, 0);
  EXPECT_STREQ(Tcl_GetRegError(), "Unmatched '(' in TCL reg.exp.");
  EXPECT_EQ(Tcl_MatchRE("xy", "x.?y"), 1);  // compiled anew, work buffer and all
}

}  // namespace
