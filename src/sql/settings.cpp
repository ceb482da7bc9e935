// settings.cpp - setting and reading the dialect settings of a connection.
//
// A setter holds the registry's lock from its look-up to its last change,
// so that two threads setting the same connection at once make one entry.
// Readers do not lock: a connection's settings must not change while other
// threads use them (see sqlsettings.h).
#include <new>

#include "frame/own_lock.h"
#include "sql/connection_env.h"
#include "sql/report.h"
#include "sql/versions.h"
#include "zelstr/sqlsettings.h"

namespace {

using zelstr::frame::Unit;
namespace msg = zelstr::sql::msg;
namespace sql = zelstr::sql;

// The quotation mark as the warning shows it: itself, or "\0" for NUL.
void warn_bad_quote(char quote) {
  char shown[3] = {quote, '\0', '\0'};
  if (quote == '\0') {
    shown[0] = '\\';
    shown[1] = '0';
  }
  sql::warn_format(Unit::connectionenv, __LINE__, msg::kTsqlSetBadQuoteFormat, shown);
}

zelstr::platform::CriticalSection& registry_lock() {
  return zelstr::frame::own_lock(zelstr::frame::OwnLock::kSettings);
}
using Guard = zelstr::platform::CriticalSectionGuard;

template <typename T>
void put(T* out, T value) {
  if (out != nullptr) *out = value;
}

}  // namespace

int _ztsqlsetdefaults(void const* const connection, int i_nTSqlVersion, int i_nMaxName,
                      int quotedId, int bracketedId, char i_cDefltQuote,
                      char const* allowedAs1st) noexcept {
  if (!sql::is_tsql_version(i_nTSqlVersion)) {
    sql::warn_format(Unit::connectionenv, __LINE__, msg::kTsqlSetBadVersionFormat, i_nTSqlVersion);
    return 0;
  }
  if (i_nMaxName < 1) {
    sql::warn_format(Unit::connectionenv, __LINE__, msg::kTsqlSetBadMaxNameFormat, i_nMaxName);
    return 0;
  }
  if (i_cDefltQuote != '"' && i_cDefltQuote != '[') {
    warn_bad_quote(i_cDefltQuote);
    return 0;
  }
  // Without memory for an entry or its definitions, the settings stay as
  // they were and the call still reports success.
  Guard const guard(registry_lock());
  CConnectionEnv* const entry = CConnectionEnv::Find(connection, 'T');
  if (entry == nullptr) {
    CConnectionEnv::Register(new (std::nothrow)
                                 CConnectionEnv(connection, i_nTSqlVersion, i_nMaxName, quotedId,
                                                bracketedId, i_cDefltQuote, allowedAs1st));
    return 1;
  }
  if (!entry->Redefine(allowedAs1st)) return 1;
  entry->m_nVersion = i_nTSqlVersion;
  entry->m_nMaxName = i_nMaxName;
  entry->m_bQuotedId = quotedId;
  entry->m_bBracketedId = bracketedId;
  entry->m_cDefltQuote = i_cDefltQuote;
  return 1;
}

int _ztsqlgetdefaults(void const* const connection, int* version, int* maxName, int* quotedId,
                      int* bracketedId, char* defltQuote, char const** allowedAs1st) noexcept {
  bool own = false;
  CConnectionEnv const* const entry = CConnectionEnv::FindOrDefault(connection, 'T', &own);
  if (entry == nullptr) return 0;
  put(version, entry->m_nVersion);
  put(maxName, entry->m_nMaxName);
  put(quotedId, entry->m_bQuotedId);
  put(bracketedId, entry->m_bBracketedId);
  put(defltQuote, entry->m_cDefltQuote);
  put(allowedAs1st, static_cast<char const*>(entry->m_pszAllowedAs1st));
  return own ? 1 : 0;
}

int _ztsqlsetquotedid(void const* const connection, int quotedId) noexcept {
  bool own = false;
  Guard const guard(registry_lock());
  CConnectionEnv* const entry = CConnectionEnv::FindOrDefault(connection, 'T', &own);
  if (entry != nullptr) entry->m_bQuotedId = quotedId;
  return own ? 1 : 0;
}

int _zplsqlsetdefaults(void const* const connection, int i_nPlSqlVersion, int i_nMaxName,
                       int i_nMaxDbLinkName, char const* allowedAs1st) noexcept {
  if (!sql::is_plsql_version(i_nPlSqlVersion)) {
    sql::warn_format(Unit::connectionenv, __LINE__, msg::kPlsqlSetBadVersionFormat,
                     i_nPlSqlVersion);
    return 0;
  }
  if (i_nMaxName < 1) {
    sql::warn_format(Unit::connectionenv, __LINE__, msg::kPlsqlSetBadMaxNameFormat, i_nMaxName);
    return 0;
  }
  if (i_nMaxDbLinkName < 1) {
    sql::warn_format(Unit::connectionenv, __LINE__, msg::kPlsqlSetBadMaxDbLinkNameFormat,
                     i_nMaxDbLinkName);
    return 0;
  }
  Guard const guard(registry_lock());
  CConnectionEnv* const entry = CConnectionEnv::Find(connection, 'P');
  if (entry == nullptr) {
    CConnectionEnv::Register(new (std::nothrow) CConnectionEnv(
        connection, i_nPlSqlVersion, i_nMaxName, i_nMaxDbLinkName, allowedAs1st));
    return 1;
  }
  if (!entry->Redefine(allowedAs1st)) return 1;
  entry->m_nVersion = i_nPlSqlVersion;
  entry->m_nMaxName = i_nMaxName;
  entry->m_nMaxDbLinkName = i_nMaxDbLinkName;
  return 1;
}

int _zplsqlgetdefaults(void const* const connection, int* version, int* maxName, int* maxDbLinkName,
                       char const** allowedAs1st) noexcept {
  bool own = false;
  CConnectionEnv const* const entry = CConnectionEnv::FindOrDefault(connection, 'P', &own);
  if (entry == nullptr) return 0;
  put(version, entry->m_nVersion);
  put(maxName, entry->m_nMaxName);
  put(maxDbLinkName, entry->m_nMaxDbLinkName);
  put(allowedAs1st, static_cast<char const*>(entry->m_pszAllowedAs1st));
  return own ? 1 : 0;
}
