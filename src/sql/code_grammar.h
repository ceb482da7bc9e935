// code_grammar.h - the pieces of T-SQL and PL/SQL text the code scanner
// tells apart (code_scan.h), and the byte classes it reads them by.
#ifndef ZELSTR_SQL_CODE_GRAMMAR_H
#define ZELSTR_SQL_CODE_GRAMMAR_H

#include <cstddef>
#include <cstdint>

#include "frame/byte_mask.h"

namespace zelstr::sql::code {

using Byte = unsigned char;

// The context of a byte; the values are those of ZEAL_SQL_* (codehide.h).
enum class Kind : int {
  kCode = 1,
  kLineComment = 2,
  kBlockComment = 3,
  kString = 4,
  kName = 5,
  kCommand = 6,
};

// A part that is not code: [begin, content) opens it (prefix and quote,
// "[", "--", "/*"; empty for a command line), [close, end) closes it
// (empty for a line comment, a command line or a part left open).
struct Part {
  Kind kind;
  Byte const* begin;
  Byte const* content;
  Byte const* close;
  Byte const* end;
};

struct Grammar {
  bool tsql = true;         // else PL/SQL
  bool quoted_id = false;   // T-SQL: "..." is a name, not a literal
  bool commands = false;    // recognise client command lines
};

// The T-SQL grammar of `connection` (NULL: the default settings): whether
// "..." is a name follows its quoted-identifier setting (off, as by
// default, when the settings cannot be had).
Grammar tsql_grammar(void const* connection, bool commands);
Grammar plsql_grammar(bool commands);

struct StopTable {
  bool at[256];
};

// The bytes that may open a part (and the terminator) under `grammar`.
StopTable const& stops_of(Grammar const& grammar);

// The same bytes (without the terminator) tested sixteen at a time: a few
// compares and ORs per block (frame/byte_mask.h).
class StopSet {
 public:
  explicit StopSet(Grammar const& grammar)
      : m_quote(frame::splat16('\'')),
        m_double(frame::splat16('"')),
        m_dash(frame::splat16('-')),
        m_slash(frame::splat16('/')),
        m_bracket(frame::splat16(grammar.tsql ? '[' : '\'')),
        m_line(frame::splat16(grammar.commands ? '\n' : '\'')) {}

  // The place (0 to 15) of the first stop byte among the sixteen at `p`,
  // or 16 when none is.
  unsigned first_in(Byte const* p) const {
    frame::Bytes16 const v = frame::load16(p);
    frame::Bytes16 const hit = (v == m_quote) | (v == m_double) | (v == m_dash) |
                               (v == m_slash) | (v == m_bracket) | (v == m_line);
    return static_cast<unsigned>(__builtin_ctz(frame::byte_mask(hit) | 0x10000u));
  }

 private:
  frame::Bytes16 m_quote, m_double, m_dash, m_slash, m_bracket, m_line;
};

// Letters, digits, "@", "#", "_", "$" and every byte from 0x80: a prefix
// after one of these is the end of a longer word, not a prefix.
inline bool is_word_byte(Byte c) {
  return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') ||
         c == '@' || c == '#' || c == '_' || c == '$' || c >= 0x80;
}

inline bool is_blank(Byte c) { return c == ' ' || c == '\t'; }

// The closing byte of an alternative quote opened with `open`.
inline Byte mirror(Byte open) {
  switch (open) {
    case '[':
      return ']';
    case '{':
      return '}';
    case '<':
      return '>';
    case '(':
      return ')';
    default:
      return open;
  }
}

// Whether the line whose first byte that is not blank is at `x` is a
// command line of sqlcmd and osql (T-SQL) or of SQL*Plus (PL/SQL; the
// keyword commands only where a statement may begin).
bool is_sqlcmd_line(Byte const* x, Byte const* end);
bool is_sqlplus_line(Byte const* x, Byte const* end, bool statement_start);

}  // namespace zelstr::sql::code

#endif  // ZELSTR_SQL_CODE_GRAMMAR_H
