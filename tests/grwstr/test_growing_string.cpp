// CGrwStr: growth arithmetic against a model of its rule, registered
// pointers across reallocations, formatted growth, insertion, the dump.
#include <gtest/gtest.h>

#include <random>
#include <string>

#include "support/warnings.h"
#include "zelstr/zelstr.h"

namespace {

using zelstr::test::ExpectedWarning;
using GrowingString = zelstr::test::WarningsTest;

// The size after appending `n` characters to a string of `length` in a
// buffer of `size` bytes (0: none yet), growing by `step`.  Appending
// nothing makes a first buffer of one step.
unsigned long model_size(unsigned long size, unsigned long length, unsigned long n,
                         unsigned long step) {
  unsigned long const wanted = length + n;
  if (n == 0) return size == 0 ? step : size;
  if (wanted < size) return size;
  return size + step > wanted ? size + step : step + 1 + wanted;
}

TEST_F(GrowingString, AppendsGrowByTheirRule) {
  std::mt19937 rng(53);
  for (int round = 0; round < 300; ++round) {
    unsigned long const step = 1 + rng() % 40;
    CGrwStr g(step, -1, 0);
    std::string model;
    unsigned long size = 0;
    for (int op = 0; op < 30; ++op) {
      std::string const piece(rng() % 60, static_cast<char>('a' + op % 26));
      size = model_size(size, model.size(), piece.size(), step);
      if (rng() % 2) {
        g.strcat(piece.c_str());
      } else {
        g += piece.c_str();
      }
      model += piece;
      ASSERT_EQ(g.bufsize(), size) << "step " << step;
      ASSERT_EQ(g.strlen(), model.size());
      ASSERT_EQ(std::string(g.gethos()), model);
      ASSERT_EQ(g.geteos(), g.gethos() + model.size());
    }
  }
  EXPECT_TRUE(zelstr::test::filed_nothing());
}

TEST_F(GrowingString, StepsAndTheirLimit) {
  CGrwStr defaults(0, 0, 0);
  EXPECT_EQ(defaults.bufsize(), 2048u);
  CGrwStr small(4, -1, 0);
  small.strcat("0123456789");
  EXPECT_EQ(small.bufsize(), 15u);
  CGrwStr big(40000000, -1, 0);
  big.strcat("x");
  EXPECT_EQ(big.bufsize(), 33554432u);
  EXPECT_TRUE(zelstr::test::filed_exactly({ExpectedWarning{
      -1,
      "CGrwStr::CGrwStr(dwGrowSize=40000000,nMinSize=-1) - The requested size for <dwGrowSize> "
      "is too big: it will be limited to 32Mb.",
      2, "growingstring", "CGrwStr::CGrwStr()"}}));
}

TEST_F(GrowingString, RegisteredPointersFollowTheBuffer) {
  CGrwStr g(4, 0, 0);
  g.strcpy("abc");
  char* p = g.gethos() + 1;
  char* q = nullptr;
  char* r = g.gethos() + 2;
  ASSERT_EQ(g.resync_ptr(0, &p, &q, &r, nullptr), 1);
  g.strcat(std::string(100, 'z').c_str());  // reallocates
  EXPECT_EQ(*p, 'b');
  EXPECT_EQ(p, g.gethos() + 1);
  EXPECT_EQ(q, nullptr);
  ASSERT_EQ(g.resync_ptr(1, &r, nullptr), 1);
  char* const before = r;
  g.grow(1000);
  EXPECT_EQ(p, g.gethos() + 1);
  EXPECT_EQ(r, before);  // no longer registered
  g.discard();
  EXPECT_EQ(p, nullptr);
  EXPECT_EQ(g.gethos(), nullptr);
  EXPECT_EQ(g.strlen(), 0u);
  EXPECT_STREQ(g.strcat("again"), "again");
}

TEST_F(GrowingString, FormattedAppendsGrowByOneFourSixteenSteps) {
  CGrwStr g(10, 10, 0);  // 10 bytes: room for 9 characters
  g.strcatf("%s", std::string(9, 'a').c_str());
  EXPECT_EQ(g.bufsize(), 10u);
  g.strcatf("%s", std::string(40, 'b').c_str());  // 10 + 10, then + 40 bytes
  EXPECT_EQ(g.bufsize(), 60u);
  g.strcatf("%s", std::string(500, 'c').c_str());  // + 10, + 40, + 160, + 640
  EXPECT_EQ(g.bufsize(), 910u);
  EXPECT_EQ(g.strlen(), 549u);
  EXPECT_STREQ(g.strcpyf("%d-%s", 7, "x"), "7-x");
  EXPECT_EQ(g.strcatf(nullptr), g.gethos());
  EXPECT_STREQ(g.gethos(), "7-x");
}

TEST_F(GrowingString, EditingInPlace) {
  CGrwStr g(8, 0, 0);
  g = "FROM t";
  char const* pos = g.gethos();
  EXPECT_STREQ(g.insert(pos, "SELECT * "), "SELECT * FROM t");
  char const* outside = g.gethos() + 100;
  EXPECT_EQ(g.insert(outside, "x"), nullptr);
  EXPECT_STREQ(g.gethos(), "SELECT * FROM t");
  EXPECT_STREQ(g.insert_head("-- "), "-- SELECT * FROM t");
  EXPECT_STREQ(g -= 2, "-- SELECT * FROM");
  EXPECT_STREQ(g--, "-- SELECT * FRO");
  EXPECT_STREQ(g -= 100, "");
  EXPECT_STREQ(g--, "");
  g = 'x';
  g += 'y';
  EXPECT_STREQ(g.gethos(), "xy");
  g.strncat("abcdef", 3);
  EXPECT_STREQ(g.gethos(), "xyabc");
  g.gethos()[2] = '\0';
  EXPECT_STREQ(g.synceos(), "xy");
  EXPECT_EQ(g.strlen(), 2u);
  EXPECT_STREQ(g.seteos(g.gethos() + 1), "x");
  CGrwStr copy(g);
  EXPECT_STREQ(copy.gethos(), "x");
  EXPECT_NE(copy.gethos(), g.gethos());
  EXPECT_EQ(copy.chreos(-1), 'x');
}

TEST_F(GrowingString, DumpShowsTheObject) {
  CGrwStr g("ab", 16, 0, 3);
  char* p = g.gethos() + 1;
  g.resync_ptr(0, &p, nullptr);
  std::string const dump = g.get_dump();
  EXPECT_NE(dump.find("m_dwGrowSize   : 16\r\n"), std::string::npos) << dump;
  EXPECT_NE(dump.find("m_dwGrowFactor : 3\r\n"), std::string::npos);
  EXPECT_NE(dump.find("m_dwSize       : 3\r\n"), std::string::npos);
  EXPECT_NE(dump.find("( m_nQtyUsed=1 / m_nQtyAlloc=6 )\r\n"), std::string::npos);
  EXPECT_NE(dump.find("m_dwLen        : 2\r\n"), std::string::npos);
  EXPECT_NE(dump.find("               : \"ab\"\r\n"), std::string::npos);
  EXPECT_NE(dump.find("               : { #1, }\r\n"), std::string::npos);
  CGrwStr none(0, -1, 0);
  EXPECT_NE(std::string(none.get_dump()).find("m_lpszEOS      : NONE\r\n"), std::string::npos);
}

}  // namespace
