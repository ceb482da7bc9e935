// Sort orders: what definitions rank, their syntax errors with the exact
// texts, comparisons against a model of weight strings, the total-order
// properties of the ready orders, the handle conventions and array sorting.
#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <random>
#include <string>
#include <vector>

#include "support/warnings.h"
#include "zelstr/zelstr.h"

namespace {

using zelstr::test::filed_exactly;
using SortOrders = zelstr::test::WarningsTest;

int sign(int r) { return (r > 0) - (r < 0); }

// The characters of `chars` ranked by the order: "a=A b" (equal weights
// joined by '=', ascending weights separated by blanks).
std::string ranking(void* order, std::string const& chars) {
  std::map<int, std::string> by_weight;
  for (char c : chars) {
    char const one[2] = {c, '\0'};
    int weight = 0;  // rank among the 255 characters
    for (int d = 1; d < 256; ++d) {
      char const other[2] = {static_cast<char>(d), '\0'};
      weight += _zsortstrcmp(order, other, one) < 0;
    }
    by_weight[weight] += by_weight[weight].empty() ? std::string{c} : std::string{'=', c};
  }
  std::string out;
  for (auto const& [weight, group] : by_weight) {
    if (!out.empty()) out += ' ';
    out += group;
  }
  return out;
}

TEST_F(SortOrders, WhatDefinitionsRank) {
  struct Case {
    char const* definition;
    char const* chars;
    char const* ranking;  // NULL: byte order, the NULL handle
  } const kCases[] = {
      {"b a c", "abc", "b a c"},
      {"a-c=A-C", "abcABC", "a=A b=B c=C"},
      {"x=y z", "xyz", "x=y z"},
      {"z", "az", "z a"},  // the others follow, in byte order
      {"\\x41 \\- \\\\ \\  \\q", "A-\\ q", "A - \\   q"},
      {"--/ =", "-./=", "- . / ="},
      {"b\n\ta\r\n", "ab", "b a"},
      {"\\xE9=e \\xC9=E", "eE\xE9\xC9", "e=\xE9 E=\xC9"},
      {"", "", nullptr},
      {"\\x01-\\xFF", "", nullptr},
      {"\\x01-@ A-Z [-\\xFF", "", nullptr},
  };
  for (Case const& c : kCases) {
    void* const order = _zsortdefine(c.definition);
    ASSERT_NE(order, ZEAL_STR_BAD_MAP) << c.definition;
    if (c.ranking == nullptr) {
      EXPECT_EQ(order, nullptr) << c.definition;
    } else {
      EXPECT_EQ(ranking(order, c.chars), c.ranking) << c.definition;
    }
    EXPECT_EQ(_zmapfree(order), 1);
  }
  EXPECT_TRUE(zelstr::test::filed_nothing());
}

TEST_F(SortOrders, SyntaxErrorsNameTheElement) {
  struct Case {
    char const* definition;
    char const* text;
    char const* marked;
  } const kCases[] = {
      {"a b a", "Character 'a/97' was given a weight twice: element 'a'.", "a b <<a>>"},
      {"a-c b=B", "Character 'b/98' was given a weight twice: element 'b=B'.", "a-c <<b=B>>"},
      {"ab", "Expected symbol '-', '=' or a blank after a character: encountered 'b/98' instead "
             "in element 'ab'.",
       "<<ab>>"},
      {"x a-", "A character is missing after '-' in element 'a-'.", "x <<a->>"},
      {"a= b", "A character is missing after '=' in element 'a='.", "<<a=>> b"},
      {"c-a", "Condition c1 <= c2 is not satisfied in the range 'c-a' (99-97) of element 'c-a'.",
       "<<c-a>>"},
      {"a-c=x-y", "The members of a group should all be single characters or all ranges of one "
                  "length: element 'a-c=x-y'.",
       "<<a-c=x-y>>"},
      {"a=b-c", "The members of a group should all be single characters or all ranges of one "
                "length: element 'a=b-c'.",
       "<<a=b-c>>"},
      {"\\x4g", "Escape '\\x' should be followed by two hexadecimal digits in element '\\x4g'.",
       "<<\\x4g>>"},
      {"\\x00", "Character 0 cannot take a weight, it ends every string: element '\\x00'.",
       "<<\\x00>>"},
      {"x \\", "A character is missing after '\\' in element '\\'.", "x <<\\>>"},
      {"\\x01-\\xFF a", "Character 'a/97' was given a weight twice: element 'a'.",
       "\\x01-\\xFF <<a>>"},
  };
  for (auto const& c : kCases) {
    errsvc::clear();
    EXPECT_EQ(_zsortdefine(c.definition), ZEAL_STR_BAD_MAP) << c.definition;
    std::string marked = "Erroneous sort order is ";
    marked += c.marked;
    marked += '.';
    EXPECT_TRUE(filed_exactly({{-1, c.text, 4, "zeal_str", "_zsortdefine()"},
                               {-1, marked, 2, "zeal_str", "_zsortdefine()"}}))
        << c.definition;
  }
}

TEST_F(SortOrders, AGroupOf256MembersNamesACharacterTwice) {
  std::string definition = "a";
  for (int k = 0; k < 256; ++k) definition += "=b";
  EXPECT_EQ(_zsortdefine(definition.c_str()), ZEAL_STR_BAD_MAP);
}

// The model: each string as its weights, compared lexicographically, ties
// broken by the bytes.
int model_compare(void* order, std::string const& a, std::string const& b, std::size_t count,
                  bool break_ties) {
  auto weights = [&](std::string const& s) {
    std::vector<int> w;
    for (std::size_t i = 0; i < std::min(count, s.size()); ++i) {
      w.push_back(static_cast<unsigned char>(_zmapchrapply(order, s[i])));
    }
    return w;
  };
  std::vector<int> const wa = weights(a), wb = weights(b);
  if (wa != wb) return wa < wb ? -1 : 1;
  if (!break_ties) return 0;
  return sign(a.substr(0, count).compare(b.substr(0, count)));
}

TEST_F(SortOrders, ComparisonsFollowTheWeights) {
  void* const order = _zsortdefine("b=B a=A c=C=\\xE9=\\xC9");
  ASSERT_NE(order, ZEAL_STR_BAD_MAP);
  std::mt19937 random(21);
  std::string const alphabet = "aAbBcC\xE9\xC9z";
  auto text = [&] {
    std::string s(random() % 5, ' ');
    for (char& c : s) c = alphabet[random() % alphabet.size()];
    return s;
  };
  for (int round = 0; round < 20000; ++round) {
    std::string const a = text(), b = text();
    bool const ties = (round & 1) != 0;
    std::size_t const count = random() % 7;
    EXPECT_EQ(_zsortstrcmp(order, a.c_str(), b.c_str(), ties),
              model_compare(order, a, b, std::string::npos, ties))
        << a << " | " << b;
    EXPECT_EQ(_zsortstrncmp(order, a.c_str(), b.c_str(), count, ties),
              model_compare(order, a, b, count, ties))
        << a << " | " << b << " | " << count;
  }
  _zmapfree(order);
  EXPECT_TRUE(zelstr::test::filed_nothing());
}

// Antisymmetric and transitive on random strings of every byte, and with
// ties broken, equal only for equal strings.
TEST_F(SortOrders, ReadyOrdersAreTotalOrders) {
  std::mt19937 random(1252);
  auto text = [&] {
    std::string s(random() % 4, ' ');
    for (char& c : s) c = static_cast<char>(1 + random() % 255);
    return s;
  };
  for (int which : {ZEAL_SORT_ASCII_CI, ZEAL_SORT_CP1252_CI_AI, ZEAL_SORT_CP1252_CI_AS}) {
    void* const order = _zsortdefine(_zsortreadydef(which));
    ASSERT_NE(order, nullptr);
    ASSERT_NE(order, ZEAL_STR_BAD_MAP);
    for (int round = 0; round < 5000; ++round) {
      std::string const a = text(), b = text(), c = text();
      for (int ties : {0, 1}) {
        int const ab = _zsortstrcmp(order, a.c_str(), b.c_str(), ties);
        int const bc = _zsortstrcmp(order, b.c_str(), c.c_str(), ties);
        int const ac = _zsortstrcmp(order, a.c_str(), c.c_str(), ties);
        ASSERT_EQ(ab, -_zsortstrcmp(order, b.c_str(), a.c_str(), ties));
        if (ab <= 0 && bc <= 0) {
          ASSERT_LE(ac, 0) << a << " | " << b << " | " << c;
        }
        if (ties != 0) {
          ASSERT_EQ(ab == 0, a == b);
        }
      }
    }
    _zmapfree(order);
  }
}

TEST_F(SortOrders, TheAsciiOrderIsThatOfStricmp) {
  void* const order = _zsortdefine(_zsortreadydef(ZEAL_SORT_ASCII_CI));
  std::mt19937 random(7);
  for (int round = 0; round < 20000; ++round) {
    std::string a(random() % 3, ' '), b(random() % 3, ' ');
    for (char& c : a) c = static_cast<char>(1 + random() % 255);
    for (char& c : b) c = random() % 2 != 0 ? a.empty() ? 'x' : a[random() % a.size()] ^ 0x20
                                            : static_cast<char>(1 + random() % 255);
    ASSERT_EQ(_zsortstrcmp(order, a.c_str(), b.c_str()), sign(_zstricmp(a.c_str(), b.c_str())))
        << a << " | " << b;
  }
  _zmapfree(order);
}

TEST_F(SortOrders, CodePageOrdersIgnoreCaseAndAccentsAsNamed) {
  struct Case {
    int order;
    char const* a;
    char const* b;
    int expected;
  } const kCases[] = {
      {ZEAL_SORT_CP1252_CI_AI, "\xC9t\xC9", "ete", 0},
      {ZEAL_SORT_CP1252_CI_AI, "Stra\xDF" "e", "strasse", 1},  // one weight of its own
      {ZEAL_SORT_CP1252_CI_AI, "a_b", "a-b", -1},
      {ZEAL_SORT_CP1252_CI_AI, "10", "9", -1},
      {ZEAL_SORT_CP1252_CI_AS, "\xC9t\xC9", "ete", 1},
      {ZEAL_SORT_CP1252_CI_AS, "\xC9T\xC9", "\xE9t\xE9", 0},
      {ZEAL_SORT_CP1252_CI_AS, "cote", "c\xF4t\xE9", -1},
      {ZEAL_SORT_ASCII_CI, "ABC", "abc", 0},
      {ZEAL_SORT_ASCII_CI, "A_", "a[", 1},
  };
  for (Case const& c : kCases) {
    void* const order = _zsortdefine(_zsortreadydef(c.order));
    EXPECT_EQ(_zsortstrcmp(order, c.a, c.b), c.expected) << c.a << " | " << c.b;
    EXPECT_EQ(_zsortstrcmp(order, c.b, c.a), -c.expected) << c.a << " | " << c.b;
    _zmapfree(order);
  }
  EXPECT_EQ(_zsortdefine(_zsortreadydef(ZEAL_SORT_BYTES)), nullptr);
  EXPECT_TRUE(zelstr::test::filed_nothing());
}

TEST_F(SortOrders, HandlesFollowTheMapsConventions) {
  EXPECT_EQ(_zsortstrcmp(nullptr, "B", "a"), -1);
  EXPECT_EQ(_zsortstrncmp(nullptr, "ab", "ac", 1), 0);
  EXPECT_TRUE(zelstr::test::filed_nothing());
  EXPECT_EQ(_zsortstrcmp(nullptr, nullptr, "a"), sign(_zstrcmp(nullptr, "a")));
  errsvc::clear();
  EXPECT_EQ(_zsortstrcmp(ZEAL_STR_BAD_MAP, "b", "a", 1), 1);
  EXPECT_TRUE(filed_exactly({{32,
                              "_zsortstrcmp() - Warning: An invalid map was given in argument to "
                              "function: <string1> and <string2> were compared unchanged."}}));
  errsvc::clear();
  EXPECT_EQ(_zsortstrncmp(ZEAL_STR_BAD_MAP, "ab", "ac", 2), -1);
  EXPECT_TRUE(filed_exactly({{33,
                              "_zsortstrncmp() - Warning: An invalid map was given in argument "
                              "to function: <string1> and <string2> were compared unchanged."}}));
  errsvc::clear();
  EXPECT_EQ(_zsortreadydef(4), nullptr);
  EXPECT_TRUE(filed_exactly(
      {{-1, "_zsortreadydef() - Warning: ready sort order #4 is unknown: NULL was returned.", 4,
        "zeal_str", "_zsortreadydef()"}}));
  errsvc::clear();
  EXPECT_EQ(_zsortdefine(nullptr), nullptr);
  EXPECT_TRUE(filed_exactly({{-1,
                              "A NULL sort order definition was given in argument: function "
                              "returned NULL, the byte order.",
                              2, "zeal_str", "_zsortdefine()"}}));
  // An order is a map: the mapped functions compare by its weights.
  void* const order = _zsortdefine(_zsortreadydef(ZEAL_SORT_ASCII_CI));
  EXPECT_EQ(_zmapstrcmp(order, "Name", "nAME"), 0);
  EXPECT_EQ(_zmapfree(order), 1);
}

template <std::size_t N>
std::string joined(char const* (&strings)[N]) {
  std::string out;
  for (char const* s : strings) {
    out += s == nullptr ? "(null)" : s;
    out += ' ';
  }
  return out;
}

TEST_F(SortOrders, ArraysSortStablyWithNullFirst) {
  void* const order = _zsortdefine("b=B a=A");
  char const* strings[] = {"a", "B", nullptr, "A", "b", "c", nullptr};
  EXPECT_EQ(_zsortstrarray(order, strings, 7), 1);
  EXPECT_EQ(joined(strings), "(null) (null) B b a A c ");
  EXPECT_EQ(_zsortstrarray(order, strings, 7, 1), 1);
  EXPECT_EQ(joined(strings), "(null) (null) B b A a c ");
  EXPECT_TRUE(zelstr::test::filed_nothing());
  EXPECT_EQ(_zsortstrarray(order, nullptr, 0), 1);
  EXPECT_EQ(_zsortstrarray(order, nullptr, 3), 0);
  EXPECT_TRUE(filed_exactly({{-1,
                              "_zsortstrarray() - Warning: <strings> given in argument is NULL: "
                              "nothing was sorted and FALSE was returned.",
                              4, "zeal_str", "_zsortstrarray()"}}));
  errsvc::clear();
  char const* pair[] = {"b", "a"};
  EXPECT_EQ(_zsortstrarray(ZEAL_STR_BAD_MAP, pair, 2), 1);
  EXPECT_STREQ(pair[0], "a");
  EXPECT_TRUE(filed_exactly({{32,
                              "_zsortstrcmp() - Warning: An invalid map was given in argument to "
                              "function: <string1> and <string2> were compared unchanged."}}));
  _zmapfree(order);
}

}  // namespace
