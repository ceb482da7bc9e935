// The two many-strings searches against a naive model (every string at
// every place) on seeded random texts and string lists, every option; and
// the warnings.
#include <gtest/gtest.h>

#include <cstring>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include "errsvc/errsvc.h"
#include "support/warnings.h"
#include "zelstr/zelstr.h"

namespace {

using zelstr::test::filed_exactly;
using zelstr::test::filed_nothing;

class FindMany : public zelstr::test::WarningsTest {};

struct Found {
  long at;
  int index;
  bool operator==(Found const& o) const { return at == o.at && index == o.index; }
};

std::ostream& operator<<(std::ostream& out, Found const& f) {
  return out << f.at << ":" << f.index;
}

// Every occurrence the options give, by brute force.
std::vector<Found> naive(std::string const& text, std::vector<std::string> const& strings,
                         int flags, unsigned char const* image, bool (*word)(unsigned char)) {
  auto img = [&](char c) { return image[static_cast<unsigned char>(c)]; };
  std::vector<Found> out;
  std::size_t p = 0;
  while (p < text.size()) {
    bool const blocked = (flags & ZEAL_MANY_WORDS) && p > 0 && word(text[p - 1]);
    int best = -1;
    std::size_t best_length = 0;
    for (std::size_t i = 0; i < strings.size() && !blocked; ++i) {
      std::string const& s = strings[i];
      if (s.empty() || p + s.size() > text.size()) continue;
      bool same = true;
      for (std::size_t k = 0; k < s.size() && same; ++k) same = img(text[p + k]) == img(s[k]);
      if (!same) continue;
      std::size_t const after = p + s.size();
      if ((flags & ZEAL_MANY_WORDS) && after < text.size() && word(text[after])) continue;
      bool const better = best < 0 || ((flags & ZEAL_MANY_SHORTEST) ? s.size() < best_length
                                                                     : s.size() > best_length);
      if (better) {
        best = static_cast<int>(i);
        best_length = s.size();
      }
    }
    if (best < 0) {
      ++p;
      continue;
    }
    out.push_back(Found{static_cast<long>(p), best});
    p = (flags & ZEAL_MANY_OVERLAP) ? p + 1 : p + best_length;
  }
  return out;
}

template <class Search>
std::vector<Found> all_found(Search& search, std::string const& text) {
  std::vector<Found> out;
  int index = -1;
  for (char const* at = search.Find(text.c_str(), &index, static_cast<long>(text.size())); at;
       at = search.FindNext(&index)) {
    out.push_back(Found{static_cast<long>(at - text.c_str()), index});
  }
  return out;
}

bool name_byte(unsigned char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_' ||
         c == '@' || c == '#' || c == '$' || c >= 0x80;
}

TEST_F(FindMany, BothAgreeWithTheNaiveSearch) {
  std::mt19937 rng(19);
  void* const map = _zmapdefine("b=a");  // b reads as a
  unsigned char identity[256], folding[256], mapped[256];
  for (int c = 0; c < 256; ++c) {
    identity[c] = static_cast<unsigned char>(c);
    folding[c] = static_cast<unsigned char>(c >= 'A' && c <= 'Z' ? c + 32 : c);
    mapped[c] = static_cast<unsigned char const*>(map)[c];
  }
  char const* const alphabets[] = {"ab", "abc", "aAbB_ ", "ab.x"};
  for (int i = 0; i < 20000; ++i) {
    char const* const alphabet = alphabets[i % 4];
    std::size_t const letters = std::strlen(alphabet);
    auto word = [&](int most) {
      std::string w;
      for (int n = 1 + static_cast<int>(rng() % static_cast<unsigned>(most)); n > 0; --n) {
        w += alphabet[rng() % letters];
      }
      return w;
    };
    std::vector<std::string> strings;
    int const count = 1 + static_cast<int>(rng() % (i % 10 == 0 ? 40 : 6));
    for (int k = 0; k < count; ++k) {
      std::string s = word(i % 5 == 0 ? 14 : 5);  // long ones make chains of the trie
      if (k > 0 && rng() % 4 == 0) s = strings[rng() % strings.size()] + s;  // shared prefixes
      if (rng() % 25 == 0) s.clear();
      strings.push_back(s);
    }
    std::string text;
    // Some texts span several vectors of the scans.
    int const length = static_cast<int>(rng() % (i % 3 == 0 ? 200 : 60));
    for (int n = length; n > 0; --n) text += alphabet[rng() % letters];
    // Some of the strings put into the text, whole or with one byte
    // changed, so that long stems are followed to their end.
    for (int n = static_cast<int>(rng() % 4); n > 0 && !text.empty(); --n) {
      std::string s = strings[rng() % strings.size()];
      if (!s.empty() && rng() % 2 == 0) s[rng() % s.size()] = alphabet[rng() % letters];
      text.insert(rng() % text.size(), s);
    }
    int const flags = static_cast<int>(rng() % 16);
    bool const use_map = i % 7 == 3;
    unsigned char const* const image =
        use_map ? mapped : (flags & ZEAL_MANY_ICASE) ? folding : identity;
    if (use_map && (flags & ZEAL_MANY_ICASE)) continue;  // the model folds or maps, not both

    std::vector<char const*> list;
    for (std::string const& s : strings) list.push_back(s.c_str());
    list.push_back(nullptr);
    CFindManyStrOld old(list.data(), flags, use_map ? map : nullptr);
    CFindManyStrHoary hoary(list.data(), flags, use_map ? map : nullptr);
    std::vector<Found> const expected = naive(text, strings, flags, image, name_byte);
    ASSERT_EQ(expected, all_found(old, text)) << "case " << i << " flags " << flags << " text " << text;
    ASSERT_EQ(expected, all_found(hoary, text)) << "case " << i << " flags " << flags << " text " << text;
  }
  _zmapfree(map);
  EXPECT_TRUE(filed_nothing());
}

// Sets that begin in more ways than the vector filter takes: the searches'
// look-ups of first pairs and triples, with and without strings shorter
// than three bytes, strings at the text's very end, and long shared stems.
TEST_F(FindMany, LargeSetsAgreeWithTheNaiveSearch) {
  std::mt19937 rng(23);
  unsigned char identity[256], folding[256];
  for (int c = 0; c < 256; ++c) {
    identity[c] = static_cast<unsigned char>(c);
    folding[c] = static_cast<unsigned char>(c >= 'A' && c <= 'Z' ? c + 32 : c);
  }
  char const alphabet[] = "abcdefghijkAB";
  auto letters = [&](std::size_t n) {
    std::string w;
    while (w.size() < n) w += alphabet[rng() % (sizeof alphabet - 1)];
    return w;
  };
  for (int i = 0; i < 300; ++i) {
    std::size_t const shortest = i % 3 == 0 ? 2 : 3;
    std::vector<std::string> strings;
    for (int k = 0; k < 150; ++k) {
      std::string s = letters(shortest + rng() % 4);
      if (k > 0 && rng() % 3 == 0) s = strings[rng() % strings.size()] + letters(1 + rng() % 12);
      strings.push_back(s);
    }
    std::string text = letters(rng() % 300);
    for (int n = 0; n < 6; ++n) {
      std::string const& s = strings[rng() % strings.size()];
      text.insert(text.empty() ? 0 : rng() % text.size(), s);
    }
    text += strings[rng() % strings.size()];  // one ends the text
    int const flags = static_cast<int>(rng() % 16);
    unsigned char const* const image = (flags & ZEAL_MANY_ICASE) ? folding : identity;
    std::vector<char const*> list;
    for (std::string const& s : strings) list.push_back(s.c_str());
    list.push_back(nullptr);
    CFindManyStrOld old(list.data(), flags);
    CFindManyStrHoary hoary(list.data(), flags);
    std::vector<Found> const expected = naive(text, strings, flags, image, name_byte);
    ASSERT_EQ(expected, all_found(old, text)) << "case " << i << " flags " << flags;
    ASSERT_EQ(expected, all_found(hoary, text)) << "case " << i << " flags " << flags;
  }
  EXPECT_TRUE(filed_nothing());
}

TEST_F(FindMany, ReadsNoFurtherThanTheLength) {
  char const* const words[] = {"abc", "bcd", nullptr};
  CFindManyStrHoary hoary(words);
  CFindManyStrOld old(words);
  char const text[] = "xabcd";
  int index = -1;
  EXPECT_EQ(nullptr, hoary.Find(text, &index, 3));
  EXPECT_EQ(nullptr, old.Find(text, &index, 3));
  EXPECT_EQ(text + 1, old.Find(text, &index, 4));
  EXPECT_EQ(0, index);
  EXPECT_EQ(text + 2, hoary.Find(text, &index, -1, text + 2));
  EXPECT_EQ(1, index);
}

TEST_F(FindMany, BadArgumentsWarn) {
  CFindManyStrHoary hoary;
  int index = 7;
  EXPECT_EQ(nullptr, hoary.Find("abc", &index));  // not prepared
  EXPECT_EQ(-1, index);
  EXPECT_EQ(-1, hoary.Add(nullptr));
  EXPECT_EQ(0, hoary.Add("a"));
  EXPECT_EQ(0, hoary.Prepare(0x40));
  EXPECT_EQ(1, hoary.Prepare(0));
  EXPECT_EQ(-1, hoary.Add("b"));
  EXPECT_EQ(nullptr, hoary.Find(nullptr, &index));
  EXPECT_STREQ("a", hoary.GetString(0));
  EXPECT_EQ(nullptr, hoary.GetString(1));
  auto const warning = [](char const* text, char const* member) {
    return zelstr::test::ExpectedWarning{-1, text, 4, "findmanystrhoary",
                                         std::string("CFindManyStrHoary::") + member};
  };
  char const* const bad = ErrHand_Msg_ERRSVC_BAD_ARGUMENT();
  EXPECT_TRUE(filed_exactly({warning(bad, "Find"), warning(bad, "Add"),
                             warning(ErrHand_Msg_ERRSVC_INCOHERENT_FLAG(), "Prepare"),
                             warning(bad, "Add"), warning(bad, "Find")}));
}

TEST_F(FindMany, ManyStrings) {
  std::vector<std::string> strings;
  for (int i = 0; i < 100000; ++i) strings.push_back("name_" + std::to_string(i * 7919 % 1000003));
  CFindManyStrHoary hoary;
  CFindManyStrOld old;
  for (std::string const& s : strings) {
    hoary.Add(s.c_str());
    old.Add(s.c_str());
  }
  ASSERT_EQ(1, hoary.Prepare(ZEAL_MANY_WORDS));
  ASSERT_EQ(1, old.Prepare(ZEAL_MANY_WORDS));
  std::string const text = "select name_7919, name_15838x, name_0 from name_ where name_8";
  std::vector<Found> const expected = {{7, 1}, {31, 0}};
  EXPECT_EQ(expected, all_found(hoary, text));
  EXPECT_EQ(expected, all_found(old, text));
}

}  // namespace
