// code_scan.h - the one reader of T-SQL and PL/SQL text that tells code
// from what is not code: comments, string literals, delimited names and
// client command lines.
//
// The scanner walks the text once and hands it to a visitor as a sequence
// of code runs, single code bytes that might have opened a part but did
// not (a lone "-" or "/", and the line ends where command lines are looked
// for) and parts.  Hiding, the code context, comment discarding, the
// placeholders of HideCodeParts and the code mapping of _zmaptsqlapply
// are all visitors of this walk, so that they cannot disagree on where a
// part begins or ends.
//
// A run of code is found with a table of the bytes that may open a part;
// its bytes are handed over only once the part after it is known, so a
// visitor that rewrites code (the mapping) never changes a byte the
// scanner still has to read.  The bytes a prefix test looks at (the N of
// N'...', the q of q'[...]') lie in the current run, or are the last byte
// of whatever came before it, which the scanner keeps aside.
//
// The text must be followed by its terminator: the terminator is one of
// the stop bytes, so the inner loop needs no bounds test.
#ifndef ZELSTR_SQL_CODE_SCAN_H
#define ZELSTR_SQL_CODE_SCAN_H

#include <cstring>

#include "sql/code_grammar.h"

namespace zelstr::sql::code {

template <class Visitor>
class Scanner {
 public:
  Scanner(Grammar const& grammar, Byte const* begin, Byte const* end, Visitor& visitor)
      : m_g(grammar),
        m_stops(stops_of(grammar)),
        m_stop_set(grammar),
        m_begin(begin),
        m_end(end),
        m_v(visitor) {}

  // Walks the whole text; returns the context at its end.
  Kind run() {
    Byte const* p = m_begin;
    m_run = p;
    if (m_g.commands && command_line(p)) {
      if (m_open != Kind::kCode) return m_open;
      p = m_run;
    }
    for (;;) {
      p = skip_code(p);
      if (p == m_end) break;
      p = at_stop(p);
      if (m_open != Kind::kCode) return m_open;
    }
    flush(m_end);
    return Kind::kCode;
  }

 private:
  // The first stop byte at or after `p`: sixteen bytes at a time while
  // they are all inside the text, then byte by byte up to the terminator.
  Byte const* skip_code(Byte const* p) const {
    while (m_end - p >= 16) {
      unsigned const at = m_stop_set.first_in(p);
      if (at < 16) return p + at;
      p += 16;
    }
    while (!m_stops.at[*p]) ++p;
    return p;
  }

  // The byte at `p` may open a part: reads it, hands over what it is, and
  // returns where scanning goes on.
  Byte const* at_stop(Byte const* p) {
    switch (*p) {
      case '\'':
        return literal(p, '\'');
      case '"':
        if (!m_g.tsql || m_g.quoted_id) return name(p, '"');
        return literal(p, '"');
      case '[':
        return name(p, ']');
      case '-':
        if (p[1] == '-') return emit(Kind::kLineComment, p, p + 2, line_end(p + 2), line_end(p + 2));
        return lone(p);
      case '/':
        if (p[1] == '*') return block_comment(p);
        return lone(p);
      default:  // a line end, where command lines are looked for
        lone(p);
        if (command_line(p + 1)) return m_run;
        return p + 1;
    }
  }

  // A string literal whose quote is at `q`, with the prefix before it.
  Byte const* literal(Byte const* q, Byte quote) {
    Byte const* const begin = q - prefix_length(q);
    if (!m_g.tsql && begin < q && (q[-1] | 0x20) == 'q') return alternative_quoting(begin, q);
    Byte const* const close = closing(q + 1, quote, true);
    return emit(Kind::kString, begin, q + 1, close, close == m_end ? m_end : close + 1);
  }

  // q'c...c' and nq'c...c': c is any byte but a blank, and the brackets
  // close with their mirror.  A blank after the quote makes it an
  // ordinary literal after a name ending in q.
  Byte const* alternative_quoting(Byte const* begin, Byte const* q) {
    Byte const open = q[1];
    if (q + 1 == m_end || is_blank(open) || open == '\r' || open == '\n') {
      Byte const* const close = closing(q + 1, '\'', true);
      return emit(Kind::kString, q, q + 1, close, close == m_end ? m_end : close + 1);
    }
    Byte const shut = mirror(open);
    Byte const* x = q + 2;
    while (x < m_end) {
      auto const* const found = static_cast<Byte const*>(std::memchr(x, shut, m_end - x));
      if (found == nullptr) break;
      if (found[1] == '\'') return emit(Kind::kString, begin, q + 2, found, found + 2);
      x = found + 1;
    }
    return emit(Kind::kString, begin, q + 2, m_end, m_end);
  }

  // A delimited name opening at `p` and closing with `close`.  T-SQL
  // doubles a closing mark inside; Oracle names hold none.
  Byte const* name(Byte const* p, Byte close) {
    Byte const* const at = closing(p + 1, close, m_g.tsql);
    return emit(Kind::kName, p, p + 1, at, at == m_end ? m_end : at + 1);
  }

  Byte const* block_comment(Byte const* p) {
    Byte const* const close = m_g.tsql ? nested_comment_close(p + 2) : comment_close(p + 2);
    return emit(Kind::kBlockComment, p, p + 2, close, close == m_end ? m_end : close + 2);
  }

  // The "*/" that closes a comment opened before `x`, nested pairs counted.
  Byte const* nested_comment_close(Byte const* x) const {
    int depth = 1;
    while (x < m_end) {
      if (x[0] == '/' && x[1] == '*') {
        ++depth;
        x += 2;
      } else if (x[0] == '*' && x[1] == '/') {
        if (--depth == 0) return x;
        x += 2;
      } else {
        ++x;
      }
    }
    return m_end;
  }

