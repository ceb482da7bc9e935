// The classic Spencer test table, read from the shared conformance folder:
// every line through Tcl_RegExpCompile, Tcl_RegExpMatch and Tcl_RegExpRange,
// the substitution built from the ranges.
#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "zelstr/regex.h"

namespace {

struct Line {
  int number;
  std::string pattern, subject, outcome, templ, expected;
};

std::vector<Line> read_table() {
  char const* const dir = std::getenv("ZELSTR_CONFORMANCE_DIR");
  std::ifstream in(std::string(dir != nullptr ? dir : ZELSTR_SHARED_DIR "/conformance") +
                   "/spencer-regexp-tests.txt");
  std::vector<Line> lines;
  std::string text;
  for (int number = 1; std::getline(in, text); ++number) {
    std::vector<std::string> f;
    std::stringstream fields(text);
    for (std::string field; std::getline(fields, field, '\t');) f.push_back(field);
    while (f.size() < 5) f.emplace_back();
    lines.push_back({number, f[0], f[1], f[2], f[3], f[4]});
  }
  return lines;
}

// `templ` with & for the whole match, \1..\9 for groups (empty when a group
// took no part), \& and \\ for the characters themselves.
std::string substitute(Tcl_RegExp_* re, std::string const& templ) {
  auto group = [re](int n) {
    char const *start, *end;
    if (Tcl_RegExpRange(re, n, &start, &end) == 0 || start == nullptr || end == nullptr)
      return std::string();
    return std::string(start, end);
  };
  std::string out;
  for (std::size_t i = 0; i < templ.size(); ++i) {
    char const c = templ[i];
    if (c == '&') {
      out += group(0);
    } else if (c == '\\' && i + 1 < templ.size() && templ[i + 1] >= '1' && templ[i + 1] <= '9') {
      out += group(templ[++i] - '0');
    } else if (c == '\\' && i + 1 < templ.size() && (templ[i + 1] == '&' || templ[i + 1] == '\\')) {
      out += templ[++i];
    } else {
      out += c;
    }
  }
  return out;
}

TEST(SpencerTable, EveryLineHolds) {
  std::vector<Line> const lines = read_table();
  ASSERT_GT(lines.size(), 100u) << "conformance table not found";
  for (Line const& l : lines) {
    SCOPED_TRACE("line " + std::to_string(l.number) + ": " + l.pattern);
    Tcl_RegExp_* const re = Tcl_RegExpCompile(l.pattern.c_str());
    // Ten nested groups: within our limit of 120, so the pattern compiles
    // and does not match its subject.
    bool const ten_groups = l.pattern == "((((((((((a))))))))))";
    if (l.outcome == "c" && !ten_groups) {
      EXPECT_EQ(re, nullptr);
      EXPECT_NE(Tcl_GetRegError(), nullptr);
      continue;
    }
    ASSERT_NE(re, nullptr) << Tcl_GetRegError();
    int const matched = Tcl_RegExpMatch(l.subject.c_str(), re);
    EXPECT_EQ(matched, l.outcome == "y" ? 1 : 0);
    if (matched == 1) {
      EXPECT_EQ(substitute(re, l.templ), l.expected);
    }
    Tcl_DeleteInterp(re);
  }
}

}  // namespace
