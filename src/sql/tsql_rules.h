// tsql_rules.h - what a connection's settings say about T-SQL names, and
// the reading of one name part in source form.
//
// A part is regular (its characters in the allowed-character tables: first
// and others) or delimited: [...] with "]]" for an inner "]", or "..." with
// '""' for an inner '"'.  Which delimiters a connection accepts depends on
// its settings: double quotation marks when quoted identifiers are on,
// square brackets always on SQL Server and on Sybase when bracketed
// identifiers are on.  A system name (the part without its delimiters) is
// shorter than the connection's maximum name length.
#ifndef ZELSTR_SQL_TSQL_RULES_H
#define ZELSTR_SQL_TSQL_RULES_H

#include <cstddef>

#include "str/tokens/name_parts.h"

namespace zelstr::sql {

struct TsqlRules {
  bool quotes = false;    // "..." delimits a name
  bool brackets = false;  // [...] delimits a name
  char mark = '"';        // the opening mark that delimits a name that needs it
  std::size_t limit = 0;  // a system name is shorter than this
  int version = 0;
  char const* first = nullptr;  // allowed-character tables
  char const* others = nullptr;

  bool delimits(char open) const { return open == '[' ? brackets : open == '"' && quotes; }
};

// The rules of `connection` (NULL: the defaults); false when its settings
// or character tables cannot be had.
bool tsql_rules(void const* connection, TsqlRules& rules);

// A part's delimiters and system form are read as every splitter reads
// them (str/tokens/name_parts.h).
using str::tokens::closing_mark;
using str::tokens::NamePart;

// True when `name` is regular under `rules`' tables.
bool is_regular_tsql(char const* name, TsqlRules const& rules);

// True when the system name `name` must be delimited to be written in code:
// not regular, or reserved in the connection's version when `reserved`.
bool needs_delimiters(char const* name, TsqlRules const& rules, bool reserved);

// _zsysname2tsql on `name` in place (`flags` 0: reserved words are
// delimited; 1: kept), its warnings naming `function` (tsql_names.cpp).
int tsql_to_source(void const* connection, char* name, unsigned long flags, char const* function);

}  // namespace zelstr::sql

#endif  // ZELSTR_SQL_TSQL_RULES_H
