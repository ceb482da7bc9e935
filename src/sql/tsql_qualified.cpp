// tsql_qualified.cpp - T-SQL qualified names: server.database.schema.object.
//
// A qualified name has one to four parts separated by dots.  A part is
// delimited ([...] or "...", a doubled closing mark inside standing for
// one, dots and blanks kept) or plain (any characters but the dot and the
// delimiters; blanks at its ends are not part of it); it may be empty
// (db..t has an empty schema).  Blanks around the dots are allowed.  These
// are the rules of the server's PARSENAME: its NULL parts are the empty
// ones here, and where it gives NULL for the whole name (five parts, an
// unterminated delimiter, a lone quotation mark) the splitter finds a
// syntax error.
#include <cstring>
#include <new>

#include "errsvc/errsvc.h"
#include "frame/memory.h"
#include "sql/report.h"
#include "sql/tsql_rules.h"
#include "zelstr/tsql.h"

namespace {

using zelstr::frame::Unit;
namespace sql = zelstr::sql;

constexpr int kMaxParts = 4;
// SplitQualCodeName: only the delimiters the connection's settings accept.
constexpr unsigned long kConnectionDelimiters = 1;
// DenormalizeQualId: reserved words are not delimited.
constexpr unsigned long kKeepReservedWords = 1;

void warn(char const* text, char const* function, int line = __builtin_LINE()) {
  zelstr::frame::report(Unit::connfortsqlstrfncs, zelstr::frame::Message{-1, 4, text}, function,
                        line);
}

namespace tokens = zelstr::str::tokens;

struct Parts {
  sql::NamePart part[kMaxParts];
  int count = 0;
};

bool is_delimiter(char c) { return c == '[' || c == ']' || c == '"'; }

// Reads the parts of `name`; false on a syntax error.  `any_delimiter`:
// both kinds of delimiters count, whatever the settings say.  A plain part
// runs to the next dot and holds no delimiter.
bool read_parts(char const* name, sql::TsqlRules const& rules, bool any_delimiter, Parts& out) {
  for (char const* p = name;;) {
    p = tokens::skip_blanks(p);
    if (out.count == kMaxParts) return false;
    sql::NamePart& part = out.part[out.count++];
    if ((*p == '[' || *p == '"') && (any_delimiter || rules.delimits(*p))) {
      p = tokens::read_delimited(p, part);
    } else {
      p = tokens::read_plain(p, part, [](char c) { return c == '.' || is_delimiter(c); });
      if (is_delimiter(*p)) p = nullptr;
    }
    if (p == nullptr || part.length >= rules.limit) return false;
    p = tokens::skip_blanks(p);
    if (*p == '\0') return true;
    if (*p != '.') return false;
    ++p;
  }
}

// Room for the parts in source form: each delimited, with its closing marks
// doubled, and the dots.
std::size_t source_room(Parts const& parts) {
  std::size_t room = static_cast<std::size_t>(parts.count);  // dots and the terminator
  for (int i = 0; i < parts.count; ++i) room += 2 * parts.part[i].length + 2;
  return room;
}

}  // namespace

int CHTSQL::SplitQualCodeName(char const* name, char*** components,
                              unsigned long flags) const noexcept {
  static constexpr char kFunction[] = "CHTSQL::SplitQualCodeName()";
  if (components != nullptr) *components = nullptr;
  if (flags > kConnectionDelimiters) {
    warn(ErrHand_Msg_ERRSVC_INCOHERENT_FLAG(), kFunction);
    return 0;
  }
  if (name == nullptr || *name == '\0' || components == nullptr) {
    warn(ErrHand_Msg_ERRSVC_BAD_ARGUMENT(), kFunction);
    return 0;
  }
  sql::TsqlRules rules;
  Parts parts;
  if (!sql::tsql_rules(GetConnection(), rules) ||
      !read_parts(name, rules, flags != kConnectionDelimiters, parts)) {
    return 0;
  }
  if (parts.count < 1 || parts.count > kMaxParts) {  // the reader broke its own bounds
    warn(ErrHand_Msg_ERRSVC_INTERNAL_ERROR(), kFunction);
    return 0;
  }
  *components = tokens::new_components(parts.part, parts.count);
  return *components != nullptr ? parts.count : 0;
}

int CHTSQL::DenormalizeQualId(char* buffer, unsigned long flags) const noexcept {
  static constexpr char kFunction[] = "CHTSQL::DenormalizeQualId()";
  if (flags > kKeepReservedWords) {
    warn(ErrHand_Msg_ERRSVC_INCOHERENT_FLAG(), kFunction);
    return 0;
  }
  if (buffer == nullptr || *buffer == '\0') {
    warn(ErrHand_Msg_ERRSVC_BAD_ARGUMENT(), kFunction);
    return 0;
  }
  sql::TsqlRules rules;
  Parts parts;
  if (!sql::tsql_rules(GetConnection(), rules) || !read_parts(buffer, rules, true, parts)) {
    warn(ErrHand_Msg_ERRSVC_BAD_ARGUMENT(), kFunction);
    return 0;
  }
  // Built aside, since the parts are read from the buffer being rewritten.
  char* const result = new (std::nothrow) char[source_room(parts)];
  if (result == nullptr) {
    zelstr::frame::note_allocation_failure();
    return 0;
  }
  char* out = result;
  bool written = true;
  for (int i = 0; i < parts.count && written; ++i) {
    if (i > 0) *out++ = '.';
    tokens::copy_part(parts.part[i], out, parts.part[i].length + 1);
    // A part that needs delimiters the connection does not take cannot be
    // written (reported by the conversion).
    written = *out == '\0' || sql::tsql_to_source(GetConnection(), out, flags, kFunction) == 1;
    out += std::strlen(out);
  }
  if (written) std::memcpy(buffer, result, static_cast<std::size_t>(out - result) + 1);
  delete[] result;
  return written ? 1 : 0;
}

char const* CHTSQL::GetDenormalizedQualId(char const* name, unsigned long flags) const noexcept {
  if (name == nullptr) {
    warn(ErrHand_Msg_ERRSVC_BAD_ARGUMENT(), "CHTSQL::GetDenormalizedQualId()");
    return nullptr;
  }
  // Each byte may be doubled; each of four parts gains two delimiters.
  std::size_t const length = std::strlen(name);
  char* copy = new (std::nothrow) char[2 * length + 2 * kMaxParts + 1];
  if (copy == nullptr) {
    zelstr::frame::note_allocation_failure();
    return nullptr;
  }
  std::memcpy(copy, name, length + 1);
  if (DenormalizeQualId(copy, flags) == 0) {
    delete[] copy;
    return nullptr;
  }
  return copy;
}
