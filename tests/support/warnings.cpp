// warnings.cpp - checking the warnings a call files.
#include "support/warnings.h"

namespace zelstr::test {

::testing::AssertionResult filed_exactly(std::vector<ExpectedWarning> const& expected) {
  std::vector<errsvc::Record> const got = errsvc::records();
  if (got.size() != expected.size()) {
    auto failure = ::testing::AssertionFailure()
                   << "expected " << expected.size() << " warning(s), got " << got.size();
    for (auto const& r : got) failure << "\n  [" << r.id << "] " << r.text;
    return failure;
  }
  for (std::size_t i = 0; i < got.size(); ++i) {
    errsvc::Record const& r = got[i];
    ExpectedWarning const& e = expected[i];
    if (r.id != e.id || r.text != e.text || r.severity != e.severity || r.file != e.file ||
        r.function != e.function || r.extra != 0 || r.line <= 0) {
      return ::testing::AssertionFailure()
             << "warning " << i << " differs:\n  got      [" << r.id << ", sev " << r.severity
             << ", " << r.file << ", " << r.function << ", line " << r.line << ", extra " << r.extra
             << "] " << r.text << "\n  expected [" << e.id << ", sev " << e.severity << ", "
             << e.file << ", " << e.function << "] " << e.text;
    }
  }
  return ::testing::AssertionSuccess();
}

::testing::AssertionResult filed_nothing() { return filed_exactly({}); }

}  // namespace zelstr::test
