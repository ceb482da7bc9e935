// text_commands.cpp - the subcommands on plain text: replace, trim,
// quote and unquote (a stretch of lines at a time), span (a line at a
// time); and cmp on two arguments.
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

#include "tool/input.h"
#include "tool/line_quote.h"
#include "tool/line_rewrite.h"
#include "tool/line_search.h"
#include "tool/line_trim.h"
#include "tool/text_tools.h"
#include "zelstr/zelstr.h"

namespace zelstr::tool {

// span [--complement] SETDEF [FILE...]: each line's initial run of members
// (of non-members), as LENGTH<tab>RUN.
int run_span(Invocation& inv) {
  if (inv.operands().empty()) return inv.usage_error("no set definition");
  char const* const setdef = inv.operands()[0];
  if (!check_set_definition(inv, setdef)) return kError;
  bool const complement = inv.flag("--complement");
  for_each_line(inv, inv.operands().subspan(1), [&](Input&, char* line, std::size_t) {
    unsigned const n = complement ? _zstrcspnex(line, setdef) : _zstrspnex(line, setdef);
    if (n > 0) inv.found();
    std::printf("%u\t", n);
    write_out(line, n);
    write_out("\n");
    return true;
  });
  return inv.exit_status();
}

// replace [-i] [--first|--last] [--delimiters SETDEF] FROM TO [FILE...]
int run_replace(Invocation& inv) {
  if (inv.operands().size() < 2) return inv.usage_error("FROM and TO are needed");
  char const* const from = inv.operands()[0];
  char const* const to = inv.operands()[1];
  if (*from == '\0') return inv.usage_error("FROM is empty");
  bool const first = inv.flag("--first"), last = inv.flag("--last");
  char const* const delimiters = inv.value("--delimiters");
  if (delimiters != nullptr && !check_set_definition(inv, delimiters)) return kError;
  Replacer const replace{from, to, inv.flag("-i"), first, last, delimiters};
  std::string buffer;
  // Every occurrence, in a stretch of lines at once where no occurrence can
  // run over a line end and no line end is a delimiter: the result is the
  // one of each line alone.
  bool const by_stretches =
      !first && !last && !may_match_line_end(from, nullptr) &&
      (delimiters == nullptr || (_zchrspnex('\n', const_cast<char*>(delimiters)) == 0 &&
                                 _zchrspnex('\r', const_cast<char*>(delimiters)) == 0));
  if (by_stretches) {
    for_each_input(inv, inv.operands().subspan(2), [&](Input& in) {
      Lines lines;
      while (in.next_lines(lines, false)) {
        char const* const result = replace(lines.text, lines.length, buffer);
        if (result == nullptr) {
          inv.error("%s: the text could not be changed", in.name());
          return;
        }
        std::size_t const length = std::strlen(result);
        if (length != lines.length || std::memcmp(result, lines.text, length) != 0) inv.found();
        write_out(result, length);
      }
    });
    return inv.exit_status();
  }
  for_each_line(inv, inv.operands().subspan(2), [&](Input& in, char* line, std::size_t length) {
    char const* const result = replace(line, length, buffer);
    if (result == nullptr) {
      inv.error("%s:%llu: the line could not be changed", in.name(),
                static_cast<unsigned long long>(in.line_number()));
      return false;
    }
    if (std::strcmp(result, line) != 0) inv.found();
    write_passed_line(in, result);
    return true;
  });
  return inv.exit_status();
}

// trim [--left|--right] [--chars LIST] [FILE...]
int run_trim(Invocation& inv) {
  bool const left = inv.flag("--left"), right = inv.flag("--right");
  char const* const chars = inv.value("--chars");
  // --left trims the head alone, --right the tail alone, neither both ends
  // (both together are refused as a usage error).
  bool const head = left || !right, tail = !left;
  LineTrim const trim(chars == nullptr ? " " : chars, head, tail);
  rewrite_stretches(
      inv, inv.operands(), [](std::size_t length) { return length + LineTrim::kOvershoot; },
      [&](char const* text, std::size_t length, char* out) {
        return trim.trim(text, length, out);
      });
  return inv.exit_status();
}

// eol --lf|--crlf [FILE...]: stretches of whole lines (a CR LF is never
// cut) through the library's line-end conversion.
int run_eol(Invocation& inv) {
  bool const crlf = inv.flag("--crlf");
  if (!crlf && !inv.flag("--lf")) return inv.usage_error("say --lf or --crlf");
  int const style = crlf ? ZEAL_EOL_CRLF : ZEAL_EOL_LF;
  std::string converted;
  for_each_input(inv, inv.operands(), [&](Input& in) {
    Lines lines;
    while (in.next_lines(lines, false)) {
      converted.resize(2 * lines.length + 1);
      unsigned long const n = _zstreolcpy(converted.data(), converted.size(), lines.text, style);
      write_out(converted.data(), n);
      inv.found();
    }
  });
  return inv.exit_status();
}

namespace {

// The quote of -c: one character.
bool quote_char(Invocation& inv, char fallback, char& quote) {
  char const* const c = inv.value("-c");
  quote = c == nullptr ? fallback : c[0];
  if (c != nullptr && std::strlen(c) != 1) {
    inv.usage_error("-c takes one character, not '%s'", c);
    return false;
  }
  return true;
}

}  // namespace

// quote [-c CHAR] [FILE...]: each line framed by the quote, as _zstrenquote
// frames it, a stretch of lines at a time (tool/line_quote.h), so that lines
// of any length are kept whole.
int run_quote(Invocation& inv) {
  char quote;
  if (!quote_char(inv, '\'', quote)) return kError;
  rewrite_stretches(
      inv, inv.operands(), [](std::size_t length) { return 3 * length + 1 + kQuoteOvershoot; },
      [quote](char const* text, std::size_t length, char* out) {
        return quote_lines(text, length, quote, out);
      });
  return inv.exit_status();
}

// unquote [-c CHAR] [FILE...]: each line without its framing quotes, written
// over the line itself (no length limit); a line that is not framed by them
// is printed as it is (the library's warning says so).
int run_unquote(Invocation& inv) {
  char quote;
  if (!quote_char(inv, '\'', quote)) return kError;
  // A line that is not quoted stays as it is, the library warning why: a
  // warning only -W shows is not asked for.
  bool const warnings = inv.warnings_shown();
  auto const keeps = [quote, warnings](char const* line, std::size_t length) {
    return !warnings && !(length >= 2 && line[0] == quote && line[length - 1] == quote);
  };
  rewrite_lines(inv, inv.operands(), keeps, [&](char* line, std::size_t, Rewritten& out) {
    inv.clear_warning();
    _zstrunquoted(line, quote, line);
    if (inv.last_warning().empty()) inv.found();
    out.append(line);
  });
  return inv.exit_status();
}

// cmp [-i] [-n COUNT] A B: -1, 0 or 1.
int run_cmp(Invocation& inv) {
  if (inv.operands().size() != 2) return inv.usage_error("two strings are needed");
  char const* const a = null_or(inv.operands()[0]);
  char const* const b = null_or(inv.operands()[1]);
  bool const insensitive = inv.flag("-i");
  int result;
  if (char const* const count = inv.value("-n")) {
    char* end = nullptr;
    errno = 0;
    unsigned long const n = std::strtoul(count, &end, 10);
    if (*count == '\0' || *end != '\0' || errno != 0 || n > 0xFFFFFFFFul || count[0] == '-') {
      return inv.usage_error("-n takes a count, not '%s'", count);
    }
    auto const n32 = static_cast<unsigned int>(n);
    result = insensitive ? _zstrnicmp(a, b, n32) : _zstrncmp(a, b, n32);
  } else {
    result = insensitive ? _zstricmp(a, b) : _zstrcmp(a, b);
  }
  std::printf("%d\n", result);
  if (result == 0) inv.found();
  return inv.exit_status();
}

}  // namespace zelstr::tool
