// Fuzzes the pattern families over the engine on any input:
//   - MATCH and LIKE: each answer is the engine's answer for the translated
//     expression (LIKE's droppable blanks dropped one by one); the i forms
//     answer as the map forms with an ASCII lower-casing map; an identity
//     map answers as the plain forms; the translation compiles whatever
//     the pattern;
//   - substitution: the result of the first-match form is the subject when
//     nothing matches, and the all-matches form into a growing string
//     agrees with its copying form;
//   - reversal: a reversed pattern compiles, has the pattern's length and
//     reversed again gives the pattern;
//   - a user's text: its expression compiles and matches the text whole.
#include <fuzzer/FuzzedDataProvider.h>

#include <cstdint>
#include <cstring>
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

void check_substitution(std::string const& subject, std::string const& pattern,
                        std::string const& replacement) {
  char* const first = _zstrregsub(subject.c_str(), pattern.c_str(), replacement.c_str(), 0);
  char* const every = _zstrregsub(subject.c_str(), pattern.c_str(), replacement.c_str(), 1);
  CGrwStr out;
  int const count = _zstrregsub(out, subject.c_str(), pattern.c_str(), replacement.c_str(), 1);
  require((every == nullptr) == (count < 0));
  if (every != nullptr) require(std::string(every) == static_cast<char const*>(out));
  Tcl_RegExp_* const re = Tcl_RegExpCompile(pattern.c_str());
  if (first != nullptr && re != nullptr && Tcl_RegExpMatch(subject.c_str(), re) == 0) {
    require(std::string(first) == subject.c_str() && count == 0);
  }
  if (re != nullptr) Tcl_DeleteInterp(re);
  char* a = first;
  char* b = every;
  _zstrdupfree(a);
  _zstrdupfree(b);
}

void check_reversal(std::string const& pattern) {
  char* reversed = _zstrregrev(pattern.c_str());
  if (reversed == nullptr) return;
  require(std::strlen(reversed) == std::strlen(pattern.c_str()));
  Tcl_RegExp_* const re = Tcl_RegExpCompile(reversed);
  require(re != nullptr);
  Tcl_DeleteInterp(re);
  char* again = _zstrregrev(reversed);
  require(again != nullptr && std::strcmp(again, pattern.c_str()) == 0);
  _zstrdupfree(again);
  _zstrdupfree(reversed);
}

void check_user_text(std::string const& text, bool wildcards) {
  char* expression = _zstr2regex(text.c_str(), wildcards);
  require(expression != nullptr);
  Tcl_RegExp_* const re = Tcl_RegExpCompile(expression);
  require(re != nullptr);
  require(Tcl_RegExpMatch(text.c_str(), re) == 1);
  char const* start = nullptr;
  char const* end = nullptr;
  Tcl_RegExpRange(re, 0, &start, &end);
  require(wildcards || (start == text.c_str() && end == text.c_str() + std::strlen(text.c_str())));
  Tcl_DeleteInterp(re);
  _zstrdupfree(expression);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
  static void* const lower = _zmapdefine("a-z=A-Z");
  static void* const identity = _zmapdefine("a=a");
  FuzzedDataProvider in(data, size);
  switch (in.ConsumeIntegralInRange(0, 3)) {
    case 1: {
      std::string const pattern = in.ConsumeRandomLengthString(32);
      std::string const replacement = in.ConsumeRandomLengthString(16);
      check_substitution(in.ConsumeRemainingBytesAsString().substr(0, 256), pattern, replacement);
      errsvc::clear();
      return 0;
    }
    case 2:
      check_reversal(in.ConsumeRemainingBytesAsString().substr(0, 64));
      errsvc::clear();
      return 0;
    case 3: {
      bool const wildcards = in.ConsumeBool();
      check_user_text(in.ConsumeRemainingBytesAsString().substr(0, 256), wildcards);
      errsvc::clear();
      return 0;
    }
    default:
      break;
  }
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
