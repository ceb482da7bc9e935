// replace.cpp - _zstrNreplace, _zstriNreplace, _zstrNreplaceEx,
// _zstriNreplaceEx, _zstr1replace, _zstri1replace, _zstrr1replace,
// _zstrmultireplace, _zstrmultireplace1.
#include "zelstr/replace.h"

#include <cstring>

#include "chars/setdef.h"
#include "frame/memory.h"
#include "str/replace/engine.h"
#include "str/replace/through_map.h"
#include "str/report.h"
#include "str/search/forward.h"
#include "zelstr/search.h"

using namespace zelstr::str;
using zelstr::str::replace::Run;

namespace {

// How one member of the family differs from _zstrNreplace.
struct Variant {
  bool ignore_case;
  bool delimited;                      // the Ex test (when a set is given)
  bool whole_identity;                 // equal s1 and s2 mean "nothing to do" (else only empty s1)
  unsigned char const* map = nullptr;  // occurrences found through this map
};

// Steps shared by every member: the NULL checks, the identity shortcut and
// the lengths.  False when the string is the result as it stands (or NULL).
bool prepare_run(char* string, char const* s1, char const* s2, unsigned long size,
                 bool whole_identity, Run& run, char** result, int line = __builtin_LINE()) {
  if (s1 == nullptr || s2 == nullptr) {
    warn(msg::kReplaceNullStrings, line);
    *result = nullptr;
    return false;
  }
  *result = string;
  if (string == nullptr || *s1 == '\0') return false;
  if (whole_identity && (s1 == s2 || std::strcmp(s1, s2) == 0)) return false;
  run =
      Run{string, 0, s1, std::strlen(s1), s2, std::strlen(s2), size & 0xFFFFFFFFu, false, nullptr};
  return true;
}

char* replace_every(char* string, char const* s1, char const* s2, unsigned long size,
                    char const* delimiters, Variant const& v) {
  Run run;
  char* result;
  bool const ex = v.delimited && delimiters != nullptr && *delimiters != '\0';
  if (!prepare_run(string, s1, s2, size, v.whole_identity, run, &result)) return result;
  run.ignore_case = v.ignore_case;
  run.map = v.map;
  unsigned char const* const fold = v.map != nullptr ? v.map : replace::byte_fold(v.ignore_case);
  if (!ex && run.len1 == 1 && run.len2 == 1) {
    replace::replace_bytes(string, s1[0], s2[0], fold);
    return string;
  }
  run.length = std::strlen(string);
  if (run.length < run.len1) return string;
  if (ex) {
    run.delimiters = zelstr::chars::compile_members(delimiters);
    if (run.delimiters == nullptr) return string;  // a wrong set accepts nothing
  } else if (run.len2 == 0) {
    if (run.len1 == 1) {
      replace::remove_bytes(string, s1[0], fold);
      return string;
    }
    run.compact = true;
  }
  return replace::replace_all(run);
}

char* replace_first(char* string, char const* s1, char const* s2, unsigned long size,
                    bool ignore_case) {
  Run run;
  char* result;
  if (!prepare_run(string, s1, s2, size, !ignore_case, run, &result)) return result;
  run.length = std::strlen(string);
  if (run.length < run.len1) return string;
  zelstr::frame::FailureWatch const watch;
  char* const at = ignore_case ? _zstristr(string, s1) : _zstrstr(string, s1);
  if (at == nullptr) return watch.failed() ? nullptr : string;  // no memory for the search
  return replace::replace_one(run, at);
}

}  // namespace

namespace zelstr::str::replace {

char* replace_every_through(unsigned char const* map, char* string, char const* s1, char const* s2,
                            unsigned long size) {
  return replace_every(string, s1, s2, size, nullptr, Variant{false, false, false, map});
}

}  // namespace zelstr::str::replace

char* _zstrNreplace(char* string, char const* s1, char const* s2, unsigned long size) noexcept {
  return replace_every(string, s1, s2, size, nullptr, Variant{false, false, true});
}
char* _zstriNreplace(char* string, char const* s1, char const* s2, unsigned long size) noexcept {
  return replace_every(string, s1, s2, size, nullptr, Variant{true, false, false});
}
char* _zstrNreplaceEx(char* string, char const* s1, char const* s2, unsigned long size,
                      char const* delimiters) noexcept {
  return replace_every(string, s1, s2, size, delimiters, Variant{false, true, true});
}
char* _zstriNreplaceEx(char* string, char const* s1, char const* s2, unsigned long size,
                       char const* delimiters) noexcept {
  return replace_every(string, s1, s2, size, delimiters, Variant{true, true, false});
}

char* _zstr1replace(char* string, char const* s1, char const* s2, unsigned long size) noexcept {
  return replace_first(string, s1, s2, size, false);
}
char* _zstri1replace(char* string, char const* s1, char const* s2, unsigned long size) noexcept {
  return replace_first(string, s1, s2, size, true);
}

char* _zstrr1replace(char* string, char const* s1, char const* s2, unsigned long size) noexcept {
  Run run;
  char* result;
  if (!prepare_run(string, s1, s2, size, true, run, &result)) return result;
  run.length = std::strlen(string);
  if (run.length < run.len1) return string;
  zelstr::frame::FailureWatch const watch;
  char* const at = run.len1 == 1 ? std::strrchr(string, s1[0]) : _zstrrstr(string, s1);
  if (at == nullptr) return watch.failed() ? nullptr : string;  // no memory for the search
  return replace::replace_one(run, at);
}

char* _zstrmultireplace(char* string, zstr_couple* couples, unsigned long size) noexcept {
  return _zstrmultireplace1(string, couples, size, nullptr);
}

char* _zstrmultireplace1(char* string, zstr_couple* couples, unsigned long size,
                         char* delimiters) noexcept {
  if (string == nullptr || couples == nullptr) return string;
  for (zstr_couple const* c = couples; c->s1 != nullptr || c->s2 != nullptr; ++c) {
    string = _zstrNreplaceEx(string, c->s1, c->s2, size, delimiters);
    if (string == nullptr) return nullptr;
  }
  return string;
}
