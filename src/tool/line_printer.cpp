// line_printer.cpp - grep's output of selected lines, their context and
// their counts.
#include "tool/line_printer.h"

#include <charconv>
#include <cstdlib>
#include <cstring>
#include <limits>

#include "platform/binary_stdio.h"
#include "tool/file_walk.h"

namespace zelstr::tool {
namespace {

constexpr std::uint64_t kNoLimit = std::numeric_limits<std::uint64_t>::max();

// The whole number an option gives (`fallback` when it is not given); a
// value that is not one is refused on the command line.
std::uint64_t count_option(Invocation& inv, char const* name, std::uint64_t fallback) {
  char const* const text = inv.value(name);
  if (text == nullptr || !inv.parsed()) return fallback;
  std::uint64_t n = 0;
  char const* const end = text + std::strlen(text);
  auto const [stop, error] = std::from_chars(text, end, n);
  if (*text == '\0' || stop != end || error != std::errc()) {
    inv.usage_error("option '%s' needs a whole number, not '%s'", name, text);
    return fallback;
  }
  return n;
}

// --color=WHEN: never, always, or auto (when standard output is a
// terminal that can show colours).
bool color_option(Invocation& inv) {
  char const* const when = inv.value("--color");
  if (when == nullptr || !inv.parsed() || std::strcmp(when, "never") == 0) return false;
  if (std::strcmp(when, "always") == 0) return true;
  if (std::strcmp(when, "auto") == 0) {
    char const* const term = std::getenv("TERM");
    return platform::stdout_is_terminal() && term != nullptr && std::strcmp(term, "dumb") != 0;
  }
  inv.usage_error("option '--color' takes never, always or auto, not '%s'", when);
  return false;
}

std::string_view number_text(std::uint64_t n, char (&digits)[24]) {
  auto const [end, error] = std::to_chars(digits, digits + sizeof digits, n);
  (void)error;
  return {digits, static_cast<std::size_t>(end - digits)};
}

}  // namespace

LinePrinter::LinePrinter(Invocation& inv, std::span<char const* const> names)
    : m_inv(inv),
      m_with_names(names_shown(inv, names)),
      m_numbers(inv.flag("-n")),
      m_parts(inv.flag("-o") || inv.flag("-g")),
      m_invert(inv.flag("-v")),
      m_null(inv.flag("-Z") || inv.flag("--null")),
      m_count_only(inv.flag("-c")),
      m_list(inv.flag("-l")),
      m_list_unmatched(inv.flag("-L")),
      m_quiet(inv.flag("-q")),
      m_prints_lines(!m_count_only && !m_list && !m_list_unmatched && !m_quiet),
      m_max(count_option(inv, "-m", kNoLimit)),
      m_nothing(m_max == 0),
      m_label(inv.value("--label")),
      m_color(color_option(inv)),
      m_as_text(inv.flag("-a")) {
  std::uint64_t const context = count_option(inv, "-C", 0);
  if (m_prints_lines) {
    m_before = count_option(inv, "-B", context);
    m_after = count_option(inv, "-A", context);
    m_grouped = inv.flag("-A") || inv.flag("-B") || inv.flag("-C");
  }
  if (m_color) m_colors.read(std::getenv("GREP_COLORS"));
}

bool LinePrinter::take(Input const& in, std::string_view text, bool matches,
                       char const* matched) {
  if (m_nothing) return false;
  // Once -m's count is reached, the lines are context only (the ones after
  // it, while some are still wanted).
  if (m_count < m_max && matches != m_invert) return select(in, text, matched);
  if (m_count >= m_max && m_after_left == 0) return false;
  pass(in, text, matched);
  return m_count < m_max || m_after_left > 0;
}

bool LinePrinter::select(Input const& in, std::string_view text, char const* matched) {
  ++m_count;
  m_inv.found();
  if (m_quiet) {
    m_inv.found_enough();
    return false;
  }
  if (m_list || m_list_unmatched) return false;
  bool const last = m_count == m_max;
  if (m_count_only) return !last;
  if (in.binary()) {
    // As grep has it: the lines of a binary file are not printed.
    write_out("Binary file ");
    write_out(name_of(in));
    write_out(" matches\n");
    return false;
  }
  for (Kept const& kept : m_kept) {
    show(in, kept.text, kept.matched.c_str(), kept.end, kept.number, '-');
  }
  m_kept.clear();
  m_after_left = m_after;
  show(in, text, matched, in.line_end(), in.line_number(), ':');
  return !last || m_after > 0;
}

// A line that is not selected: context after a selected line, or kept for
// the context before the next one.
void LinePrinter::pass(Input const& in, std::string_view text, char const* matched) {
  if (m_after_left > 0) {
    --m_after_left;
    show(in, text, matched, in.line_end(), in.line_number(), '-');
    return;
  }
  if (m_before == 0) return;
  if (m_kept.size() == m_before) m_kept.pop_front();
  m_kept.push_back(Kept{std::string(text), matched != nullptr ? std::string(matched, text.size()) : "",
                        in.line_end(), in.line_number()});
}

// A line shown, selected (':') or as context ('-').  As grep has it, the
// matches of a line are marked (or printed alone, with -o) only where they
// are what selected it, or with -v what made it context.
void LinePrinter::show(Input const& in, std::string_view text, char const* matched,
                       std::string_view end, std::uint64_t number, char separator) {
  separate(number);
  bool const marked = (separator == ':') != m_invert;
  if (m_parts) {
    if (marked) show_parts(in, text, matched, number, separator);
    return;
  }
  prefix(in, number, separator);
  if (m_color) {
    write_line(text, matched, marked, separator);
  } else {
    write_out(text);
  }
  write_out(end.empty() ? std::string_view("\n") : end);
}

void LinePrinter::show_parts(Input const& in, std::string_view text, char const* matched,
                             std::uint64_t number, char separator) {
  std::string_view const sgr =
      separator == ':' ? m_colors.selected_match : m_colors.context_match;
  bool const ok = m_parts_of(matched, text.size(), [&](std::size_t offset, std::size_t length) {
    if (length == 0) return;
    prefix(in, number, separator);
    write_painted(m_color ? sgr : std::string_view(), text.substr(offset, length));
    write_out("\n");
  });
  m_failed = m_failed || !ok;
}

// A line in colour, as grep paints it: in the colour of its lines (sl, or
// cx for context; the other way round with -v and rv), its marked parts in
// the colour of matches, the line's colour begun again before each.
void LinePrinter::write_line(std::string_view text, char const* matched, bool marked,
                             char separator) {
  bool const selected = (separator == ':') != (m_colors.reverse && m_invert);
  std::string_view const line_sgr = selected ? m_colors.selected_line : m_colors.context_line;
  std::string_view const match_sgr =
      separator == ':' ? m_colors.selected_match : m_colors.context_match;
  std::size_t done = 0;
  if (marked && !match_sgr.empty()) {  // (matches of no colour are the line's)
    bool const ok = m_parts_of(matched, text.size(), [&](std::size_t offset, std::size_t length) {
      if (length == 0 || offset < done) return;
      write_out(m_colors.start(line_sgr));
      write_out(text.substr(done, offset - done));
      write_painted(match_sgr, text.substr(offset, length));
      done = offset + length;
    });
    m_failed = m_failed || !ok;
  }
  if (done < text.size()) write_painted(line_sgr, text.substr(done));
}

// With lines of context (even none, when asked for), a line that does not
// follow the last one shown begins a new group, set apart from the one
// before; the first group of an input is set apart from the last group of
// the inputs before it, which the output knows (output.h).
void LinePrinter::separate(std::uint64_t number) {
  if (!m_grouped) return;
  if (m_last_shown == 0 || number != m_last_shown + 1) {
    std::string const separator =
        (m_color && !m_colors.separator.empty() ? m_colors.paint(m_colors.separator, "--") : "--") + "\n";
    if (m_last_shown == 0) {
      begin_group(separator);
    } else {
      write_out(separator);
    }
  }
  m_last_shown = number;
}

void LinePrinter::prefix(Input const& in, std::uint64_t number, char separator) {
  std::string_view const mark(&separator, 1);
  if (m_with_names) write_name(in, mark);
  if (m_numbers) {
    char digits[24];
    write_painted(m_colors.line_number, number_text(number, digits));
    write_painted(m_colors.separator, mark);
  }
}

std::string_view LinePrinter::name_of(Input const& in) const {
  return m_label != nullptr && in.is_standard_input() ? std::string_view(m_label) : in.name();
}

// The input's name, then `after` (a zero byte instead with -Z).
void LinePrinter::write_name(Input const& in, std::string_view after) {
  write_painted(m_colors.file_name, name_of(in));
  if (m_null) {
    write_out(std::string_view("\0", 1));
  } else {
    write_painted(after == "\n" ? std::string_view() : m_colors.separator, after);
  }
}

void LinePrinter::write_painted(std::string_view sgr, std::string_view text) {
  if (m_color && !sgr.empty()) {
    write_out(m_colors.paint(sgr, text));
  } else {
    write_out(text);
  }
}

void LinePrinter::end_of(Input const& in) {
  bool const listed = m_list ? m_count > 0 : m_list_unmatched && m_count == 0;
  if (m_quiet) {
    // nothing is printed
  } else if (listed) {
    write_name(in, "\n");
  } else if (m_count_only && !m_list && !m_list_unmatched && !m_nothing) {
    if (m_with_names) write_name(in, ":");
    char digits[24];
    write_out(number_text(m_count, digits));
    write_out("\n");
  }
  m_count = 0;
  m_failed = false;
  m_after_left = 0;
  m_last_shown = 0;
  m_kept.clear();
}

}  // namespace zelstr::tool
