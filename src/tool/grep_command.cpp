// grep_command.cpp - the grep subcommand: the lines that match a regular
// expression of the library's engine (or one of several), or with -F that
// hold one of a list of words (searched all at once).  Lines are found a
// stretch at a time where only the matching ones are printed, else read
// one at a time; with --code-only, matched in the input's code, read whole
// with its comments and literals hidden.
#include <array>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "tool/fixed_strings.h"
#include "tool/input.h"
#include "tool/input_threads.h"
#include "tool/line_selection.h"
#include "tool/sql_code.h"
#include "tool/text_tools.h"
#include "zelstr/codehide.h"
#include "zelstr/regex.h"
#include "zelstr/zelstr.h"

namespace zelstr::tool {
namespace {

// The expression grep matches and where in it the patterns' match lies.
struct Combined {
  std::string pattern;
  int base = 0;  // the group of the patterns' whole match (0: the match)
};

// A bracket list of the bytes that are not in the set `setdef` (the
// characters of words): ']' first, '[' and '-' last, where they are
// literal and begin no class or range.
std::string non_word_list(char const* setdef) {
  std::array<bool, 256> const word = set_members(setdef);
  std::string members, tail;
  bool close = false;
  for (int c = 1; c < 256; ++c) {
    if (!word[c]) continue;
    if (c == ']') {
      close = true;
    } else if (c == '[' || c == '-') {
      tail.insert(c == '[' ? tail.begin() : tail.end(), static_cast<char>(c));
    } else {
      members += static_cast<char>(c);
    }
  }
  return "[^" + std::string(close ? "]" : "") + members + tail + "]";
}

// The patterns as alternatives (each a group when there are several);
// with -x the whole line, with -w a match with no word character on
// either side (the character there, if any, is part of the whole match).
Combined combine(Invocation& inv, std::vector<std::string> const& patterns, char const* word_set) {
  Combined c;
  if (patterns.size() == 1) {
    c.pattern = patterns[0];
  } else {
    for (std::string const& p : patterns) c.pattern += (c.pattern.empty() ? "(" : "|(") + p + ")";
  }
  if (inv.flag("-x")) {
    c.pattern = "^(" + c.pattern + ")$";
    c.base = 1;
  } else if (inv.flag("-w")) {
    std::string const apart = non_word_list(word_set);
    c.pattern = "(^|" + apart + ")(" + c.pattern + ")(" + apart + "|$)";
    c.base = 2;
  }
  return c;
}

// The group -g prints, counted in the combined expression.
bool parse_group(Invocation& inv, Tcl_RegExp_* re, Combined const& c, std::size_t patterns,
                 int& group) {
  group = c.base;
  char const* const text = inv.value("-g");
  if (text == nullptr) return true;
  if (patterns != 1) {
    inv.usage_error("option '-g' takes one pattern");
    return false;
  }
  char* end = nullptr;
  long const n = std::strtol(text, &end, 10);
  if (*text == '\0' || *end != '\0' || n < 0 || c.base + n > Tcl_GetGroupsCount(re) ||
      (n > 0 && c.base == 2 && c.base + n > Tcl_GetGroupsCount(re) - 1)) {
    inv.usage_error("the pattern has no group '%s'", text);
    return false;
  }
  if (n > 0) group = c.base + static_cast<int>(n);
  return true;
}

// The parts of `line` (zero-terminated at `length`): every non-empty match
// in turn, or what group `group` matched in it; a search begins where the
// patterns' last match (group `base`) ended, one byte further after an
// empty match.  False when the engine failed.
bool each_match(char const* line, std::size_t length, Tcl_RegExp_* re, int base, int group,
                LinePrinter::Each const& each) {
  char const* const line_end = line + length;
  for (char const* from = line;;) {
    int const r = Tcl_RegExpExec(nullptr, re, from, line);
    if (r != 1) return r == 0;
    char const *start = nullptr, *end = nullptr;
    Tcl_RegExpRange(re, base, &start, &end);
    if (end == start) {
      if (end >= line_end) return true;
      from = end + 1;
    } else {
      from = end;
    }
    if (group != base) Tcl_RegExpRange(re, group, &start, &end);
    if (start != nullptr && end != start) {
      each(static_cast<std::size_t>(start - line), static_cast<std::size_t>(end - start));
    }
  }
}

// The parts of `line` for grep -F: every occurrence of a word, leftmost
// first, the longest at a place, each behind the last; with -x, the line.
void each_word(std::string_view line, FixedStrings const& words, bool whole_line,
               LinePrinter::Each const& each) {
  if (whole_line) {
    if (words.is_line(line)) each(0, line.size());
    return;
  }
  words.each(line, [&](std::size_t offset, std::size_t length, int) { each(offset, length); });
}

// A pattern with no character the syntax gives a meaning to, nor a line
// end, matches the lines that hold it as a string: they are found as find
// finds them, every occurrence of a stretch in one pass.  (The empty
// pattern matches every line, also those an empty string is not found in.)
bool is_plain_string(char const* pattern) {
  return *pattern != '\0' && pattern[std::strcspn(pattern, "^$.[]()|*+?{}\\\r\n")] == '\0';
}

// The inputs as the code reads them: the hidden copy of each to match, the
// text as written to print from.
struct Code {
  CodeReading reading;
  bool only = false;
  std::string text, hidden;

