// Fuzzes the regular-expression engine: any pattern compiles or fails with
// an error text, never reading or writing out of bounds; a compiled one is
// matched against subjects up to 4 KB, with the switch both ways, and its
// ranges lie within the subject.
#include <fuzzer/FuzzedDataProvider.h>

#include <cstdint>
#include <cstring>
#include <string>

#include "require.h"
#include "zelstr/regex.h"

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
  FuzzedDataProvider in(data, size);
  bool const backslashes = in.ConsumeBool();
  std::string const pattern = in.ConsumeRandomLengthString(128);
  Tcl_TemporarilyDefineWhetherBackslashesInIntervalsAreHandled const scope(backslashes);
  Tcl_RegExp_* const re = Tcl_RegExpCompile(pattern.c_str());
  if (re == nullptr) {
    require(Tcl_GetRegError() != nullptr);
    return 0;
  }
  for (int i = 0; i < 3 && in.remaining_bytes() > 0; ++i) {
    // Subjects up to 4 KB: every match takes time linear in the subject
    // (the fuzzer's per-input timeout is one second).
    std::string const subject = in.ConsumeRandomLengthString(4096);
    char const* const s = subject.c_str();
    int const matched = Tcl_RegExpMatch(s, re);
    require(matched == 0 || matched == 1);
    if (matched != 1) continue;
    for (int g = 0; g <= Tcl_GetGroupsCount(re); ++g) {
      char const *start, *end;
      require(Tcl_RegExpRange(re, g, &start, &end) == 1);
      if (start == nullptr || end == nullptr) continue;
      require(s <= start && start <= end && end <= s + std::strlen(s));
    }
  }
  Tcl_DeleteInterp(re);
  return 0;
}
