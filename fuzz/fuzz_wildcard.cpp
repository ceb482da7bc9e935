// Fuzzes MATCH and LIKE on any pattern and subject: each answer is the
// engine's answer for the translated expression (LIKE's droppable blanks
// dropped one by one); the i forms answer as the map forms with an ASCII
// lower-casing map; an identity map answers as the plain forms; the
// translation compiles whatever the pattern.
#include <fuzzer/FuzzedDataProvider.h>

#include <cstdint>
#include <string>

#include "errsvc/errsvc.h"
#include "require.h"
#include "zelstr/zelstr.h"

namespace {

int engine(char const* expression, std::string subject, bool like) {
  Tcl_RegExp_* const re = Tcl_RegExpCompile(expression);
  require(re != nullptr);
  int answer = 0;
  for (;;) {
    answer = Tcl_RegExpMatch(subject.c_str(), re);
    if (answer != 0 || !like || subject.empty() || subject.back() != ' ') break;
    subject.pop_back();
  }
  Tcl_DeleteInterp(re);
  return answer;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
  static void* const lower = _zmapdefine("a-z=A-Z");
  static void* const identity = _zmapdefine("a=a");
  FuzzedDataProvider in(data, size);
  bool const like = in.ConsumeBool();
  bool const fold = in.ConsumeBool();
  char const escape = like ? in.ConsumeIntegral<char>() : '\0';
  std::string const pattern = in.ConsumeRandomLengthString(64);
  std::string const subject = in.ConsumeRemainingBytesAsString().substr(0, 256);
  char const* const p = pattern.c_str();
  char const* const s = subject.c_str();

  char* expression = like ? _zstrlike2re(p, escape, fold) : _zstrmatch2re(p, fold);
  int const got = like ? (fold ? _zstrilike(s, p, escape) : _zstrlike(s, p, escape))
                       : (fold ? _zstrimatch(s, p) : _zstrmatch(s, p));
  if (expression == nullptr) {
    require(got == 0);  // an escape character at the end
  } else {
    require(got == engine(expression, std::string(s), like));
    _zstrdupfree(expression);
  }
  void* const map = fold ? lower : identity;
  require(got == (like ? _zmapstrlike(map, s, p, escape) : _zmapstrmatch(map, s, p)));
  errsvc::clear();
  return 0;
}
