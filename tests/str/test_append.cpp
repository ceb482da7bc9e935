// Appending, inserting and shifting in place, checked on whole buffers.
#include <gtest/gtest.h>

#include <random>
#include <string>

#include "zelstr/zelstr.h"

namespace {

TEST(Append, CatAndNcat) {
  char buf[32] = "dbo";
  char dot[] = ".";
  EXPECT_EQ(_zstrcat(buf, dot), buf);
  EXPECT_STREQ(buf, "dbo.");
  EXPECT_STREQ(_zstrncat(buf, "Orders", 3), "dbo.Ord");
  EXPECT_STREQ(_zstrncat(buf, "ers", 10), "dbo.Orders");
  EXPECT_STREQ(_zstrncat(buf, "zz", 0), "dbo.Orders");
  EXPECT_STREQ(_zstrcat(buf, buf), "dbo.Ordersdbo.Orders");
}

TEST(Append, InsertMakesRoomAtTheHead) {
  char buf[32] = "FROM t\0####";
  EXPECT_EQ(_zstrins(buf, "SELECT * "), buf);
  EXPECT_STREQ(buf, "SELECT * FROM t");
  char same[8] = "abc\0xyz";
  EXPECT_EQ(_zstrins(same, ""), same);
  EXPECT_EQ(std::string(same, 7), std::string("abc\0xyz", 7));
}

// Whole-string moves (flag 0) against std::string slices.
TEST(Shift, MovesTheWholeStringWithItsTerminator) {
  std::mt19937 rng(3);
  for (int round = 0; round < 2000; ++round) {
    std::string buf(48, '#');
    std::size_t const at = 16, length = rng() % 12;
    int const n = static_cast<int>(rng() % 31) - 15;
    std::string const text(length, 'a' + static_cast<char>(round % 26));
    buf.replace(at, length + 1, text + '\0');
    std::string expected = buf;
    expected.replace(at + n, length + 1, text + '\0');
    if (n > 0) expected.replace(at, n, std::string(n, '-'));
    ASSERT_EQ(_zstrshift(&buf[at], n, '-', 0), &buf[at]);
    ASSERT_EQ(buf, expected) << "n " << n << " length " << length;
  }
}

TEST(Shift, WithAFlagStaysWithinTheString) {
  struct Case {
    char const* text;
    int n;
    char const* expected;
  } const kCases[] = {
      {"abcdef", 2, "..abcd"}, {"abcdef", -2, "cdef.."}, {"abc", 5, "..."},
      {"abc", -5, "..."},      {"abc", 0, "abc"},        {"", 3, ""},
  };
  for (Case const& c : kCases) {
    char buf[16] = {};
    std::snprintf(buf, sizeof buf, "%s", c.text);
    EXPECT_STREQ(_zstrshift(buf, c.n, '.', 1), c.expected) << c.text << " by " << c.n;
  }
}

TEST(Bytes, Memset) {
  char buf[] = "abcdef";
  EXPECT_STREQ(_zmemset(buf, '*', 3), "***def");
  EXPECT_STREQ(_zmemset(buf, '-', 0), "***def");
}

}  // namespace
