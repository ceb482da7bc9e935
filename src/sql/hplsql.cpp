// hplsql.cpp - the PL/SQL dialect object.
#include <cstddef>

#include "sql/names.h"
#include "zelstr/plsql.h"
#include "zelstr/reserved.h"

namespace {

// DenormalizeId's request for a second quoting: bit 0x200 with '"' in the
// low byte.
bool wants_second_quoting(unsigned long flags) {
  return (flags & 0x200) != 0 && (flags & 0xFF) == '"';
}

}  // namespace

CHPLSQL::CHPLSQL(void const* const connection) noexcept : CHSQL(connection, 'P') {}
CHPLSQL::CHPLSQL(CHPLSQL const& other) noexcept = default;
CHPLSQL& CHPLSQL::operator=(CHPLSQL const& other) noexcept = default;
CHPLSQL::~CHPLSQL() = default;

int CHPLSQL::IsValidSysName(char const* name, unsigned long kind) const noexcept {
  return _zplsqlvalidsysname(nullptr, name, static_cast<int>(kind));
}

int CHPLSQL::DenormalizeId(char* buffer, unsigned long flags) const noexcept {
  int const result = _zsysname2plsql(nullptr, buffer, 0);
  // Quoted again even when already quoted: callers rely on it.
  if (result != 0 && buffer != nullptr && wants_second_quoting(flags)) {
    zelstr::sql::delimit(buffer, '"', '"');
  }
  return result;
}

char const* CHPLSQL::GetDenormalizedId(char const* name, unsigned long flags) const noexcept {
  if (name == nullptr) return nullptr;
  // Room for DenormalizeId at worst: quoting doubles each quotation mark
  // and adds two, twice.
  std::size_t const room = 3 * zelstr::sql::count_of(name, '"') + 6;
  return zelstr::sql::converted_copy(name, room,
                                     [&](char* copy) { return DenormalizeId(copy, flags); });
}

int CHPLSQL::NormalizeId(char* buffer, unsigned long kind) const noexcept {
  return _zplsql2sysname(buffer, static_cast<int>(kind));
}

char const* CHPLSQL::GetNormalizedId(char const* name, unsigned long kind) const noexcept {
  if (name == nullptr) return nullptr;
  return zelstr::sql::converted_copy(name, 0, [&](char* copy) { return NormalizeId(copy, kind); });
}

int CHPLSQL::DenormalizeQualId(char* /*buffer*/, unsigned long /*flags*/) const noexcept {
  return 0;
}

char const* CHPLSQL::GetDenormalizedQualId(char const* /*name*/,
                                           unsigned long /*flags*/) const noexcept {
  return nullptr;
}

int CHPLSQL::SplitQualCodeName(char const* /*name*/, char*** /*components*/,
                               unsigned long /*flags*/) const noexcept {
  return 0;
}

int CHPLSQL::IsReservedWord(char const* word, int version) const noexcept {
  return _zisosqlresword(word, version);
}
