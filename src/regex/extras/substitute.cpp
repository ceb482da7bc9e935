// substitute.cpp - replacing matches of an expression with an expanded
// template.
//
// The template is checked once before any match is looked for, so a bad
// template never leaves half a result.  Matches are found in turn with
// Tcl_RegExpExec, each search starting where the last match ended inside
// the whole subject, so "^" keeps meaning the subject's start.
#include <cstring>

#include "regex/extras/report.h"
#include "zelstr/alloc.h"
#include "zelstr/grwstr.h"
#include "zelstr/regex.h"
#include "zelstr/regextras.h"

namespace {

namespace extras = zelstr::regex::extras;
namespace msg = zelstr::frame::msg;

// Whether `replacement` is a good template for an expression of `groups`
// groups.
bool good_template(char const* replacement, int groups) {
  for (char const* p = replacement; *p != '\0'; ++p) {
    if (*p != '\\') continue;
    char const next = p[1];
    if (next >= '0' && next <= '9') {
      if (next - '0' > groups) return false;
    } else if (next != '&' && next != '\\') {
      return false;
    }
    ++p;
  }
  return true;
}

// Appends the template expanded for the last match of `re`.
bool expand(CGrwStr& out, char const* replacement, Tcl_RegExp_* re) {
  for (char const* p = replacement; *p != '\0'; ++p) {
    int group = -1;
    if (*p == '&') {
      group = 0;
    } else if (*p == '\\' && p[1] >= '0' && p[1] <= '9') {
      group = *++p - '0';
    } else if (*p == '\\') {
      ++p;  // "\&" or "\\": the byte after it
    }
    if (group < 0) {
      if (out.strncat(p, 1) == nullptr) return false;
      continue;
    }
    char const* start = nullptr;
    char const* end = nullptr;
    Tcl_RegExpRange(re, group, &start, &end);
    if (start != nullptr && end > start &&
        out.strncat(start, static_cast<unsigned long>(end - start)) == nullptr) {
      return false;
    }
  }
  return true;
}

// Appends `string` with its matches replaced; the count, or -1 (a warning
// named after `function`, `fallback` the value it names).
int substitute(CGrwStr& out, char const* string, char const* pattern, char const* replacement,
               bool all, char const* function, char const* fallback) {
  if (string == nullptr || pattern == nullptr || replacement == nullptr) {
    extras::warn(msg::kRegsubNullArgumentFormat, function, fallback);
    return -1;
  }
  Tcl_RegExp_* const re = Tcl_RegExpCompile(pattern);
  if (re == nullptr) {
    char const* const error = Tcl_GetRegError();
    extras::warn(msg::kRegsubBadPatternFormat, function, pattern, error != nullptr ? error : "",
                 fallback);
    return -1;
  }
  if (!good_template(replacement, Tcl_GetGroupsCount(re))) {
    Tcl_DeleteInterp(re);
    extras::warn(msg::kRegsubBadTemplateFormat, function, replacement, fallback);
    return -1;
  }
  int count = 0;
  bool ok = true;
  char const* from = string;  // the text not yet copied
  char const* search = string;
  for (;;) {
    int const found = Tcl_RegExpExec(nullptr, re, search, string);
    if (found != 1) {
      ok = found == 0;
      break;
    }
    char const* start = nullptr;
    char const* end = nullptr;
    Tcl_RegExpRange(re, 0, &start, &end);
    ok = (start == from || out.strncat(from, static_cast<unsigned long>(start - from)) != nullptr) &&
         expand(out, replacement, re);
    ++count;
    from = end;
    if (!ok || !all || (end == start && *end == '\0')) break;
    search = end > start ? end : end + 1;  // past an empty match
  }
  ok = ok && (*from == '\0' || out.strcat(from) != nullptr);
  Tcl_DeleteInterp(re);
  return ok ? count : -1;
}

}  // namespace

int _zstrregsub(CGrwStr& out, char const* string, char const* pattern, char const* replacement,
                int all) noexcept {
  CGrwStr piece;
  int const count = substitute(piece, string, pattern, replacement, all != 0, "_zstrregsub", "-1");
  if (count < 0) return -1;
  if (static_cast<char*>(piece) != nullptr && out.strcat(piece) == nullptr) return -1;
  if (static_cast<char*>(out) == nullptr && out.chrcat(0) == nullptr) return -1;
  return count;
}

char* _zstrregsub(char const* string, char const* pattern, char const* replacement,
                  int all) noexcept {
  CGrwStr piece;
  if (substitute(piece, string, pattern, replacement, all != 0, "_zstrregsub", "NULL") < 0) {
    return nullptr;
  }
  char const* const text = piece;
  return _zstrdupalloc(text != nullptr ? text : "", 0);
}
