// map_tsql.cpp - applying a character map to the words of T-SQL code.
//
// A visitor of the code scanner (code_scan.h): runs of code are translated
// with the map's table; string literals and comments are kept byte for
// byte; delimited names keep their opening mark and are translated from
// there to the closing mark included.  The bytes that may open a part but
// did not ("-" and "/" alone) are kept, as are literals' prefixes that
// would lose their case: the N of N'...' and the U of U&'...' stay upper
// case when the map would lower them, so a lower-cased script still reads
// them as prefixes.  Quoted identifiers are a parameter here, not the
// connection's setting.
#include <cstring>

#include "map/map_handle.h"
#include "map/translate.h"
#include "sql/code_scan.h"
#include "zelstr/tsql.h"

namespace {

namespace code = zelstr::sql::code;
using code::Byte;
using code::Kind;

struct IdentityTable {
  Byte at[256];
};
constexpr IdentityTable make_identity() {
  IdentityTable t{};
  for (int c = 0; c < 256; ++c) t.at[c] = static_cast<Byte>(c);
  return t;
}
constexpr IdentityTable kIdentity = make_identity();

// Code is translated a stretch at a time: everything between two spans
// that keep their bytes (a literal, a comment, a byte the map would change
// but that must stay) goes through the table in one call, names included,
// so that the many short runs between literals and names cost one vector
// pass rather than a loop each.  A span is only translated once the
// scanner has handed over the bytes after it, and the scanner never reads
// a byte it has handed over.
class Mapper {
 public:
  // The text's terminator is at `end`.
  Mapper(Byte const* table, Byte const* text, Byte const* end)
      : m_table(table), m_translate(table), m_next(text), m_end(end) {}

  // The CR of a CR LF that ends a line comment is kept with the comment,
  // as this function always did.
  void code(Byte const* from, Byte const*) {
    if (m_after_line_comment && *from == '\r') keep_byte(from);
    m_after_line_comment = false;
  }
  void lone(Byte const* p) {
    m_after_line_comment = false;
    keep_byte(p);
  }
  // Where the part handed over last begins.
  Byte const* last_begin() const { return m_last_begin; }
  void part(code::Part const& part) {
    m_last_begin = part.begin;
    m_after_line_comment = part.kind == Kind::kLineComment;
    if (part.kind == Kind::kName) {
      for (Byte const* p = part.begin; p < part.content; ++p) keep_byte(p);
      return;
    }
    keep(part.begin, part.end);
    if (part.kind == Kind::kString) keep_prefix_case(part.begin, part.content - 1);
  }
  // Translates what is left before the terminator.
  void finish() { keep(m_end, m_end); }

 private:
  // [from, to) keeps its bytes: the stretch before it is translated now.
  void keep(Byte const* from, Byte const* to) {
    // The terminator too may be read and written back.
    m_translate(const_cast<Byte*>(m_next), const_cast<Byte*>(from), m_end + 1);
    m_next = to;
  }
  // A byte the table leaves as it is needs no keeping.
  void keep_byte(Byte const* p) {
    if (m_table[*p] != *p) keep(p, p + 1);
  }

  // Translates a prefix except an N or a U the map would put in lower case.
  void keep_prefix_case(Byte const* from, Byte const* to) const {
    for (Byte* p = const_cast<Byte*>(from); p < to; ++p) {
      constexpr Byte kN = 'N';
      constexpr Byte kU = 'U';
      bool const keeps = (*p == kN && m_table[kN] == 'n') || (*p == kU && m_table[kU] == 'u');
      if (!keeps) *p = m_table[*p];
    }
  }

  Byte const* m_table;
  zelstr::map::Translator m_translate;
  Byte const* m_next;  // the first byte not yet translated nor kept
  Byte const* m_end;   // the text's terminator
  bool m_after_line_comment = false;
  Byte const* m_last_begin = nullptr;
};

}  // namespace

void _zmaptsqlapply(void* map, char* code, int quotedId, int* context, int* open) noexcept {
  std::size_t const length = code != nullptr ? std::strlen(code) : 0;
  if (context != nullptr) *context = static_cast<int>(Kind::kCode);
  if (open != nullptr) *open = static_cast<int>(length);
  if (length == 0 || (map == nullptr && context == nullptr && open == nullptr)) return;
  Byte const* const table =
      map == nullptr || zelstr::map::is_bad(map) ? kIdentity.at : zelstr::map::table_of(map);
  code::Grammar grammar;
  grammar.quoted_id = quotedId != 0;
  auto const* const text = reinterpret_cast<Byte const*>(code);
  Mapper mapper(table, text, text + length);
  Kind const kind = code::scan(grammar, code, length, mapper);
  mapper.finish();
  if (context != nullptr) *context = static_cast<int>(kind);
  if (open != nullptr && kind != Kind::kCode) {
    *open = static_cast<int>(mapper.last_begin() - text);
  }
}

void _zmaptsqlapply(void* map, char* code, int quotedId) noexcept {
  _zmaptsqlapply(map, code, quotedId, nullptr, nullptr);
}
