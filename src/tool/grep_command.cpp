// grep_command.cpp - the grep subcommand: the lines that match a regular
// expression of the library's engine, or with -F that hold one of a list of
// words (searched all at once), read a line at a time; or, with
// --code-only, matched in the input's code, read whole with its comments and
// literals hidden.
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <utility>

#include "tool/fixed_strings.h"
#include "tool/input.h"
#include "tool/line_search.h"
#include "tool/sql_code.h"
#include "tool/text_tools.h"
#include "zelstr/codehide.h"
#include "zelstr/regex.h"

namespace zelstr::tool {
namespace {

// The group of -g: a whole number the expression has.
bool parse_group(Invocation& inv, Tcl_RegExp_* re, int& group) {
  char const* const text = inv.value("-g");
  if (text == nullptr) return true;
  char* end = nullptr;
  long const n = std::strtol(text, &end, 10);
  if (*text == '\0' || *end != '\0' || n < 0 || n > Tcl_GetGroupsCount(re)) {
    inv.usage_error("the pattern has no group '%s'", text);
    return false;
  }
  group = static_cast<int>(n);
  return true;
}

// Prints every match of `line` in turn (or what group `group` matched in
// each), skipping empty ones; a search begins where the last match ended,
// one byte further after an empty match.  What is printed is taken from
// `written`, the line as the input has it, at the offsets of the match.
// False when the engine failed.
bool print_matches(Input const& in, char* line, std::size_t length, char const* written,
                   Tcl_RegExp_* re, int group, LinePrinter& printer) {
  char const* const line_end = line + length;
  for (char const* from = line;;) {
    int const r = Tcl_RegExpExec(nullptr, re, from, line);
    if (r != 1) return r == 0;
    char const *start = nullptr, *end = nullptr;
    Tcl_RegExpRange(re, 0, &start, &end);
    printer.count_line(in);
    if (end == start) {
      if (end >= line_end) return true;
      from = end + 1;
    } else {
      from = end;
    }
    if (group != 0) Tcl_RegExpRange(re, group, &start, &end);
    if (start != nullptr && end != start) {
      printer.print_part(in, {written + (start - line), static_cast<std::size_t>(end - start)});
    }
  }
}

// Prints every occurrence of a word in `line`, as grep -F -o does: leftmost
// first, the longest at a place, each behind the last.
void print_words(Input const& in, std::string_view line, char const* written,
                 FixedStrings const& words, LinePrinter& printer) {
  bool any = false;
  words.each(line, [&](std::size_t offset, std::size_t length, int) {
    any = true;
    printer.print_part(in, {written + offset, length});
  });
  if (!any && words.in(line)) printer.count_line(in);  // an empty word: no part to print
}

// A pattern with no character the syntax gives a meaning to, nor a line
// end, matches the lines that hold it as a string: they are found as find
// finds them, every occurrence of a stretch in one pass.  (The empty
// pattern matches every line, also those an empty string is not found in.)
bool is_plain_string(char const* pattern) {
  return *pattern != '\0' && pattern[std::strcspn(pattern, "^$.[]()|*+?{}\\\r\n")] == '\0';
}

// grep -F: the words of -e and -f, or of PATTERN; -i, -w.
int run_fixed_grep(Invocation& inv) {
  FixedStrings words;
  char const* const pattern = inv.operands().empty() ? nullptr : inv.operands()[0];
  if (!words.read(inv, inv.flag("-e") || inv.flag("-f") ? nullptr : pattern, inv.flag("-i"),
                  inv.flag("-w"))) {
    return kError;
  }
  if (!words.from_options() && pattern == nullptr) return inv.usage_error("no pattern");
  auto const names = inv.operands().subspan(words.from_options() ? 0 : 1);
  CodeReading reading;
  if (!read_dialect(inv, reading, "--code-only")) return kError;
  reading.flags = ZEAL_HIDE_DEFAULT;
  bool const code_only = inv.flag("--code-only");
  LinePrinter printer(inv, names);
  std::string text, hidden;
  bool const parts = inv.flag("-o");
  for_each_input(inv, names, [&](Input& in) {
    // A stretch of lines at a time, unless the code must be read whole or a
    // word holds a line end (a line never does).
    if (!code_only && !words.spans_lines()) {
      for_each_hit_line(
          in, inv.flag("-n"),
          [&](Lines const& lines, char const* from) {
            return words.find(lines.text, lines.length, from);
          },
          [&](PickedLine const& line) {
            if (parts) {
              print_words(in, line.text, line.text.data(), words, printer);
            } else {
              printer.print_line(in, line.text);
            }
            return true;
          });
      printer.end_of(in);
      return;
    }
    if (code_only) {
      if (!read_code(inv, in, reading, false, text, hidden)) {
        printer.end_of(in);
        return;
      }
      in.reread(std::move(hidden));
    }
    char* line;
    std::size_t length;
    while (in.next_line(line, length)) {
      char const* const written = code_only ? text.data() + in.line_offset() : line;
      std::string_view const view(line, length);
      if (parts) {
        print_words(in, view, written, words, printer);
      } else if (words.in(view)) {
        printer.print_line(in, {written, length});
      }
    }
    printer.end_of(in);
  });
  return inv.exit_status();
}

}  // namespace

// grep [-F [-e WORD]... [-f FILE]... [-w] [-i]] [-o] [-g N] [-n] [-c]
// [--code-only [--tsql|--oracle] [--quoted-id]] PATTERN [FILE...]
int run_grep(Invocation& inv) {
  if (inv.flag("-F")) return run_fixed_grep(inv);
  for (char const* fixed_only : {"-e", "-f", "-w", "-i"}) {
    if (inv.flag(fixed_only)) return inv.usage_error("option '%s' needs -F", fixed_only);
  }
  if (inv.operands().empty()) return inv.usage_error("no pattern");
  Expression const re(inv.operands()[0]);
  if (re.get() == nullptr) {
    inv.error("bad pattern '%s': %s", inv.operands()[0], Tcl_GetRegError());
    return kError;
  }
  int group = 0;
  if (!parse_group(inv, re.get(), group)) return kError;
  CodeReading reading;
  if (!read_dialect(inv, reading, "--code-only")) return kError;
  reading.flags = ZEAL_HIDE_DEFAULT;
  bool const code_only = inv.flag("--code-only");
  bool const parts = inv.flag("-o") || inv.value("-g") != nullptr;
  LinePrinter printer(inv, inv.operands().subspan(1));
  std::string text, hidden;
  for_each_input(inv, inv.operands().subspan(1), [&](Input& in) {
    // A stretch of lines at a time: the engine finds the lines that match
    // in one pass; their matches are then found in each alone.
    if (!code_only && !parts && is_plain_string(inv.operands()[0])) {
      for_each_line_with(in, inv.flag("-n"), inv.operands()[0], [&](PickedLine const& line) {
        printer.print_line(in, line.text);
        return true;
      });
      printer.end_of(in);
      return;
    }
    if (!code_only) {
      bool ok = true;
      for_each_hit_line(
          in, inv.flag("-n"),
          [&](Lines const&, char const* from) {
            char const* const line = Tcl_RegExpFindLine(re.get(), from);
            ok = line != nullptr || Tcl_GetRegError() == nullptr;
            return line;
          },
          [&](PickedLine const& line) {
            if (!parts) {
              printer.print_line(in, line.text);
              return true;
            }
            // The line alone: its end covered by a terminator meanwhile.
            auto* const end = const_cast<char*>(line.text.data() + line.text.size());
            char const kept = *end;
            *end = '\0';
            auto* const start = const_cast<char*>(line.text.data());
            ok = print_matches(in, start, line.text.size(), start, re.get(), group, printer);
            *end = kept;
            return ok;
          });
      if (!ok) {
        inv.error("%s:%llu: the match failed: %s", in.name(),
                  static_cast<unsigned long long>(in.line_number()), Tcl_GetRegError());
      }
      printer.end_of(in);
      return;
    }
    // Code only: the lines are matched in the hidden copy of the whole
    // input, and printed from the input as written, at the same offsets.
    if (code_only) {
      if (!read_code(inv, in, reading, false, text, hidden)) {
        printer.end_of(in);
        return;
      }
      in.reread(std::move(hidden));
    }
    char* line;
    std::size_t length;
    while (in.next_line(line, length)) {
      char const* const written = code_only ? text.data() + in.line_offset() : line;
      bool ok = true;
      if (parts) {
        ok = print_matches(in, line, length, written, re.get(), group, printer);
      } else if (int const r = Tcl_RegExpMatch(line, re.get()); r == 1) {
        printer.print_line(in, {written, length});
      } else {
        ok = r == 0;
      }
      if (!ok) {
        inv.error("%s:%llu: the match failed: %s", in.name(),
                  static_cast<unsigned long long>(in.line_number()), Tcl_GetRegError());
        break;
      }
    }
    printer.end_of(in);
  });
  return inv.exit_status();
}

}  // namespace zelstr::tool
