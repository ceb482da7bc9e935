// The hints a compiled expression carries, read from its record.
#include <gtest/gtest.h>

#include <string>

#include "regex/record.h"
#include "zelstr/regex.h"

namespace {

struct Hints {
  char start;
  bool anchored;
  std::string must;
};

Hints hints_of(char const* pattern) {
  Tcl_RegExp_* const re = Tcl_RegExpCompile(pattern);
  EXPECT_NE(re, nullptr) << pattern;
  if (re == nullptr) return {};
  Hints const h{re->start_char, re->anchored,
                re->must != nullptr ? std::string(re->must, re->must_length) : "<none>"};
  Tcl_DeleteInterp(re);
  return h;
}

TEST(RegexHints, StartAnchorAndRequiredString) {
  struct Case {
    char const* pattern;
    char start;
    bool anchored;
    char const* must;
  } const kCases[] = {
      {"abc", 'a', false, "<none>"},
      {"abc|d", 0, false, "<none>"},  // two top-level alternatives: no hint
      {"^ab", 0, true, "<none>"},
      {"a*bc.de", 0, false, "bc"},    // equally long: the first wins
      {"a*bc.def", 0, false, "def"},  // the longest
      {"x?y", 0, false, "<none>"},    // one character is not enough
      {"ab*", 'a', false, "<none>"},  // the first piece is not * or ?
      {"(ab)*cd", 0, false, "cd"},    // literals inside groups are not looked at
  };
  for (Case const& c : kCases) {
    Hints const h = hints_of(c.pattern);
    EXPECT_EQ(h.start, c.start) << c.pattern;
    EXPECT_EQ(h.anchored, c.anchored) << c.pattern;
    EXPECT_EQ(h.must, c.must) << c.pattern;
  }
}

}  // namespace

namespace {

TEST(RegexRecord, ADamagedCheckByteStopsTheMatch) {
  Tcl_RegExp_* const re = Tcl_RegExpCompile("a");
  ASSERT_NE(re, nullptr);
  re->program[0] = 0;
  EXPECT_EQ(Tcl_RegExpMatch("a", re), -1);
  EXPECT_STREQ(Tcl_GetRegError(), "Corrupted program.");
  Tcl_DeleteInterp(re);
}

}  // namespace
