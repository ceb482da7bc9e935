// code_grammar.h - the pieces of T-SQL and PL/SQL text the code scanner
// tells apart (code_scan.h), and the byte classes it reads them by.
#ifndef ZELSTR_SQL_CODE_GRAMMAR_H
#define ZELSTR_SQL_CODE_GRAMMAR_H

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#if defined(__SSE2__)
#include <emmintrin.h>
#endif

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

// The same bytes (without the terminator) tested sixteen at a time with the
// compiler's generic vectors, which every target turns into its own
// instructions: a few compares and ORs per block.
class StopSet {
 public:
  explicit StopSet(Grammar const& grammar)
      : m_quote(splat('\'')),
        m_double(splat('"')),
        m_dash(splat('-')),
        m_slash(splat('/')),
        m_bracket(splat(grammar.tsql ? '[' : '\'')),
        m_line(splat(grammar.commands ? '\n' : '\'')) {}

  // The place (0 to 15) of the first stop byte among the sixteen at `p`,
  // or 16 when none is.  The compares give 0xFF for a stop byte.  On
  // x86-64, whose every processor has SSE2, one instruction gathers their
  // top bits into a mask.  Elsewhere the two halves are read as numbers
  // and the first one is found by counting zero bits from the end the
  // first byte is stored at (a branch more, on which half holds it).
  unsigned first_in(Byte const* p) const {
    Block v;
    std::memcpy(&v, p, sizeof v);
    Block const hit = (v == m_quote) | (v == m_double) | (v == m_dash) | (v == m_slash) |
                      (v == m_bracket) | (v == m_line);
#if defined(__SSE2__)
    __m128i h;
    std::memcpy(&h, &hit, sizeof h);
    unsigned const bits = static_cast<unsigned>(_mm_movemask_epi8(h));
    return static_cast<unsigned>(__builtin_ctz(bits | 0x10000u));  // 16 when none
#else
    std::uint64_t halves[2];
    std::memcpy(halves, &hit, sizeof halves);
    for (unsigned half = 0; half < 2; ++half) {
      if (halves[half] == 0) continue;
      int const zeros = std::endian::native == std::endian::little
                            ? __builtin_ctzll(halves[half])
                            : __builtin_clzll(halves[half]);
      return 8 * half + static_cast<unsigned>(zeros) / 8;
    }
    return 16;
#endif
  }

 private:
  typedef Byte Block __attribute__((vector_size(16)));
  static Block splat(char c) {
    Block b;
    for (int i = 0; i < 16; ++i) b[i] = static_cast<Byte>(c);
    return b;
  }

  Block m_quote, m_double, m_dash, m_slash, m_bracket, m_line;
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
