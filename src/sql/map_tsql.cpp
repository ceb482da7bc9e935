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

class Mapper {
 public:
  explicit Mapper(Byte const* table) : m_table(table), m_translate(table) {}

  // The CR of a CR LF that ends a line comment is kept with the comment,
  // as this function always did.
  void code(Byte const* from, Byte const* to) {
    if (m_after_line_comment && *from == '\r') ++from;
    m_after_line_comment = false;
    translate(from, to);
  }
  void lone(Byte const*) { m_after_line_comment = false; }
  // Where the part handed over last begins.
  Byte const* last_begin() const { return m_last_begin; }
  void part(code::Part const& part) {
    m_last_begin = part.begin;
    m_after_line_comment = part.kind == Kind::kLineComment;
    if (part.kind == Kind::kName) {
      translate(part.content, part.end);
    } else if (part.kind == Kind::kString) {
      keep_prefix_case(part.begin, part.content - 1);
    }
  }

 private:
  void translate(Byte const* from, Byte const* to) const {
    m_translate(const_cast<Byte*>(from), const_cast<Byte*>(to));
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
  Mapper mapper(table);
  Kind const kind = code::scan(grammar, code, length, mapper);
  if (context != nullptr) *context = static_cast<int>(kind);
  if (open != nullptr && kind != Kind::kCode) {
    *open = static_cast<int>(mapper.last_begin() - reinterpret_cast<Byte const*>(code));
  }
}

void _zmaptsqlapply(void* map, char* code, int quotedId) noexcept {
  _zmaptsqlapply(map, code, quotedId, nullptr, nullptr);
}
