// line_printer.cpp - grep's output of selected lines, their context and
// their counts.
#include "tool/line_printer.h"

#include <charconv>
#include <cstdlib>
#include <cstring>
#include <limits>

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

void write_number(std::uint64_t n) {
  char digits[24];
  auto const [end, error] = std::to_chars(digits, digits + sizeof digits, n);
  (void)error;
  write_out(digits, static_cast<std::size_t>(end - digits));
}

}  // namespace

LinePrinter::LinePrinter(Invocation& inv, std::span<char const* const> names)
    : m_inv(inv),
      m_with_names(!inv.flag("-h") && (names.size() > 1 || inv.flag("-H"))),
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
      m_label(inv.value("--label")) {
  std::uint64_t const context = count_option(inv, "-C", 0);
  if (m_prints_lines) {
    m_before = count_option(inv, "-B", context);
    m_after = count_option(inv, "-A", context);
    m_grouped = inv.flag("-A") || inv.flag("-B") || inv.flag("-C");
  }
}

LinePrinter::Next LinePrinter::take(Input const& in, std::string_view text, bool matches) {
  // Once -m's count is reached, the lines are context only (the ones after
  // it, while some are still wanted).
  if (m_nothing) return Next::kStop;
  if (m_count < m_max && matches != m_invert) return select(in, text);
  if (m_count >= m_max && m_after_left == 0) return Next::kStop;
  pass(in, text);
  return m_count >= m_max && m_after_left == 0 ? Next::kStop : Next::kGoOn;
}

LinePrinter::Next LinePrinter::select(Input const& in, std::string_view text) {
  ++m_count;
  m_inv.found();  // -L too: its status tells whether a line was selected, as grep's does
  if (m_quiet) {
    m_inv.found_enough();
    return Next::kStop;
  }
  if (m_list || m_list_unmatched) return Next::kStop;
  bool const last = m_count == m_max;
  if (m_count_only) return last ? Next::kStop : Next::kGoOn;
  for (Kept const& kept : m_kept) print(in, kept.text, kept.end, kept.number, '-');
  m_kept.clear();
  m_after_left = m_after;
  if (m_parts) {
    separate(in.line_number());
    m_part_number = in.line_number();
    m_part_separator = ':';
    return Next::kPrintParts;
  }
  print(in, text, in.line_end(), in.line_number(), ':');
  return last && m_after == 0 ? Next::kStop : Next::kGoOn;
}

// A line that is not selected: context after a selected line, or kept for
// the context before the next one.
void LinePrinter::pass(Input const& in, std::string_view text) {
  if (m_after_left > 0) {
    --m_after_left;
    print(in, text, in.line_end(), in.line_number(), '-');
    return;
  }
  if (m_before == 0) return;
  if (m_kept.size() == m_before) m_kept.pop_front();
  m_kept.push_back(Kept{std::string(text), in.line_end(), in.line_number()});
}

void LinePrinter::print(Input const& in, std::string_view text, std::string_view end,
                        std::uint64_t number, char separator) {
  separate(number);
  if (m_parts) {
    // As grep has it, a line of context shows its matches only with -v
    // (where they are what makes it context).
    if (m_context_parts == nullptr || !m_invert) return;
    std::string line(text);
    m_part_number = number;
    m_part_separator = separator;
    m_context_parts(in, line.data(), line.size());
    return;
  }
  prefix(in, number, separator);
  write_out(text);
  write_out(end.empty() ? std::string_view("\n") : end);
}

void LinePrinter::print_part(Input const& in, std::string_view part) {
  prefix(in, m_part_number, m_part_separator);
  write_out(part);
  write_out("\n");
}

// With lines of context (even none, when asked for), a line that does not
// follow the last one shown begins a new group, set apart from the one
// before (of any input).
void LinePrinter::separate(std::uint64_t number) {
  if (!m_grouped) return;
  if (m_shown_any && (m_last_shown == 0 || number != m_last_shown + 1)) write_out("--\n");
  m_shown_any = true;
  m_last_shown = number;
}

void LinePrinter::prefix(Input const& in, std::uint64_t number, char separator) {
  char const after_name[] = {m_null ? '\0' : separator};
  if (m_with_names) {
    write_out(name_of(in));
    write_out(after_name, 1);
  }
  if (m_numbers) {
    write_number(number);
    write_out(&separator, 1);
  }
}

std::string_view LinePrinter::name_of(Input const& in) const {
  return m_label != nullptr && in.is_standard_input() ? std::string_view(m_label)
                                                      : std::string_view(in.name());
}

void LinePrinter::end_of(Input const& in) {
  bool const listed = m_list ? m_count > 0 : m_list_unmatched && m_count == 0;
  if (m_quiet) {
    // nothing is printed
  } else if (listed) {
    write_out(name_of(in));
    write_out(m_null ? std::string_view("\0", 1) : std::string_view("\n"));
  } else if (m_count_only && !m_list && !m_list_unmatched && !m_nothing) {
    if (m_with_names) {
      write_out(name_of(in));
      write_out(m_null ? std::string_view("\0", 1) : std::string_view(":"));
    }
    write_number(m_count);
    write_out("\n");
  }
  m_count = 0;
  m_after_left = 0;
  m_last_shown = 0;
  m_kept.clear();
}

}  // namespace zelstr::tool
