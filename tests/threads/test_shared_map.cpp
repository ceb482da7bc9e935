// One map used by several threads at once.  Built with ThreadSanitizer by
// the `tsan` preset, where any unguarded shared state the mapped functions
// touched would be reported (and fail the run); elsewhere it checks that
// the threads' results agree with those of a single thread.
#include <gtest/gtest.h>

#include <atomic>
#include <cstring>
#include <string>
#include <thread>
#include <vector>

#include "zelstr/zelstr.h"

namespace {

// What one thread computes with the shared map, on buffers of its own.
struct Results {
  long search, last, count, bytes, compare, delta;
  std::string replaced, applied, copied, cloned;

  bool operator==(Results const&) const = default;
};

std::string sample_text() {
  std::string s;
  for (int i = 0; i < 60; ++i) {
    s += i % 3 == 0 ? "SELECT Name FROM sys.Objects WHERE type = 'U' " : "select name from T ";
  }
  return s + "End";
}

Results compute(void* map, std::string const& text) {
  char const* const t = text.c_str();
  auto at = [t](char const* p) { return p == nullptr ? -1L : static_cast<long>(p - t); };
  Results r;
  r.search = at(_zmapstrstr(map, t, "sys.objects where"));
  r.last = at(_zmapstrrstr(map, t, "from"));
  r.count = _zmapstrstrcnt(map, const_cast<char*>(t), const_cast<char*>("name"));
  r.bytes = static_cast<long>(_zmapstrccnt(map, const_cast<char*>(t), 's'));
  r.compare = _zmapstrcmp(map, t, "SELECT NAME") + 2 * _zmapstrncmp(map, t, "select", 6);
  r.delta = _zmapstrdeltalen(map, const_cast<char*>(t), const_cast<char*>("select"),
                             const_cast<char*>("SELECT_"));
  std::vector<char> buffer(text.size() * 2 + 1);
  std::strcpy(buffer.data(), t);
  r.replaced = _zmapstrNreplace(map, buffer.data(), "select", "SELECT_", buffer.size() - 1);
  std::strcpy(buffer.data(), t);
  r.applied = _zmapstrapply(map, buffer.data());
  r.copied = _zmapstrcpy(map, buffer.data(), "MiXeD");
  void* const clone = _zmapclone(map);
  std::strcpy(buffer.data(), "ABC");
  r.cloned = _zmapstrapply(clone, buffer.data());
  _zmapfree(clone);
  return r;
}

TEST(SharedMap, ThreadsUsingOneMapAtOnceGetTheResultsOfOne) {
  void* const map = _zmapdefine("A-Z=a-z");
  ASSERT_NE(map, nullptr);
  std::string const text = sample_text();
  Results const expected = compute(map, text);
  ASSERT_EQ(expected.count, 60);

  std::atomic<int> disagreements{0};
  std::vector<std::thread> threads;
  for (int i = 0; i < 4; ++i) {
    threads.emplace_back([&] {
      for (int round = 0; round < 50; ++round) {
        if (!(compute(map, text) == expected)) ++disagreements;
      }
    });
  }
  for (std::thread& t : threads) t.join();
  EXPECT_EQ(disagreements.load(), 0);
  EXPECT_EQ(_zmapfree(map), 1);
}

}  // namespace
