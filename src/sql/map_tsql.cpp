// map_tsql.cpp - applying a character map to the words of T-SQL code.
//
// One pass over the code.  Ordinary characters are translated as they are
// met; five characters may open something that is not translated (or not
// the same way): the apostrophe and, when QUOTED_IDENTIFIER is off, the
// double quotation mark open string literals, kept as they are; "--" and
// "/*" open comments, kept too; "[" and, when QUOTED_IDENTIFIER is on, the
// double quotation mark open delimited names, translated whole.
//
// The national and Unicode string prefixes N'...' and U&'...' keep their
// case: when a literal opens, the original characters just before it are
// looked at, so the walk keeps the last three original characters in a
// small shift register (translation has already overwritten them).  The
// translation of ordinary characters, most of the work, runs close to a
// bare table-translate loop; literals and comments are skipped with the C
// library's byte search.
#include <cstdint>
#include <cstring>

#include "map/map_handle.h"
#include "zelstr/tsql.h"

namespace {

// The characters that stop the translation loop (and the terminator).
constexpr bool is_stop(unsigned char c) {
  return c == '\0' || c == '\'' || c == '"' || c == '-' || c == '/' || c == '[';
}

struct ByteTable {
  bool at[256];
};

constexpr ByteTable make_stops() {
  ByteTable t{};
  for (int c = 0; c < 256; ++c) t.at[c] = is_stop(static_cast<unsigned char>(c));
  return t;
}

// Characters that may precede a prefix inside one word: letters, digits,
// "@", "#", "_", "$" and every byte from 0x80 to 0xFF.
constexpr ByteTable make_word_chars() {
  ByteTable t{};
  for (int c = 0; c < 256; ++c) {
    t.at[c] = (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') ||
              c == '@' || c == '#' || c == '_' || c == '$' || c >= 0x80;
  }
  return t;
}

constexpr ByteTable kStops = make_stops();
constexpr ByteTable kWordChars = make_word_chars();

struct IdentityTable {
  unsigned char at[256];
};
constexpr IdentityTable make_identity() {
  IdentityTable t{};
  for (int c = 0; c < 256; ++c) t.at[c] = static_cast<unsigned char>(c);
  return t;
}
constexpr IdentityTable kIdentity = make_identity();

class TsqlMapper {
 public:
  TsqlMapper(unsigned char const* table, char* code, bool quoted_id)
      : m_table(table), m_p(reinterpret_cast<unsigned char*>(code)), m_quoted_id(quoted_id) {}

  void run() {
    for (;;) {
      translate_run();
      switch (*m_p) {
        case '\0':
          return;
        case '\'':
          open_literal('\'');
          break;
        case '"':
          if (m_quoted_id) {
            translate_delimited('"');
          } else {
            open_literal('"');
          }
          break;
        case '[':
          translate_delimited(']');
          break;
        case '-':
          if (m_p[1] == '-') {
            keep_until(find_line_end(m_p + 2));
          } else {
            keep_until(m_p + 1);
          }
          break;
        default:  // '/'
          if (m_p[1] == '*') {
            keep_until(find_comment_end(m_p + 2));
          } else {
            keep_until(m_p + 1);
          }
          break;
      }
    }
  }

 private:
  // Translates ordinary characters up to the next stop character.  The
  // translation lags three bytes behind the stop test, so that the last
  // three originals are still in place when the run ends; they go to the
  // history and are translated then.  (Shifting every byte into the
  // history would chain each byte's work to the one before.)
  void translate_run() {
    unsigned char* const start = m_p;
    unsigned char* p = start;
    while (p - start < 3 && !kStops.at[*p]) ++p;
    if (p - start == 3) {
      for (unsigned char c = *p; !kStops.at[c]; c = *++p) p[-3] = m_table[p[-3]];
    }
    unsigned char* q = p - start < 3 ? start : p - 3;
    for (; q < p; ++q) {
      m_back = (m_back << 8) | *q;
      *q = m_table[*q];
    }
    m_p = p;
  }

  // Passes over [m_p, end) unchanged.
  void keep_until(unsigned char* end) {
    unsigned char* const from = end - m_p > 3 ? end - 3 : m_p;
    for (unsigned char* p = from; p < end; ++p) {
      m_back = (m_back << 8) | *p;
    }
    m_p = end;
  }

  // A literal opens at m_p: restore a prefix, then keep it to its closing
  // quote (or to the end of the code).
  void open_literal(unsigned char quote) {
    restore_prefix();
    unsigned char* close = find_byte(m_p + 1, quote);
    keep_until(*close == '\0' ? close : close + 1);
  }

  // A delimited name: the opening delimiter stays, the rest is translated
  // up to and with its closing delimiter; a doubled closing delimiter does
  // not close it.  Afterwards the history need only hold the closing
  // delimiter: a prefix test looks further back only past an N, U or &.
  void translate_delimited(unsigned char close) {
    unsigned char* p = m_p + 1;
    for (;;) {
      unsigned char const c = *p;
      if (c == '\0') break;
      *p++ = m_table[c];
      if (c != close) continue;
      if (*p != close) break;
      *p++ = m_table[close];
    }
    m_back = close;
    m_p = p;
  }

  // The original characters before the literal's quote were N, or U and &,
  // which the map would change from upper case: put the upper case back
  // when the prefix begins a word.
  void restore_prefix() {
    constexpr unsigned char kN = 'N';
    constexpr unsigned char kU = 'U';
    unsigned const b1 = m_back & 0xFF;
    unsigned const b2 = (m_back >> 8) & 0xFF;
    unsigned const b3 = (m_back >> 16) & 0xFF;
    if (b1 == kN && m_table[kN] == 'n' && !kWordChars.at[b2]) m_p[-1] = kN;
    if (b1 == '&' && b2 == kU && m_table[kU] == 'u' && !kWordChars.at[b3]) m_p[-2] = kU;
  }

  // The first `c` at or after `p`, else the terminator.  The C library's
  // search is much faster than a byte loop over long comments and literals.
  static unsigned char* find_byte(unsigned char* p, unsigned char c) {
    char* const s = reinterpret_cast<char*>(p);
    char* const found = std::strchr(s, c);
    return reinterpret_cast<unsigned char*>(found != nullptr ? found : s + std::strlen(s));
  }

  static unsigned char* find_line_end(unsigned char* p) { return find_byte(p, '\n'); }

  // Just past the "*/" that closes a comment whose "/*" ends before `p`,
  // counting the comments nested in it; the end of the code otherwise.
  static unsigned char* find_comment_end(unsigned char* p) {
    int depth = 1;
    while (*p != '\0') {
      if (p[0] == '/' && p[1] == '*') {
        ++depth;
        p += 2;
      } else if (p[0] == '*' && p[1] == '/') {
        p += 2;
        if (--depth == 0) break;
      } else {
        ++p;
      }
    }
    return p;
  }

  unsigned char const* m_table;
  unsigned char* m_p;
  bool m_quoted_id;
  // The original characters before m_p: bits 0-7 the one just before, then
  // the two before it (0 before the start of the code); after a delimited
  // name, only its closing delimiter.
  std::uint32_t m_back = 0;
};

}  // namespace

void _zmaptsqlapply(void* map, char* code, int quotedId) noexcept {
  if (code == nullptr || *code == '\0' || map == nullptr) return;
  unsigned char const* const table =
      zelstr::map::is_bad(map) ? kIdentity.at : zelstr::map::table_of(map);
  TsqlMapper(table, code, quotedId != 0).run();
}
