// pattern_commands.cpp - the subcommands on whole lines and patterns, a
// line at a time: like (SQL LIKE), match (wildcard MATCH) and sub (the
// matches of a regular expression replaced by a template).  A pattern or a
// template that can be wrong is checked once, before any input is read, so
// that a bad one draws one message, not one per line.
#include <cstring>

#include "tool/input.h"
#include "tool/text_tools.h"
#include "zelstr/grwstr.h"
#include "zelstr/regex.h"
#include "zelstr/regextras.h"
#include "zelstr/wildcard.h"
#include "zelstr/zelstr.h"

namespace zelstr::tool {
namespace {

// The character of --escape: one character, or none when not given.
bool escape_char(Invocation& inv, char& escape) {
  char const* const c = inv.value("--escape");
  if (c == nullptr) return true;
  if (std::strlen(c) != 1) {
    inv.usage_error("--escape takes one character, not '%s'", c);
    return false;
  }
  escape = *c;
  return true;
}

// A LIKE pattern the library can read: one that does not end with its
// escape character (the translation refuses only that).
bool check_like_pattern(Invocation& inv, char const* pattern, char escape) {
  char* expression = _zstrlike2re(pattern, escape, 0);
  if (expression != nullptr) {
    _zstrdupfree(expression);
    return true;
  }
  // Without memory the message gives way to the out-of-memory line.
  inv.error("bad pattern '%s': it ends with its escape character '%c'", pattern, escape);
  return false;
}

// Prints the lines that `matches(line)` accepts, as grep prints them.
template <class Matches>
int print_whole_line_matches(Invocation& inv, Matches matches) {
  LinePrinter printer(inv, inv.operands().subspan(1));
  for_each_input(inv, inv.operands().subspan(1), [&](Input& in) {
    char* line;
    std::size_t length;
    while (in.next_line(line, length)) {
      if (matches(line)) printer.print_line(in, {line, length});
    }
    printer.end_of(in);
  });
  return inv.exit_status();
}

}  // namespace

// like [-i] [--escape CHAR] [-n] [-c] PATTERN [FILE...]
int run_like(Invocation& inv) {
  if (inv.operands().empty()) return inv.usage_error("no pattern");
  char const* const pattern = inv.operands()[0];
  char escape = 0;
  if (!escape_char(inv, escape)) return kError;
  if (escape != 0 && !check_like_pattern(inv, pattern, escape)) return kError;
  auto const like = inv.flag("-i") ? _zstrilike : _zstrlike;
  return print_whole_line_matches(
      inv, [&](char const* line) { return like(line, pattern, escape) == 1; });
}

// match [-i] [-n] [-c] PATTERN [FILE...]
int run_match(Invocation& inv) {
  if (inv.operands().empty()) return inv.usage_error("no pattern");
  char const* const pattern = inv.operands()[0];
  auto const match = inv.flag("-i") ? _zstrimatch : _zstrmatch;
  return print_whole_line_matches(inv, [&](char const* line) { return match(line, pattern) == 1; });
}

namespace {

// A template the library accepts for `pattern`: it checks the template
// before it looks for a match, so an empty subject is enough.
bool check_template(Invocation& inv, char const* pattern, char const* replacement, int groups) {
  char* result = _zstrregsub("", pattern, replacement, 0);
  if (result != nullptr) {
    _zstrdupfree(result);
    return true;
  }
  inv.error(
      "bad template '%s': a backslash goes before '&', a backslash or the number of a group of "
      "the pattern (0 to %d)",
      replacement, groups);
  return false;
}

}  // namespace

// sub [--all] PATTERN TEMPLATE [FILE...]: every line, with the first (every)
// match of PATTERN replaced by TEMPLATE expanded.  The substitution compiles
// the pattern anew at each call: the expression compiled here once picks
// out the lines that match, and the others are passed on without a call.
int run_sub(Invocation& inv) {
  if (inv.operands().size() < 2) return inv.usage_error("PATTERN and TEMPLATE are needed");
  char const* const pattern = inv.operands()[0];
  char const* const replacement = inv.operands()[1];
  Expression const re(pattern);
  if (re.get() == nullptr) {
    inv.error("bad pattern '%s': %s", pattern, Tcl_GetRegError());
    return kError;
  }
  if (!check_template(inv, pattern, replacement, Tcl_GetGroupsCount(re.get()))) return kError;
  int const all = inv.flag("--all") ? 1 : 0;
  CGrwStr result;
  for_each_line(inv, inv.operands().subspan(2), [&](Input& in, char* line, std::size_t length) {
    int const found = Tcl_RegExpMatch(line, re.get());
    if (found == 0) {
      write_passed_line(in, {line, length});
      return true;
    }
    result.empty();
    if (found < 0 || _zstrregsub(result, line, pattern, replacement, all) < 0) {
      inv.error("%s:%llu: the match failed: %s", in.name(),
                static_cast<unsigned long long>(in.line_number()), Tcl_GetRegError());
      return false;
    }
    char const* const text = result.gethos();
    if (std::strcmp(text, line) != 0) inv.found();
    write_passed_line(in, {text, result.strlen()});
    return true;
  });
  return inv.exit_status();
}

}  // namespace zelstr::tool
