// warnings.h - checking the warnings a call files with the error-handler
// service.
#ifndef ZELSTR_TESTS_SUPPORT_WARNINGS_H
#define ZELSTR_TESTS_SUPPORT_WARNINGS_H

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "errsvc/errsvc.h"

namespace zelstr::test {

// A test whose warnings start from an empty list.
class WarningsTest : public ::testing::Test {
 protected:
  void SetUp() override { errsvc::clear(); }
};

// What a warning of an exported `_z` function must hold.
struct ExpectedWarning {
  int id;
  std::string text;
  int severity = 4;
  std::string file = "zeal_str";
  std::string function = "<unknown>";
};

// Checks that exactly `expected` was filed since the last clear(), with
// extra value 0 and a positive source line.
::testing::AssertionResult filed_exactly(std::vector<ExpectedWarning> const& expected);

// Checks that nothing was filed since the last clear().
::testing::AssertionResult filed_nothing();

}  // namespace zelstr::test

#endif  // ZELSTR_TESTS_SUPPORT_WARNINGS_H