  // Reads `in` whole and goes over its hidden copy; false on an error.
  bool reread(Invocation& inv, Input& in) {
    if (!read_code(inv, in, reading, false, text, hidden)) return false;
    in.reread(std::move(hidden));
    return true;
  }
};

bool read_code_options(Invocation& inv, Code& code) {
  if (!read_dialect(inv, code.reading, "--code-only")) return false;
  code.reading.flags = ZEAL_HIDE_DEFAULT;
  code.only = inv.flag("--code-only");
  return true;
}

// The reader of grep -F on one thread: its own search of the words.
class FixedReader {
 public:
  FixedReader(Invocation& inv, std::span<char const* const> names, FixedStrings const& words,
              Code const& code)
      : m_inv(inv), m_printer(inv, names), m_code(code), m_whole_line(inv.flag("-x")) {
    m_ready = m_words.copy(inv, words, inv.flag("-i"), inv.flag("-w") && !m_whole_line,
                           inv.value("--word-set"));
    m_printer.parts_by([this](char const* line, std::size_t length, LinePrinter::Each const& each) {
      each_word({line, length}, m_words, m_whole_line, each);
      return true;
    });
  }

  void operator()(Input& in) {
    if (!m_ready) return;
    in.take_zero_bytes(m_printer.zero_bytes());
    // A stretch of lines at a time, unless every line must be seen, the
    // code must be read whole or a word holds a line end (a line never
    // does).
    if (!m_printer.wants_every_line() && !m_code.only && !m_whole_line && !m_words.spans_lines()) {
      for_each_hit_line(
          in, m_inv.flag("-n"),
          [&](Lines const& lines, char const* from) {
            return m_words.find(lines.text, lines.length, from);
          },
          hit_line_taker(in, m_printer));
    } else if (!m_code.only || m_code.reread(m_inv, in)) {
      select_each_line(in, m_printer, m_code.only ? m_code.text.data() : nullptr,
                       [&](char const* line, std::size_t length) {
                         std::string_view const view(line, length);
                         return m_whole_line ? m_words.is_line(view) : m_words.in(view);
                       });
    }
    m_printer.end_of(in);
  }

 private:
  Invocation& m_inv;
  FixedStrings m_words;
  LinePrinter m_printer;
  Code m_code;
  bool m_whole_line;
  bool m_ready = false;
};

// grep -F: the words of -e and -f, or of PATTERN; -i, -w, -x.
int run_fixed_grep(Invocation& inv) {
  FixedStrings words;
  char const* const pattern = inv.operands().empty() ? nullptr : inv.operands()[0];
  bool const whole_line = inv.flag("-x");
  if (!words.read(inv, inv.flag("-e") || inv.flag("-f") ? nullptr : pattern, inv.flag("-i"),
                  inv.flag("-w") && !whole_line, false, inv.value("--word-set"))) {
    return kError;
  }
  if (!words.from_options() && pattern == nullptr) return inv.usage_error("no pattern");
  auto const names = inv.operands().subspan(words.from_options() ? 0 : 1);
  Code code;
  if (!read_code_options(inv, code)) return kError;
  if (LinePrinter const checked(inv, names); !inv.parsed()) return kError;
  for_each_input_on_threads(inv, names, [&] {
    return std::make_unique<FixedReader>(inv, names, words, code);
  });
  return inv.exit_status();
}

// The failure of a match, reported with where it happened.
void report_failure(Invocation& inv, Input const& in) {
  inv.error("%s:%llu: the match failed: %s", in.name(),
            static_cast<unsigned long long>(in.line_number()), Tcl_GetRegError());
}

// What grep with a regular expression found on the command line, which the
// readers of every thread share (to read only).
struct RegexGrep {
  Combined combined;
  int group;
  bool none;   // no pattern: no line matches
  bool plain;  // one pattern that is a plain string
  Code code;
};

// The reader of grep on one thread: its own compiled expression.
class RegexReader {
 public:
  RegexReader(Invocation& inv, std::span<char const* const> names, RegexGrep const& grep)
      : m_inv(inv),
        m_grep(grep),
        m_re(grep.combined.pattern.c_str(), inv.flag("-i")),
        m_printer(inv, names),
        m_code(grep.code) {
    if (grep.none && !m_printer.inverted()) m_printer.selects_nothing();
    m_printer.parts_by([this](char const* line, std::size_t length, LinePrinter::Each const& each) {
      return m_grep.none ||
             each_match(line, length, m_re.get(), m_grep.combined.base, m_grep.group, each);
    });
  }

