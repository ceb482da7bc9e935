// A pattern one thread compiled through Tcl_CompileRE reaches another
// thread as a copy of the compiled expression: a record of that thread's
// own, exactly as compiling the pattern there would have made it.
#include <gtest/gtest.h>

#include <cstdint>
#include <thread>

#include "zelstr/zelstr.h"

namespace {

// Tcl_CompileRE's and Tcl_MatchRE's command to empty their caches.
char const* const kClear = reinterpret_cast<char const*>(std::intptr_t{-1});

TEST(SharedPrograms, AnotherThreadGetsARecordOfItsOwn) {
  // A pattern opening with a loop: the matcher first looks for its literal,
  // which the copy must read from its own program (it outlives the shared
  // one).
  char const* const pattern = "q*([0-9]+)longliteral(z+)";
  Tcl_RegExp_* theirs = nullptr;
  std::thread([&] {
    Tcl_Interp* interp = nullptr;
    ASSERT_EQ(Tcl_CompileRE(pattern, interp, theirs, 0), 1);
    ASSERT_EQ(Tcl_RegExpMatch("q12longliteralzz", theirs), 1);
  }).join();

  // An error text left before: the compile the copy stands for clears it.
  EXPECT_EQ(Tcl_RegExpCompile("a("), nullptr);
  Tcl_Interp* interp = nullptr;
  Tcl_RegExp_* mine = nullptr;
  ASSERT_EQ(Tcl_CompileRE(pattern, interp, mine, 0), 1);
  EXPECT_NE(mine, theirs);
  EXPECT_EQ(Tcl_GetRegError(), nullptr);
  char const* start = "set";
  char const* end = "set";
  Tcl_RegExpRange(mine, 1, &start, &end);
  EXPECT_EQ(start, nullptr);  // no results of the other thread's match
  EXPECT_EQ(end, nullptr);

  // The shared copies go; this thread's record stays whole.
  EXPECT_EQ(Tcl_MatchRE(kClear, kClear), 1);
  char const* const subject = "..q7longliteralz q88longliteralzzz";
  ASSERT_EQ(Tcl_RegExpMatch(subject, mine), 1);
  Tcl_RegExpRange(mine, 1, &start, &end);
  EXPECT_EQ(start - subject, 3);
  EXPECT_EQ(end - subject, 4);
  Tcl_RegExpRange(mine, 2, &start, &end);
  EXPECT_EQ(start - subject, 15);
  EXPECT_EQ(end - subject, 16);
  ASSERT_EQ(Tcl_RegExpExec(interp, mine, subject + 4, subject), 1);
  Tcl_RegExpRange(mine, 0, &start, &end);
  EXPECT_EQ(start - subject, 17);
  EXPECT_EQ(end - subject, 34);
  EXPECT_EQ(Tcl_CompileRE(kClear, interp, mine, 0), 1);
}

}  // namespace
