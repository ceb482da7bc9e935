// line_printer.h - the output of the commands that pick lines (find, grep,
// like, match), as grep prints it.
//
// The command decides whether each line matches; the printer does the
// rest: -v (the lines that do not match are the ones selected), -c, -l,
// -L, -q, -m NUM, the name (-H, -h, --label, -Z) and number (-n) prefixes,
// lines of context around the selected ones (-A, -B, -C) with "--" between
// groups that do not touch, and -o, for which the command prints the parts
// of each selected line.  A command declares the options it takes; those it
// does not declare are simply never given.
#ifndef ZELSTR_TOOL_LINE_PRINTER_H
#define ZELSTR_TOOL_LINE_PRINTER_H

#include <cstdint>
#include <deque>
#include <functional>
#include <span>
#include <string>
#include <string_view>

#include "tool/input.h"
#include "tool/invocation.h"

namespace zelstr::tool {

class LinePrinter {
 public:
  // `names` are the command's file operands: with more than one, each line
  // begins with its file's name (-H always, -h never).
  LinePrinter(Invocation& inv, std::span<char const* const> names);

  // Whether every line must be handed to take(), matching or not (for -v
  // or for lines of context); otherwise only the matching ones need be.
  bool wants_every_line() const { return m_invert || m_grouped; }

  enum class Next {
    kGoOn,        // nothing more to do for this line
    kPrintParts,  // the line is selected, and its parts are to be printed (-o)
    kStop,        // nothing more of this input is wanted
  };
  // The input's current line, `text` as it is to be printed (without its
  // end), which `matches` or not.  Lines come in the input's order; when
  // wants_every_line() is false, the lines that do not match may be left
  // out.
  Next take(Input const& in, std::string_view text, bool matches);
  // No line can be selected (no pattern, and no -v; or -m 0): as grep
  // does, no input is read, and only -L prints (every name).
  void selects_nothing() { m_nothing = true; }
  bool inverted() const { return m_invert; }

  // A line that matches, for the commands of no other options.
  void print_line(Input const& in, std::string_view text) { take(in, text, true); }
  // A part of the selected line take() asked for (a match), on a line of
  // its own with the line's prefixes.
  void print_part(Input const& in, std::string_view part);
  // With -o and -v, how the parts of a line of context are printed, as grep
  // does (the matches that make it context): `print(in, line, length)`
  // calls print_part for each part of `line`, a copy zero-terminated at
  // `length`.
  using PartsOf = std::function<void(Input const& in, char* line, std::size_t length)>;
  void print_context_parts_by(PartsOf print) { m_context_parts = std::move(print); }
  // After an input's last line: its count (-c), or its name (-l, -L).
  void end_of(Input const& in);

 private:
  struct Kept {  // a line kept for the context before the next selected one
    std::string text;
    std::string_view end;
    std::uint64_t number;
  };
  Next select(Input const& in, std::string_view text);
  void pass(Input const& in, std::string_view text);
  void print(Input const& in, std::string_view text, std::string_view end, std::uint64_t number,
             char separator);
  void separate(std::uint64_t number);
  void prefix(Input const& in, std::uint64_t number, char separator);
  std::string_view name_of(Input const& in) const;

  Invocation& m_inv;
  bool m_with_names, m_numbers, m_parts, m_invert, m_null;
  bool m_count_only, m_list, m_list_unmatched, m_quiet;
  bool m_prints_lines;  // neither a count, nor names, nor quiet
  std::uint64_t m_max;  // of selected lines per input (-m)
  bool m_nothing;       // see selects_nothing
  bool m_grouped = false;  // lines of context were asked for (even 0 of them)
  std::uint64_t m_before = 0, m_after = 0;
  char const* m_label;  // the name of standard input
  PartsOf m_context_parts;
  // The line whose parts are printed: its number and the character after
  // its prefixes (':' for a selected line, '-' for context).
  std::uint64_t m_part_number = 0;
  char m_part_separator = ':';

  // Per input.
  std::uint64_t m_count = 0;           // selected lines
  std::uint64_t m_after_left = 0;      // lines of context still to print
  std::uint64_t m_last_shown = 0;      // the number of the last line shown, 0 for none
  std::deque<Kept> m_kept;             // at most m_before lines
  // Over all inputs: whether a group of lines was shown (the next one that
  // does not follow on is set apart by "--").
  bool m_shown_any = false;
};

}  // namespace zelstr::tool

#endif  // ZELSTR_TOOL_LINE_PRINTER_H
