// tsql_rules.cpp - a connection's rules for T-SQL names, and reading parts.
#include "sql/tsql_rules.h"

#include "sql/connection_env.h"
#include "sql/names.h"
#include "sql/versions.h"
#include "zelstr/reserved.h"
#include "zelstr/sqlsettings.h"

namespace zelstr::sql {

bool tsql_rules(void const* connection, TsqlRules& rules) {
  CConnectionEnv const* const settings = CConnectionEnv::FindOrDefault(connection, 'T', nullptr);
  if (settings == nullptr) return false;
  char* first = nullptr;
  char* others = nullptr;
  _zstr_build_tsql_allowed_charsets(first, others, connection);
  if (first == nullptr || others == nullptr) return false;
  rules.quotes = settings->m_bQuotedId != 0;
  rules.brackets = settings->m_bBracketedId != 0 || is_sql_server_version(settings->m_nVersion);
  // The default mark, unless the connection does not take it as a delimiter
  // (a double quotation mark opens a string literal where quoted
  // identifiers are off) and takes the other one.
  char mark = settings->m_cDefltQuote == '[' ? '[' : '"';
  char const other = mark == '[' ? '"' : '[';
  if (!rules.delimits(mark) && rules.delimits(other)) mark = other;
  rules.mark = mark;
  rules.limit = settings->m_nMaxName > 0 ? static_cast<std::size_t>(settings->m_nMaxName) : 0;
  rules.version = settings->m_nVersion;
  rules.first = first;
  rules.others = others;
  return true;
}

bool is_regular_tsql(char const* name, TsqlRules const& rules) {
  return *name != '\0' && is_regular(name, rules.first, rules.others);
}

bool needs_delimiters(char const* name, TsqlRules const& rules, bool reserved) {
  if (!is_regular_tsql(name, rules)) return true;
  return reserved && is_tsql_version(rules.version) && _zistsqlresword(name, rules.version) != 0;
}

}  // namespace zelstr::sql
