// grep_command.cpp - the grep subcommand: the lines that match a regular
// expression of the library's engine, read a line at a time.
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "tool/input.h"
#include "tool/text_tools.h"
#include "zelstr/regex.h"

namespace zelstr::tool {
namespace {

// A compiled expression, released on the way out.
class Expression {
 public:
  explicit Expression(char const* pattern) : m_re(Tcl_RegExpCompile(pattern)) {}
  ~Expression() {
    if (m_re != nullptr) Tcl_DeleteInterp(m_re);
  }
  Expression(Expression const&) = delete;
  Expression& operator=(Expression const&) = delete;
  Tcl_RegExp_* get() const { return m_re; }

 private:
  Tcl_RegExp_* m_re;
};

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

}  // namespace

// grep [-o] [-g N] [-n] [-c] PATTERN [FILE...]
int run_grep(Invocation& inv) {
  if (inv.operands().empty()) return inv.usage_error("no pattern");
  Expression const re(inv.operands()[0]);
  if (re.get() == nullptr) {
    inv.error("bad pattern '%s': %s", inv.operands()[0], Tcl_GetRegError());
    return kError;
  }
  int group = 0;
  if (!parse_group(inv, re.get(), group)) return kError;
  bool const part = inv.flag("-o") || inv.value("-g") != nullptr;
  LinePrinter printer(inv, inv.operands().subspan(1));
  for_each_input(inv, inv.operands().subspan(1), [&](Input& in) {
    char* line;
    std::size_t length;
    while (in.next_line(line, length)) {
      // A line of a CRLF file matches without its carriage return.
      bool const cr = length > 0 && line[length - 1] == '\r';
      if (cr) line[length - 1] = '\0';
      bool const match = Tcl_RegExpMatch(line, re.get()) == 1;
      char const *start = nullptr, *end = nullptr;
      if (match && part) Tcl_RegExpRange(re.get(), group, &start, &end);
      if (cr) line[length - 1] = '\r';
      if (!match) continue;
      if (!part) {
        printer.print(in, line, length);
      } else if (start != nullptr) {
        printer.print(in, start, static_cast<std::size_t>(end - start));
      }
    }
    printer.end_of(in);
  });
  return inv.exit_status();
}

}  // namespace zelstr::tool
