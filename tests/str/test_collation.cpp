// ZealStrHelper against the collator it drives.
//
// Native builds check every comparison, head comparison, search and sort
// on seeded random code page 1252 strings against ICU called directly
// (ucol_strcoll over the text converted by ICU's own windows-1252
// converter).  Windows builds, run under Wine, check the strings whose
// order Wine's collation gives as ICU does (see docs/collation.md): ASCII
// letters, digits, the space and Western European accented letters in the
// root, en-US and de-DE collations, against a small model of that order,
// which native builds check against ICU too.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <random>
#include <string>
#include <vector>

#include "support/warnings.h"
#include "zelstr/strhelper.h"

#if defined(ZELSTR_ICU_REFERENCE)
#include <unicode/ucnv.h>
#include <unicode/ucol.h>
#endif

namespace {

using zelstr::test::filed_exactly;
using zelstr::test::filed_nothing;

std::string random_from(std::mt19937& rng, std::string const& alphabet, std::size_t max_length) {
  std::string s(rng() % (max_length + 1), ' ');
  for (char& c : s) c = alphabet[rng() % alphabet.size()];
  return s;
}

// A second string sharing a random head with `a`, so that the comparisons
// often reach beyond the first character.
std::string related(std::mt19937& rng, std::string const& a, std::string const& alphabet,
                    std::size_t max_length) {
  std::string b = a.substr(0, rng() % (a.size() + 1));
  b += random_from(rng, alphabet, max_length / 2);
  return b;
}

// The parts one after the other (built by appending: GCC 12 warns wrongly
// about some concatenations of temporaries).
template <class... Parts>
std::string join(Parts const&... parts) {
  std::string s;
  (s += ... += parts);
  return s;
}

// ---- the order Wine's collation shares with ICU ---------------------------

// The ASCII letters, digits and the space, and the accented letters of
// Western European languages, written as one character each.
std::string const kPlainAlphabet =
    "aAbBcCeEnNoOzZ019 \xE9\xC9\xE8\xEA\xEB\xE0\xC0\xE4\xC4\xF6\xD6\xFC\xE7\xC7\xF1\xD1";

// The locales whose order of such strings Wine shares with ICU.
char const* const kPlainLocales[] = {"", "en-US", "de-DE"};

struct Letter {
  char base;   // the letter without its accent, in lower case; or the digit or space
  int accent;  // 0 none; 1 acute, 2 grave, 3 circumflex, 4 diaeresis, 5 tilde, 6 cedilla
  bool upper;
};

Letter letter_of(unsigned char c) {
  static struct {
    unsigned char c;
    char base;
    int accent;
  } const kAccented[] = {{0xE9, 'e', 1}, {0xC9, 'e', 1}, {0xE8, 'e', 2}, {0xEA, 'e', 3},
                         {0xEB, 'e', 4}, {0xE0, 'a', 2}, {0xC0, 'a', 2}, {0xE4, 'a', 4},
                         {0xC4, 'a', 4}, {0xF6, 'o', 4}, {0xD6, 'o', 4}, {0xFC, 'u', 4},
                         {0xE7, 'c', 6}, {0xC7, 'c', 6}, {0xF1, 'n', 5}, {0xD1, 'n', 5}};
  for (auto const& a : kAccented) {
    if (a.c == c) return {a.base, a.accent, c < 0xE0};
  }
  return {static_cast<char>(std::tolower(c)), 0, std::isupper(c) != 0};
}

// The order of such strings: the space before the digits, the digits
// before the letters, letters without accents or case (primary level);
// then the first difference of accent, in the order of the numbers above
// (secondary); then the first difference of case, lower case first
// (tertiary).  Each character is one collation element, so the levels
// compare position by position.
int plain_model(std::string const& a, std::string const& b, int strength) {
  std::vector<Letter> la;
  std::vector<Letter> lb;
  for (char c : a) la.push_back(letter_of(static_cast<unsigned char>(c)));
  for (char c : b) lb.push_back(letter_of(static_cast<unsigned char>(c)));
  auto const level = [&](auto key) {
    for (std::size_t i = 0; i < la.size() && i < lb.size(); ++i) {
      if (key(la[i]) != key(lb[i])) return key(la[i]) < key(lb[i]) ? -1 : 1;
    }
    return la.size() == lb.size() ? 0 : la.size() < lb.size() ? -1 : 1;
  };
  int r = level([](Letter const& l) { return static_cast<int>(l.base); });
  if (r == 0 && strength >= 2) r = level([](Letter const& l) { return l.accent; });
  if (r == 0 && strength >= 3) r = level([](Letter const& l) { return static_cast<int>(l.upper); });
  return r;
}

TEST(CollationPlainOrder, CompareFollowsTheModelAtEachStrength) {
  for (char const* locale : kPlainLocales) {
    for (int strength = 1; strength <= 3; ++strength) {
      ZealStrHelper const helper(locale, strength);
      std::mt19937 rng(strength);
      for (int round = 0; round < 3000; ++round) {
        std::string const a = random_from(rng, kPlainAlphabet, 6);
        std::string const b = related(rng, a, kPlainAlphabet, 6);
        SCOPED_TRACE(join("locale '", locale, "': '", a, "' vs '", b, "' strength ",
                          std::to_string(strength)));
        ASSERT_EQ(helper.compare(a.c_str(), b.c_str()), plain_model(a, b, strength));
        unsigned long const n = rng() % 8;
        ASSERT_EQ(helper.ncompare(a.c_str(), b.c_str(), n),
                  plain_model(a.substr(0, n), b.substr(0, n), strength));
      }
    }
  }
}

TEST(CollationPlainOrder, SortOrdersAndKeepsEqualStringsInPlace) {
  ZealStrHelper const helper("", ZealStrHelper::secondary);
  std::mt19937 rng(11);
  for (int round = 0; round < 200; ++round) {
    std::vector<std::string> texts(rng() % 40);
    for (auto& t : texts) t = random_from(rng, "aAbB1 ", 3);
    std::vector<char const*> order;
    for (auto const& t : texts) order.push_back(t.c_str());
    helper.sort(order.data(), static_cast<unsigned long>(order.size()));
    for (std::size_t i = 1; i < order.size(); ++i) {
      int const r = plain_model(order[i - 1], order[i], 2);
      ASSERT_LE(r, 0);
      // Equal strings keep their order: pointers into `texts` rise.
      if (r == 0) {
        ASSERT_LT(order[i - 1], order[i]) << order[i - 1] << " / " << order[i];
      }
    }
  }
}

TEST(CollationPlainOrder, SearchFindsThePieceEqualAtTheStrength) {
  struct Case {
    int strength;
    char const* text;
    char const* pattern;
    long at;  // -1: not found
    unsigned long length;
    long iat;  // isearch
  };
  Case const cases[] = {
      {3, "select Name from T", "name", -1, 0, 7},
      {3, "select Name from T", "Name", 7, 4, 7},
      {2, "select Name from T", "NAME", 7, 4, 7},
      {1, "Abc abc", "ABC", 0, 3, 0},
      {3, "abc", "abcd", -1, 0, -1},
      {3, "abc", "", 0, 0, 0},
  };
  for (Case const& c : cases) {
    ZealStrHelper const helper("en", c.strength);
    SCOPED_TRACE(join(c.text, " / ", c.pattern));
    unsigned long length = 99;
    char const* const at = helper.search(c.text, c.pattern, &length);
    EXPECT_EQ(at == nullptr ? -1 : at - c.text, c.at);
    if (at != nullptr) {
      EXPECT_EQ(length, c.length);
    }
    char const* const iat = helper.isearch(c.text, c.pattern);
    EXPECT_EQ(iat == nullptr ? -1 : iat - c.text, c.iat);
  }
}

TEST(CollationCase, UpperAndLowerFollowTheLocale) {
  struct Case {
    char const* locale;
    char const* text;
    char const* upper;
    char const* lower;
  };
  Case const cases[] = {
      {"en", "Istanbul id", "ISTANBUL ID", "istanbul id"},
      // Turkish "i" and "I" change case to letters outside the code page.
      {"tr", "Istanbul id", "ISTANBUL iD", "Istanbul id"},
      // The sharp s, whose upper case is two letters, and the micro sign,
      // whose upper case is Greek, stay as they are.
      {"de", "Stra\xDF\x65 \xB5m", "STRA\xDF\x45 \xB5M", "stra\xDF\x65 \xB5m"},
      {"fr", "\xE9t\xE9 \x9C\x9A\xFF", "\xC9T\xC9 \x8C\x8A\x9F", "\xE9t\xE9 \x9C\x9A\xFF"},
  };
  for (Case const& c : cases) {
    ZealStrHelper const helper(c.locale);
    std::string up = c.text;
    std::string down = c.text;
    EXPECT_EQ(helper.upper(up.data()), up.data());
    EXPECT_EQ(helper.lower(down.data()), down.data());
    EXPECT_EQ(up, c.upper) << c.locale;
    EXPECT_EQ(down, c.lower) << c.locale;
  }
}

// ---- bad arguments ---------------------------------------------------------

class CollationWarnings : public zelstr::test::WarningsTest {};

zelstr::test::ExpectedWarning helper_warning(std::string text) {
  return {-1, std::move(text), 4, "zealstrhelper"};
}

TEST_F(CollationWarnings, NullStringsCompareAsInZstrcmp) {
  ZealStrHelper const helper;
  struct Case {
    char const* s1;
    char const* s2;
    int result;
    char const* says;
  };
  Case const cases[] = {
      {nullptr, nullptr, 0, "<s1> and <s2> given in argument were NULL: 0 was"},
      {nullptr, "a", -1, "<s1> given in argument was NULL: -1 was"},
      {"a", nullptr, 1, "<s2> given in argument was NULL: +1 was"},
  };
  for (Case const& c : cases) {
    for (char const* function : {"compare", "ncompare"}) {
      errsvc::clear();
      bool const whole = std::strcmp(function, "compare") == 0;
      EXPECT_EQ(whole ? helper.compare(c.s1, c.s2) : helper.ncompare(c.s1, c.s2, 3), c.result);
      std::string const text = join("ZealStrHelper::", function, "() - Warning: ", c.says,
                                    " returned as result of comparing.");
      EXPECT_TRUE(filed_exactly({helper_warning(text)}));
    }
  }
  errsvc::clear();
  EXPECT_EQ(helper.ncompare(nullptr, "a", 0), 0);
  EXPECT_TRUE(filed_nothing());
}

TEST_F(CollationWarnings, NullTextsOfTheOtherOperations) {
  ZealStrHelper const helper("de", ZealStrHelper::primary);
  EXPECT_EQ(helper.search(nullptr, "a"), nullptr);
  EXPECT_EQ(helper.isearch("a", nullptr), nullptr);
  EXPECT_EQ(helper.upper(nullptr), nullptr);
  EXPECT_EQ(helper.lower(nullptr), nullptr);
  helper.sort(static_cast<char const**>(nullptr), 0);
  helper.sort(static_cast<char const**>(nullptr), 2);
  char const* strings[] = {"b", nullptr, "a", nullptr};
  helper.sort(strings, 4);
  EXPECT_EQ(strings[0], nullptr);
  EXPECT_EQ(strings[1], nullptr);
  EXPECT_STREQ(strings[2], "a");
  EXPECT_STREQ(strings[3], "b");
  char const* const searching =
      "() - Warning: <text> or <pattern> given in argument is NULL: NULL was returned as result of "
      "searching.";
  char const* const casing =
      "() - Warning: <text> given in argument is NULL: NULL was returned as result of case "
      "mapping.";
  EXPECT_TRUE(filed_exactly({
      helper_warning(join("ZealStrHelper::search", searching)),
      helper_warning(join("ZealStrHelper::isearch", searching)),
      helper_warning(join("ZealStrHelper::upper", casing)),
      helper_warning(join("ZealStrHelper::lower", casing)),
      helper_warning("ZealStrHelper::sort() - Warning: <strings> given in argument is NULL while "
                     "<count> is 2: nothing was sorted."),
      helper_warning("ZealStrHelper::sort() - Warning: 2 of the strings given in argument were "
                     "NULL: they were placed first."),
  }));
}

TEST_F(CollationWarnings, BadLocaleOrStrengthFallsBackToRootAndTertiary) {
  std::string const opening = "ZealStrHelper::ZealStrHelper() - Warning: ";
  std::string const root = ": the root collation is used.";
  struct Case {
    char const* locale;
    int strength;
    char const* used;
    int used_strength;
    std::vector<std::string> warnings;
  };
  Case const cases[] = {
      {"de_DE", 2, "de_DE", 2, {}},
      {"sv-SE", 1, "sv-SE", 1, {}},
      {"root", 3, "root", 3, {}},
      {"xx_YY",
       3,
       "",
       3,
       {join(opening, "locale 'xx_YY' given in argument is not known to the collator", root)}},
      {nullptr,
       0,
       "",
       3,
       {join(opening,
             "<strength> 0 given in argument is not 1 (primary), 2 (secondary) or 3 (tertiary): 3 "
             "(tertiary) is used."),
        join(opening, "<locale> given in argument is NULL", root)}},
  };
  for (Case const& c : cases) {
    errsvc::clear();
    ZealStrHelper const helper(c.locale, c.strength);
    EXPECT_STREQ(helper.locale(), c.used);
    EXPECT_EQ(helper.strength(), c.used_strength);
    EXPECT_TRUE(helper.has_collator());
    std::vector<zelstr::test::ExpectedWarning> expected;
    for (auto const& w : c.warnings) expected.push_back(helper_warning(w));
    EXPECT_TRUE(filed_exactly(expected)) << (c.locale != nullptr ? c.locale : "NULL");
  }
  // An over-long name is not passed to the collator at all.
  errsvc::clear();
  std::string const long_name(300, 'q');
  ZealStrHelper const helper(long_name.c_str());
  EXPECT_STREQ(helper.locale(), "");
  EXPECT_EQ(helper.compare("a", "B"), -1);
  EXPECT_TRUE(filed_exactly({helper_warning(join(
      opening, "locale '", long_name, "' given in argument is not known to the collator", root))}));
}

// ---- against ICU itself (native builds) -----------------------------------

#if defined(ZELSTR_ICU_REFERENCE)

int sign(int r) { return r < 0 ? -1 : r > 0 ? 1 : 0; }

// Every kind of character of the code page: letters with and without
// accents in both cases, ligatures, the sharp s, digits and their
// superscripts, punctuation, symbols, the space, a control character, an
// undefined byte, the soft hyphen, the characters of row 0x80, and "l"
// with the middle dot that joins it in the root collation.
std::string const kMixedAlphabet =
    "aAeEoOsSzZyY \xE0\xC0\xE9\xC9\xE8\xF6\xD6\xE5\xC5\xDF\xE6\xC6\x9C\x8C\x9A\x8A\xFF\x9F"
    "019\xB2-_.,'\"\x80\x85\x91\x96\x99\xA0\xAD\xBD\x01\x81lL\xB7";

class Icu {
 public:
  Icu(char const* locale, int strength) {
    UErrorCode status = U_ZERO_ERROR;
    m_collator = ucol_open(locale, &status);
    ucol_setStrength(m_collator, strength == 1   ? UCOL_PRIMARY
                                 : strength == 2 ? UCOL_SECONDARY
                                                 : UCOL_TERTIARY);
    m_converter = ucnv_open("windows-1252", &status);
    EXPECT_TRUE(U_SUCCESS(status)) << u_errorName(status);
  }
  ~Icu() {
    ucol_close(m_collator);
    ucnv_close(m_converter);
  }
  Icu(Icu const&) = delete;
  Icu& operator=(Icu const&) = delete;

