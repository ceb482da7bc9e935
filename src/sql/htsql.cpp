// htsql.cpp - the T-SQL dialect object.
#include <cstring>

#include "sql/connection_env.h"
#include "sql/delimit.h"
#include "sql/versions.h"
#include "zelstr/alloc.h"
#include "zelstr/reserved.h"
#include "zelstr/sqlsettings.h"
#include "zelstr/tsql.h"

namespace {

// The closing mark that goes with an opening one.
char closing(char open) { return open == '[' ? ']' : '"'; }

bool is_regular(unsigned char const* name, void const* connection) {
  char* first = nullptr;
  char* others = nullptr;
  _zstr_build_tsql_allowed_charsets(first, others, connection);
  if (first == nullptr || others == nullptr || !first[name[0]]) return false;
  for (unsigned char const* p = name + 1; *p != '\0'; ++p) {
    if (!others[*p]) return false;
  }
  return true;
}

char const* keep_if(char* copy, int result) {
  if (result == 0) _zstrdupfree(copy);
  return copy;
}

}  // namespace

CHTSQL::CHTSQL(void const* const connection) : CHSQL(connection, 'T') {}
CHTSQL::CHTSQL(CHTSQL const& other) = default;
CHTSQL& CHTSQL::operator=(CHTSQL const& other) = default;
CHTSQL::~CHTSQL() = default;

int CHTSQL::IsValidSysName(char const* name, unsigned long /*kind*/) const {
  if (name == nullptr || *name == '\0') return 0;
  CConnectionEnv const* const settings =
      CConnectionEnv::FindOrDefault(GetConnection(), 'T', nullptr);
  if (settings == nullptr || std::strlen(name) >= static_cast<std::size_t>(settings->m_nMaxName)) {
    return 0;
  }
  return is_regular(reinterpret_cast<unsigned char const*>(name), GetConnection()) ? 1 : 0;
}

int CHTSQL::DenormalizeId(char* buffer, unsigned long /*flags*/) const {
  if (buffer == nullptr || *buffer == '\0') return 1;
  CConnectionEnv const* const settings =
      CConnectionEnv::FindOrDefault(GetConnection(), 'T', nullptr);
  if (settings == nullptr) return 0;
  bool const reserved = zelstr::sql::is_tsql_version(settings->m_nVersion) &&
                        _zistsqlresword(buffer, settings->m_nVersion) != 0;
  if (reserved || !is_regular(reinterpret_cast<unsigned char const*>(buffer), GetConnection())) {
    char const open = settings->m_cDefltQuote == '[' ? '[' : '"';
    zelstr::sql::delimit(buffer, open, closing(open));
  }
  return 1;
}

char const* CHTSQL::GetDenormalizedId(char const* name, unsigned long flags) const {
  if (name == nullptr) return nullptr;
  std::size_t closes = 0;
  for (char const* p = name; *p != '\0'; ++p) closes += *p == ']' || *p == '"';
  char* copy = _zstrdupalloc(name, static_cast<unsigned>(closes + 2));
  if (copy == nullptr) return nullptr;
  return keep_if(copy, DenormalizeId(copy, flags));
}

int CHTSQL::NormalizeId(char* buffer, unsigned long /*kind*/) const {
  if (buffer == nullptr) return 0;
  if (buffer[0] != '[' && buffer[0] != '"') return 1;
  return zelstr::sql::undelimit(buffer, closing(buffer[0])) ? 1 : 0;
}

char const* CHTSQL::GetNormalizedId(char const* name, unsigned long kind) const {
  if (name == nullptr) return nullptr;
  char* copy = _zstrdupalloc(name, 0);
  if (copy == nullptr) return nullptr;
  return keep_if(copy, NormalizeId(copy, kind));
}

int CHTSQL::DenormalizeQualId(char* /*buffer*/, unsigned long /*flags*/) const { return 0; }

char const* CHTSQL::GetDenormalizedQualId(char const* /*name*/, unsigned long /*flags*/) const {
  return nullptr;
}

int CHTSQL::SplitQualCodeName(char const* /*name*/, char*** /*components*/,
                              unsigned long /*flags*/) const {
  return 0;
}

int CHTSQL::IsReservedWord(char const* word, int version) const {
  return _zistsqlresword(word, version);
}
