// The ASCII case tables and the comparisons built on them, against models
// of their byte-by-byte definitions.
#include <gtest/gtest.h>

#include <random>
#include <string>

#include "support/warnings.h"
#include "zelstr/zelstr.h"

namespace {

using Ops = CCharCaseRelatedOps;

TEST(CaseTables, EveryByteByBothIndexings) {
  ASSERT_TRUE(Ops::m_bMembersInitialized);  // built when the module loaded
  for (int b = 0; b < 256; ++b) {
    bool const upper = b >= 'A' && b <= 'Z', lower = b >= 'a' && b <= 'z';
    int const to_upper = lower ? b - 32 : b, to_lower = upper ? b + 32 : b;
    int const swapped = upper ? b + 32 : lower ? b - 32 : b;
    int const as_signed = static_cast<signed char>(b);
    SCOPED_TRACE(b);
    for (int index : {b, 256 + as_signed}) {
      ASSERT_EQ(static_cast<unsigned char>(Ops::m_acToUpperUC[index]), to_upper);
      ASSERT_EQ(static_cast<unsigned char>(Ops::m_acToLowerUC[index]), to_lower);
      ASSERT_EQ(static_cast<unsigned char>(Ops::m_acSwpCaseUC[index]), swapped);
      ASSERT_EQ(Ops::m_pbIsAlphaUC[index], upper || lower);
      ASSERT_EQ(Ops::m_pbIsLowerUC[index], lower);
    }
    ASSERT_EQ(Ops::m_acToUpper[as_signed], Ops::m_acToUpperUC[b]);
    ASSERT_EQ(Ops::m_pbIsAlpha[as_signed], Ops::m_pbIsAlphaUC[b]);
  }
  Ops::InitMembers();  // a second call changes nothing
  EXPECT_EQ(Ops::m_acSwpCase['Q'], 'q');
}

int lower(unsigned char b) { return b >= 'A' && b <= 'Z' ? b + 32 : b; }
int sign(int r) { return (r > 0) - (r < 0); }

// Byte-wise definitions: stop at the terminator of s1 unless `exact`.
int model(std::string const& a, std::string const& b, std::size_t count, bool fold, bool exact) {
  for (std::size_t i = 0; i < count; ++i) {
    int const x = fold ? lower(a[i]) : static_cast<unsigned char>(a[i]);
    int const y = fold ? lower(b[i]) : static_cast<unsigned char>(b[i]);
    if (x != y) return x - y;
    if (!exact && x == 0) return 0;
  }
  return 0;
}

TEST(CaseTables, ComparisonsMatchTheirByteWiseDefinitions) {
  std::mt19937 rng(5);
  char const alphabet[] = "aAbB\xC9\xE9";
  for (int round = 0; round < 20000; ++round) {
    std::string a(24, '\0'), b(24, '\0');  // room for bytes past a terminator
    std::size_t const la = rng() % 20, lb = rng() % 20;
    for (std::size_t i = 0; i < 24; ++i) {
      a[i] = i < la || i > 20 ? alphabet[rng() % 6] : '\0';
      b[i] = i < lb || i > 20 ? alphabet[rng() % 6] : '\0';
    }
    unsigned const n = rng() % 25;
    SCOPED_TRACE(round);
    ASSERT_EQ(sign(Ops::AZ_StrICmp(a.data(), b.data())), sign(model(a, b, 24, true, false)));
    ASSERT_EQ(Ops::AZ_StrICmp(a.data(), b.data()), model(a, b, 24, true, false));
    ASSERT_EQ(Ops::AZ_StrNICmp(a.data(), b.data(), n), sign(model(a, b, n, true, false)));
    ASSERT_EQ(Ops::AZ_StrNICmp_DontCareOfEOS(a.data(), b.data(), n),
              sign(model(a, b, n, true, true)));
    ASSERT_EQ(Ops::Standard_StrNCmp(a.data(), b.data(), n), model(a, b, n, false, false));
    ASSERT_EQ(Ops::StrNCmp_DontCareOfEOS(a.data(), b.data(), n), model(a, b, n, false, true));
  }
}

using Casing = zelstr::test::WarningsTest;

TEST_F(Casing, OnlyAsciiLettersChange) {
  std::string all;
  for (int b = 1; b < 256; ++b) all += static_cast<char>(b);
  std::string up = all, down = all;
  EXPECT_EQ(_zstrupper(up.data()), up.data());
  EXPECT_EQ(_zstrlowerASCII(down.data()), down.data());
  for (int b = 1; b < 256; ++b) {
    ASSERT_EQ(static_cast<unsigned char>(up[b - 1]), b >= 'a' && b <= 'z' ? b - 32 : b);
    ASSERT_EQ(static_cast<unsigned char>(down[b - 1]), lower(static_cast<unsigned char>(b)));
    ASSERT_EQ(_zstrupper(static_cast<char>(b)), up[b - 1]);
    ASSERT_EQ(_zstrlowerASCII(static_cast<char>(b)), down[b - 1]);
  }
  EXPECT_STREQ(_zstrupperized("sys.Objects\xE9"), "SYS.OBJECTS\xE9");
  EXPECT_STREQ(_zstrlowerizedASCII("SYS.Objects"), "sys.objects");
  EXPECT_EQ(_zstrupperized(nullptr), nullptr);
  EXPECT_EQ(_zstrlowerized(nullptr), nullptr);
  EXPECT_TRUE(zelstr::test::filed_nothing());
}

}  // namespace
