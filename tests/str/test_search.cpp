// The searches against naive models on random texts: short and long, at
// every alignment, over small alphabets where partial matches abound, with
// case variants and bytes above 127.
#include <gtest/gtest.h>

#include <cctype>
#include <random>
#include <string>
#include <vector>

#include "support/naive_search.h"
#include "support/warnings.h"
#include "zelstr/zelstr.h"

namespace {

using zelstr::test::ExpectedWarning;

using zelstr::test::occurs_at;
using zelstr::test::same;

// Every start of an occurrence, in order.
std::vector<std::size_t> starts(std::string const& t, std::string const& p, bool fold) {
  std::vector<std::size_t> out;
  for (std::size_t s = 0; s + p.size() <= t.size(); ++s) {
    if (occurs_at(t, s, p, fold)) out.push_back(s);
  }
  return out;
}

struct Scene {
  std::vector<char> storage;  // the text lies at an offset that varies
  char const* text;
  std::string t, p;
};

Scene random_scene(std::mt19937& rng) {
  static char const* const kAlphabets[] = {"ab", "abc", "aAbB", "ab\xE9\xC9", "abcdefgh_ "};
  char const* const alphabet = kAlphabets[rng() % 5];
  std::size_t const k = std::char_traits<char>::length(alphabet);
  Scene sc;
  std::size_t const n = rng() % 4 == 0 ? rng() % 400 : rng() % 40;
  for (std::size_t i = 0; i < n; ++i) sc.t += alphabet[rng() % k];
  std::size_t const m = 1 + rng() % (rng() % 3 == 0 ? 34 : 6);
  if (n >= m && rng() % 2) {
    sc.p = sc.t.substr(rng() % (n - m + 1), m);  // one that occurs
  } else {
    for (std::size_t i = 0; i < m; ++i) sc.p += alphabet[rng() % k];
  }
  std::size_t const offset = rng() % 64;
  sc.storage.assign(offset + n + 1, '\0');
  std::copy(sc.t.begin(), sc.t.end(), sc.storage.begin() + offset);
  sc.text = sc.storage.data() + offset;
  return sc;
}

char const* at(Scene const& sc, std::vector<std::size_t> const& s, std::size_t i) {
  return i < s.size() ? sc.text + s[i] : nullptr;
}

using Search = zelstr::test::WarningsTest;

TEST_F(Search, ForwardBackwardAndCountsMatchTheModels) {
  std::mt19937 rng(31);
  for (int round = 0; round < 30000; ++round) {
    Scene const sc = random_scene(rng);
    SCOPED_TRACE("text '" + sc.t + "' pattern '" + sc.p + "'");
    for (bool fold : {false, true}) {
      std::vector<std::size_t> const all = starts(sc.t, sc.p, fold);
      char const* const first = at(sc, all, 0);
      char const* const last = all.empty() ? nullptr : sc.text + all.back();
      ASSERT_EQ(fold ? _zstristr(sc.text, sc.p.c_str()) : _zstrstr(sc.text, sc.p.c_str()), first);
      ASSERT_EQ(fold ? _zstrristr(sc.text, sc.p.c_str()) : _zstrrstr(sc.text, sc.p.c_str()), last);
      int count = 0;  // without overlap, from the left
      for (std::size_t next = 0, i = 0; i < all.size(); ++i) {
        if (all[i] >= next) ++count, next = all[i] + sc.p.size();
      }
      ASSERT_EQ(fold ? _zstristrcnt(sc.text, sc.p.c_str()) : _zstrstrcnt(sc.text, sc.p.c_str()),
                count);
    }
  }
  EXPECT_TRUE(zelstr::test::filed_nothing());
}

// Delimited search: occurrences walked from the left, a rejected one
// skipped whole.
char const* model_delimited(Scene const& sc, std::string const& delims, bool fold) {
  auto is_delim = [&delims](char c) { return c == '\0' || delims.find(c) != std::string::npos; };
  for (std::size_t s = 0; s + sc.p.size() <= sc.t.size();) {
    if (!occurs_at(sc.t, s, sc.p, fold)) {
      ++s;
      continue;
    }
    bool const before = s == 0 || is_delim(sc.t[s - 1]);
    if (before && is_delim(sc.text[s + sc.p.size()])) return sc.text + s;
    s += sc.p.size();
  }
  return nullptr;
}

TEST_F(Search, DelimitedSearchSkipsRejectedOccurrencesWhole) {
  std::mt19937 rng(37);
  for (int round = 0; round < 20000; ++round) {
    Scene const sc = random_scene(rng);
    std::string const delims = rng() % 2 ? " _" : "b";
    SCOPED_TRACE("text '" + sc.t + "' pattern '" + sc.p + "' delimiters '" + delims + "'");
    ASSERT_EQ(_zstrstr1(sc.text, sc.p.c_str(), delims.c_str()), model_delimited(sc, delims, false));
    ASSERT_EQ(_zstristr1(sc.text, sc.p.c_str(), delims.c_str()), model_delimited(sc, delims, true));
    // The searches that followed left the state as a fresh search needs it.
    ASSERT_EQ(_zstrstr(sc.text, "zz"), nullptr);
  }
}

TEST_F(Search, PatternsThatMatchAlmostEverywhere) {
  std::string text;
  for (int i = 0; i < 4000; ++i) text += std::string(31, 'a') + 'b';
  std::string const pattern(32, 'a');
  EXPECT_EQ(_zstrstr(text.c_str(), pattern.c_str()), nullptr);
  text += pattern;
  EXPECT_EQ(_zstrstr(text.c_str(), pattern.c_str()), text.c_str() + text.size() - 32);
  EXPECT_EQ(_zstristr(text.c_str(), "AAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAA"),
            text.c_str() + text.size() - 32);
  std::string const run(100000, 'a');
  EXPECT_EQ(_zstrstr(run.c_str(), "aaaab"), nullptr);
  EXPECT_EQ(_zstrstr(run.c_str(), "baaaa"), nullptr);
}

TEST_F(Search, SpelledOutCases) {
  char const* const t = "aXbXc";
  EXPECT_EQ(_zstrstr(t, "Xc"), t + 3);
  char const* const empty = "";
  EXPECT_EQ(_zstrstr(empty, ""), empty);
  EXPECT_EQ(_zstrstr(empty, "a"), nullptr);
  EXPECT_EQ(_zstrstr(t, ""), t);
  char const* const hello = "Hello";
  EXPECT_EQ(_zstristr(hello, "LL"), hello + 2);
  char const* const abc = "abc ab";
  EXPECT_EQ(_zstrstr1(abc, "ab", " "), abc + 4);
  EXPECT_EQ(_zstrstr1(abc, "ab", ""), abc);
  EXPECT_EQ(_zstrstr2chars(abc, "c "), abc + 2);
  EXPECT_EQ(_zstrstr3chars(abc, "c a"), abc + 2);
  EXPECT_EQ(_zstrstr2chars(abc, "b"), abc + 5);  // with its terminator: only at the end
  EXPECT_EQ(_zstrstr2chars(nullptr, "ab"), nullptr);
  EXPECT_EQ(_zstrrstr(abc, ""), abc + 6);
  EXPECT_EQ(_zstrccnt(abc, 'a'), 2);
  EXPECT_EQ(_zstrccnt(abc, '\0'), 0);
  EXPECT_TRUE(zelstr::test::filed_nothing());
}

TEST_F(Search, NullArgumentsOfTheForwardSearch) {
  char const* const text77 =
      "_z[i]str() - Warning: <string1> given in argument was NULL: NULL was returned as result "
      "of forward search.";
  char const* const text78 =
      "_z[i]str() - Warning: <string2> given in argument was NULL: NULL was returned as result "
      "of forward search.";
  EXPECT_EQ(_zstrstr(static_cast<char const*>(nullptr), nullptr), nullptr);
  EXPECT_EQ(_zstristr(static_cast<char*>(nullptr), "a"), nullptr);
  EXPECT_EQ(_zstrstr("a", nullptr), nullptr);
  EXPECT_EQ(_zstristr1("a", nullptr, " "), nullptr);
  EXPECT_TRUE(zelstr::test::filed_exactly({ExpectedWarning{77, text77}, ExpectedWarning{78, text78},
                                           ExpectedWarning{77, text77}, ExpectedWarning{78, text78},
                                           ExpectedWarning{78, text78}}));
}

char const* model_chr(std::string const& s, char c, bool fold, bool last) {
  char const* found = nullptr;
  for (std::size_t i = 0; i <= s.size(); ++i) {
    if (same(s.c_str()[i], c, fold)) {
      found = s.c_str() + i;
      if (!last) break;
    }
  }
  return found;
}

TEST_F(Search, CharacterSearchesAndSpans) {
  std::mt19937 rng(41);
  for (int round = 0; round < 5000; ++round) {
    std::string s(rng() % 10, ' ');
    for (char& ch : s) ch = "aAbB\xE9 "[rng() % 6];
    char const c = "aAb\xE9 \0"[rng() % 6];
    SCOPED_TRACE("'" + s + "'");
    ASSERT_EQ(_zstrchr(s.c_str(), c), model_chr(s, c, false, false));
    ASSERT_EQ(_zstrichr(s.c_str(), c), model_chr(s, c, true, false));
    ASSERT_EQ(_zstrrchr(s.c_str(), c), model_chr(s, c, false, true));
    ASSERT_EQ(_zstrrichr(s.c_str(), c), model_chr(s, c, true, true));
    std::size_t head = 0, tail = 0;
    while (head < s.size() && (s[head] == 'a' || s[head] == ' ')) ++head;
    while (tail < s.size() && (s[s.size() - 1 - tail] == 'a' || s[s.size() - 1 - tail] == ' ')) {
      ++tail;
    }
    ASSERT_EQ(_zstrspn(s.c_str(), "a "), head);
    ASSERT_EQ(_zstrrspn(s.c_str(), "a "), tail);
    std::size_t blanks = 0;  // a list of one byte
    while (blanks < s.size() && s[s.size() - 1 - blanks] == ' ') ++blanks;
    ASSERT_EQ(_zstrrspn(s.c_str(), " "), blanks);
    ASSERT_EQ(_zstrrspn(s.c_str(), ""), 0u);
  }
  EXPECT_TRUE(zelstr::test::filed_nothing());
}

}  // namespace
