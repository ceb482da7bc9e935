// plsql_names.cpp - PL/SQL names between source form and system form.
#include <cstring>

#include "sql/connection_env.h"
#include "sql/names.h"
#include "sql/report.h"
#include "sql/versions.h"
#include "zelstr/alloc.h"
#include "zelstr/plsql.h"
#include "zelstr/reserved.h"
#include "zelstr/sqlsettings.h"

namespace {

using zelstr::frame::Unit;
namespace msg = zelstr::sql::msg;
namespace sql = zelstr::sql;

constexpr int kDbLinkName = 2;
constexpr int kOrdinaryName = 4;
constexpr int kDigitFirstName = 8;

// Returned for an empty name by the copying conversions.
char g_empty[1] = "";

bool is_lower(unsigned char c) { return c >= 'a' && c <= 'z'; }
bool is_digit(unsigned char c) { return c >= '0' && c <= '9'; }

// The PL/SQL character tables for `connection`, or false after the warning
// whose format is `no_tables_format`.
bool plsql_tables(void const* connection, char*& first, char*& others,
                  char const* no_tables_format) {
  _zstr_build_plsql_allowed_charsets(first, others, connection);
  if (first != nullptr && others != nullptr) return true;
  sql::warn_format(Unit::connforplsqlstrfncs, __LINE__, no_tables_format,
                   connection == nullptr ? " default" : "");
  return false;
}

// The characters of a system name of `kind`: the tables, lower case, and
// what the kind adds.
bool valid_characters(char const* name, int kind, char const* first, char const* others) {
  auto const* p = reinterpret_cast<unsigned char const*>(name);
  if (!first[*p] && !is_lower(*p) && !(kind == kDigitFirstName && is_digit(*p))) return false;
  for (++p; *p != '\0'; ++p) {
    if (!others[*p] && !is_lower(*p) && !(kind == kDbLinkName && (*p == '.' || *p == '@'))) {
      return false;
    }
  }
  return true;
}

}  // namespace

int _zplsqlvalidsysname(void const* const connection, char const* i_lpcszSysName,
                        int kind) noexcept {
  if (i_lpcszSysName == nullptr) {
    sql::warn(Unit::connforplsqlstrfncs, msg::kPlsqlValidNullName);
    return 0;
  }
  CConnectionEnv const* const settings = CConnectionEnv::FindOrDefault(connection, 'P', nullptr);
  if (settings == nullptr || *i_lpcszSysName == '\0') return 0;
  int const limit = kind == kDbLinkName ? settings->m_nMaxDbLinkName : settings->m_nMaxName;
  if (std::strlen(i_lpcszSysName) >= static_cast<std::size_t>(limit)) return 0;
  if (kind != kDbLinkName && kind != kOrdinaryName && kind != kDigitFirstName) return 1;
  char* first = nullptr;
  char* others = nullptr;
  if (!plsql_tables(connection, first, others, msg::kPlsqlValidNoCharsetsFormat)) return 0;
  return valid_characters(i_lpcszSysName, kind, first, others) ? 1 : 0;
}

int _zplsqlvalidsysname(char const* i_lpcszSysName, int kind) noexcept {
  return _zplsqlvalidsysname(nullptr, i_lpcszSysName, kind);
}

int _zplsql2sysname(char* name, int kind) noexcept {
  if (name == nullptr || *name == '\0') return 1;
  if (name[0] == '"') return zelstr::sql::undelimit(name, '"') ? 1 : 0;
  _zplsqlstrupper(name);
  return _zplsqlvalidsysname(nullptr, name, kind == 1 ? kOrdinaryName : kind);
}

char* _zplsql2sysname(char const* name, int kind) noexcept {
  if (name == nullptr) return nullptr;
  if (*name == '\0') return g_empty;
  return sql::converted_copy(name, 0, [kind](char* copy) { return _zplsql2sysname(copy, kind); });
}

int _zsysname2plsql(void const* const connection, char* name, int flags) noexcept {
  if (name == nullptr || *name == '\0') return 1;
  char* first = nullptr;
  char* others = nullptr;
  if (!plsql_tables(connection, first, others, msg::kSysnameToPlsqlNoCharsetsFormat)) return 0;
  // Only the tables count here, so a lower-case letter is not regular.
  bool regular = sql::is_regular(name, first, others);
  bool own = false;
  CConnectionEnv const* const settings = CConnectionEnv::FindOrDefault(connection, 'P', &own);
  if (regular && flags == 0 && settings != nullptr && sql::is_plsql_version(settings->m_nVersion) &&
      _zisosqlresword(name, settings->m_nVersion) != 0) {
    regular = false;
  }
  if (!regular) sql::delimit(name, '"', '"');
  return own ? 1 : 0;
}

int _zsysname2plsql(char* name, int flags) noexcept {
  return _zsysname2plsql(nullptr, name, flags);
}

char* _zsysname2plsql(void const* const connection, char const* name) noexcept {
  if (name == nullptr) return nullptr;
  if (*name == '\0') return g_empty;
  // Room for the surrounding quotation marks and a doubled inner one each.
  return sql::converted_copy(name, 2 + sql::count_of(name, '"'), [connection](char* copy) {
    return _zsysname2plsql(connection, copy, 0);
  });
}

char* _zsysname2plsql(char const* name) noexcept { return _zsysname2plsql(nullptr, name); }
