// The mask of a compare's lanes, both forms, against the lanes read one by
// one: random blocks of few byte values, so that every count of hits
// occurs.
#include <gtest/gtest.h>

#include <random>

#include "frame/byte_mask.h"

namespace {

namespace frame = zelstr::frame;

TEST(ByteMask, EachLaneGivesItsBit) {
  std::mt19937 rng(16);
  for (int round = 0; round < 20000; ++round) {
    unsigned char bytes[16];
    for (auto& b : bytes) b = static_cast<unsigned char>("a\n\xFF\x80"[rng() % 4]);
    unsigned char const c = bytes[rng() % 16];
    std::uint32_t want = 0;
    for (int i = 0; i < 16; ++i) want |= std::uint32_t{bytes[i] == c} << i;
    auto const hit = reinterpret_cast<frame::Bytes16>(frame::load16(bytes) == frame::splat16(c));
    ASSERT_EQ(want, frame::byte_mask(hit)) << round;
    ASSERT_EQ(want, frame::byte_mask_by_multiply(hit)) << round;
  }
}

}  // namespace
