// The rotating arenas of _zstrclone, _zstrprintf and _zstrvprintf: where each
// result lands, when the arena wraps, and the cut with its message box.
#include <gtest/gtest.h>

#include <cstdarg>
#include <cstring>
#include <string>
#include <vector>

#include "support/library_text.h"
#include "zelstr/zelstr.h"

namespace {

using zelstr::test::vprint;

constexpr std::size_t kArena = 655360;

struct Box {
  std::string text;
  std::string caption;
  unsigned style;
};
std::vector<Box> g_boxes;
char g_empty_format[1] = "";  // not a literal, so the compiler lets it through

int record_box(char const* text, char const* caption, unsigned style) {
  g_boxes.push_back({text, caption, style});
  return 1;
}

class Scratch : public ::testing::Test {
 protected:
  void SetUp() override {
    g_boxes.clear();
    previous_ = zelstr::set_message_box_handler(record_box);
  }
  void TearDown() override { zelstr::set_message_box_handler(previous_); }

  // Reserves the whole clone arena, so that the next clone starts at the
  // arena's beginning, which this returns.
  static char* restart_clones() { return _zstrclone(nullptr, kArena); }

  // A text that fits only from the print arena's start, and lies beyond the
  // wrap threshold: the next result starts at the arena's beginning.
  static char* restart_prints() { return _zstrprintf("%*s", 600000, ""); }

 private:
  zelstr::MessageBoxHandler previous_ = nullptr;
};

TEST_F(Scratch, ClonesFollowEachOtherByTheirReservedSize) {
  char* const base = restart_clones();
  char* const a = _zstrclone("abc", 5);
  char* const b = _zstrclone(nullptr, 10);
  char* const c = _zstrclone("z", 0);
  EXPECT_EQ(a, base);
  EXPECT_STREQ(a, "abc");
  EXPECT_EQ(b, a + 4 + 5);
  EXPECT_STREQ(b, "");
  EXPECT_EQ(c, b + 10);
  EXPECT_TRUE(g_boxes.empty());
}

TEST_F(Scratch, ACloneThatWouldPassTheEndStartsOver) {
  char* const base = restart_clones();
  _zstrclone(nullptr, kArena - 100);
  char* const last = _zstrclone("0123456789", 0);
  EXPECT_EQ(last, base + kArena - 100);
  EXPECT_EQ(_zstrclone(nullptr, 95), base);
  EXPECT_STREQ(last, "0123456789");  // intact until overwritten
}

TEST_F(Scratch, AnOversizedCloneIsCutWithAMessageBox) {
  std::string const big(700000, 'q');
  char* const cut = _zstrclone(big.c_str(), 0);
  EXPECT_EQ(std::strlen(cut), kArena - 1);
  ASSERT_EQ(g_boxes.size(), 1u);
  EXPECT_EQ(g_boxes[0].text, "Cloned area truncated to 640 Kb.");
  EXPECT_EQ(g_boxes[0].caption, "WARNING: _zstrclone()");
  EXPECT_EQ(g_boxes[0].style, 4144u);
  EXPECT_EQ(_zstrclone("next", 0), cut);  // the cut area filled the arena
}

TEST_F(Scratch, CloneExtraIsA32BitCount) {
  if (sizeof(unsigned long) < 8) GTEST_SKIP() << "unsigned long is 32 bits here";
  char* const base = restart_clones();
  _zstrclone(nullptr, static_cast<unsigned long>((1ull << 32) | 5u));
  EXPECT_EQ(_zstrclone("x", 0), base + 5);
  EXPECT_TRUE(g_boxes.empty());
}

TEST_F(Scratch, PrintsFollowEachOtherAndEmptyFormatsTakeOneByte) {
  restart_prints();
  char* const base = _zstrprintf("%d", 42);
  EXPECT_STREQ(base, "42");
  EXPECT_EQ(_zstrprintf("x%s", "y"), base + 3);
  char* const e = _zstrprintf(g_empty_format, 0);
  EXPECT_EQ(e, base + 6);
  EXPECT_STREQ(e, "");
  EXPECT_EQ(_zstrprintf(nullptr), base + 7);
  EXPECT_EQ(_zstrprintf("z"), base + 8);
  EXPECT_STREQ(base, "42");
}

TEST_F(Scratch, PrintsWrapOncePastTheThreshold) {
  restart_prints();
  char* const base = _zstrprintf("%*s", 524287, "");
  char* const at_threshold = _zstrprintf("q");
  EXPECT_EQ(at_threshold, base + 524288);  // on the threshold, not beyond it
  EXPECT_EQ(_zstrprintf("r"), base);
}

TEST_F(Scratch, AResultThatDoesNotFitIsFormattedAgainFromTheStart) {
  restart_prints();
  char* const base = _zstrprintf("a");
  _zstrprintf("%*s", 500000, "");
  char* const big = _zstrprintf("%0*d", 200000, 7);
  EXPECT_EQ(big, base);
  EXPECT_EQ(std::strlen(big), 200000u);
  EXPECT_EQ(big[199999], '7');
  EXPECT_TRUE(g_boxes.empty());
}

TEST_F(Scratch, ATextLongerThanTheArenaIsCutWithAMessageBox) {
  char* const cut = _zstrprintf("%*s", 700000, "!");
  EXPECT_EQ(std::strlen(cut), kArena - 2);
  ASSERT_EQ(g_boxes.size(), 1u);
  EXPECT_EQ(g_boxes[0].text, "Result string truncated to 639 Kb.");
  EXPECT_EQ(g_boxes[0].caption, "WARNING: _zstrprintf()");
  EXPECT_EQ(g_boxes[0].style, 4144u);
}

TEST_F(Scratch, VprintfHasAnArenaOfItsOwn) {
  char* const p = _zstrprintf("p%d", 1);
  char* const v = vprint("v%s", "1");
  EXPECT_STREQ(v, "v1");
  EXPECT_EQ(_zstrprintf("p"), p + 3);
  EXPECT_EQ(vprint("w"), v + 3);
  char* const cut = vprint("%*s", 700000, "!");
  EXPECT_EQ(std::strlen(cut), kArena - 2);
  ASSERT_EQ(g_boxes.size(), 1u);
  EXPECT_EQ(g_boxes[0].caption, "WARNING: _zstrprintf()");
}

}  // namespace
