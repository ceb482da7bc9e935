// tsql.h - T-SQL code and names.
//
// Memory: GetDenormalizedId and GetNormalizedId give NULL when their copy
// cannot be allocated; the members that read settings give 0 when the
// defaults cannot be made (see sqlsettings.h).  _zmaptsqlapply allocates
// nothing.
//
// Threads: every function and member here may run on several threads at
// once; _zmaptsqlapply only reads its map.  IsValidSysName, DenormalizeId
// and GetDenormalizedId read the connection's settings (sqlsettings.h)
// without a lock: do not change them while those run.  The tables of
// allowed characters they use, built through the set-definition cache
// (setdef.h), are the calling thread's own.
#ifndef ZELSTR_TSQL_H
#define ZELSTR_TSQL_H

#include "zelstr/dialect.h"
#include "zelstr/export.h"

// Applies the character map `map` (map.h; typically a lower- or upper-
// casing map) to T-SQL code in place, leaving alone what is not code:
// string literals ('...', and "..." when `quotedId` is 0) and comments
// (-- to the end of the line, /* ... */ with nested pairs) are kept byte
// for byte; names in square brackets, and in double quotation marks when
// `quotedId` is non-zero, are mapped.  The N of N'...' and the U of U&'...'
// keep their upper case when they begin a word.  Nothing happens for NULL
// or empty code or a NULL map; ZEAL_STR_BAD_MAP leaves the code as it is.
ZELSTR_API void _zmaptsqlapply(void* map, char* code, int quotedId) noexcept;

// The T-SQL dialect object: names are checked and delimited according to
// the settings of its connection (sqlsettings.h).
class ZELSTR_API CHTSQL : public CHSQL {
 public:
  explicit CHTSQL(void const* const connection) noexcept;
  CHTSQL(CHTSQL const& other) noexcept;
  CHTSQL& operator=(CHTSQL const& other) noexcept;
  ~CHTSQL() override;

  // 1 when `name` is shorter than the maximum name length and made of the
  // characters allowed in a regular identifier; the kind is not used.
  int IsValidSysName(char const* name, unsigned long kind) const noexcept override;
  // Delimits a name that is not a regular identifier, or is reserved in the
  // connection's version, with the connection's quotation mark ("..." or
  // [...], the closing mark doubled inside).  The flags are not used.
  int DenormalizeId(char* buffer, unsigned long flags) const noexcept override;
  char const* GetDenormalizedId(char const* name, unsigned long flags) const noexcept override;
  // Removes the delimiters of a [...] or "..." name and undoubles its
  // closing marks (0 when one is not doubled); other names are kept.
  int NormalizeId(char* buffer, unsigned long kind) const noexcept override;
  char const* GetNormalizedId(char const* name, unsigned long kind) const noexcept override;
  // Qualified names are not handled by this object: 0 or NULL.
  int DenormalizeQualId(char* buffer, unsigned long flags) const noexcept override;
  char const* GetDenormalizedQualId(char const* name, unsigned long flags) const noexcept override;
  int SplitQualCodeName(char const* name, char*** components,
                        unsigned long flags) const noexcept override;
  // _zistsqlresword(word, version): the version given, not the setting.
  int IsReservedWord(char const* word, int version) const noexcept override;
};

#endif  // ZELSTR_TSQL_H
