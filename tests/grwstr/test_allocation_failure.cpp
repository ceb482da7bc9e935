// A growth that cannot get memory discards the whole CGrwStr: NULL, empty,
// registered pointers set to NULL, and the object still usable.
#include <gtest/gtest.h>

#include <string>

#include "grwstr/allocation.h"
#include "zelstr/grwstr.h"

namespace {

TEST(GrowingStringMemory, AFailedGrowthDiscardsTheObject) {
  CGrwStr g(4, 0, 0);
  g.strcpy("abc");
  char* p = g.gethos();
  ASSERT_EQ(g.resync_ptr(0, &p, nullptr), 1);
  zelstr::grwstr::fail_next_allocations(1);
  EXPECT_EQ(g.strcat(std::string(50, 'x').c_str()), nullptr);
  EXPECT_EQ(g.gethos(), nullptr);
  EXPECT_EQ(g.strlen(), 0u);
  EXPECT_EQ(p, nullptr);
  EXPECT_STREQ(g.strcat("ok"), "ok");
  zelstr::grwstr::fail_next_allocations(1);
  EXPECT_EQ(g.strcatf("%s", std::string(50, 'y').c_str()), nullptr);
  EXPECT_EQ(g.gethos(), nullptr);
  zelstr::grwstr::fail_next_allocations(1);
  EXPECT_EQ(g.resync_ptr(0, &p, nullptr), 0);
}

}  // namespace
