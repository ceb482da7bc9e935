// line_printer.h - the output of the commands that pick lines (find, grep,
// like, match), as grep prints it.
//
// The command decides whether each line matches; the printer does the
// rest: -v (the lines that do not match are the ones selected), -c, -l,
// -L, -q, -m NUM, the name (-H, -h, --label, -Z) and number (-n) prefixes,
// lines of context around the selected ones (-A, -B, -C) with "--" between
// groups that do not touch, -o (each part of a line on a line of its own)
// and --color.  The parts of a line (its matches, or what -g takes of
// them) are found by a function the command gives.  A command declares the
// options it takes; those it does not declare are simply never given.
#ifndef ZELSTR_TOOL_LINE_PRINTER_H
#define ZELSTR_TOOL_LINE_PRINTER_H

#include <cstdint>
#include <deque>
#include <functional>
#include <span>
#include <string>
#include <string_view>

#include "tool/grep_colors.h"
#include "tool/input.h"
#include "tool/invocation.h"

namespace zelstr::tool {

class LinePrinter {
 public:
  // `names` are the command's file operands: with more than one, each line
  // begins with its file's name (-H always, -h never).
  LinePrinter(Invocation& inv, std::span<char const* const> names);

  // Calls `each(offset, length)` for the parts of `line` (zero-terminated at
  // `length`) in order; false when the search failed.
  using Each = std::function<void(std::size_t offset, std::size_t length)>;
  using PartsOf = std::function<bool(char const* line, std::size_t length, Each const& each)>;
  void parts_by(PartsOf parts) { m_parts_of = std::move(parts); }
  // Whether take() needs the lines zero-terminated, to find their parts.
  bool wants_parts() const { return m_parts || m_color; }

  // Whether every line must be handed to take(), matching or not (for -v
  // or for lines of context); otherwise only the matching ones need be.
  // (-a too: a line that holds a zero byte is matched alone, up to it.)
  bool wants_every_line() const { return m_invert || m_grouped || m_as_text; }
  // How the command's inputs take a zero byte: binary files (each then
  // "Binary file NAME matches" at its first selected line, instead of
  // lines), or text with -a.
  Input::ZeroBytes zero_bytes() const {
    return m_as_text ? Input::ZeroBytes::kAsText : Input::ZeroBytes::kBinaryFiles;
  }
  bool inverted() const { return m_invert; }

  // The input's current line, `text` as it is to be printed (without its
  // end), which `matches` or not; `matched` is the text that was matched
  // (the same bytes, or a changed copy of them) zero-terminated after as
  // many, or NULL when wants_parts() is false.  Lines come in the input's
  // order; when wants_every_line() is false, the lines that do not match
  // may be left out.  False when nothing more of this input is wanted.
  bool take(Input const& in, std::string_view text, bool matches, char const* matched);
  // A line that matches, for the commands of no other options.
  void print_line(Input const& in, std::string_view text) { take(in, text, true, nullptr); }
  // After an input's last line: its count (-c), or its name (-l, -L).
  void end_of(Input const& in);

  // No line can be selected (no pattern, and no -v; or -m 0): as grep
  // does, no input is read, and only -L prints (every name).
  void selects_nothing() { m_nothing = true; }
  // Whether finding the parts of a line failed (the search's error text
  // says why).
  bool failed() const { return m_failed; }

 private:
  struct Kept {  // a line kept for the context before the next selected one
    std::string text, matched;
    std::string_view end;
    std::uint64_t number;
  };
  bool select(Input const& in, std::string_view text, char const* matched);
  void pass(Input const& in, std::string_view text, char const* matched);
  void show(Input const& in, std::string_view text, char const* matched, std::string_view end,
            std::uint64_t number, char separator);
  void show_parts(Input const& in, std::string_view text, char const* matched,
                  std::uint64_t number, char separator);
  void write_line(std::string_view text, char const* matched, bool marked, char separator);
  void separate(std::uint64_t number);
  void prefix(Input const& in, std::uint64_t number, char separator);
  std::string_view name_of(Input const& in) const;
  void write_name(Input const& in, std::string_view after);
  void write_painted(std::string_view sgr, std::string_view text);

  Invocation& m_inv;
  bool m_with_names, m_numbers, m_parts, m_invert, m_null;
  bool m_count_only, m_list, m_list_unmatched, m_quiet;
  bool m_prints_lines;  // neither a count, nor names, nor quiet
  std::uint64_t m_max;  // of selected lines per input (-m)
  bool m_nothing;       // see selects_nothing
  bool m_grouped = false;  // lines of context were asked for (even 0 of them)
  std::uint64_t m_before = 0, m_after = 0;
  char const* m_label;  // the name of standard input
  bool m_color = false;
  bool m_as_text;
  GrepColors m_colors;
  PartsOf m_parts_of;
  bool m_failed = false;

  // Per input.
  std::uint64_t m_count = 0;       // selected lines
  std::uint64_t m_after_left = 0;  // lines of context still to print
  std::uint64_t m_last_shown = 0;  // the number of the last line shown, 0 for none
  std::deque<Kept> m_kept;         // at most m_before lines
};

}  // namespace zelstr::tool

#endif  // ZELSTR_TOOL_LINE_PRINTER_H
