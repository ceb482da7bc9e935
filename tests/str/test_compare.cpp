// Comparisons and difference points against reference models on random
// strings over a small alphabet (so that equal prefixes are common), with
// both cases and bytes above 127.
#include <gtest/gtest.h>

#include <cctype>
#include <cstring>
#include <random>
#include <string>

#include "zelstr/zelstr.h"

namespace {

std::string random_text(std::mt19937& rng) {
  static char const kAlphabet[] = "aAbB_\x80\xE9";
  std::string s(rng() % 6, ' ');
  for (char& c : s) c = kAlphabet[rng() % 7];
  return s;
}

// Lexicographic order of at most `count` unsigned bytes, through `fold`.
template <class Fold>
int model_compare(std::string const& a, std::string const& b, std::size_t count, Fold fold) {
  for (std::size_t i = 0; i < count; ++i) {
    int const x = fold(i < a.size() ? static_cast<unsigned char>(a[i]) : 0);
    int const y = fold(i < b.size() ? static_cast<unsigned char>(b[i]) : 0);
    if (x != y) return x < y ? -1 : 1;
    if (x == 0) return 0;
  }
  return 0;
}

int same(int c) { return c; }
int lower(int c) { return std::tolower(c); }

TEST(CompareModels, AllComparisonsGiveMinusOneZeroOrPlusOne) {
  std::mt19937 rng(7);
  constexpr std::size_t kWhole = static_cast<std::size_t>(-1);
  for (int round = 0; round < 20000; ++round) {
    std::string const a = random_text(rng), b = random_text(rng);
    unsigned long const n = rng() % 7;
    SCOPED_TRACE("'" + a + "' vs '" + b + "' count " + std::to_string(n));
    ASSERT_EQ(_zstrcmp(a.c_str(), b.c_str()), model_compare(a, b, kWhole, same));
    ASSERT_EQ(_zstricmp(a.c_str(), b.c_str()), model_compare(a, b, kWhole, lower));
    ASSERT_EQ(_zstrncmp(a.c_str(), b.c_str(), n), model_compare(a, b, n, same));
    ASSERT_EQ(_zstrnicmp(a.c_str(), b.c_str(), n), model_compare(a, b, n, lower));
    ASSERT_EQ(_zstrnullisablecmp(a.c_str(), b.c_str()), model_compare(a, b, kWhole, same));
    ASSERT_EQ(_zstrnullisableicmp(a.c_str(), b.c_str()), model_compare(a, b, kWhole, lower));
  }
}

// The first index where the folded bytes differ, or npos when equal.
template <class Fold>
std::size_t model_difference(std::string const& a, std::string const& b, Fold fold) {
  for (std::size_t i = 0;; ++i) {
    int const x = i < a.size() ? static_cast<unsigned char>(a[i]) : 0;
    int const y = i < b.size() ? static_cast<unsigned char>(b[i]) : 0;
    if (fold(x) != fold(y)) return i;
    if (x == 0) return std::string::npos;
  }
}

TEST(CompareModels, DifferencePointsLieInTheFirstString) {
  std::mt19937 rng(11);
  auto upper = [](int c) { return std::toupper(c); };
  for (int round = 0; round < 20000; ++round) {
    std::string a = random_text(rng), b = random_text(rng);
    SCOPED_TRACE("'" + a + "' vs '" + b + "'");
    std::size_t const cs = model_difference(a, b, same);
    std::size_t const ci = model_difference(a, b, upper);
    char const* const at_cs = cs == std::string::npos ? nullptr : a.c_str() + cs;
    char const* const at_ci = ci == std::string::npos ? nullptr : a.c_str() + ci;
    ASSERT_EQ(_zstrdiffpoint(a.c_str(), b.c_str(), 1), at_cs);
    ASSERT_EQ(_zstrdiffpoint(a.c_str(), b.c_str(), 0), at_ci);
    ASSERT_EQ(_zstrneq(a.data(), b.data()), at_cs);
  }
}

TEST(Positions, AddressesNotTexts) {
  char const text[] = "zzz";
  EXPECT_EQ(_zstrmax(text, text + 2), text + 2);
  EXPECT_EQ(_zstrmin(text + 2, text), text);
  char s[] = "a,b";
  EXPECT_EQ(_zstrchr(s, ','), s + 1);
  EXPECT_EQ(_zstrchr(s, '\0'), s + 3);
  EXPECT_EQ(_zstrchr(static_cast<char const*>(s), 'x'), nullptr);
  EXPECT_EQ(_zstreos(s), s + 3);
  EXPECT_EQ(_zstrlen(""), 0u);
  EXPECT_EQ(_zstrsetlen(const_cast<char*>("")), 1u);
  char set[] = "ab\0cd";
  EXPECT_EQ(_zstrsetlen(set), 3u);
}

}  // namespace
