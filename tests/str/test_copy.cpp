// The copies against small models written from their step-by-step rules,
// on random strings and offsets: whole buffers are compared, so a stray byte
// written past the rule's end fails too.
#include <gtest/gtest.h>

#include <cstring>
#include <random>
#include <string>

#include "zelstr/zelstr.h"

namespace {

constexpr std::size_t kArena = 128;  // src < 56, dest + count < 100

// A buffer with a string at `src_at` and the rest filled with '#'.
struct Scene {
  std::string bytes;
  std::size_t src_at;
  std::size_t dest_at;
  unsigned long count;
};

Scene random_scene(std::mt19937& rng, bool may_overlap) {
  static char const kAlphabet[] = "ab,;XY \xE9\xFF";
  Scene s{std::string(kArena, '#'), 0, 0, 0};
  std::size_t const length = rng() % 24;
  s.src_at = rng() % 32;
  for (std::size_t i = 0; i < length; ++i) s.bytes[s.src_at + i] = kAlphabet[rng() % 9];
  s.bytes[s.src_at + length] = '\0';
  s.count = rng() % 30;
  if (may_overlap) {
    s.dest_at = rng() % 40;
  } else {  // past the string and its count, or before it
    s.dest_at = s.src_at + 32 + rng() % 8;
  }
  return s;
}

// The standard rule: `count` bytes, the string then zeros.
void model_strncpy(char* d, char const* s, unsigned long count) {
  if (d == s || count == 0) return;
  bool ended = false;
  for (unsigned long i = 0; i < count; ++i) {
    if (!ended && s[i] == '\0') ended = true;
    d[i] = ended ? '\0' : s[i];
  }
}

// Forward unless dest lies inside the source area; then zeros backwards and
// the run backwards.
void model_samestrncpy(char* d, char* s, unsigned long count) {
  if (d == s || count == 0) return;
  if (s + count <= d || d < s) return model_strncpy(d, s, count);
  std::size_t const n = std::min<std::size_t>(std::strlen(s), count);
  for (std::size_t i = count; i-- > n;) d[i] = '\0';
  for (std::size_t i = n; i-- > 0;) d[i] = s[i];
}

// The terminator is written where the copy stopped, which is one past the
// copied terminator when the source was the shorter.
void model_safecpyf0(char* d, char const* s, unsigned long count) {
  if (count == 0) return;
  while (--count && (*d++ = *s++) != '\0') {
  }
  *d = '\0';
}

void model_ncpybefore(char* d, char const* s, char const* reject, unsigned long count) {
  if (*reject == '\0' || count == 0) return model_strncpy(d, s, count);
  std::size_t const n = std::strcspn(s, reject);
  for (std::size_t i = 0; i < std::min<std::size_t>(n, count); ++i) d[i] = s[i];
  for (std::size_t i = n; i < count; ++i) d[i] = '\0';
}

void model_memcpy(char* d, char* s, unsigned long count) {
  if (d == s) return;
  for (unsigned long i = 0; i < count; ++i) d[i] = s[i];
}

template <class Call, class Model>
void check_against_model(char const* what, bool may_overlap, Call call, Model model) {
  std::mt19937 rng(20261121);
  for (int round = 0; round < 4000; ++round) {
    Scene scene = random_scene(rng, may_overlap);
    std::string expected = scene.bytes;
    std::string actual = scene.bytes;
    model(&expected[scene.dest_at], &expected[scene.src_at], scene.count);
    char* const result = call(&actual[scene.dest_at], &actual[scene.src_at], scene.count);
    ASSERT_EQ(result, &actual[scene.dest_at]) << what;
    ASSERT_EQ(actual, expected) << what << " round " << round << " src@" << scene.src_at << " dest@"
                                << scene.dest_at << " count " << scene.count;
  }
}

TEST(CopyModels, StrncpyWritesExactlyCountBytes) {
  check_against_model("_zstrncpy", false, _zstrncpy, model_strncpy);
}

TEST(CopyModels, SamestrncpyIsRightForEveryOverlap) {
  check_against_model("_zsamestrncpy", true, _zsamestrncpy, model_samestrncpy);
}

TEST(CopyModels, SafecpyStopsAndAlwaysTerminates) {
  check_against_model("_zstrsafecpyf0", false, _zstrsafecpyf0, model_safecpyf0);
}

TEST(CopyModels, CpyuntilIsSafecpyUpToTheStop) {
  auto call = [](char* d, char* s, unsigned long count) {
    return _zstrcpyuntil(d, s, s + count % 12);
  };
  auto model = [](char* d, char* s, unsigned long count) { model_safecpyf0(d, s, count % 12 + 1); };
  check_against_model("_zstrcpyuntil", false, call, model);
}

TEST(CopyModels, NcpybeforeStopsAtTheSet) {
  for (char const* reject : {"", ",;", "\xE9", "b"}) {
    check_against_model(
        "_zstrncpybefore", false,
        [reject](char* d, char* s, unsigned long n) { return _zstrncpybefore(d, s, reject, n); },
        [reject](char* d, char* s, unsigned long n) { model_ncpybefore(d, s, reject, n); });
  }
}

TEST(CopyModels, NcpybeforeCharIsTheOneCharacterSet) {
  check_against_model(
      "_zstrncpybefore(char)", false,
      [](char* d, char* s, unsigned long n) { return _zstrncpybefore(d, s, ';', n); },
      [](char* d, char* s, unsigned long n) { model_ncpybefore(d, s, ";", n); });
}

TEST(CopyModels, MemcpyWalksForwardsEvenOverItself) {
  check_against_model("_zmemcpy", true, _zmemcpy, model_memcpy);
}

TEST(CopyModels, Ncpyf0TerminatesAtCountMinusOne) {
  check_against_model("_zstrncpyf0", false, _zstrncpyf0, [](char* d, char* s, unsigned long n) {
    model_strncpy(d, s, n);
    if (n != 0) d[n - 1] = '\0';
  });
}

// Spelled-out cases callers rely on.
TEST(Copy, ShiftRightByOneWithoutSmearing) {
  char buf[] = "abcd\0##";
  EXPECT_EQ(_zsamestrncpy(buf + 1, buf, 4), buf + 1);
  EXPECT_EQ(std::string(buf, 7), std::string("aabcd##", 7));
}

TEST(Copy, CountsAreCutToTheirLow32Bits) {
  if (sizeof(unsigned long) < 8) GTEST_SKIP() << "unsigned long is 32 bits here";
  char buf[] = "xxxxxx";
  unsigned long const three = static_cast<unsigned long>((1ull << 32) | 3u);
  EXPECT_EQ(_zstrncpy(buf, "abcdef", three), buf);
  EXPECT_STREQ(buf, "abcxxx");
  EXPECT_EQ(_zstrncmp("abcX", "abcY", three), 0);
}

TEST(Copy, BeforeVariants) {
  char buf[32];
  EXPECT_STREQ(_zstrcpybefore(buf, "dbo.Orders", "."), "dbo");
  EXPECT_STREQ(_zstrcpybefore(buf, "dbo.Orders", nullptr), "dbo.Orders");
  EXPECT_STREQ(_zstrcpybefore(buf, "dbo.Orders", 'O'), "dbo.");
  EXPECT_STREQ(_zstrcpybefore(buf, "dbo.Orders", '\0'), "dbo.Orders");
  EXPECT_STREQ(_zstrgetbefore("a b", " "), "a");
  EXPECT_STREQ(_zstrgetbefore("ab", 'z'), "ab");
  EXPECT_STREQ(_zstrcpy(buf, "whole"), "whole");
  EXPECT_EQ(_zstrcpy(buf, buf), buf);
}

TEST(Copy, GetbeforeTakesItsAreaFromTheCloneArena) {
  char* const first = _zstrgetbefore("abc,def", ',');
  char* const next = _zstrclone("x", 0);
  EXPECT_EQ(next, first + 4);  // "abc" and its terminator reserved
}

}  // namespace
