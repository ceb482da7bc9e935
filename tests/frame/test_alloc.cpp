// Heap copies and CStringAlloc.
#include <gtest/gtest.h>

#include <new>
#include <string>

#include "zelstr/zelstr.h"

namespace {

TEST(HeapCopies, DupallocCopiesTheStringAndItsTerminator) {
  char const src[] = "sp_who";
  char* copy = _zstrdupalloc(src, 10);
  ASSERT_NE(copy, nullptr);
  EXPECT_NE(copy, src);
  EXPECT_STREQ(copy, "sp_who");
  copy[6 + 10] = 'x';  // the extra bytes belong to the block
  _zstrdupfree(copy);
  EXPECT_EQ(copy, nullptr);
  _zstrdupfree(copy);  // a NULL pointer is left alone
  EXPECT_EQ(copy, nullptr);
}

TEST(HeapCopies, DupnallocCopiesNBytesAsTheyStand) {
  char const src[] = "ab\0cd";
  char* copy = _zstrdupnalloc(src, 5, 2);
  ASSERT_NE(copy, nullptr);
  EXPECT_EQ(std::string(copy, 6), std::string("ab\0cd\0", 6));
  _zstrdupfree(copy);
}

TEST(HeapCopies, StringAllocOwnsACopyAndItsCopiesShareIt) {
  char text[] = "dbo";
  CStringAlloc owner(text);
  char const* owned = owner;
  ASSERT_NE(owned, nullptr);
  EXPECT_NE(owned, text);
  EXPECT_STREQ(owned, "dbo");
  // A copy shares the pointer; it is built in place and never destroyed, so
  // that the text is released once, by its owner.
  alignas(CStringAlloc) unsigned char storage[sizeof(CStringAlloc)];
  auto* shared = new (storage) CStringAlloc(owner);
  EXPECT_EQ(static_cast<char const*>(*shared), owned);
  static_cast<char*>(*shared)[0] = 'D';
  EXPECT_STREQ(static_cast<char const*>(owner), "Dbo");

  CStringAlloc empty(nullptr);
  EXPECT_EQ(static_cast<char const*>(empty), nullptr);
}

}  // namespace