  Byte const* comment_close(Byte const* x) const {
    while (x < m_end) {
      auto const* const star = static_cast<Byte const*>(std::memchr(x, '*', m_end - x));
      if (star == nullptr) break;
      if (star[1] == '/') return star;
      x = star + 1;
    }
    return m_end;
  }

  // The first `mark` at or after `x` that is not doubled (when `doubled`
  // stands for one inside), or the end.
  Byte const* closing(Byte const* x, Byte mark, bool doubled) const {
    while (x < m_end) {
      auto const* const found = static_cast<Byte const*>(std::memchr(x, mark, m_end - x));
      if (found == nullptr) break;
      if (!doubled || found[1] != mark) return found;
      x = found + 2;
    }
    return m_end;
  }

  // The line end at or after `x` (its CR of a CR LF), or the end.
  Byte const* line_end(Byte const* x) const {
    auto const* const found = static_cast<Byte const*>(std::memchr(x, '\n', m_end - x));
    if (found == nullptr) return m_end;
    return found > x && found[-1] == '\r' ? found - 1 : found;
  }

  // The length of the prefix before the quote at `q`: N or U& in T-SQL, N,
  // q or nq in PL/SQL, in any case, where the prefix begins a word.
  std::size_t prefix_length(Byte const* q) const {
    Byte const b1 = before(q, 1) | 0x20;
    Byte const b2 = before(q, 2) | 0x20;
    if (m_g.tsql) {
      if (b1 == 'n' && !is_word_byte(before(q, 2))) return 1;
      if (before(q, 1) == '&' && b2 == 'u' && !is_word_byte(before(q, 3))) return 2;
      return 0;
    }
    if ((b1 == 'n' || b1 == 'q') && !is_word_byte(before(q, 2))) return 1;
    if (b1 == 'q' && b2 == 'n' && !is_word_byte(before(q, 3))) return 2;
    return 0;
  }

  // The original byte `k` places before `q`: in the current run, or the
  // last byte of what came before it (0 at the start of the text).
  // Further back is never asked for: a prefix lies in the run.
  Byte before(Byte const* q, std::size_t k) const {
    if (static_cast<std::size_t>(q - m_run) >= k) return q[-static_cast<std::ptrdiff_t>(k)];
    if (static_cast<std::size_t>(q - m_run) + 1 == k) return m_last;
    return 0;
  }

  // Hands over the code before `begin`, then the part; returns its end.
  Byte const* emit(Kind kind, Byte const* begin, Byte const* content, Byte const* close,
                   Byte const* end) {
    flush(begin);
    Part const part{kind, begin, content, close, end};
    if (end > begin) m_last = end[-1];
    note_part(kind);
    m_v.part(part);
    m_run = end;
    // Closed parts end before the text does; a line comment or a command
    // line has no closing mark, so its close is its end.
    if (close == m_end) m_open = kind;
    return end;
  }

  // A byte that is code although it may open a part.
  Byte const* lone(Byte const* p) {
    flush(p);
    m_last = *p;
    if (*p != '\n') m_statement_start = false;
    m_v.lone(p);
    m_run = p + 1;
    return p + 1;
  }

  // Hands over the run of code before `to`.
  void flush(Byte const* to) {
    if (to == m_run) return;
    if (m_g.commands && !m_g.tsql) note_code(m_run, to);
    m_last = to[-1];
    m_v.code(m_run, to);
    m_run = to;
  }

  // A statement may begin after a ";" as the last byte of code that is not
  // blank; comments change nothing, literals and names end that chance.
  void note_code(Byte const* from, Byte const* to) {
    for (Byte const* x = to; x > from; --x) {
      Byte const c = x[-1];
      if (is_blank(c) || c == '\r' || c == '\n') continue;
      m_statement_start = c == ';';
      return;
    }
  }
  void note_part(Kind kind) {
    if (kind == Kind::kString || kind == Kind::kName) m_statement_start = false;
    if (kind == Kind::kCommand) m_statement_start = true;
  }

  // A command line starting at `line`: handed over (the blanks before it
  // as code) and true; else false.
  bool command_line(Byte const* line) {
    Byte const* x = line;
    while (x < m_end && is_blank(*x)) ++x;
    bool const found =
        m_g.tsql ? is_sqlcmd_line(x, m_end) : is_sqlplus_line(x, m_end, m_statement_start);
    if (!found) return false;
    emit(Kind::kCommand, x, x, line_end(x), line_end(x));
    return true;
  }

  Grammar const m_g;
  StopTable const& m_stops;
  StopSet const m_stop_set;
  Byte const* const m_begin;
  Byte const* const m_end;
  Visitor& m_v;
  Byte const* m_run = nullptr;  // where the code not yet handed over begins
  Byte m_last = 0;              // the original byte before m_run
  Kind m_open = Kind::kCode;    // a part left open at the end
  bool m_statement_start = true;
};

// Walks `text` (`length` bytes, its terminator after them) with `visitor`;
// returns the context at its end.
template <class Visitor>
Kind scan(Grammar const& grammar, char const* text, std::size_t length, Visitor& visitor) {
  auto const* const begin = reinterpret_cast<Byte const*>(text);
  return Scanner<Visitor>(grammar, begin, begin + length, visitor).run();
}

}  // namespace zelstr::sql::code

#endif  // ZELSTR_SQL_CODE_SCAN_H
