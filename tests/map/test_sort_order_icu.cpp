// The code page 1252 ready orders against ICU's root collation (the
// collation they are drawn from): every pair of single characters agrees
// at the order's strength, and so do random words of the letters, digits
// and signs that the collation neither ignores nor expands, for the
// accent-insensitive order.  (Across several characters the
// accent-sensitive order weighs an accent where it stands, while the
// collation weighs accents only after all the letters, so words are
// compared at primary strength only.)
#include <gtest/gtest.h>
#include <unicode/ucnv.h>
#include <unicode/ucol.h>

#include <memory>
#include <random>
#include <string>

#include "zelstr/zelstr.h"

namespace {

int sign(int r) { return (r > 0) - (r < 0); }

class Root {
 public:
  explicit Root(UColAttributeValue strength) {
    UErrorCode status = U_ZERO_ERROR;
    m_collator = ucol_open("", &status);
    ucol_setStrength(m_collator, strength);
    m_converter = ucnv_open("windows-1252", &status);
    EXPECT_TRUE(U_SUCCESS(status));
  }
  ~Root() {
    ucol_close(m_collator);
    ucnv_close(m_converter);
  }

  int compare(std::string const& a, std::string const& b) const {
    std::u16string const ua = wide(a), ub = wide(b);
    return ucol_strcoll(m_collator, reinterpret_cast<UChar const*>(ua.data()),
                        static_cast<int32_t>(ua.size()),
                        reinterpret_cast<UChar const*>(ub.data()),
                        static_cast<int32_t>(ub.size()));
  }

  // The collation ignores the character, or makes more than one weight of
  // it (its key at this strength is not that of one letter).
  bool ignores_or_expands(char c) const {
    std::string const one(1, c);
    return compare(one, "") == 0 || compare(one + one, one) == 0 || key_length(one) != key_length("a");
  }

 private:
  std::u16string wide(std::string const& s) const {
    std::u16string out(s.size() * 2 + 1, u'\0');
    UErrorCode status = U_ZERO_ERROR;
    int32_t const n = ucnv_toUChars(m_converter, reinterpret_cast<UChar*>(out.data()),
                                    static_cast<int32_t>(out.size()), s.data(),
                                    static_cast<int32_t>(s.size()), &status);
    out.resize(static_cast<std::size_t>(n));
    return out;
  }
  int key_length(std::string const& s) const {
    std::u16string const u = wide(s);
    uint8_t key[64];
    return ucol_getSortKey(m_collator, reinterpret_cast<UChar const*>(u.data()),
                           static_cast<int32_t>(u.size()), key, sizeof key);
  }

  UCollator* m_collator = nullptr;
  UConverter* m_converter = nullptr;
};

struct Strength {
  int order;
  UColAttributeValue strength;
};

TEST(SortOrdersAgainstIcu, EveryPairOfCharactersAgrees) {
  for (Strength const s : {Strength{ZEAL_SORT_CP1252_CI_AI, UCOL_PRIMARY},
                           Strength{ZEAL_SORT_CP1252_CI_AS, UCOL_SECONDARY}}) {
    Root const root(s.strength);
    void* const order = _zsortdefine(_zsortreadydef(s.order));
    int compared = 0;
    for (int x = 1; x < 256; ++x) {
      std::string const a(1, static_cast<char>(x));
      if (root.compare(a, "") == 0) continue;  // ignored by the collation
      for (int y = 1; y < 256; ++y) {
        std::string const b(1, static_cast<char>(y));
        if (root.compare(b, "") == 0) continue;
        ASSERT_EQ(_zsortstrcmp(order, a.c_str(), b.c_str()), sign(root.compare(a, b)))
            << s.order << ": " << x << " " << y;
        ++compared;
      }
    }
    EXPECT_GT(compared, 200 * 200);
    _zmapfree(order);
  }
}

TEST(SortOrdersAgainstIcu, WordsAgreeWithoutAccentsAndCase) {
  Root const root(UCOL_PRIMARY);
  std::string alphabet;
  for (int c = 0x20; c < 256; ++c) {
    if (!root.ignores_or_expands(static_cast<char>(c))) alphabet += static_cast<char>(c);
  }
  ASSERT_GT(alphabet.size(), 120u);
  void* const order = _zsortdefine(_zsortreadydef(ZEAL_SORT_CP1252_CI_AI));
  std::mt19937 random(1252);
  for (int round = 0; round < 20000; ++round) {
    std::string a(1 + random() % 5, ' ');
    for (char& c : a) c = alphabet[random() % alphabet.size()];
    std::string b = a;  // a copy with a few changes: long shared heads
    for (char& c : b) {
      if (random() % 3 == 0) c = alphabet[random() % alphabet.size()];
    }
    if (random() % 4 == 0) b.resize(random() % (b.size() + 1));
    if (random() % 4 == 0) b += alphabet[random() % alphabet.size()];
    ASSERT_EQ(_zsortstrcmp(order, a.c_str(), b.c_str()), sign(root.compare(a, b)))
        << a << " | " << b;
  }
  _zmapfree(order);
}

}  // namespace
