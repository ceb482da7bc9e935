// text_tools.h - pieces the text subcommands share: a map made from a
// definition, a compiled expression, the printing of matching lines, and
// line replacement.
#ifndef ZELSTR_TOOL_TEXT_TOOLS_H
#define ZELSTR_TOOL_TEXT_TOOLS_H

#include <array>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "tool/input.h"
#include "tool/line_printer.h"
#include "tool/invocation.h"
#include "zelstr/regex.h"

namespace zelstr::tool {

// An argument spelled "(null)" stands for a NULL pointer, to see the
// warning it draws.
char const* null_or(char const* argument);

// A map made from a definition (none when the definition is NULL), released
// on the way out.  A definition the library refuses is reported with the
// library's warning.
class DefinedMap {
 public:
  DefinedMap(Invocation& inv, char const* definition);
  ~DefinedMap();
  DefinedMap(DefinedMap const&) = delete;
  DefinedMap& operator=(DefinedMap const&) = delete;

  bool given() const { return m_map != nullptr; }
  bool bad() const { return m_bad; }
  void* get() const { return m_map; }

 private:
  void* m_map = nullptr;
  bool m_bad = false;
};

// A compiled expression of the library's engine, released on the way out;
// get() is NULL when the pattern does not compile (Tcl_GetRegError says
// why).
class Expression {
 public:
  // `fold_case`: ignoring the case of ASCII letters.
  explicit Expression(char const* pattern, bool fold_case = false);
  ~Expression();
  Expression(Expression const&) = delete;
  Expression& operator=(Expression const&) = delete;
  Tcl_RegExp_* get() const { return m_re; }

 private:
  Tcl_RegExp_* m_re;
};

// Whether a byte of `pattern` may stand for a line end (through `map`, a
// table of 256 bytes, or as it is): such a pattern is matched line by line,
// where no line holds its end.
bool may_match_line_end(char const* pattern, void const* map);

// grep's word characters, as a set definition: letters, digits and _.
inline constexpr char kWordCharacters[] = "[A-Za-z0-9_]";

// Which bytes are members of the set `setdef` (NULL: kWordCharacters), a
// table indexed by the byte; the zero byte is never one.
std::array<bool, 256> set_members(char const* setdef);

// A set definition given to an option or as an operand, checked before any
// input is read: false, with the library's reason, when it is refused.
bool check_set_definition(Invocation& inv, char const* setdef);

// One of the replacement calls on a line: every occurrence (-i, or only
// those no member of a set touches), the first or the last.
struct Replacer {
  char const* from;
  char const* to;
  bool insensitive, first, last;
  char const* delimiters;

  // The line with the replacements, in `buffer`; NULL when the library
  // refused (its warning says why).
  char const* operator()(char const* line, std::size_t length, std::string& buffer) const;
};

}  // namespace zelstr::tool

#endif  // ZELSTR_TOOL_TEXT_TOOLS_H
