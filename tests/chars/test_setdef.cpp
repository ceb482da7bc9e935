// Set definitions against a small model of their syntax, over random
// definitions; spans and positions against models over random strings.
#include <gtest/gtest.h>

#include <bitset>
#include <optional>
#include <random>
#include <string>

#include "support/warnings.h"
#include "zelstr/zelstr.h"

namespace {

using zelstr::test::ExpectedWarning;
using Members = std::bitset<256>;

// The syntax, read as tokens: each token is a byte and whether it was
// escaped.  "[" tokens "]": the last token must be an unescaped "]" (and
// the last byte); a token "-" unescaped begins a range after an item, and
// is an error where an item begins.
std::optional<Members> model_parse(std::string const& def) {
  if (def.size() < 2 || def[0] != '[' || def.back() != ']') return std::nullopt;
  struct Token {
    unsigned char byte;
    bool escaped;
  };
  std::vector<Token> tokens;
  for (std::size_t i = 1; i < def.size(); ++i) {
    if (def[i] == '`') {
      if (++i == def.size()) return std::nullopt;
      tokens.push_back({static_cast<unsigned char>(def[i]), true});
    } else {
      tokens.push_back({static_cast<unsigned char>(def[i]), false});
    }
  }
  if (tokens.empty() || tokens.back().escaped || tokens.back().byte != ']') return std::nullopt;
  tokens.pop_back();  // the closing bracket
  Members members;
  for (std::size_t t = 0; t < tokens.size();) {
    if (tokens[t].byte == '-' && !tokens[t].escaped) return std::nullopt;
    bool const range = t + 1 < tokens.size() && tokens[t + 1].byte == '-' && !tokens[t + 1].escaped;
    if (!range) {
      members.set(tokens[t++].byte);
      continue;
    }
    if (t + 2 >= tokens.size()) return std::nullopt;  // would end on the closing "]"
    for (int b = tokens[t].byte; b <= tokens[t + 2].byte; ++b) members.set(b);
    t += 3;
  }
  return members;
}

std::string random_definition(std::mt19937& rng) {
  static char const kBytes[] = "[]-`abz^\xE9\xFF";
  std::string def = rng() % 4 ? "[" : "";
  for (std::size_t n = rng() % 7; n > 0; --n) def += kBytes[rng() % 10];
  if (rng() % 4) def += ']';
  return def;
}

using SetDefinitions = zelstr::test::WarningsTest;

TEST_F(SetDefinitions, MembershipFollowsTheSyntax) {
  std::mt19937 rng(17);
  for (int round = 0; round < 3000; ++round) {
    std::string def = random_definition(rng);
    if (def.empty()) continue;
    std::optional<Members> const expected = model_parse(def);
    SCOPED_TRACE("definition " + def);
    errsvc::clear();
    for (int b = 1; b < 256; ++b) {
      ASSERT_EQ(_zchrspnex(static_cast<char>(b), def.data()), expected ? (*expected)[b] : 0);
    }
    if (!expected) {
      ASSERT_EQ(errsvc::records().size(), 255u);
      ASSERT_EQ(errsvc::records()[0].id, 204);
    } else {
      ASSERT_TRUE(zelstr::test::filed_nothing());
    }
  }
}

TEST_F(SetDefinitions, SpelledOutRules) {
  struct Case {
    char const* def;
    char const* members;  // NULL: a syntax error
  } const kCases[] = {
      {"[a-e]", "abcde"}, {"[z-a]", ""},     {"[]]", "]"},     {"[a`-z]", "-az"},
      {"[-a]", nullptr},  {"[a-]", nullptr}, {"abc", nullptr}, {"[a`]", nullptr},
      {"[^a]", "^a"},     {"[``]", "`"},     {"[]-]]", "]"},   {"[\xE9-\xEB]", "\xE9\xEA\xEB"},
  };
  for (Case const& c : kCases) {
    std::string def = c.def;
    std::string got;
    for (int b = 1; b < 256; ++b) {
      if (_zchrspnex(static_cast<char>(b), def.data())) got += static_cast<char>(b);
    }
    EXPECT_EQ(got, c.members ? c.members : "") << c.def;
    EXPECT_EQ(model_parse(def).has_value(), c.members != nullptr) << c.def;
  }
}

std::size_t model_run(std::string const& s, Members const& set, bool member, bool fold) {
  auto in = [&](unsigned char b) {
    bool hit = set[b];
    if (fold && b >= 'a' && b <= 'z') hit = hit || set[b - 32];
    if (fold && b >= 'A' && b <= 'Z') hit = hit || set[b + 32];
    return hit;
  };
  std::size_t i = 0;
  while (i < s.size() && in(static_cast<unsigned char>(s[i])) == member) ++i;
  return i;
}

TEST_F(SetDefinitions, SpansAndPositionsOverRandomStrings) {
  std::mt19937 rng(23);
  char const* const kDefinitions[] = {"[a-c]", "[A_`-]", "[]x]", "[\x80-\xFF]", "[Bb ]"};
  for (int round = 0; round < 5000; ++round) {
    std::string s(rng() % 12, ' ');
    for (char& ch : s) ch = "abcABC_- x\xE9"[rng() % 11];
    char const* const def = kDefinitions[rng() % 5];
    Members const set = *model_parse(def);
    SCOPED_TRACE("'" + s + "' in " + def);
    std::size_t const span = model_run(s, set, true, false), ispan = model_run(s, set, true, true);
    std::size_t const cspan = model_run(s, set, false, false);
    std::size_t const icspan = model_run(s, set, false, true);
    ASSERT_EQ(_zstrspnex(s.c_str(), def), span);
    ASSERT_EQ(_zstrispnex(s.c_str(), def), ispan);
    ASSERT_EQ(_zstrcspnex(s.c_str(), def), cspan);
    ASSERT_EQ(_zstricspnex(s.c_str(), def), icspan);
    auto at = [&s](std::size_t i) { return i < s.size() ? s.c_str() + i : nullptr; };
    ASSERT_EQ(_zstrposex(s.c_str(), def), at(span));
    ASSERT_EQ(_zstriposex(s.data(), def), at(ispan));
    ASSERT_EQ(_zstrcposex(s.c_str(), def), at(cspan));
    ASSERT_EQ(_zstricposex(s.data(), def), at(icspan));
  }
  EXPECT_TRUE(zelstr::test::filed_nothing());
}

// The map forms are the plain forms run on the string's images: the model
// runs on the translated string (folding, in the i forms, the images).
TEST_F(SetDefinitions, MappedSpansAndPositionsOverRandomStrings) {
  std::mt19937 rng(2611);
  void* const map = _zmapdefine("a=B=x -=_ \xE9=C");
  char const* const kDefinitions[] = {"[a-c]", "[A_`-]", "[]x]", "[\x80-\xFF]", "[Bb ]"};
  for (int round = 0; round < 5000; ++round) {
    std::string s(rng() % 20, ' ');
    for (char& ch : s) ch = "abcABC_- x\xE9"[rng() % 11];
    std::string images = s;
    for (char& ch : images) ch = _zmapchrapply(map, ch);
    char const* const def = kDefinitions[rng() % 5];
    Members const set = *model_parse(def);
    SCOPED_TRACE("'" + s + "' in " + def);
    std::size_t const span = model_run(images, set, true, false);
    std::size_t const ispan = model_run(images, set, true, true);
    std::size_t const cspan = model_run(images, set, false, false);
    std::size_t const icspan = model_run(images, set, false, true);
    ASSERT_EQ(_zmapstrspnex(map, s.c_str(), def), span);
    ASSERT_EQ(_zmapstrispnex(map, s.c_str(), def), ispan);
    ASSERT_EQ(_zmapstrcspnex(map, s.c_str(), def), cspan);
    ASSERT_EQ(_zmapstricspnex(map, s.c_str(), def), icspan);
    auto at = [&s](std::size_t i) { return i < s.size() ? s.c_str() + i : nullptr; };
    ASSERT_EQ(_zmapstrposex(map, s.c_str(), def), at(span));
    ASSERT_EQ(_zmapstriposex(map, s.data(), def), at(ispan));
    ASSERT_EQ(_zmapstrcposex(map, s.c_str(), def), at(cspan));
    ASSERT_EQ(_zmapstricposex(map, s.data(), def), at(icspan));
    ASSERT_EQ(_zmapstricspnex(nullptr, s.c_str(), def), _zstricspnex(s.c_str(), def));
  }
  _zmapfree(map);
  EXPECT_TRUE(zelstr::test::filed_nothing());
}

TEST_F(SetDefinitions, LongDefinitionsAreReadEveryTime) {
  std::string longdef = "[" + std::string(300, 'q') + "a-c]";
  EXPECT_EQ(_zstrspnex("qab!", longdef.c_str()), 3u);
  EXPECT_EQ(_zstrspnex("cq!", longdef.c_str()), 2u);
  EXPECT_EQ(_zstrspnex("cq!", "[c]"), 1u);
  EXPECT_EQ(_zstrspnex("qab!", longdef.c_str()), 3u);
}

TEST_F(SetDefinitions, WarningsOfTheSpanFunctions) {
  char const* const spn206 =
      "_z[map]str[i]spnex() - Warning: <setdef> given in argument was empty or contained a "
      "syntax error: 0L was returned as result of count.";
  char const* const cspn202 =
      "_z[map]str[i]cspnex() - Warning: <setdef> given in argument was empty of contained a "
      "syntax error: 0L was returned as result of count.";
  struct {
    unsigned (*call)(char const*, char const*);
    char const* string;
    char const* def;
    int id;
    char const* text;
  } const kCases[] = {
      {_zstrspnex, nullptr, "[a]", 188,
       "_z[map]str[i]spnex() - Warning: <string> given in argument was NULL: 0L was returned as "
       "result of count."},
      {_zstrispnex, "a", nullptr, 189,
       "_z[map]str[i]spnex() - Warning: <setdef> given in argument was NULL: 0L was returned as "
       "result of count."},
      {_zstrspnex, "a", "", 206, spn206},
      {_zstrispnex, "a", "[a-]", 206, spn206},
      {_zstrcspnex, nullptr, "[a]", 104,
       "_z[map]str[i]cspnex() - Warning: <string> given in argument was NULL: 0L was returned "
       "as result of count."},
      {_zstricspnex, "a", nullptr, 105,
       "_z[map]str[i]cspnex() - Warning: <setdef> given in argument was NULL: 0L was returned "
       "as result of count."},
      {_zstrcspnex, "a", "a]", 202, cspn202},
      {_zstricspnex, "a", "", 202, cspn202},
  };
  for (auto const& c : kCases) {
    errsvc::clear();
    EXPECT_EQ(c.call(c.string, c.def), 0u);
    EXPECT_TRUE(zelstr::test::filed_exactly({ExpectedWarning{c.id, c.text}})) << c.id;
  }
  // The map forms report the same texts, after the invalid map's warning.
  errsvc::clear();
  EXPECT_EQ(_zmapstricspnex(nullptr, nullptr, "[a]"), 0u);
  EXPECT_EQ(_zmapstrspnex(ZEAL_STR_BAD_MAP, "ab", "[a]"), 1u);
  EXPECT_EQ(_zmapstriposex(ZEAL_STR_BAD_MAP, "aBc", "[ab]"), std::string("c"));
  EXPECT_EQ(_zmapstrcspnex(ZEAL_STR_BAD_MAP, "a", nullptr), 0u);
  EXPECT_TRUE(zelstr::test::filed_exactly(
      {{104,
        "_z[map]str[i]cspnex() - Warning: <string> given in argument was NULL: 0L was returned "
        "as result of count."},
       {-1,
        "_zmapstrspnex() - Warning: An invalid map was given in argument to function: "
        "_zstrspnex(...) was called instead."},
       {-1,
        "_zmapstriposex() - Warning: An invalid map was given in argument to function: "
        "_zstriposex(...) was called instead."},
       {-1,
        "_zmapstrcspnex() - Warning: An invalid map was given in argument to function: "
        "_zstrcspnex(...) was called instead."},
       {105,
        "_z[map]str[i]cspnex() - Warning: <setdef> given in argument was NULL: 0L was returned "
        "as result of count."}}));
  errsvc::clear();
  EXPECT_EQ(_zstrspnex("", "[a-"), 0u);  // an empty string returns before the set is read
  EXPECT_EQ(_zstrposex(static_cast<char const*>(nullptr), "[a]"), nullptr);
  EXPECT_EQ(_zstrcposex("abc", "[a-"), nullptr);
  EXPECT_TRUE(zelstr::test::filed_nothing());

  char empty[] = "", wrong[] = "[-]";
  EXPECT_EQ(_zchrspnex('a', nullptr), 0);
  EXPECT_EQ(_zchrspnex('a', empty), 0);
  EXPECT_EQ(_zchrspnex('a', wrong), 0);
  EXPECT_TRUE(zelstr::test::filed_exactly(
      {{145,
        "_zchrspnex() - Warning: <string> given in argument was NULL: FALSE was returned as "
        "result."},
       {203,
        "_zchrspnex() - Warning: <setdef> given in argument was an empty string: FALSE was "
        "returned as result."},
       {204,
        "_zchrspnex() - Warning: <setdef> given in argument contained a syntax error: FALSE "
        "was returned as result."}}));
}

}  // namespace
