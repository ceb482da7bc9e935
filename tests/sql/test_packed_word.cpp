// Packed words: the run-time packing (whole loads, eight bytes upper-cased
// at once) against the byte-by-byte packing the compiler uses, and the
// order of packed words against the byte order of the upper-cased words.
#include <gtest/gtest.h>

#include <random>
#include <string>

#include "sql/packed_word.h"

namespace {

namespace sql = zelstr::sql;

std::string upper(std::string w) {
  for (char& c : w) c = static_cast<char>(sql::upper_ascii(c));
  return w;
}

int sign(int v) { return (v > 0) - (v < 0); }

// Random words of 0 to 24 bytes, with the bytes around the letters' edges,
// digits, "_" and bytes from 0x80 up (never a zero byte).
std::string random_word(std::mt19937& random) {
  static std::string const bytes = "aAzZ`{@[_09bMnY\x80\xC9\xE9\xFF\x01";
  std::string w(random() % 25, ' ');
  for (char& c : w) c = bytes[random() % bytes.size()];
  return w;
}

TEST(PackedWords, LoadsAgreeWithBytesAndKeepTheByteOrder) {
  std::mt19937 random(20261121);
  for (int i = 0; i < 20000; ++i) {
    std::string const a = random_word(random);
    std::string const b = random_word(random);
    sql::PackedWord const pa = sql::pack_upper_loaded(a.c_str(), a.size());
    sql::PackedWord const pb = sql::pack_upper_loaded(b.c_str(), b.size());
    ASSERT_TRUE(pa == sql::pack_upper(a.c_str(), a.size())) << a;
    ASSERT_EQ(a.size(), sql::packed_length(pa)) << a;
    int const order = sign(upper(a).compare(upper(b)));
    ASSERT_EQ(order, (pb < pa) - (pa < pb)) << a << " / " << b;
    ASSERT_EQ(order == 0, pa == pb) << a << " / " << b;
  }
}

}  // namespace
