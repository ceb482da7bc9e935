// The text utilities: plurals and verb forms written out, binary digits,
// line ends, wrapping and swapping against small models on seeded random
// inputs, and their warnings.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <random>
#include <string>
#include <vector>

#include "support/warnings.h"
#include "zelstr/zelstr.h"

namespace {

using zelstr::test::ExpectedWarning;

struct WordCase {
  char const* word;
  long count;
  int flags;
  char const* expected;
};

TEST(Plural, WordsByCount) {
  WordCase const cases[] = {
      {"table", 1, 0, "1 table"},          {"table", 0, 0, "0 tables"},
      {"table", -1, 0, "-1 tables"},       {"query", 2, 0, "2 queries"},
      {"key", 2, 0, "2 keys"},             {"index", 2, 0, "2 indexes"},
      {"index", 2, ZEAL_PLURAL_LATIN, "2 indices"},
      {"Matrix", 3, ZEAL_PLURAL_LATIN, "3 Matrices"},
      {"box", 2, 0, "2 boxes"},            {"batch", 2, 0, "2 batches"},
      {"status", 2, 0, "2 statuses"},      {"hash", 2, 0, "2 hashes"},
      {"TABLE", 2, 0, "2 TABLES"},         {"QUERY", 2, 0, "2 QUERIES"},
      {"Child", 2, 0, "2 Children"},       {"PERSON", 2, 0, "2 PEOPLE"},
      {"series", 2, 0, "2 series"},        {"stored procedure", 4, 0, "4 stored procedures"},
      {"foreign key", 1, 0, "1 foreign key"},
      {"row", 5, ZEAL_PLURAL_WORD_ONLY, "rows"},
      {"row", 1, ZEAL_PLURAL_WORD_ONLY, "row"},
      {"", 2, 0, "2 "},
  };
  for (WordCase const& c : cases) {
    EXPECT_STREQ(c.expected, _zstrplural(c.word, c.count, c.flags)) << c.word << " " << c.count;
  }
}

TEST(Plural, CallersWordsComeFirstNewestFirst) {
  EXPECT_EQ(1, _zstraddplural("Schema", "schemata"));
  EXPECT_STREQ("2 schemata", _zstrplural("SCHEMA", 2, 0));
  EXPECT_EQ(1, _zstraddplural("schema", "schemas"));
  EXPECT_STREQ("2 schemas", _zstrplural("schema", 2, 0));
  EXPECT_EQ(1, _zstraddplural("vertex", "vertexen"));
  EXPECT_STREQ("vertexen", _zstrplural("vertex", 2, ZEAL_PLURAL_LATIN | ZEAL_PLURAL_WORD_ONLY));
}

TEST(Verb, FormsByCount) {
  WordCase const cases[] = {
      {"be", 1, 0, "is"},          {"be", 2, 0, "are"},
      {"be", 1, ZEAL_VERB_PAST, "was"},
      {"be", 0, ZEAL_VERB_PAST, "were"},
      {"have", 1, 0, "has"},       {"have", 3, 0, "have"},
      {"do", 1, 0, "does"},        {"go", 1, 0, "goes"},
      {"match", 1, 0, "matches"},  {"fix", 1, 0, "fixes"},
      {"echo", 1, 0, "echoes"},    {"apply", 1, 0, "applies"},
      {"play", 1, 0, "plays"},     {"drop", 1, 0, "drops"},
      {"drop", 2, 0, "drop"},      {"can", 1, 0, "can"},
      {"Be", 1, 0, "Is"},          {"DROP", 1, 0, "DROPS"},
      {"be dropped", 1, ZEAL_VERB_PAST, "was dropped"},
      {"have been", 2, 0, "have been"},
  };
  for (WordCase const& c : cases) {
    EXPECT_STREQ(c.expected, _zstrverb(c.word, c.count, c.flags)) << c.word << " " << c.count;
  }
}

// Binary digits of v, at least `width`, blanks every `group` from the right.
std::string model_bits(unsigned long long v, int width, int group) {
  std::string digits;  // from the right
  for (; v != 0; v >>= 1) digits += static_cast<char>('0' + (v & 1));
  if (digits.empty()) digits = "0";
  while (static_cast<int>(digits.size()) < width) digits += '0';
  digits = std::string(digits.rbegin(), digits.rend());
  if (group == 0) return digits;
  std::string out;
  for (std::size_t i = 0; i < digits.size(); ++i) {
    out += digits[i];
    std::size_t const left = digits.size() - 1 - i;
    if (left > 0 && left % group == 0) out += ' ';
  }
  return out;
}

TEST(Bits, RoundTripsAgainstTheModel) {
  std::mt19937_64 rng(64);
  for (int round = 0; round < 4000; ++round) {
    unsigned long long const v = rng() >> (rng() % 64);
    int const width = static_cast<int>(rng() % 65);
    int const group = static_cast<int>(rng() % 9);
    char const* const bits = _zstrbits(v, width, group);
    ASSERT_EQ(model_bits(v, width, group), bits) << v << " " << width << " " << group;
    unsigned long long back = ~v;
    ASSERT_EQ(1, _zstrbits2ull(bits, &back));
    ASSERT_EQ(v, back);
  }
  unsigned long long v = 0;
  EXPECT_EQ(1, _zstrbits2ull("1111_0000 1", &v));
  EXPECT_EQ(0x1E1u, v);
  EXPECT_EQ(1, _zstrbits2ull(("0000" + std::string(64, '1')).c_str(), &v));
  EXPECT_EQ(~0ull, v);
}

class TextWarnings : public zelstr::test::WarningsTest {};

TEST_F(TextWarnings, RefusedArgumentsKeepTheOutputAndNameTheFallback) {
  struct Case {
    bool refused;
    char const* text;
  };
  unsigned long long v = 7;
  char s[] = "x";
  std::string const too_long = "1" + std::string(64, '0');
  Case const cases[] = {
      {_zstrbits2ull("10201", &v) == 0,
       "_zstrbits2ull() - Warning: <bits> given in argument holds '2', which is neither a binary "
       "digit nor a separator: 0 was returned as result."},
      {_zstrbits2ull(too_long.c_str(), &v) == 0,
       "_zstrbits2ull() - Warning: <bits> given in argument has more than 64 significant digits: "
       "0 was returned as result."},
      {_zstrbits2ull(" _ ", &v) == 0,
       "_zstrbits2ull() - Warning: <bits> given in argument holds no binary digit: 0 was returned "
       "as result."},
      {_zstrbits2ull("1", nullptr) == 0,
       "_zstrbits2ull() - Warning: <value> given in argument is NULL: 0 was returned as result."},
      {_zstrbits(1, 65, 0) == nullptr,
       "_zstrbits() - Warning: <width> given in argument is out of range: NULL was returned as "
       "result."},
      {_zstrplural(nullptr, 2, 0) == nullptr,
       "_zstrplural() - Warning: <noun> given in argument is NULL: NULL was returned as result."},
      {_zstraddplural("x", "") == 0,
       "_zstraddplural() - Warning: <plural> given in argument is out of range: 0 was returned as "
       "result."},
      {_zstrverb(nullptr, 1, 0) == nullptr,
       "_zstrverb() - Warning: <verb> given in argument is NULL: NULL was returned as result."},
      {_zstreol(s, 3) == nullptr,
       "_zstreol() - Warning: <style> given in argument is out of range: NULL was returned as "
       "result."},
      {_zstreolcpy(nullptr, 4, "a", ZEAL_EOL_LF) == 0,
       "_zstreolcpy() - Warning: <dest> given in argument is NULL: 0 was returned as result."},
      {_zstreolized(nullptr, ZEAL_EOL_LF) == nullptr,
       "_zstreolized() - Warning: <string> given in argument is NULL: NULL was returned as "
       "result."},
      {_zstrwrapped("a", 4, 4) == nullptr,
       "_zstrwrapped() - Warning: <width> given in argument is out of range: NULL was returned as "
       "result."},
      {_zstrswap(s, "", "b") == nullptr,
       "_zstrswap() - Warning: <a> given in argument is out of range: NULL was returned as "
       "result."},
      {_zstrswapped("x", "a", nullptr) == nullptr,
       "_zstrswapped() - Warning: <b> given in argument is NULL: NULL was returned as result."},
  };
  std::vector<ExpectedWarning> expected;
  for (Case const& c : cases) {
    EXPECT_TRUE(c.refused) << c.text;
    expected.push_back(ExpectedWarning{-1, c.text});
  }
  EXPECT_TRUE(zelstr::test::filed_exactly(expected));
  EXPECT_EQ(7u, v);
  EXPECT_STREQ("x", s);
}

std::string random_text(std::mt19937& rng, char const* bytes, std::size_t n) {
  std::string t(rng() % (n + 1), ' ');
  std::size_t const k = std::strlen(bytes);
  for (char& c : t) c = bytes[rng() % k];
  return t;
}

std::string model_line_ends(std::string const& t, bool crlf) {
  std::string out;
  for (std::size_t i = 0; i < t.size(); ++i) {
    if (t[i] == '\r' && i + 1 < t.size() && t[i + 1] == '\n') continue;
    if (t[i] == '\n' && crlf) out += '\r';
    out += t[i];
  }
  return out;
}

TEST(LineEnds, AgreeWithTheModelInPlaceInTheArenaAndInABuffer) {
  std::mt19937 rng(13);
  for (int round = 0; round < 3000; ++round) {
    std::string const t = random_text(rng, "ab\r\n\n", 24);
    for (int style : {ZEAL_EOL_LF, ZEAL_EOL_CRLF}) {
      std::string const want = model_line_ends(t, style == ZEAL_EOL_CRLF);
      EXPECT_EQ(want, _zstreolized(t.c_str(), style));
      std::vector<char> in_place(t.c_str(), t.c_str() + t.size() + 1);
      char* const r = _zstreol(in_place.data(), style);
      EXPECT_EQ(want, r);
      // In place exactly when the text did not grow; else untouched.
      EXPECT_EQ(want.size() <= t.size(), r == in_place.data());
      if (r != in_place.data()) {
        EXPECT_EQ(t, in_place.data());
      }
      std::size_t const size = rng() % (want.size() + 3);
      std::vector<char> buffer(size + 1, '#');
      EXPECT_EQ(want.size(), _zstreolcpy(buffer.data(), size, t.c_str(), style));
      if (size > 0) {
        EXPECT_EQ(want.substr(0, size - 1), buffer.data());
      }
      EXPECT_EQ('#', buffer[size]);
    }
  }
}

TEST(LineEnds, NativeIsTheSystemsOwn) {
#ifdef _WIN32
  char const* const expected = "a\r\nb\r\n";
#else
  char const* const expected = "a\nb\n";
#endif
  EXPECT_STREQ(expected, _zstreolized("a\r\nb\n", ZEAL_EOL_NATIVE));
}

// The words of a text, in order.
std::vector<std::string> words_of(std::string const& t) {
  std::vector<std::string> out;
  std::string word;
  for (char c : t + " ") {
    if (c == ' ' || c == '\t' || c == '\r' || c == '\n') {
      if (!word.empty()) out.push_back(word);
      word.clear();
    } else {
      word += c;
    }
  }
  return out;
}

TEST(Wrap, LinesAreGreedyIndentedAndKeepTheWords) {
  std::mt19937 rng(21);
  for (int round = 0; round < 2000; ++round) {
    std::string const t = random_text(rng, "aaaabbbcc  \t\n", 120);
    int const indent = static_cast<int>(rng() % 4);
    int const width = indent + 1 + static_cast<int>(rng() % 12);
    std::string const out = _zstrwrapped(t.c_str(), width, indent);
    SCOPED_TRACE("text '" + t + "' width " + std::to_string(width));
    EXPECT_EQ(words_of(t), words_of(out));
    EXPECT_GE(std::count(out.begin(), out.end(), '\n'), std::count(t.begin(), t.end(), '\n'));
    std::vector<std::string> lines;
    std::size_t from = 0;
    for (std::size_t lf; (lf = out.find('\n', from)) != std::string::npos; from = lf + 1)
      lines.push_back(out.substr(from, lf - from));
    lines.push_back(out.substr(from));
    for (std::size_t i = 0; i < lines.size(); ++i) {
      std::string const& line = lines[i];
      if (line.empty()) continue;
      EXPECT_EQ(std::string(indent, ' '), line.substr(0, indent));
      std::vector<std::string> const w = words_of(line);
      ASSERT_FALSE(w.empty());
      EXPECT_TRUE(static_cast<int>(line.size()) <= width || w.size() == 1) << line;
      // Greedy: the next line's first word would not have fit here.
      if (i + 1 < lines.size() && !lines[i + 1].empty()) {
        std::vector<std::string> const next = words_of(lines[i + 1]);
        bool const same_paragraph = out.find(line + "\n" + lines[i + 1]) != std::string::npos &&
                                    t.find('\n') == std::string::npos;
        if (same_paragraph) {
          EXPECT_GT(line.size() + 1 + next[0].size(), std::size_t(width));
        }
      }
    }
  }
}

std::string model_swap(std::string const& t, std::string const& a, std::string const& b) {
  std::string const& first = a.size() >= b.size() ? a : b;
  std::string const& second = a.size() >= b.size() ? b : a;
  std::string out;
  for (std::size_t i = 0; i < t.size();) {
    if (t.compare(i, first.size(), first) == 0) {
      out += second, i += first.size();
    } else if (t.compare(i, second.size(), second) == 0) {
      out += first, i += second.size();
    } else {
      out += t[i++];
    }
  }
  return out;
}

TEST(Swap, AgreesWithTheModelInPlaceAndInTheArena) {
  std::mt19937 rng(5);
  for (int round = 0; round < 4000; ++round) {
    std::string const t = random_text(rng, "abc", 20);
    std::string a(1 + rng() % 3, 'a'), b(1 + rng() % 3, 'a');
    for (char& c : a) c = "abc"[rng() % 3];
    for (char& c : b) c = "abc"[rng() % 3];
    std::string const want = model_swap(t, a, b);
    SCOPED_TRACE(t + " / " + a + " / " + b);
    EXPECT_EQ(want, _zstrswapped(t.c_str(), a.c_str(), b.c_str()));
    std::vector<char> in_place(t.c_str(), t.c_str() + t.size() + 1);
    char* const r = _zstrswap(in_place.data(), a.c_str(), b.c_str());
    EXPECT_EQ(want, r);
    EXPECT_EQ(want.size() <= t.size(), r == in_place.data());
  }
  char s[] = "a-b-c";
  EXPECT_STREQ("b-a-c", _zstrswapchr(s, 'a', 'b'));
}

}  // namespace
