// allowed_charsets.cpp - the tables of characters allowed in identifiers.
//
// One pair of tables per language serves every connection.  An entry whose
// settings changed since it last built them rebuilds them; an entry whose
// flag is still set receives the tables as they are, possibly built from
// another connection's settings.  The tables are only rebuilt on demand.
#include <cstring>

#include "chars/setdef.h"
#include "sql/connection_env.h"
#include "sql/report.h"
#include "zelstr/sqlsettings.h"

namespace {

using zelstr::frame::Unit;
namespace msg = zelstr::sql::msg;
namespace sql = zelstr::sql;

struct CharsetPair {
  char const language;
  char const* const bad_first_format;
  char const* const bad_others_format;
  unsigned char first[256];
  unsigned char others[256];
};

CharsetPair g_tsql{'T', msg::kTsqlCharsetBadFirstFormat, msg::kTsqlCharsetBadOthersFormat, {}, {}};
CharsetPair g_plsql{
    'P', msg::kPlsqlCharsetBadFirstFormat, msg::kPlsqlCharsetBadOthersFormat, {}, {}};

// Reads `definition` into `table`: a bracketed set definition, or a plain
// list of characters.  False when it cannot be read.
bool read_definition(char const* definition, unsigned char* table) {
  if (definition == nullptr || *definition == '\0') return false;
  if (definition[0] == '[') {
    unsigned char const* const members = zelstr::chars::compile_members(definition);
    if (members == nullptr) return false;
    std::memcpy(table, members, 256);
    return true;
  }
  std::memset(table, 0, 256);
  for (char const* p = definition; *p != '\0'; ++p) table[static_cast<unsigned char>(*p)] = 1;
  return true;
}

bool read_or_warn(char const* definition, unsigned char* table, char const* format) {
  if (read_definition(definition, table)) return true;
  sql::warn_format(Unit::connectionenv, __LINE__, format,
                   definition == nullptr ? "<null>" : definition);
  return false;
}

int build(CharsetPair& pair, char*& allowedAs1st, char*& allowedAsOthers, void const* connection) {
  allowedAs1st = nullptr;
  allowedAsOthers = nullptr;
  bool own = false;
  CConnectionEnv* const entry = CConnectionEnv::FindOrDefault(connection, pair.language, &own);
  if (entry == nullptr) return 0;
  if (entry->m_bCharsetsBuilt == 0) {
    if (!read_or_warn(entry->m_pszAllowedAs1st, pair.first, pair.bad_first_format)) return 0;
    if (!read_or_warn(entry->m_pszAllowedAsOthers, pair.others, pair.bad_others_format)) return 0;
  }
  allowedAs1st = reinterpret_cast<char*>(pair.first);
  allowedAsOthers = reinterpret_cast<char*>(pair.others);
  entry->m_bCharsetsBuilt = 1;
  return own ? 1 : 0;
}

}  // namespace

int _zstr_build_tsql_allowed_charsets(char*& allowedAs1st, char*& allowedAsOthers,
                                      void const* const connection) noexcept {
  return build(g_tsql, allowedAs1st, allowedAsOthers, connection);
}

int _zstr_build_plsql_allowed_charsets(char*& allowedAs1st, char*& allowedAsOthers,
                                       void const* const connection) noexcept {
  return build(g_plsql, allowedAs1st, allowedAsOthers, connection);
}
