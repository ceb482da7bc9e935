// text_commands.cpp - the subcommands on plain text, a line at a time:
// find, span, replace, trim, quote, unquote; and cmp on two arguments.
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

#include "tool/input.h"
#include "tool/text_tools.h"
#include "zelstr/zelstr.h"

namespace zelstr::tool {

// find [-i] [-n] [-c] [--map DEFINITION] PATTERN [FILE...]
int run_find(Invocation& inv) {
  if (inv.operands().empty()) return inv.usage_error("no pattern");
  char const* const pattern = inv.operands()[0];
  DefinedMap const map(inv, inv.value("--map"));
  if (map.bad()) return kError;
  bool const insensitive = inv.flag("-i");
  LinePrinter printer(inv, inv.operands().subspan(1));
  for_each_input(inv, inv.operands().subspan(1), [&](Input& in) {
    char* line;
    std::size_t length;
    while (in.next_line(line, length)) {
      char const* const at = map.given()   ? _zmapstrstr(map.get(), line, pattern)
                             : insensitive ? _zstristr(line, pattern)
                                           : _zstrstr(line, pattern);
      if (at != nullptr) printer.print(in, line, length);
    }
    printer.end_of(in);
  });
  return inv.exit_status();
}

// span [--complement] SETDEF [FILE...]: each line's initial run of members
// (of non-members), as LENGTH<tab>RUN.
int run_span(Invocation& inv) {
  if (inv.operands().empty()) return inv.usage_error("no set definition");
  char const* const setdef = inv.operands()[0];
  bool const complement = inv.flag("--complement");
  auto const span = [complement, setdef](char const* s) {
    return complement ? _zstrcspnex(s, setdef) : _zstrspnex(s, setdef);
  };
  inv.clear_warning();
  span("x");
  if (!inv.last_warning().empty()) {
    inv.error("bad set definition '%s': %s", setdef, inv.last_warning().c_str());
    return kError;
  }
  for_each_line(inv, inv.operands().subspan(1), [&](Input&, char* line, std::size_t) {
    unsigned const n = span(line);
    if (n > 0) inv.found();
    std::printf("%u\t%.*s\n", n, static_cast<int>(n), line);
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
  if (first && last) return inv.usage_error("--first and --last exclude each other");
  if (last && inv.flag("-i")) return inv.usage_error("--last has no case-blind form");
  if ((first || last) && inv.flag("--delimiters")) {
    return inv.usage_error("--delimiters applies to every occurrence only");
  }
  Replacer const replace{from, to, inv.flag("-i"), first, last, inv.value("--delimiters")};
  std::string buffer;
  for_each_line(inv, inv.operands().subspan(2), [&](Input& in, char* line, std::size_t length) {
    char const* const result = replace(line, length, buffer);
    if (result == nullptr) {
      inv.error("%s:%llu: %s", in.name(), static_cast<unsigned long long>(in.line_number()),
                inv.last_warning().c_str());
      return false;
    }
    if (std::strcmp(result, line) != 0) inv.found();
    std::printf("%s\n", result);
    return true;
  });
  return inv.exit_status();
}

// trim [--left|--right] [--chars LIST] [FILE...]
int run_trim(Invocation& inv) {
  bool const left = inv.flag("--left"), right = inv.flag("--right");
  char const* const chars = inv.value("--chars");
  for_each_line(inv, inv.operands(), [&](Input&, char* line, std::size_t) {
    char* result;
    if (chars != nullptr) {
      result = left    ? _zstrltrimex(line, chars)
               : right ? _zstrrtrimex(line, chars)
                       : _zstrbtrimex(line, chars);
    } else {
      result = left ? _zstrltrim(line) : right ? _zstrrtrim(line) : _zstrbtrim(line);
    }
    std::printf("%s\n", result != nullptr ? result : line);
    inv.found();
    return true;
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

// quote [-c CHAR] [FILE...]: each line framed by the quote.
int run_quote(Invocation& inv) {
  char quote;
  if (!quote_char(inv, '\'', quote)) return kError;
  for_each_line(inv, inv.operands(), [&](Input&, char* line, std::size_t) {
    std::printf("%s\n", _zstrquoted(line, quote));
    inv.found();
    return true;
  });
  return inv.exit_status();
}

// unquote [-c CHAR] [FILE...]: each line without its framing quotes; a line
// that is not framed by them is printed as it is (the library's warning
// says so).
int run_unquote(Invocation& inv) {
  char quote;
  if (!quote_char(inv, '\'', quote)) return kError;
  for_each_line(inv, inv.operands(), [&](Input&, char* line, std::size_t) {
    inv.clear_warning();
    char const* const result = _zstrunquoted(line, quote, nullptr);
    if (inv.last_warning().empty()) inv.found();
    std::printf("%s\n", result != nullptr ? result : line);
    return true;
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
