// Mapped operations against a model that applies the map to copies and
// calls the plain functions; the NULL and invalid maps; the NULL arguments.
#include <gtest/gtest.h>

#include <cctype>
#include <cstring>
#include <functional>
#include <random>
#include <string>

#include "support/warnings.h"
#include "zelstr/zelstr.h"

namespace {

using zelstr::test::filed_exactly;
using zelstr::test::filed_nothing;
using Mapped = zelstr::test::WarningsTest;

// Definitions covering folds of case, images shared by three bytes (beyond
// what the vector scan compares) and blanks.
char const* const kDefinitions[] = {"A-Z=a-z", "a-z=A-Z", "a=b=c", "x=-=_ y=Y", "A-C=x-z  =."};
char const kAlphabet[] = "abcABCxyzXYZ-_. ";

std::string random_text(std::mt19937& rng, std::size_t max_length) {
  std::size_t const n = std::uniform_int_distribution<std::size_t>(0, max_length)(rng);
  std::uniform_int_distribution<std::size_t> pick(0, sizeof kAlphabet - 2);
  std::string s;
  for (std::size_t i = 0; i < n; ++i) s += kAlphabet[pick(rng)];
  return s;
}

// The model's copies: `s` through toupper or tolower (when asked), then the map.
enum class Fold { none, upper, lower };
std::string through(void* map, std::string s, Fold fold = Fold::none) {
  for (char& c : s) {
    auto const b = static_cast<unsigned char>(c);
    if (fold == Fold::upper) c = static_cast<char>(std::toupper(b));
    if (fold == Fold::lower) c = static_cast<char>(std::tolower(b));
    c = _zmapchrapply(map, c);
  }
  return s;
}

// Offset of a result pointer into `base`, -1 for NULL.
long offset(char const* p, char const* base) { return p == nullptr ? -1 : p - base; }

// `string` with the occurrences the model finds in its mapped copy replaced
// by `s3`, left to right without overlap (the first only, when `once`).
std::string model_replace(void* map, std::string const& string, std::string const& s2,
                          std::string const& s3, bool once) {
  if (s2.empty()) return string;
  std::string const text = through(map, string), pattern = through(map, s2);
  std::string out;
  std::size_t pos = 0;
  for (std::size_t f; (f = text.find(pattern, pos)) != std::string::npos;) {
    out += string.substr(pos, f - pos) + s3;
    pos = f + s2.size();
    if (once) break;
  }
  return out + string.substr(pos);
}

TEST_F(Mapped, SearchesCountsAndComparisonsFollowTheModel) {
  std::mt19937 rng(20261121);
  for (char const* definition : kDefinitions) {
    void* const map = _zmapdefine(definition);
    ASSERT_NE(map, nullptr);
    ASSERT_NE(map, ZEAL_STR_BAD_MAP);
    for (int round = 0; round < 400; ++round) {
      std::string const s1 = random_text(rng, round % 4 == 0 ? 300 : 12);
      std::string const s2 = random_text(rng, 4);
      char const c = kAlphabet[round % (sizeof kAlphabet - 1)];
      std::string const m1 = through(map, s1), m2 = through(map, s2);
      char const* const a = s1.c_str();
      SCOPED_TRACE(std::string(definition) + " | " + s1 + " | " + s2 + " | " + c);

      EXPECT_EQ(offset(_zmapstrstr(map, a, s2.c_str()), a),
                offset(_zstrstr(m1.c_str(), m2.c_str()), m1.c_str()));
      EXPECT_EQ(offset(_zmapstrrstr(map, a, s2.c_str()), a),
                offset(_zstrrstr(m1.c_str(), m2.c_str()), m1.c_str()));
      std::string const u1 = through(map, s1, Fold::upper), u2 = through(map, s2, Fold::upper);
      EXPECT_EQ(offset(_zmapstristr(map, a, s2.c_str()), a),
                offset(_zstrstr(u1.c_str(), u2.c_str()), u1.c_str()));
      if (!s2.empty()) {
        EXPECT_EQ(_zmapstrstrcnt(map, const_cast<char*>(a), const_cast<char*>(s2.c_str())),
                  _zstrstrcnt(m1.c_str(), m2.c_str()));
      }
      char const mc = _zmapchrapply(map, c);
      EXPECT_EQ(_zmapstrccnt(map, const_cast<char*>(a), c),
                static_cast<unsigned long>(_zstrccnt(m1.c_str(), mc)));
      EXPECT_EQ(offset(_zmapstrchr(map, a, c), a), offset(_zstrchr(m1.c_str(), mc), m1.c_str()));
      EXPECT_EQ(offset(_zmapstrrchr(map, a, c), a), offset(_zstrrchr(m1.c_str(), mc), m1.c_str()));
      EXPECT_EQ(offset(_zmapstrichr(map, a, c), a), offset(_zstrichr(m1.c_str(), mc), m1.c_str()));

      EXPECT_EQ(_zmapstrcmp(map, a, s2.c_str()), _zstrcmp(m1.c_str(), m2.c_str()));
      unsigned long const n = round % 6;
      EXPECT_EQ(_zmapstrncmp(map, a, s2.c_str(), n), _zstrncmp(m1.c_str(), m2.c_str(), n));
      std::string const l1 = through(map, s1, Fold::lower), l2 = through(map, s2, Fold::lower);
      EXPECT_EQ(_zmapstricmp(map, a, s2.c_str()), _zstrcmp(l1.c_str(), l2.c_str()));
      EXPECT_EQ(_zmapstrnicmp(map, a, s2.c_str(), n), _zstrncmp(l1.c_str(), l2.c_str(), n));
      EXPECT_EQ(offset(_zmapstrdiffpoint(map, a, s2.c_str(), 1), a),
                offset(_zstrdiffpoint(m1.c_str(), m2.c_str(), 1), m1.c_str()));
      EXPECT_EQ(offset(_zmapstrdiffpoint(map, a, s2.c_str(), 0), a),
                offset(_zstrdiffpoint(u1.c_str(), u2.c_str(), 1), u1.c_str()));
      EXPECT_EQ(_zmapstrishead(map, a, s2.c_str()), _zstrishead(m1.c_str(), m2.c_str(), 1));
      EXPECT_EQ(_zmapstristail(map, a, s2.c_str()), _zstristail(m1.c_str(), m2.c_str(), 1));
    }
    EXPECT_EQ(_zmapfree(map), 1);
  }
  EXPECT_TRUE(filed_nothing());
}

// Application in place, at every alignment and length around a word: the
// bytes up to the terminator translated, those after it untouched.
TEST_F(Mapped, ApplyTranslatesUpToTheTerminatorOnly) {
  std::mt19937 rng(77);
  for (char const* definition : kDefinitions) {
    void* const map = _zmapdefine(definition);
    for (std::size_t start = 0; start < 8; ++start) {
      for (std::size_t length = 0; length < 40; ++length) {
        char buffer[64];
        std::memset(buffer, 'a', sizeof buffer);
        std::string const text = random_text(rng, length).substr(0, length);
        std::memcpy(buffer + start, text.c_str(), text.size() + 1);
        std::string expected(buffer, sizeof buffer);
        std::string const mapped = through(map, text);
        expected.replace(start, mapped.size(), mapped);
        EXPECT_EQ(_zmapstrapply(map, buffer + start), buffer + start);
        EXPECT_EQ(std::string(buffer, sizeof buffer), expected) << definition << " " << start;
      }
    }
    _zmapfree(map);
  }
}

TEST_F(Mapped, ReplacementsFollowTheModel) {
  std::mt19937 rng(5);
  for (char const* definition : kDefinitions) {
    void* const map = _zmapdefine(definition);
    for (int round = 0; round < 400; ++round) {
      std::string const s = random_text(rng, round % 4 == 0 ? 300 : 16);
      std::string const s2 = random_text(rng, 3), s3 = random_text(rng, 4);
      SCOPED_TRACE(std::string(definition) + " | " + s + " | " + s2 + " | " + s3);
      char buffer[2048];
      char* const b = std::strcpy(buffer, s.c_str());
      EXPECT_EQ(_zmapstrNreplace(map, b, s2.c_str(), s3.c_str(), 2000), b);
      EXPECT_EQ(std::string(b), model_replace(map, s, s2, s3, false));

      std::strcpy(buffer, s.c_str());
      EXPECT_EQ(_zmapstr1replace(map, b, s2.c_str(), s3.c_str(), 2000), b);
      EXPECT_EQ(std::string(b), model_replace(map, s, s2, s3, true));

      long const expected = static_cast<long>(model_replace(map, s, s2, s3, false).size()) -
                            static_cast<long>(s.size());
      EXPECT_EQ(_zmapstrdeltalen(map, const_cast<char*>(s.c_str()), const_cast<char*>(s2.c_str()),
                                 const_cast<char*>(s3.c_str())),
                expected);
    }
    _zmapfree(map);
  }
  EXPECT_TRUE(filed_nothing());
}

TEST_F(Mapped, WorkedExamplesAndLimits) {
  void* const lower = _zmapdefine("A-Z=a-z");
  char const text[] = "xABCx";
  EXPECT_EQ(_zmapstrstr(lower, text, "abc"), text + 1);
  char buffer[16] = "xABCx";
  EXPECT_STREQ(_zmapstr1replace(lower, buffer, "abc", "-", 15), "x-x");

  // A growing replacement past the limit: NULL, the text untouched.
  std::strcpy(buffer, "xABCx");
  EXPECT_EQ(_zmapstr1replace(lower, buffer, "abc", "12345", 6), nullptr);
  EXPECT_STREQ(buffer, "xABCx");
  EXPECT_EQ(_zmapstr1replace(lower, buffer, "abc", "12345", 7), buffer);
  EXPECT_STREQ(buffer, "x12345x");
  // All occurrences: those that fit stay replaced.
  std::strcpy(buffer, "aAaA");
  EXPECT_EQ(_zmapstrNreplace(lower, buffer, "a", "bb", 6), nullptr);
  EXPECT_STREQ(buffer, "bbbbaA");
  // Equal s2 and s3 still replace what the map finds.
  std::strcpy(buffer, "ABC abc");
  EXPECT_STREQ(_zmapstrNreplace(lower, buffer, "abc", "abc", 15), "abc abc");
  // An s2 longer than the string, and an empty one, change nothing.
  EXPECT_STREQ(_zmapstr1replace(lower, buffer, "abc abc abc", "", 15), "abc abc");
  EXPECT_STREQ(_zmapstr1replace(lower, buffer, "", "x", 15), "abc abc");

  zstr_couple couples[] = {{"a", "xx"}, {"BC", ""}, {nullptr, nullptr}};
  char mixed[] = "AbCa";
  EXPECT_EQ(_zmapstrmultideltalen(lower, mixed, couples), 2 - 2);
  EXPECT_EQ(_zmapstrccnt(lower, mixed, 'a'), 2ul);
  EXPECT_EQ(_zmapstrccnt(lower, mixed, '\0'), 0ul);
  EXPECT_EQ(_zmapstrchr(lower, text, '\0'), text + 5);
  // The two `icmp` comparisons fold with tolower before mapping; _zmapstrichr
  // maps first, then folds with toupper.
  void* const shift = _zmapdefine("a=B");  // B takes a's image
  char const xa[] = "xA";
  EXPECT_EQ(_zmapstrichr(shift, xa, 'B'), xa + 1);  // toupper(map[B]) = A
  EXPECT_EQ(_zmapstricmp(shift, "A", "B"), -1);     // map[a] < map[b]
  EXPECT_EQ(_zmapstrcmp(shift, "a", "B"), 0);
  _zmapfree(shift);
  _zmapfree(lower);
  EXPECT_TRUE(filed_nothing());
}

// Each member, called with a map, against its plain counterpart: the
// NULL map gives the plain result silently; the invalid map its warning
// (the name, the shared words, the fallback), then the plain result.  The
// examples give another result through the map "-=x=X".
TEST_F(Mapped, NullAndInvalidMapsFallBackToThePlainFunctions) {
  char const kHay[] = "xABCx abc";
  auto pos = [&](char const* p) { return offset(p, kHay); };
  char text[32];
  auto fresh = [&]() { return std::strcpy(text, "aXa xa"); };
  // The edited text, told apart by its hash (-1 for NULL).
  auto edited = [](char const* p) {
    return p == nullptr ? -1L : static_cast<long>(std::hash<std::string>{}(p) >> 2);
  };
  auto chars = [](char const* literal) { return const_cast<char*>(literal); };
  using Call = std::function<long(void*)>;
  struct Case {
    char const* function;  // as the warning names it
    int id;                // 0: no warning of its own
    char const* fallback;
    Call mapped, plain;
  };
  char const kCompared[] = "<string1> and <string2> were compared unchanged.";
  char const kSearched[] = "<string2> was searched in <string1> without caring about mapping.";
  char const kChar[] = "<c> was searched in <string> without caring about mapping.";
  char const kReplace[] = "_zstr{1|N}replace(...) was called instead.";
  zstr_couple couples[] = {{"x", "bb"}, {nullptr, nullptr}};
  Case const kCases[] = {
      {"_zmapstr{1|N}replace", 21, kReplace,
       [&](void* m) { return edited(_zmapstrNreplace(m, fresh(), "x", "-", 31)); },
       [&](void*) { return edited(_zstrNreplace(fresh(), "x", "-", 31)); }},
      {"_zmapstr{1|N}replace", 21, kReplace,
       [&](void* m) { return edited(_zmapstr1replace(m, fresh(), "x", "--", 31)); },
       [&](void*) { return edited(_zstr1replace(fresh(), "x", "--", 31)); }},
      {"_zmapstrmultideltalen", 16, "_zstrmultideltalen(...) was called instead.",
       [&](void* m) { return _zmapstrmultideltalen(m, fresh(), couples); },
       [&](void*) { return _zstrmultideltalen(fresh(), couples); }},
      {"_zmapstrdeltalen", 15, "_zstrdeltalen(...) was called instead.",
       [&](void* m) { return _zmapstrdeltalen(m, fresh(), chars("X"), chars("")); },
       [&](void*) { return _zstrdeltalen(fresh(), chars("X"), chars("")); }},
      {"_zmapstrstrcnt", 17, "_zstrstrcnt(...) was called instead.",
       [&](void* m) { return _zmapstrstrcnt(m, fresh(), chars("xa")); },
       [&](void*) { return long{_zstrstrcnt(fresh(), "xa")}; }},
      {"_zmapstrccnt", 18, "_zstrccnt(...) was called instead.",
       [&](void* m) { return static_cast<long>(_zmapstrccnt(m, fresh(), 'x')); },
       [&](void*) { return long{_zstrccnt(fresh(), 'x')}; }},
      {"_zmapstrrstr", 28, kSearched, [&](void* m) { return pos(_zmapstrrstr(m, kHay, "-")); },
       [&](void*) { return pos(_zstrrstr(kHay, "-")); }},
      {"_zmapstristr", 19, "_zstristr(...) was called instead.",
       [&](void* m) { return pos(_zmapstristr(m, kHay, "-")); },
       [&](void*) { return pos(_zstristr(kHay, "-")); }},
      {"_zmapstrstr", 26, kSearched, [&](void* m) { return pos(_zmapstrstr(m, kHay, "-A")); },
       [&](void*) { return pos(_zstrstr(kHay, "-A")); }},
      {"_zmapstrrchr", 29, kChar, [&](void* m) { return pos(_zmapstrrchr(m, kHay, '-')); },
       [&](void*) { return pos(_zstrrchr(kHay, '-')); }},
      {"_zmapstrichr", 20, kChar, [&](void* m) { return pos(_zmapstrichr(m, kHay, '-')); },
       [&](void*) { return pos(_zstrichr(kHay, '-')); }},
      {"_zmapstrchr", 27, kChar, [&](void* m) { return pos(_zmapstrchr(m, kHay, 'X')); },
       [&](void*) { return pos(_zstrchr(kHay, 'X')); }},
      {"_zmapstrdiffpoint", 24,
       "result will be the one of _zstrdiffpoint(<string1>,<string2>,case_sensitive).",
       [&](void* m) { return pos(_zmapstrdiffpoint(m, kHay, "-ABCX", 0)); },
       [&](void*) { return pos(_zstrdiffpoint(kHay, "-ABCX", 0)); }},
      {"_zmapstrnicmp", 12, kCompared, [&](void* m) { return long{_zmapstrnicmp(m, "x", "-", 1)}; },
       [&](void*) { return long{_zstrnicmp("x", "-", 1)}; }},
      {"_zmapstrncmp", 25, kCompared, [&](void* m) { return long{_zmapstrncmp(m, "xb", "Xb", 2)}; },
       [&](void*) { return long{_zstrncmp("xb", "Xb", 2)}; }},
      {"_zmapstricmp", 31, kCompared, [&](void* m) { return long{_zmapstricmp(m, "x", "-")}; },
       [&](void*) { return long{_zstricmp("x", "-")}; }},
      {"_zmapstrcmp", 22, kCompared, [&](void* m) { return long{_zmapstrcmp(m, "x", "X")}; },
       [&](void*) { return long{_zstrcmp("x", "X")}; }},
      {"_zmapstristail", 0, nullptr, [&](void* m) { return long{_zmapstristail(m, "abx", "X")}; },
       [&](void*) { return long{_zstristail("abx", "X", 1)}; }},
      {"_zmapstrishead", 0, nullptr, [&](void* m) { return long{_zmapstrishead(m, "xbc", "X")}; },
       [&](void*) { return long{_zstrishead("xbc", "X", 1)}; }},
  };
  void* const dashes = _zmapdefine("-=x=X");
  for (Case const& c : kCases) {
    SCOPED_TRACE(c.function);
    long const plain = c.plain(nullptr);
    EXPECT_NE(c.mapped(dashes), plain) << "the example does not tell the map apart";
    errsvc::clear();
    EXPECT_EQ(c.mapped(nullptr), plain);
    EXPECT_TRUE(filed_nothing());
    EXPECT_EQ(c.mapped(ZEAL_STR_BAD_MAP), plain);
    if (c.id == 0) {
      EXPECT_TRUE(filed_nothing());
    } else {
      EXPECT_TRUE(filed_exactly({{c.id, std::string(c.function) +
                                            "() - Warning: An invalid map was given in argument "
                                            "to function: " +
                                            c.fallback}}));
    }
    errsvc::clear();
  }
  _zmapfree(dashes);
}

// NULL strings given with a real map: the members' own warnings (the two
// `icmp` comparisons, the replacements) and the plain counterparts' others.
TEST_F(Mapped, NullStringsFileTheirWarnings) {
  void* const map = _zmapdefine("A-Z=a-z");
  char text[] = "abc";
  struct Case {
    char const* what;
    std::function<bool()> gives_fallback;
    int id;  // 0: no warning
    char const* text;
  };
#define CALL(expr, fallback) [&] { return (expr) == (fallback); }
  Case const kCases[] = {
      {"icmp string1", CALL(_zmapstricmp(map, nullptr, "a"), -1), 170,
       "_zmapstricmp() - Warning: <string1> given in argmument was NULL: value of '-1' was "
       "returned as result."},
      {"icmp both", CALL(_zmapstricmp(map, nullptr, nullptr), 1), 171,
       "_zmapstricmp() - Warning: <string2> given in argmument was NULL: value of '+1' was "
       "returned as result."},
      {"nicmp both", CALL(_zmapstrnicmp(map, nullptr, nullptr, 3), 0), 172,
       "_zmapstrnicmp() - Warning: Both <string1> and <string2> given in argmument were NULL: 0 "
       "was returned as result."},
      {"nicmp string1", CALL(_zmapstrnicmp(map, nullptr, "a", 3), -1), 173,
       "_zmapstrnicmp() - Warning: <string1> given in argmument was NULL: value of '-1' or 0 was "
       "returned as result, whether <count> was equal to 0L or not."},
      {"nicmp string2 count 0", CALL(_zmapstrnicmp(map, "a", nullptr, 0), 0), 174,
       "_zmapstrnicmp() - Warning: <string2> given in argmument was NULL: value of '+1' or 0 was "
       "returned as result, whether <count> was equal to 0L or not."},
      {"1replace s3", CALL(_zmapstr1replace(map, text, "a", nullptr, 9), nullptr), 120,
       "_z[map]str[r][i]{1/N}replace[1]() - Warning: String(s) <s1> or/and <s2> given in argument "
       "were NULL: NULL was returned as result of strings substitution(s)."},
      {"Nreplace s2", CALL(_zmapstrNreplace(map, text, nullptr, "", 9), nullptr), 120,
       "_z[map]str[r][i]{1/N}replace[1]() - Warning: String(s) <s1> or/and <s2> given in argument "
       "were NULL: NULL was returned as result of strings substitution(s)."},
      {"1replace string", CALL(_zmapstr1replace(map, nullptr, "a", "b", 9), nullptr), 0, ""},
      {"diffpoint string2", CALL(_zmapstrdiffpoint(map, text, nullptr, 1), text), 0, ""},
      {"strstr string1", CALL(_zmapstrstr(map, nullptr, "a"), nullptr), 77,
       "_z[i]str() - Warning: <string1> given in argument was NULL: NULL was returned as result "
       "of forward search."},
      {"strstrcnt empty", CALL(_zmapstrstrcnt(map, text, text + 3), -1), 103,
       "_z[i]strstrcnt() - Warning: <string2> given in argument was empty: -1 was returned as "
       "count of occurrences."},
      {"strccnt", CALL(_zmapstrccnt(map, nullptr, 'a'), static_cast<unsigned long>(-1)), 106,
       "_zstrccnt() - Warning: <string> given in argument was NULL: -1 was returned as count of "
       "occurrences."},
      {"strrchr", CALL(_zmapstrrchr(map, nullptr, 'a'), nullptr), 107,
       "_zstr[i]rchr() - Warning: <string> given in argument was NULL: NULL was returned as "
       "occurrence."},
      {"strncmp string2", CALL(_zmapstrncmp(map, "a", nullptr, 2), 1), 89,
       "_zstrncmp() - Warning: <string2> given in argmument was NULL: value 0 or '+1' was "
       "returned as result, whether <count> was equal to 0L or not."},
      {"deltalen s3", CALL(_zmapstrdeltalen(map, text, text, nullptr), ZEAL_STR_ERR), 40,
       "_zstrdeltalen() - Warning: String(s) <s1> and/or <s2> given in argument were NULL: "
       "ZEAL_STR_ERR was returned as result of length variation calculation."},
      {"istail both", CALL(_zmapstristail(map, nullptr, nullptr), 1), 129,
       "_zstristail() - Warning: <string> and <tail> given in argument were NULL: TRUE was "
       "returned as result of string-ending comparison."},
  };
#undef CALL
  for (Case const& c : kCases) {
    SCOPED_TRACE(c.what);
    errsvc::clear();
    EXPECT_TRUE(c.gives_fallback());
    if (c.id == 0) {
      EXPECT_TRUE(filed_nothing());
    } else {
      EXPECT_TRUE(filed_exactly({{c.id, c.text}}));
    }
  }
  _zmapfree(map);
}

}  // namespace
