// plsql.h - Oracle SQL and PL/SQL names in source form and system form.
//
// In source text a name is regular (letters, digits, "$", "_", "#"; case
// does not matter) or delimited by double quotation marks (any character,
// case kept, an inner quotation mark doubled).  The data dictionary keeps
// the system form: a regular name in upper case, a delimited name without
// its quotation marks.
//
// Memory: the copying conversions give NULL when their copy cannot be
// allocated; the functions that read settings give 0 when the defaults
// cannot be made (see sqlsettings.h).  _zplsqlstrupper allocates nothing.
//
// Threads: every function and member here may run on several threads at
// once.  Those that read settings (sqlsettings.h) take no lock: do not
// change the settings they read, a connection's or the defaults, while they
// run.  The tables of allowed characters they use, and the set-definition
// cache they are built through (setdef.h), are the calling thread's own.
#ifndef ZELSTR_PLSQL_H
#define ZELSTR_PLSQL_H

#include "zelstr/dialect.h"
#include "zelstr/export.h"

// 1 when `i_lpcszSysName` is a valid system name of the kind `kind` under
// the connection's settings, else 0.  The name must be shorter than the
// maximum name length (the maximum database-link name length for kind 2);
// kinds 2, 4 and 8 also check its characters against the connection's
// allowed-character tables, lower-case ASCII letters being accepted too.
// Any other kind checks the length only.  NULL: warning, 0.
ZELSTR_API int _zplsqlvalidsysname(void const* const connection, char const* i_lpcszSysName,
                                   int kind) noexcept;
ZELSTR_API int _zplsqlvalidsysname(char const* i_lpcszSysName,
                                   int kind) noexcept;  // default settings

// Source form to system form, in place: a delimited name loses its
// quotation marks and its doubled inner marks become single (0 when an
// inner mark was not doubled; it is kept); a regular name is upper-cased
// (_zplsqlstrupper) and the result is its validity under the default
// settings, kind 1 being taken as 4.  NULL or empty: 1.
ZELSTR_API int _zplsql2sysname(char* name, int kind) noexcept;
// The same on a new copy (free it with _zstrdupfree): the copy, or NULL
// when the conversion gives 0.  An empty name gives a static empty string.
ZELSTR_API char* _zplsql2sysname(char const* name, int kind) noexcept;

// System form to source form, in place: a name that is not regular under
// the connection's allowed-character tables (lower case is not regular
// here) is delimited, its quotation marks doubled.  With `flags` 0 a name
// reserved in the connection's version is delimited too; other flags skip
// that test.  The buffer needs room for two more characters and one per
// quotation mark of the name.  Result: 1 when the connection has its own
// settings or is NULL, 0 when the defaults were used; 0 also when the
// tables cannot be had.  NULL or empty: 1.
ZELSTR_API int _zsysname2plsql(void const* const connection, char* name, int flags) noexcept;
ZELSTR_API int _zsysname2plsql(char* name, int flags) noexcept;
// The same (flags 0) on a new copy with room for the two surrounding
// quotation marks: the copy, or NULL when the result is 0 (with a
// connection, that is also when the connection has no settings of its
// own).  An empty name gives a static empty string, not to be freed.
ZELSTR_API char* _zsysname2plsql(void const* const connection, char const* name) noexcept;
ZELSTR_API char* _zsysname2plsql(char const* name) noexcept;

// Upper-cases `text` in place as the Oracle server does for text of code
// page 1252 (accented letters included; a letter whose upper case the code
// page lacks, such as the sharp s, stays).  Returns `text`; NULL: warning
// 144, NULL.
ZELSTR_API char* _zplsqlstrupper(char* text) noexcept;

// The PL/SQL dialect object.
class ZELSTR_API CHPLSQL : public CHSQL {
 public:
  explicit CHPLSQL(void const* const connection) noexcept;
  CHPLSQL(CHPLSQL const& other) noexcept;
  CHPLSQL& operator=(CHPLSQL const& other) noexcept;
  ~CHPLSQL() override;

  // _zplsqlvalidsysname with the default settings.
  int IsValidSysName(char const* name, unsigned long kind) const noexcept override;
  // _zsysname2plsql(NULL, buffer, 0); then, when it succeeded and `flags`
  // has the bit 0x200 and the low byte '"', the result is quoted once more,
  // even if it was quoted already (the buffer needs the room).
  int DenormalizeId(char* buffer, unsigned long flags) const noexcept override;
  char const* GetDenormalizedId(char const* name, unsigned long flags) const noexcept override;
  // _zplsql2sysname(buffer, kind).
  int NormalizeId(char* buffer, unsigned long kind) const noexcept override;
  char const* GetNormalizedId(char const* name, unsigned long kind) const noexcept override;
  // Qualified names are not handled for PL/SQL: 0 or NULL.
  int DenormalizeQualId(char* buffer, unsigned long flags) const noexcept override;
  char const* GetDenormalizedQualId(char const* name, unsigned long flags) const noexcept override;
  int SplitQualCodeName(char const* name, char*** components,
                        unsigned long flags) const noexcept override;
  // _zisosqlresword(word, version).
  int IsReservedWord(char const* word, int version) const noexcept override;
};

#endif  // ZELSTR_PLSQL_H
