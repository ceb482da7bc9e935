// htsql.cpp - the T-SQL dialect object.

#include "sql/connection_env.h"
#include "sql/names.h"
#include "sql/versions.h"
#include "zelstr/reserved.h"
#include "zelstr/sqlsettings.h"
#include "zelstr/tsql.h"

namespace {

// The closing mark that goes with an opening one.
char closing(char open) { return open == '[' ? ']' : '"'; }

// A regular identifier under the T-SQL character tables of `connection`.
bool is_regular(char const* name, void const* connection) {
  char* first = nullptr;
  char* others = nullptr;
  _zstr_build_tsql_allowed_charsets(first, others, connection);
  return first != nullptr && others != nullptr && zelstr::sql::is_regular(name, first, others);
}

}  // namespace

CHTSQL::CHTSQL(void const* const connection) noexcept : CHSQL(connection, 'T') {}
CHTSQL::CHTSQL(CHTSQL const& other) noexcept = default;
CHTSQL& CHTSQL::operator=(CHTSQL const& other) noexcept = default;
CHTSQL::~CHTSQL() = default;

// _ztsqlvalidsysname, without its warning for NULL.
int CHTSQL::IsValidSysName(char const* name, unsigned long kind) const noexcept {
  return name != nullptr ? _ztsqlvalidsysname(GetConnection(), name, static_cast<int>(kind)) : 0;
}

int CHTSQL::DenormalizeId(char* buffer, unsigned long /*flags*/) const noexcept {
  if (buffer == nullptr || *buffer == '\0') return 1;
  CConnectionEnv const* const settings =
      CConnectionEnv::FindOrDefault(GetConnection(), 'T', nullptr);
  if (settings == nullptr) return 0;
  bool const reserved = zelstr::sql::is_tsql_version(settings->m_nVersion) &&
                        _zistsqlresword(buffer, settings->m_nVersion) != 0;
  if (reserved || !is_regular(buffer, GetConnection())) {
    char const open = settings->m_cDefltQuote == '[' ? '[' : '"';
    zelstr::sql::delimit(buffer, open, closing(open));
  }
  return 1;
}

char const* CHTSQL::GetDenormalizedId(char const* name, unsigned long flags) const noexcept {
  if (name == nullptr) return nullptr;
  // Room for the delimiters and a doubled closing mark of either kind.
  std::size_t const closes = zelstr::sql::count_of(name, ']') + zelstr::sql::count_of(name, '"');
  return zelstr::sql::converted_copy(name, closes + 2,
                                     [&](char* copy) { return DenormalizeId(copy, flags); });
}

int CHTSQL::NormalizeId(char* buffer, unsigned long /*kind*/) const noexcept {
  if (buffer == nullptr) return 0;
  if (buffer[0] != '[' && buffer[0] != '"') return 1;
  return zelstr::sql::undelimit(buffer, closing(buffer[0])) ? 1 : 0;
}

char const* CHTSQL::GetNormalizedId(char const* name, unsigned long kind) const noexcept {
  if (name == nullptr) return nullptr;
  return zelstr::sql::converted_copy(name, 0, [&](char* copy) { return NormalizeId(copy, kind); });
}

int CHTSQL::IsReservedWord(char const* word, int version) const noexcept {
  return _zistsqlresword(word, version);
}
