// Map definitions: what each maps, every syntax error with its exact text
// and the marked copy, conflicts, placeholders and blanks; and the map
// object's functions.
#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "support/warnings.h"
#include "zelstr/zelstr.h"

namespace {

using zelstr::test::ExpectedWarning;
using zelstr::test::filed_exactly;
using Maps = zelstr::test::WarningsTest;

// The bytes a map changes, as "from>to" pairs.
std::string changes(void* map) {
  std::string out;
  for (int c = 1; c < 256; ++c) {
    char const to = _zmapchrapply(map, static_cast<char>(c));
    if (static_cast<unsigned char>(to) != c) out += std::string{static_cast<char>(c), '>', to, ' '};
  }
  return out;
}

TEST_F(Maps, WhatDefinitionsMap) {
  struct Case {
    char const* definition;
    char const* changes;  // NULL: the identity map (NULL handle)
  } const kCases[] = {
      {"a=a b=b", nullptr},
      {"x", nullptr},
      {"?=q", nullptr},
      {"", nullptr},
      {"x=?=y", "y>x "},
      {"?=a=b", "b>a "},
      {"a=b a=c", "b>a c>a "},
      {"  a=b   c=d  ", "b>a d>c "},
      {"a=b  =_", "_>  b>a "},
      {"0-2=a-c", "a>0 b>1 c>2 "},
      {"a=b b=c", "b>a c>a "},
      // Walked as signed bytes, this range runs through 0, which it leaves alone.
      {"\x01-\x03=\xff-\x01", "\x01>\x03 \xff>\x01 "},
  };
  for (Case const& c : kCases) {
    void* const map = _zmapdefine(c.definition);
    ASSERT_NE(map, ZEAL_STR_BAD_MAP) << c.definition;
    if (c.changes == nullptr) {
      EXPECT_EQ(map, nullptr) << c.definition;
    } else {
      EXPECT_EQ(changes(map), c.changes) << c.definition;
    }
    EXPECT_EQ(_zmapfree(map), 1);
  }
  EXPECT_TRUE(zelstr::test::filed_nothing());
}

TEST_F(Maps, SyntaxErrorsAreReportedWithTheMarkedDefinition) {
  struct Case {
    char const* definition;
    char const* text;
    char const* marked;
  } const kCases[] = {
      {"ab",
       "Expected symbol '-' or '=' not found after a character not followed by a blank: "
       "encountered 'b/98' instead.",
       "<<ab>>"},
      {"a=b c-", "Character <s2> not found in a construction of kind 's1-s2=t1-t2' (EOS reached).",
       "a=b <<c->>"},
      {"a-bx",
       "Symbol '=' not found in a construction of kind 's1-s2=t1-t2': encountered 'x/120' "
       "instead!",
       "<<a-bx>>"},
      {"a-b=", "Character <t1> not found in a construction of kind 's1-s2=t1-t2' (EOS reached).",
       "<<a-b=>>"},
      {"a-b=cd",
       "2nd symbol '-' not found in a construction of kind 's1-s2=t1-t2': encountered "
       "'d/100' instead!",
       "<<a-b=cd>>"},
      {"a-b=c-", "Character <t2> not found in a construction of kind 's1-s2=t1-t2' (EOS reached).",
       "<<a-b=c->>"},
      {"a-z=A-Zx y",
       "Error: A construction of kind 's1-s2=t1-t2' should be ended by a blank or "
       "EOS: encountered 'x/120' instead!",
       "<<a-z=A-Zx>> y"},
      {"c-a=x-z",
       "Condition s1 <= s2 is not satisfied in the construction 'c-a=x-z' of kind "
       "'s1-s2=t1-t2'.",
       "<<c-a=x-z>>"},
      {"a-c=z-x",
       "Condition t1 <= t2 is not satisfied in the construction 'a-c=z-x' of kind "
       "'s1-s2=t1-t2'.",
       "<<a-c=z-x>>"},
      {"a-c=x-y",
       "Intervals [s1..s2] and [t1..t2] have different lenghts in the construction "
       "'a-c=x-y' of kind 's1-s2=t1-t2'.",
       "<<a-c=x-y>>"},
      {"a-\xFF=b-\xFF",
       "Condition s1 <= s2 is not satisfied in the construction 'a-\xFF=b-\xFF' "
       "of kind 's1-s2=t1-t2'.",
       "<<a-\xFF=b-\xFF>>"},
      {"a=",
       "Character <t1> (or <t2>, etc...) not found in a construction of kind "
       "'s1=t1[=t2=...]' (EOS reached)",
       "<<a=>>"},
      {"a=bc",
       "A construction of kind 's1=t1[=t2=...]' should be ended by a blank or EOS: "
       "encountered 'c/99' instead!",
       "<<a=bc>>"},
  };
  for (auto const& c : kCases) {
    errsvc::clear();
    std::string const definition = c.definition;
    EXPECT_EQ(_zmapdefine(definition.c_str()), ZEAL_STR_BAD_MAP) << c.definition;
    EXPECT_EQ(definition, c.definition);  // left as it was
    EXPECT_TRUE(filed_exactly(
        {{-1, c.text, 4, "zeal_str", "_zmapdefine()"},
         {-1, std::string("Erroneous map is ") + c.marked + ".", 2, "zeal_str", "_zmapdefine()"}}))
        << c.definition;
  }
}

TEST_F(Maps, ConflictsKeepTheFirstMappingWithTwoNotices) {
  void* const map = _zmapdefine("b=a c=a");
  EXPECT_EQ(changes(map), "a>b ");
  EXPECT_TRUE(filed_exactly(
      {{-1,
        "Attempt to map a same character on different characters: mapping skipped for "
        "element 'c=a' (shift['a/97'] is already defined as 'b/98', will not be replaced by "
        "'c/99').",
        2, "zeal_str", "_zmapdefine()"},
       {-1, "Erroneous map is b=a <<c=a>>.", 2, "zeal_str", "_zmapdefine()"}}));
  _zmapfree(map);
  errsvc::clear();
  EXPECT_EQ(_zmapdefine(nullptr), nullptr);
  EXPECT_TRUE(filed_exactly({{-1,
                              "A NULL map was given in argument: function returned a map "
                              "leaving characters untranslated.",
                              2, "zeal_str", "_zmapdefine()"}}));
}

TEST_F(Maps, TheMapObject) {
  void* const upper = _zmapdefine("A-Z=a-z");
  void* const lower = _zmapdefine("a-z=A-Z");
  char hello[] = "Hello";
  EXPECT_STREQ(_zmapstrapply(upper, hello), "HELLO");
  EXPECT_STREQ(_zmapstrapply(lower, hello), "hello");
  EXPECT_EQ(_zmapisinsensitive(upper), 1);
  EXPECT_EQ(_zmapisinsensitive(lower), 1);
  void* const odd = _zmapdefine("A-Z=a-z 1=2");
  EXPECT_EQ(_zmapisinsensitive(odd), 0);
  void* const copy = _zmapclone(upper);
  EXPECT_NE(copy, upper);
  EXPECT_EQ(std::memcmp(copy, upper, 256), 0);
  char dest[8] = "#######";
  EXPECT_STREQ(_zmapstrcpy(upper, dest, "sql"), "SQL");
  std::memset(dest, '#', 7);
  EXPECT_EQ(_zmapstrncpy(upper, dest, "ab", 4), dest);
  EXPECT_EQ(std::string(dest, 7), std::string("AB\0\0###", 7));
  EXPECT_EQ(_zmapstrncpy(upper, dest, dest, 4), dest);  // in place: untouched
  EXPECT_EQ(std::string(_zmapdump2string(upper, 1)).substr(0, 30),
            "map['a']-->'A'\r\nmap['b']-->'B'");
  std::string const all = _zmapdump2string(nullptr, 0);
  EXPECT_EQ(all.substr(0, 16), "map[  0] = 0\r\nma");
  EXPECT_STREQ(_zmapdump2string(nullptr, 1), "");
  EXPECT_EQ(_zmapdump2string(ZEAL_STR_BAD_MAP, 0), nullptr);
  EXPECT_EQ(_zmapfree(copy), 1);
  EXPECT_EQ(_zmapfree(odd), 1);
  EXPECT_EQ(_zmapfree(upper), 1);
  EXPECT_EQ(_zmapfree(lower), 1);
  EXPECT_EQ(_zmapfree(nullptr), 1);
  EXPECT_TRUE(zelstr::test::filed_nothing());
  EXPECT_EQ(_zmapfree(ZEAL_STR_BAD_MAP), 0);
  EXPECT_EQ(_zmapclone(ZEAL_STR_BAD_MAP), ZEAL_STR_BAD_MAP);
  EXPECT_EQ(_zmapisinsensitive(ZEAL_STR_BAD_MAP), 0);
  char s[] = "x";
  EXPECT_EQ(_zmapstrapply(ZEAL_STR_BAD_MAP, s), s);
  EXPECT_STREQ(_zmapstrcpy(ZEAL_STR_BAD_MAP, dest, "ab"), "ab");
  void* const ab = _zmapdefine("a=b");
  EXPECT_EQ(_zmapstrcpy(ab, nullptr, "x"), nullptr);
  _zmapfree(ab);
  char const* const text11 =
      "_zmapstrapply() - Warning: An invalid map was given in argument to function: it <string> "
      "was returned unchanged.";
  EXPECT_TRUE(filed_exactly(
      {{30,
        "_zmapfree() - Warning: An invalid map was given in argument to function: no map "
        "were cleared from memory."},
       {11, text11},
       {11, text11},
       {13,
        "_zmapstrcpy() - Warning: An invalid map was given in argument to function: <dest> "
        "received a copy of <src> using function _zstrcpy(...)."},
       {175,
        "_zmapstrcpy() - Warning: <dest> given in argument was NULL: NULL was returned as "
        "result of copying & mapping."}}));
}

}  // namespace
