// sql_code.h - what the tool's SQL commands share: the T-SQL connections
// the tool reads names and code with, and the reading of an input's code,
// with what is not code hidden (hide, grep --code-only, findall
// --code-only).
#ifndef ZELSTR_TOOL_SQL_CODE_H
#define ZELSTR_TOOL_SQL_CODE_H

#include <string>

#include "tool/input.h"
#include "tool/invocation.h"

namespace zelstr::tool {

// The tool's T-SQL settings, by the delimiters that count: both (SQL Server
// 2016 with quoted identifiers on, the default of tsqlname and qname),
// brackets only (quoted identifiers off), or double quotation marks only (a
// Sybase version, where brackets are off).  "[" is the mark for names that
// need one where it delimits; names have up to 128 characters.
void const* tsql_connection(bool brackets = true, bool quotes = true);

// How a command reads SQL code and what it hides in it.
struct CodeReading {
  bool oracle = false;     // Oracle SQL and PL/SQL, else T-SQL
  bool quoted_id = false;  // T-SQL: "..." is a name, not a literal
  int flags = 0;           // ZEAL_HIDE_* (codehide.h)
  char filler = ' ';
};

// The dialect options of a command that reads code: --tsql, --oracle and
// --quoted-id, which need the option `needed` when one is given (nullptr:
// none needed).  `flags` and `filler` are left to the command.  False, with
// the usage message, when an option is given without `needed`.
bool read_dialect(Invocation& inv, CodeReading& reading, char const* needed = nullptr);

// Hides in `text`, in place, what `reading` names; returns the context at
// the end of the text (ZEAL_SQL_*, codehide.h).  Brackets always delimit
// names in T-SQL code, double quotation marks with quoted identifiers on.
int hide_code(CodeReading const& reading, std::string& text);

// The line (from 1) where the part left open at the end of `text` opened;
// 0 when that cannot be told.
unsigned long long opening_line(CodeReading const& reading, std::string const& text);

// Reads `in` whole into `text` and gives in `hidden` the same text with
// what `reading` names hidden.  A literal, comment or name left open at the
// end (and so hidden, or read, to the end) is reported with the line where
// it opened: as an error when `open_is_error`, else as a notice.  False on
// a read error (reported).
bool read_code(Invocation& inv, Input& in, CodeReading const& reading, bool open_is_error,
               std::string& text, std::string& hidden);

}  // namespace zelstr::tool

#endif  // ZELSTR_TOOL_SQL_CODE_H