  std::u16string utf16(std::string const& s) const {
    std::u16string out(s.size() * 2 + 2, u'\0');
    UErrorCode status = U_ZERO_ERROR;
    int32_t const n = ucnv_toUChars(m_converter, out.data(), static_cast<int32_t>(out.size()),
                                    s.data(), static_cast<int32_t>(s.size()), &status);
    out.resize(static_cast<std::size_t>(n));
    return out;
  }
  int compare(std::string const& a, std::string const& b) const {
    std::u16string const ua = utf16(a);
    std::u16string const ub = utf16(b);
    return ucol_strcoll(m_collator, ua.data(), static_cast<int32_t>(ua.size()), ub.data(),
                        static_cast<int32_t>(ub.size()));
  }

 private:
  UCollator* m_collator = nullptr;
  UConverter* m_converter = nullptr;
};

// A partner for `a`: a random head of it going on at random, or `a` with
// one character changed.
std::string partner(std::mt19937& rng, std::string const& a, std::string const& alphabet,
                    std::size_t max_length) {
  if (a.empty() || rng() % 2 == 0) return related(rng, a, alphabet, max_length);
  std::string b = a;
  b[rng() % b.size()] = alphabet[rng() % alphabet.size()];
  return b;
}

TEST(CollationAgainstIcu, CompareAndNcompareGiveUcolStrcollsAnswer) {
  struct Family {
    std::vector<char const*> locales;
    std::string alphabet;
    std::size_t max_length;  // now and then 700, past the stack buffers
  };
  Family const families[] = {
      {{"", "en_US", "de", "sv", "fr_CA", "tr", "da", "de@collation=phonebook",
        // Options that change what decides: numbers read whole, punctuation
        // and spaces ignored, upper case first.  (Not a reordering of the
        // groups: ICU 72's ucol_strcoll orders "\xB2" before "y" with
        // digits after letters, but "\xB2\u20AC" after it.)
        "en@colNumeric=yes", "en@colAlternate=shifted", "en@colCaseFirst=upper"},
       kMixedAlphabet,
       8},
      // Long, mostly ASCII strings sharing heads of any length: the helper
      // skips the head and converts the rest in blocks of sixteen bytes.
      {{"", "de", "da"}, "abcdefghijklmnopqrstuvwxyz ABC_019.,\xE9", 300},
      // Letters written with two or three characters ("aa" in Danish, "cs"
      // and "dzs" in Hungarian, "ch" in Czech and Welsh, "lj" in Croatian,
      // "ll" in traditional Spanish): heads that end inside one.
      {{"da", "hu", "cs", "cy", "hr", "es@collation=traditional"},
       "aAcChHlLdDzZsSyYnNgGjJ\x9E\x8E\xE5 ",
       7},
  };
  for (Family const& family : families) {
    for (char const* locale : family.locales) {
      for (int strength = 1; strength <= 3; ++strength) {
        ZealStrHelper const helper(locale, strength);
        Icu const icu(locale, strength);
        std::mt19937 rng(static_cast<unsigned>(strength * 131 + std::strlen(locale)));
        for (int round = 0; round < 1500; ++round) {
          std::size_t const max_length = round % 100 == 0 ? 700 : family.max_length;
          std::string const a = random_from(rng, family.alphabet, max_length);
          std::string const b = partner(rng, a, family.alphabet, max_length);
          unsigned long const n = rng() % (max_length + 2) + 1;
          SCOPED_TRACE(join("locale '", locale, "' strength ", std::to_string(strength), ": '", a,
                            "' vs '", b, "' n ", std::to_string(n)));
          ASSERT_EQ(helper.compare(a.c_str(), b.c_str()), sign(icu.compare(a, b)));
          ASSERT_EQ(helper.ncompare(a.c_str(), b.c_str(), n),
                    sign(icu.compare(a.substr(0, n), b.substr(0, n))));
        }
      }
    }
  }
}

TEST(CollationAgainstIcu, ThePlainModelIsIcusOrder) {
  for (char const* locale : kPlainLocales) {
    for (int strength = 1; strength <= 3; ++strength) {
      Icu const icu(locale, strength);
      std::mt19937 rng(strength + 40);
      for (int round = 0; round < 3000; ++round) {
        std::string const a = random_from(rng, kPlainAlphabet, 6);
        std::string const b = related(rng, a, kPlainAlphabet, 6);
        ASSERT_EQ(plain_model(a, b, strength), sign(icu.compare(a, b)))
            << locale << " strength " << strength << ": " << a << " / " << b;
      }
    }
  }
}

TEST(CollationAgainstIcu, SortGivesAnOrderIcuAgreesWith) {
  ZealStrHelper const helper("sv", ZealStrHelper::secondary);
  Icu const icu("sv", 2);
  std::mt19937 rng(5);
  for (int round = 0; round < 100; ++round) {
    std::vector<std::string> texts(rng() % 60);
    for (auto& t : texts) t = random_from(rng, kMixedAlphabet, 4);
    std::vector<char const*> order;
    for (auto const& t : texts) order.push_back(t.c_str());
    helper.sort(order.data(), static_cast<unsigned long>(order.size()));
    for (std::size_t i = 1; i < order.size(); ++i) {
      int const r = sign(icu.compare(order[i - 1], order[i]));
      ASSERT_LE(r, 0) << order[i - 1] << " / " << order[i];
      if (r == 0) {
        ASSERT_LT(order[i - 1], order[i]);
      }
    }
  }
}

// A piece found is one the collator finds equal to the pattern, and it
// starts no later than a copy of the pattern planted in the text.
TEST(CollationAgainstIcu, SearchFindsAPieceEqualToThePattern) {
  for (char const* locale : {"", "de"}) {
    for (int strength = 1; strength <= 3; ++strength) {
      ZealStrHelper const helper(locale, strength);
      Icu const exact(locale, strength);
      Icu const caseless(locale, std::min(strength, 2));
      std::mt19937 rng(static_cast<unsigned>(strength + 7 * std::strlen(locale)));
      for (int round = 0; round < 1500; ++round) {
        std::string text = random_from(rng, kMixedAlphabet, 30);
        std::string pattern = random_from(rng, "aAeE\xE9\xC9\xDFsS", 3);
        pattern += 'z';
        std::size_t planted = std::string::npos;
        if (rng() % 2 == 0) {
          planted = rng() % (text.size() + 1);
          text.insert(planted, pattern);
        }
        for (bool ignore_case : {false, true}) {
          SCOPED_TRACE(join("locale '", locale, "' strength ", std::to_string(strength),
                            ignore_case ? " ignoring case" : "", ": '", pattern, "' in '", text,
                            "'"));
          unsigned long length = 0;
          char const* const at = ignore_case
                                     ? helper.isearch(text.c_str(), pattern.c_str(), &length)
                                     : helper.search(text.c_str(), pattern.c_str(), &length);
          if (planted != std::string::npos) {
            ASSERT_NE(at, nullptr);
          }
          if (at == nullptr) continue;
          std::size_t const start = static_cast<std::size_t>(at - text.c_str());
          ASSERT_LE(start, planted);
          ASSERT_LE(start + length, text.size());
          Icu const& icu = ignore_case ? caseless : exact;
          ASSERT_EQ(icu.compare(text.substr(start, length), pattern), 0);
        }
      }
    }
  }
}

#endif  // ZELSTR_ICU_REFERENCE

}  // namespace
