// A thread's state is released when the thread ends: every block the
// library allocated for a thread that used every family is freed by the
// time the thread has been joined.  The thread that first keeps state uses
// the library's static state and allocates nothing for it.
#include <gtest/gtest.h>

#include <string>
#include <thread>

#include "support/failing_allocator.h"
#include "zelstr/zelstr.h"

namespace {

namespace alloc = zelstr::test::alloc;

// Calls that keep state in every family that keeps some.
void use_every_family() {
  std::string text(5000, 'a');
  text += "needle";
  _zstrstr(text.c_str(), "needle");
  _zstristr(text.c_str(), "NEEDLE");
  _zstrstr1(text.c_str(), "needle", " ");
  _zstrquoted("x", '\'');
  _zstrencapsulated("x", '[', ']');
  _zstrunquoted("'x'", '\'', nullptr);
  char framed[] = "[x]";
  _zstrunencapsulated(framed, '[', ']');
  char pieces[] = "<a><b>";
  _zstrextract(pieces, "<", ">", 1);
  _zstrextract(nullptr, "<", ">", 0);
  _zstrclone("x", 0);
  _zstrprintf("%d", 1);
  _zstrupperized("x");
  _zstrspnex("abc", "[a-b]");
  char purged[] = "a(b)c";
  _zstrpurge(purged, const_cast<char*>("("), const_cast<char*>(")"), 0);
  void* const map = _zmapdefine("a=b");
  _zmapdump2string(map, 1);
  _zmapfree(map);
  Tcl_RegExp_* const re = Tcl_RegExpCompile("(a+)b");
  Tcl_RegExpMatch("xaab", re);
  Tcl_DeleteInterp(re);
  Tcl_Interp* interp = nullptr;
  Tcl_RegExp_* cached = nullptr;
  Tcl_CompileRE("c+d", interp, cached, 0);
  Tcl_MatchRE("xccd", "c+d$");
  char* first = nullptr;
  char* others = nullptr;
  _zstr_build_tsql_allowed_charsets(first, others, nullptr);
}

TEST(ThreadState, ReleasedWhenTheThreadEnds) {
  {
    alloc::LibraryCall const call;
    use_every_family();  // this thread takes the static state
  }
  std::size_t const before = alloc::live_blocks();
  std::size_t during = 0;
  std::thread([&] {
    {
      alloc::LibraryCall const call;
      use_every_family();
    }
    during = alloc::live_blocks();
  }).join();
  EXPECT_GT(during, before + 10) << "the second thread kept no state of its own";
  EXPECT_EQ(alloc::live_blocks(), before);
}

}  // namespace
