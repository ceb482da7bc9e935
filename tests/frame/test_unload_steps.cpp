// Each unload step releases the state it owns, on every thread: a second
// thread that used the step's families holds objects for them; once the
// step alone has run, the thread holds none of the step's objects, fewer
// heap blocks are live, and the thread's next calls still give their
// results (their state is made anew).
#include <gtest/gtest.h>

#include <condition_variable>
#include <cstring>
#include <functional>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include "frame/module.h"
#include "frame/per_thread.h"
#include "support/failing_allocator.h"
#include "zelstr/zelstr.h"

namespace {

namespace alloc = zelstr::test::alloc;
using zelstr::frame::ThreadSlot;
using zelstr::frame::UnloadStep;

char g_connection;

// Calls of the step's families, with a check of their results.
void use_sql_lookups() {
  char* first = nullptr;
  char* others = nullptr;
  ASSERT_EQ(1, _ztsqlsetdefaults(&g_connection, 2016, 129, 1, 0, '"', nullptr));
  ASSERT_EQ(1, _zstr_build_tsql_allowed_charsets(first, others, &g_connection));
  EXPECT_TRUE(CConnForStrFncs::Find(&g_connection, 'T') == nullptr);
  EXPECT_EQ(1, _ztsqlvalidsysname(&g_connection, "Orders", 0));
}
void use_result_arrays() {
  EXPECT_STREQ("x", _zstrclone("x", 0));
  EXPECT_STREQ("1", _zstrprintf("%d", 1));
  EXPECT_STREQ("'a'", _zstrquoted("a", '\''));
  EXPECT_STREQ("a", _zstrunquoted("'a'", '\'', nullptr));
}
void use_nth_token() { EXPECT_STREQ("b", _zstrgetNth("a b c", 2, " ", nullptr, 0)); }

struct StepCase {
  char const* name;
  UnloadStep step;
  void (*use)();
  std::vector<ThreadSlot> slots;  // the state the step owns
};

std::vector<StepCase> const kSteps = {
    {"2, the SQL look-up caches and identifier tables",
     UnloadStep::kObjectList,
     use_sql_lookups,
     {ThreadSlot::kSqlObjects, ThreadSlot::kSqlSettings, ThreadSlot::kSqlCharsets}},
    {"3, the result arrays",
     UnloadStep::kModuleArrays,
     use_result_arrays,
     {ThreadSlot::kCloneArena, ThreadSlot::kPrintArena, ThreadSlot::kQuote, ThreadSlot::kUnquote}},
    {"8, the result of _zstrgetNth",
     UnloadStep::kModuleBuffer,
     use_nth_token,
     {ThreadSlot::kNthToken}},
};

// Runs the step's calls on a new thread, then `between` while that thread
// waits; the thread then checks that it holds none of the step's objects
// and calls again before it ends.
void on_a_thread(StepCase const& c, std::function<void()> const& between) {
  std::mutex m;
  std::condition_variable cv;
  int stage = 0;
  std::thread worker([&] {
    {
      alloc::LibraryCall const call;
      c.use();
    }
    std::unique_lock<std::mutex> lock(m);
    stage = 1;
    cv.notify_all();
    cv.wait(lock, [&] { return stage == 2; });
    for (ThreadSlot slot : c.slots) {
      EXPECT_EQ(nullptr, zelstr::frame::detail::existing(slot)) << static_cast<int>(slot);
    }
    alloc::LibraryCall const call;
    c.use();
  });
  {
    std::unique_lock<std::mutex> lock(m);
    cv.wait(lock, [&] { return stage == 1; });
  }
  between();
  {
    std::lock_guard<std::mutex> const lock(m);
    stage = 2;
  }
  cv.notify_all();
  worker.join();
}

TEST(UnloadSteps, EachReleasesWhatItOwnsOnEveryThread) {
  {
    alloc::LibraryCall const call;
    for (StepCase const& c : kSteps) c.use();  // this thread takes the static state
  }
  for (StepCase const& c : kSteps) {
    SCOPED_TRACE(c.name);
    std::size_t const before = alloc::live_blocks();
    std::size_t held = 0, left = 0;
    on_a_thread(c, [&] {
      held = alloc::live_blocks();
      zelstr::frame::run_unload_step(c.step);
      left = alloc::live_blocks();
    });
    EXPECT_GT(held, before) << "the thread kept no state of its own";
    EXPECT_LE(left + c.slots.size(), held) << "the step freed fewer blocks than it owns";
    {
      alloc::LibraryCall const call;
      c.use();  // this thread's state (the step emptied it too) made anew
    }
    EXPECT_EQ(alloc::live_blocks(), before) << "blocks left after the thread ended";
  }
}

}  // namespace
