// The replacement family against a model of its step-by-step definition:
// simple, quadratic, and compared on the whole buffer (size + 1 bytes and
// beyond), on random texts, patterns, replacements and sizes.
#include <gtest/gtest.h>

#include <cctype>
#include <cstring>
#include <random>
#include <string>

#include "support/warnings.h"
#include "zelstr/zelstr.h"

namespace {

using zelstr::test::ExpectedWarning;

struct Options {
  bool ignore_case = false;
  std::string delimiters;  // Ex: the set's members, empty for none
  bool identity_whole = true;
  bool fast_paths = true;  // one-to-one overwrite and the deletion pass
};

bool same(char a, char b, bool fold) {
  return fold ? std::toupper(static_cast<unsigned char>(a)) ==
                    std::toupper(static_cast<unsigned char>(b))
              : a == b;
}

bool occurs_at(char const* p, std::string const& s1, bool fold) {
  for (std::size_t j = 0; j < s1.size(); ++j) {
    if (p[j] == '\0' || !same(p[j], s1[j], fold)) return false;
  }
  return true;
}

// The definition, one step after the other, on a copy of the buffer.
char* model(char* string, std::string const& s1, std::string const& s2, unsigned long size,
            Options const& o) {
  if (o.identity_whole ? (s1 == s2 || s1.empty()) : s1.empty()) return string;
  if (o.fast_paths && s1.size() == 1 && s2.size() == 1) {
    for (char* p = string; *p != '\0'; ++p) {
      if (same(*p, s1[0], o.ignore_case)) *p = s2[0];
    }
    return string;
  }
  std::size_t length = std::strlen(string);
  if (length < s1.size()) return string;
  if (o.fast_paths && s2.empty()) {  // one compacting pass
    char* w = string;
    for (char const* r = string; *r != '\0';) {
      if (occurs_at(r, s1, o.ignore_case)) {
        r += s1.size();
      } else {
        *w++ = *r++;
      }
    }
    *w = '\0';
    return string;
  }
  long const delta = static_cast<long>(s2.size()) - static_cast<long>(s1.size());
  auto in_set = [&o](char c) { return c != '\0' && o.delimiters.find(c) != std::string::npos; };
  for (char* p = string; *p != '\0';) {
    if (!occurs_at(p, s1, o.ignore_case)) {
      ++p;
      continue;
    }
    bool const apart = (p == string || !in_set(p[-1])) && !in_set(p[s1.size()]);
    if (!o.delimiters.empty() && !apart) {
      p += s1.size();
      continue;
    }
    if (delta > 0 && length + delta > size) return nullptr;
    length += delta;
    char* const tail = p + s1.size();
    std::memmove(tail + delta, tail, std::strlen(tail) + 1);
    std::memcpy(p, s2.data(), s2.size());
    p += s2.size();
  }
  return string;
}

std::string random_text(std::mt19937& rng, std::size_t max) {
  std::string s(rng() % max, ' ');
  for (char& c : s) c = "aAb-"[rng() % 4];
  return s;
}

template <class Call>
void check(Call call, Options const& o, int seed) {
  std::mt19937 rng(seed);
  for (int round = 0; round < 20000; ++round) {
    std::string const text = random_text(rng, 24);
    std::string const s1 = random_text(rng, 4), s2 = random_text(rng, 5);
    unsigned long const size = text.size() + rng() % 8;
    std::string expected(64, '#'), actual(64, '#');
    std::memcpy(expected.data(), text.c_str(), text.size() + 1);
    std::memcpy(actual.data(), text.c_str(), text.size() + 1);
    char* const want = model(expected.data(), s1, s2, size, o);
    char* const got = call(actual.data(), s1.c_str(), s2.c_str(), size);
    SCOPED_TRACE("'" + text + "' '" + s1 + "' -> '" + s2 + "' size " + std::to_string(size));
    ASSERT_EQ(got == nullptr, want == nullptr);
    ASSERT_EQ(actual, expected);
  }
}

TEST(ReplaceModel, EveryOccurrence) { check(_zstrNreplace, Options{}, 1); }

TEST(ReplaceModel, EveryOccurrenceWithoutCase) {
  check(_zstriNreplace, Options{true, "", false, true}, 2);
}

TEST(ReplaceModel, EveryOccurrenceStandingApart) {
  check([](char* s, char const* a, char const* b,
           unsigned long n) { return _zstrNreplaceEx(s, a, b, n, "[a`-]"); },
        Options{false, "a-", true, false}, 3);
  check([](char* s, char const* a, char const* b,
           unsigned long n) { return _zstriNreplaceEx(s, a, b, n, "[b]"); },
        Options{true, "b", false, false}, 4);
}

// The first (last) occurrence: the model replaces the occurrence at `at`.
TEST(ReplaceModel, FirstAndLastOccurrence) {
  std::mt19937 rng(5);
  for (int round = 0; round < 20000; ++round) {
    std::string const text = random_text(rng, 16), s1 = random_text(rng, 4);
    std::string const s2 = random_text(rng, 5);
    unsigned long const size = text.size() + rng() % 6;
    for (int which = 0; which < 2; ++which) {
      std::string expected(48, '#'), actual(48, '#');
      std::memcpy(expected.data(), text.c_str(), text.size() + 1);
      std::memcpy(actual.data(), text.c_str(), text.size() + 1);
      std::size_t at = std::string::npos;
      if (!s1.empty() && s1 != s2) at = which == 0 ? text.find(s1) : text.rfind(s1);
      bool fits = true;
      if (at != std::string::npos) {
        fits = s2.size() <= s1.size() || text.size() + s2.size() - s1.size() <= size;
        if (fits) {
          char* const tail = expected.data() + at + s1.size();
          std::memmove(tail + s2.size() - s1.size(), tail, std::strlen(tail) + 1);
          std::memcpy(expected.data() + at, s2.data(), s2.size());
        }
      }
      char* const got = which == 0 ? _zstr1replace(actual.data(), s1.c_str(), s2.c_str(), size)
                                   : _zstrr1replace(actual.data(), s1.c_str(), s2.c_str(), size);
      SCOPED_TRACE("'" + text + "' '" + s1 + "' -> '" + s2 + "' which " + std::to_string(which));
      ASSERT_EQ(got == nullptr, !fits);
      ASSERT_EQ(actual, expected);
    }
  }
}

TEST(ReplaceModel, DeltalenPredictsTheChange) {
  std::mt19937 rng(6);
  for (int round = 0; round < 20000; ++round) {
    std::string text = random_text(rng, 24);
    std::string s1 = random_text(rng, 4), s2 = random_text(rng, 5);
    if (s1 == s2 || s1.empty()) continue;
    std::string buffer = text + std::string(128, '\0');
    long const predicted = _zstrdeltalen(text.data(), s1.data(), s2.data());
    ASSERT_NE(_zstrNreplace(buffer.data(), s1.c_str(), s2.c_str(), ~0ul), nullptr);
    ASSERT_EQ(static_cast<long>(std::strlen(buffer.c_str())) - static_cast<long>(text.size()),
              predicted)
        << text << " " << s1 << " " << s2;
  }
}

using Replace = zelstr::test::WarningsTest;

TEST_F(Replace, SpelledOutCases) {
  char buf[32] = "aXbXc";
  EXPECT_EQ(_zstrNreplace(buf, "X", "YY", 5), nullptr);
  EXPECT_STREQ(buf, "aXbXc");
  zstr_couple couples[] = {{"a", "bb"}, {"bb", "c"}, {nullptr, nullptr}};
  std::strcpy(buf, "ab");
  EXPECT_STREQ(_zstrmultireplace(buf, couples, 31), "cb");  // later couples see earlier work
  EXPECT_EQ(_zstrmultideltalen(buf, couples), 0);
  zstr_couple none[] = {{nullptr, nullptr}};
  EXPECT_EQ(_zstrmultideltalen(buf, none), 0);
  std::strcpy(buf, "a,b,");
  EXPECT_EQ(_zstrNby0replace(buf, const_cast<char*>(",")), buf);
  EXPECT_EQ(std::string(buf, 5), std::string("a\0b\0\0", 5));
  std::strcpy(buf, "ab,,c,");
  EXPECT_EQ(_zstr1by0replace(buf, const_cast<char*>(",,")), buf);
  EXPECT_EQ(std::string(buf, 6), std::string("ab\0c,\0", 6));
  std::strcpy(buf, "abc");
  EXPECT_EQ(_zstr1by0replace(buf, const_cast<char*>("x")), buf);
  EXPECT_STREQ(buf, "abc");
  std::strcpy(buf, "x'y'");
  EXPECT_STREQ(_zstrcpyNreplace(buf, buf, '\'', "''"), "x''y''");
  char out[32];
  EXPECT_STREQ(_zstrcpyNreplace(out, static_cast<char const*>("a.b"), '.', "::"), "a::b");
  std::strcpy(buf, "ab");
  EXPECT_STREQ(_zstrcpyNreplace(buf, buf, '\0', "cd"), "abcd");
  std::strcpy(buf, "a/*1*/b/*2");
  EXPECT_STREQ(_zstrclean(buf, "/*", "*/", 1, 1), "a/**/b/*2");
  int lonesome = -1;
  std::strcpy(buf, "a   b\t\tc");
  EXPECT_STREQ(_zstrlonesomize(buf, 0, "[ \t]", &lonesome), "a b\tc");
  EXPECT_EQ(lonesome, 0);
  std::strcpy(buf, "x(1(2)3)y(z");
  EXPECT_STREQ(_zstrpurge(buf, const_cast<char*>("("), const_cast<char*>(")"), 0), "xy(z");
  EXPECT_TRUE(zelstr::test::filed_nothing());
}

TEST_F(Replace, Warnings) {
  char buf[8] = "ab";
  char const* const text120 =
      "_z[map]str[r][i]{1/N}replace[1]() - Warning: String(s) <s1> or/and <s2> given in "
      "argument were NULL: NULL was returned as result of strings substitution(s).";
  EXPECT_EQ(_zstrNreplace(buf, nullptr, "x", 7), nullptr);
  EXPECT_EQ(_zstrr1replace(buf, "a", nullptr, 7), nullptr);
  EXPECT_EQ(_zstrNreplace(nullptr, "a", "b", 7), nullptr);  // no warning
  EXPECT_EQ(_zstrdeltalen(buf, nullptr, buf), ZEAL_STR_ERR);
  std::string many(1000, 'a');
  std::string longer(3000000, 'b');
  EXPECT_EQ(_zstrdeltalen(many.data(), const_cast<char*>("a"), longer.data()), ZEAL_STR_ERR);
  zstr_couple bad[] = {{"a", nullptr}, {nullptr, nullptr}};
  EXPECT_EQ(_zstrmultideltalen(buf, bad), ZEAL_STR_ERR);
  EXPECT_EQ(_zstrNby0replace(buf, nullptr), nullptr);
  EXPECT_EQ(_zstr1by0replace(buf, nullptr), nullptr);
  EXPECT_EQ(_zstr1by0replace(nullptr, buf), nullptr);  // no warning
  EXPECT_STREQ(_zstrclean(buf, "", "x", 0, 0), "ab");
  EXPECT_EQ(_zstrcpyNreplace(nullptr, buf, 'a', "x"), nullptr);
  char const* const text40 =
      "_zstrdeltalen() - Warning: String(s) <s1> and/or <s2> given in argument were NULL: "
      "ZEAL_STR_ERR was returned as result of length variation calculation.";
  EXPECT_TRUE(zelstr::test::filed_exactly(
      {{120, text120},
       {120, text120},
       {40, text40},
       {43,
        "_zstrdeltalen() - Warning: An overflow on result has occurred during calculation "
        "of length variation, sorry. ZEAL_STR_ERR was returned as result."},
       {40, text40},
       {44,
        "_zstrmultideltalen() - Warning: An error has occurred during calculation of length "
        "variation, sorry. ZEAL_STR_ERR was returned as result."},
       {121,
        "_zstr{1/N}by0replace() - Warning: String(s) <s1> given in argument was NULL: NULL "
        "was returned as result of strings substitution(s)."},
       {121,
        "_zstr{1/N}by0replace() - Warning: String(s) <s1> given in argument was NULL: NULL "
        "was returned as result of strings substitution(s)."},
       {63,
        "_zstrclean() - Warning: <s1> given in argument was NULL or empty: <string> given in "
        "argument was returned intact."},
       {93,
        "_zstrcpycNreplace() - Warning: <dest> given in argument was NULL: NULL was returned "
        "as result of copying & replacement."}}));
}

}  // namespace