  void operator()(Input& in) {
    if (m_re.get() == nullptr) {  // memory ran short on this thread
      report_failure(m_inv, in);
      return;
    }
    in.take_zero_bytes(m_printer.zero_bytes());
    bool const stretches = !m_printer.wants_every_line() && !m_code.only && !m_grep.none;
    bool ok = true;
    if (stretches && m_grep.plain) {
      // One string: every occurrence of a stretch found in one pass.
      for_each_line_with(in, m_inv.flag("-n"), m_grep.combined.pattern.c_str(),
                         hit_line_taker(in, m_printer));
    } else if (stretches) {
      // A stretch of lines at a time: the engine finds the lines that
      // match in one pass; their matches are then found in each alone.
      for_each_hit_line(
          in, m_inv.flag("-n"),
          [&](Lines const&, char const* from) {
            char const* const line = Tcl_RegExpFindLine(m_re.get(), from);
            ok = line != nullptr || Tcl_GetRegError() == nullptr;
            return line;
          },
          hit_line_taker(in, m_printer));
    } else if (!m_code.only || m_code.reread(m_inv, in)) {
      // Line by line; with --code-only the lines are matched in the hidden
      // copy of the whole input, and printed from the input as written.
      ok = select_each_line(in, m_printer, m_code.only ? m_code.text.data() : nullptr,
                            [&](char* line, std::size_t) {
                              return m_grep.none ? 0 : Tcl_RegExpMatch(line, m_re.get());
                            });
    }
    if (!ok || m_printer.failed()) report_failure(m_inv, in);
    m_printer.end_of(in);
  }

 private:
  Invocation& m_inv;
  RegexGrep const& m_grep;
  Expression m_re;
  LinePrinter m_printer;
  Code m_code;
};

}  // namespace

// grep [-F] [-i] [-w|-x] [-v] [-o|-g N] [-n] [-c|-l|-L|-q] ... PATTERN [FILE...]
int run_grep(Invocation& inv) {
  if (inv.flag("-F")) return run_fixed_grep(inv);
  std::vector<std::string> patterns;
  bool from_options = false;
  char const* const operand = inv.operands().empty() ? nullptr : inv.operands()[0];
  if (!FixedStrings::gather(inv, operand, patterns, from_options)) return kError;
  if (patterns.empty() && !from_options) return inv.usage_error("no pattern");
  bool const none = patterns.empty();  // -f of empty files: no line matches
  if (none) patterns.emplace_back("x");
  char const* const word_set = inv.value("--word-set");
  if (word_set != nullptr && !check_set_definition(inv, word_set)) return kError;
  Combined const combined = combine(inv, patterns, word_set);
  Expression const re(combined.pattern.c_str(), inv.flag("-i"));
  if (re.get() == nullptr) {
    inv.error("bad pattern '%s': %s", from_options ? combined.pattern.c_str() : operand,
              Tcl_GetRegError());
    return kError;
  }
  int group = 0;
  if (!parse_group(inv, re.get(), combined, patterns.size(), group)) return kError;
  Code code;
  if (!read_code_options(inv, code)) return kError;
  auto const names = inv.operands().subspan(from_options ? 0 : 1);
  if (LinePrinter const checked(inv, names); !inv.parsed()) return kError;
  RegexGrep const grep{combined, group, none,
                       patterns.size() == 1 && combined.base == 0 && !inv.flag("-i") &&
                           is_plain_string(patterns[0].c_str()),
                       code};
  for_each_input_on_threads(inv, names, [&] {
    return std::make_unique<RegexReader>(inv, names, grep);
  });
  return inv.exit_status();
}

}  // namespace zelstr::tool
