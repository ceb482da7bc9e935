// tsql_names.cpp - T-SQL names between source form and system form.
//
// A T-SQL name keeps its case: the system form of a regular name is the
// name as written, that of a delimited one its text without the delimiters,
// doubled closing marks made single.  Every bad argument is reported with
// the service's bad-argument (or incoherent-flag) text, and the name is
// left as it was.
#include <cstring>

#include "errsvc/errsvc.h"
#include "sql/name_length.h"
#include "sql/names.h"
#include "sql/report.h"
#include "sql/tsql_rules.h"
#include "zelstr/alloc.h"
#include "zelstr/tsql.h"

namespace {

using zelstr::frame::Unit;
namespace sql = zelstr::sql;

constexpr unsigned long kKeepReservedWords = 1;

void warn(char const* text, char const* function, int line = __builtin_LINE()) {
  zelstr::frame::report(Unit::connfortsqlstrfncs, zelstr::frame::Message{-1, 4, text}, function,
                        line);
}
void warn_bad_argument(char const* function, int line = __builtin_LINE()) {
  warn(ErrHand_Msg_ERRSVC_BAD_ARGUMENT(), function, line);
}

// Reads `name` (not empty) as one source-form name under `rules`: a lone
// delimited part, or a regular name.  False when it is not one, or its
// system form is empty or reaches the limit.
bool read_source(char const* name, sql::TsqlRules const& rules, sql::NamePart& part) {
  if (rules.delimits(name[0])) {
    char const* const after = zelstr::str::tokens::read_delimited(name, part);
    if (after == nullptr || *after != '\0') return false;
  } else {
    if (!sql::is_regular_tsql(name, rules)) return false;
    part = sql::NamePart{name, name + std::strlen(name), '\0', std::strlen(name)};
  }
  return part.length != 0 && part.length < rules.limit;
}

// Source form to system form under the rules of `connection`, reporting
// as `function`.
int to_system(void const* connection, char* name, char const* function) {
  sql::TsqlRules rules;
  sql::NamePart part;
  if (name == nullptr || *name == '\0' || !sql::tsql_rules(connection, rules) ||
      !read_source(name, rules, part)) {
    sql::note_name_length(-1);
    warn_bad_argument(function);
    return 0;
  }
  // Moved down over the opening mark: the copy never overtakes its source.
  if (part.close != '\0') zelstr::str::tokens::copy_part(part, name, part.length + 1);
  sql::note_name_length(static_cast<std::ptrdiff_t>(part.length));
  return 1;
}

// `noting`: the call writes the name's length for the name-length command
// (the qualified names' parts do not).
int to_source(void const* connection, char* name, unsigned long flags, char const* function,
              bool noting = true) {
  if (noting) sql::note_name_length(-1);
  if (flags > kKeepReservedWords) {
    warn(ErrHand_Msg_ERRSVC_INCOHERENT_FLAG(), function);
    return 0;
  }
  sql::TsqlRules rules;
  if (name == nullptr || *name == '\0' || !sql::tsql_rules(connection, rules) ||
      std::strlen(name) >= rules.limit) {
    warn_bad_argument(function);
    return 0;
  }
  std::size_t const length = std::strlen(name);
  if (sql::needs_delimiters(name, rules, flags != kKeepReservedWords)) {
    if (!rules.delimits(rules.mark)) {  // the connection takes no delimiter
      warn_bad_argument(function);
      return 0;
    }
    sql::delimit(name, rules.mark, sql::closing_mark(rules.mark));
  }
  if (noting) sql::note_name_length(static_cast<std::ptrdiff_t>(length));
  return 1;
}

// Room a name needs to be delimited in place: the marks and one per closing
// mark of either kind.
std::size_t delimiting_room(char const* name) {
  return 2 + sql::count_of(name, ']') + sql::count_of(name, '"');
}

}  // namespace

int _ztsqlvalidsysname(void const* const connection, char const* name, int /*kind*/) noexcept {
  sql::note_name_length(-1);
  if (name == nullptr) {
    warn_bad_argument(zelstr::frame::kUnknownFunction);
    return 0;
  }
  sql::TsqlRules rules;
  if (*name == '\0' || !sql::tsql_rules(connection, rules)) return 0;
  std::size_t const length = std::strlen(name);
  if (length >= rules.limit || !sql::is_regular_tsql(name, rules)) return 0;
  sql::note_name_length(static_cast<std::ptrdiff_t>(length));
  return 1;
}

int _ztsqlvalidsysname(char const* name, int kind) noexcept {
  return _ztsqlvalidsysname(nullptr, name, kind);
}

int _ztsql2sysname(void const* const connection, char* name) noexcept {
  return to_system(connection, name, zelstr::frame::kUnknownFunction);
}

int _ztsql2sysname(char* name) noexcept { return _ztsql2sysname(nullptr, name); }

char* _ztsql2sysname(void const* const connection, char const* name) noexcept {
  sql::note_name_length(-1);
  if (name == nullptr) {
    warn_bad_argument(zelstr::frame::kUnknownFunction);
    return nullptr;
  }
  return sql::converted_copy(name, 0, [connection](char* copy) {
    return to_system(connection, copy, zelstr::frame::kUnknownFunction);
  });
}

char* _ztsql2sysname(char const* name) noexcept { return _ztsql2sysname(nullptr, name); }

int _zsysname2tsql(void const* const connection, char* name, int flags) noexcept {
  return to_source(connection, name, static_cast<unsigned long>(flags),
                   zelstr::frame::kUnknownFunction);
}

int _zsysname2tsql(char* name, int flags) noexcept { return _zsysname2tsql(nullptr, name, flags); }

char* _zsysname2tsql(void const* const connection, char const* name, int flags) noexcept {
  sql::note_name_length(-1);
  if (name == nullptr) {
    warn_bad_argument(zelstr::frame::kUnknownFunction);
    return nullptr;
  }
  return sql::converted_copy(name, delimiting_room(name), [connection, flags](char* copy) {
    return to_source(connection, copy, static_cast<unsigned long>(flags),
                     zelstr::frame::kUnknownFunction);
  });
}

char* _zsysname2tsql(char const* name, int flags) noexcept {
  return _zsysname2tsql(nullptr, name, flags);
}

int CHTSQL::IsValidCodeName(char const* name) const noexcept {
  sql::note_name_length(-1);
  if (name == nullptr) {
    warn_bad_argument("CHTSQL::IsValidCodeName()");
    return 0;
  }
  sql::TsqlRules rules;
  sql::NamePart part;
  if (*name == '\0' || !sql::tsql_rules(GetConnection(), rules)) return 0;
  if (!read_source(name, rules, part)) return 0;
  sql::note_name_length(static_cast<std::ptrdiff_t>(part.length));
  return 1;
}

namespace zelstr::sql {

int tsql_to_source(void const* connection, char* name, unsigned long flags, char const* function) {
  return to_source(connection, name, flags, function, false);
}

}  // namespace zelstr::sql
