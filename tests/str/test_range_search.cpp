// The range, nearest and N-th searches against naive models on random
// texts over a small alphabet (partial matches abound), short ones and ones
// longer than the search's copy windows, with patterns longer than a window
// can hold.
#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <cstring>
#include <memory>
#include <random>
#include <string>
#include <tuple>
#include <vector>

#include "support/naive_search.h"
#include "support/warnings.h"
#include "zelstr/zelstr.h"

namespace {

using zelstr::test::occurs_at;
using zelstr::test::same;

// The bytes [begin, end) the range (start, length) names in a text of n.
std::pair<long, long> model_range(long n, long start, long length) {
  long const begin = start < 0 ? std::max(0L, n + start) : std::min(start, n);
  long const end = length < 0 ? n : std::min(n, begin + length);
  return {begin, end};
}

// The index the search should give, or -1 for NULL.
long model_find(std::string const& t, std::string const& p, long start, long length, bool fold,
                bool last) {
  auto const [begin, end] = model_range(static_cast<long>(t.size()), start, length);
  long const m = static_cast<long>(p.size());
  long found = -1;
  for (long s = begin; s + m <= end; ++s) {
    if (!occurs_at(t, s, p, fold)) continue;
    found = s;
    if (!last) break;
  }
  if (m == 0) return last ? end : begin;
  return found;
}

long model_nearest(std::string const& t, std::string const& p, long position, bool fold) {
  long const at = std::min(position, static_cast<long>(t.size()));
  long const m = static_cast<long>(p.size());
  if (m == 0) return at;
  // Smallest (distance, after the position, nearness of the start) wins.
  std::tuple<long, int, long> best{-1, 0, 0};
  long found = -1;
  for (long s = 0; s + m <= static_cast<long>(t.size()); ++s) {
    if (!occurs_at(t, s, p, fold)) continue;
    long const d = s > at ? s - at : (s + m > at ? 0 : at - (s + m - 1));
    std::tuple<long, int, long> const key{d, s > at, s > at ? s : -s};
    if (found < 0 || key < best) best = key, found = s;
  }
  return found;
}

long model_nth(std::string const& t, char c, int n, bool fold, bool from_end) {
  if (c == '\0') return n == 1 ? static_cast<long>(t.size()) : -1;
  std::vector<long> at;
  for (std::size_t i = 0; i < t.size(); ++i) {
    if (same(t[i], c, fold)) at.push_back(static_cast<long>(i));
  }
  if (n > static_cast<int>(at.size())) return -1;
  return from_end ? at[at.size() - n] : at[n - 1];
}

long index_of(char const* found, std::string const& t) {
  return found == nullptr ? -1 : static_cast<long>(found - t.c_str());
}

std::string random_text(std::mt19937& rng, std::size_t n) {
  static char const kBytes[] = "abAB\xE9\xC9";
  std::string t(n, 'a');
  for (char& c : t) c = kBytes[rng() % (rng() % 8 == 0 ? 6 : 2)];
  return t;
}

// A pattern that often occurs: a piece of the text, its case sometimes
// changed, sometimes with one byte changed.
std::string random_pattern(std::mt19937& rng, std::string const& t, std::size_t longest) {
  std::size_t const m = std::min<std::size_t>(t.size(), rng() % (longest + 1));
  std::string p = t.substr(rng() % (t.size() - m + 1), m);
  if (!p.empty() && rng() % 4 == 0) p[rng() % p.size()] ^= 0x20;
  if (!p.empty() && rng() % 6 == 0) p[rng() % p.size()] = 'b';
  return p;
}

TEST(RangeSearch, AgreesWithTheModelOnRandomTextsAndRanges) {
  std::mt19937 rng(2026);
  for (int round = 0; round < 1500; ++round) {
    bool const long_text = round % 25 == 0;
    std::string const t = random_text(rng, long_text ? 4000 + rng() % 6000 : rng() % 40);
    std::size_t const longest = long_text && rng() % 3 == 0 ? 1500 : 6;
    long const n = static_cast<long>(t.size());
    for (int k = 0; k < (long_text ? 12 : 4); ++k) {
      std::string const p = random_pattern(rng, t, longest);
      long const start = static_cast<long>(rng() % (n + 8)) - (rng() % 2 ? n + 4 : 0);
      long const length = rng() % 5 == 0 ? -1 : static_cast<long>(rng() % (n + 8));
      SCOPED_TRACE(testing::Message() << "text " << n << " pattern " << p.size() << " range ("
                                      << start << ", " << length << ")");
      int const s = static_cast<int>(start), l = static_cast<int>(length);
      char const* const c = t.c_str();
      EXPECT_EQ(model_find(t, p, s, l, false, false), index_of(_zstrfind(c, p.c_str(), s, l), t));
      EXPECT_EQ(model_find(t, p, s, l, true, false), index_of(_zstrifind(c, p.c_str(), s, l), t));
      EXPECT_EQ(model_find(t, p, s, l, false, true), index_of(_zstrrfind(c, p.c_str(), s, l), t));
      EXPECT_EQ(model_find(t, p, s, l, true, true), index_of(_zstrrifind(c, p.c_str(), s, l), t));
      long const position = static_cast<long>(rng() % (n + 3));
      int const at = static_cast<int>(position);
      EXPECT_EQ(model_nearest(t, p, position, false),
                index_of(_zstrneareststr(c, p.c_str(), at), t));
      EXPECT_EQ(model_nearest(t, p, position, true),
                index_of(_zstrnearestistr(c, p.c_str(), at), t));
    }
  }
}

// One occurrence, moved through every place of a long range that stops
// short of the terminator (so the scan ends at the range's limit, not at
// the terminator).
TEST(RangeSearch, FindsALoneOccurrenceAtEveryPlace) {
  for (std::size_t m : {1u, 3u, 17u}) {
    std::string const p = std::string(m - 1, 'a') + 'b';
    std::string t(9000, 'x');
    int const n = static_cast<int>(t.size());
    for (std::size_t q = 0; q + m <= t.size(); ++q) {
      t.replace(q, m, p);
      long const inside = q >= 1 && q + m <= t.size() - 1 ? static_cast<long>(q) : -1;
      ASSERT_EQ(inside, index_of(_zstrfind(t.c_str(), p.c_str(), 1, n - 2), t)) << m << " " << q;
      ASSERT_EQ(inside, index_of(_zstrrfind(t.c_str(), p.c_str(), 1, n - 2), t)) << m << " " << q;
      t.replace(q, m, std::string(m, 'x'));
    }
  }
}

TEST(RangeSearch, ReadsNoFurtherThanTheRange) {
  // No terminator after the range: a read past it is a heap overflow.
  std::string const text = "xxabcxxABCxx" + std::string(9000, 'x') + "abc";
  std::size_t const n = text.size() - 2;
  std::unique_ptr<char[]> const bytes(new char[n]);
  std::memcpy(bytes.get(), text.data(), n);
  char const* const b = bytes.get();
  EXPECT_EQ(_zstrfind(b, "abc", 1, static_cast<int>(n - 1)), b + 2);
  EXPECT_EQ(_zstrifind(b, "abc", 3, static_cast<int>(n - 3)), b + 7);
  EXPECT_EQ(_zstrrfind(b, "abc", 0, static_cast<int>(n)), b + 2);
  EXPECT_EQ(_zstrrifind(b, "ABC", 0, static_cast<int>(n)), b + 7);
  EXPECT_EQ(_zstrfind(b, "xab", 3, static_cast<int>(n - 3)), nullptr);
}

TEST(NthChar, AgreesWithTheModelOnRandomTexts) {
  std::mt19937 rng(77);
  for (int round = 0; round < 3000; ++round) {
    std::string const t = random_text(rng, rng() % 50);
    char const c = "aAb\xE9\xC9z"[rng() % 7];  // the 7th is the terminator
    int const n = 1 + static_cast<int>(rng() % 30);
    SCOPED_TRACE(testing::Message() << "text '" << t << "' byte " << int(c) << " n " << n);
    char const* const s = t.c_str();
    EXPECT_EQ(model_nth(t, c, n, false, false), index_of(_zstrNthchr(s, c, n), t));
    EXPECT_EQ(model_nth(t, c, n, true, false), index_of(_zstrNthichr(s, c, n), t));
    EXPECT_EQ(model_nth(t, c, n, false, true), index_of(_zstrNthrchr(s, c, n), t));
    EXPECT_EQ(model_nth(t, c, n, true, true), index_of(_zstrNthrichr(s, c, n), t));
  }
}

// The documented corners, written out.
TEST(RangeSearch, DocumentedCorners) {
  char const* const s = "one two one";
  EXPECT_EQ(_zstrfind(s, "one", -3, -1), s + 8);         // the last three bytes
  EXPECT_EQ(_zstrfind(s, "one", -100, 3), s);            // before the start: from the start
  EXPECT_EQ(_zstrfind(s, "one", 1, 9), nullptr);         // the second one ends past the range
  EXPECT_EQ(_zstrrfind(s, "", 2, 3), s + 5);             // empty: the range's end
  EXPECT_EQ(_zstrfind(s, "", 50, 3), s + 11);            // a range past the end is empty
  EXPECT_EQ(_zstrneareststr(s, "one", 5), s);            // a tie: the one before
  EXPECT_EQ(_zstrneareststr(s, "one", 6), s + 8);        // 2 bytes away against 4
  EXPECT_EQ(_zstrneareststr(s, "two", 500), s + 4);      // past the end: at the terminator
  char const* const a = "aAa";
  EXPECT_EQ(_zstrnearestistr(a, "AA", 1), a + 1);        // both cover it: the later start
  EXPECT_EQ(_zstrNthrchr(s, 'o', 2), s + 6);
  EXPECT_EQ(_zstrNthchr(s, '\0', 1), s + 11);
  EXPECT_EQ(_zstrNthchr(s, '\0', 2), nullptr);
}

}  // namespace
