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
#include "zelstr/types.h"

// T-SQL names keep their case.  In source form a name is regular (its
// characters allowed by the connection's tables: first character and the
// others, sqlsettings.h) or delimited: [...] with "]]" for an inner "]",
// or "..." with "" for an inner quotation mark.  Square brackets delimit on
// SQL Server versions, and on Sybase versions when bracketed identifiers
// are on; double quotation marks when quoted identifiers are on (otherwise
// "x" is a string literal).  The system form is the name without its
// delimiters.  A system name is shorter than the connection's maximum name
// length.
//
// Bad arguments (NULL, an empty name, a name that is not valid source or
// system form, one past the maximum length) are reported with the service's
// bad-argument text, flags other than 0 and 1 with its incoherent-flag text
// (errsvc.h); the name is then left as it was and the result is 0 or NULL.

// 1 when `name` is a system name that needs no delimiters: shorter than the
// maximum name length and regular under the connection's tables; else 0.
// The kind is not used.  NULL: warning, 0.
ZELSTR_API int _ztsqlvalidsysname(void const* const connection, char const* name,
                                  int kind) noexcept;
ZELSTR_API int _ztsqlvalidsysname(char const* name, int kind) noexcept;  // default settings

// Source form to system form, in place: [a]]b] gives a]b, "a""b" gives a"b
// (where those delimit), a regular name is kept as written.  1 on success,
// 0 with a warning for a name that is not valid source form.
ZELSTR_API int _ztsql2sysname(void const* const connection, char* name) noexcept;
ZELSTR_API int _ztsql2sysname(char* name) noexcept;  // default settings
// The same on a new copy (free it with _zstrdupfree), or NULL.
ZELSTR_API char* _ztsql2sysname(void const* const connection, char const* name) noexcept;
ZELSTR_API char* _ztsql2sysname(char const* name) noexcept;

// System form to source form, in place: a name that is not regular (a first
// character such as a digit or "$", a blank, any character outside the
// tables) is delimited with the connection's default quotation mark, its
// closing marks doubled; so is, with `flags` 0, a word reserved in the
// connection's version (`flags` 1 keeps those as they are).  Where the
// default mark does not delimit (a double quotation mark with quoted
// identifiers off) and square brackets do, brackets are used; where neither
// delimits, such a name is refused.  Temporary
// names (#t, ##t) and variables (@v) stay regular under the default tables.
// The buffer needs room for two more characters and one per closing mark.
// 1 on success, 0 with a warning.
ZELSTR_API int _zsysname2tsql(void const* const connection, char* name, int flags) noexcept;
ZELSTR_API int _zsysname2tsql(char* name, int flags) noexcept;  // default settings
// The same on a new copy with the room it needs (free it with
// _zstrdupfree), or NULL.
ZELSTR_API char* _zsysname2tsql(void const* const connection, char const* name, int flags) noexcept;
ZELSTR_API char* _zsysname2tsql(char const* name, int flags) noexcept;

// The name-length command.  WRITE_NAME_LENGTH(&n) registers the caller's
// int `n`, for the calling thread: from then on each call of
// _ztsqlvalidsysname, _ztsql2sysname, _zsysname2tsql (every form) and
// CHTSQL::IsValidCodeName on that thread writes into `n` the length in
// bytes of the system form of the name it read ("[a]]b]" gives 4), or -1
// when it gives 0 or NULL.  WRITE_NAME_LENGTH(NULL) withdraws the address.
// 1 on success; 0 with a complaint of severity 8 (id -1) when the command
// cannot be obeyed: "Static variable <pnNameLength> already contains an
// address: command WRITE_NAME_LENGTH() ignored!" for an address while
// another is registered (withdraw it first), "Static variable
// <pnNameLength> contains no address: command WRITE_NAME_LENGTH() cannot
// be taken into account!" for NULL while none is.  Each thread's
// registration ends with the thread; the qualified-name members write
// nothing.
ZELSTR_API int _ztsqlwritenamelength(int* pnNameLength) noexcept;
#define WRITE_NAME_LENGTH(pnNameLength) _ztsqlwritenamelength(pnNameLength)

// Applies the character map `map` (map.h; typically a lower- or upper-
// casing map) to T-SQL code in place, leaving alone what is not code:
// string literals ('...', and "..." when `quotedId` is 0) and comments
// (-- to the end of the line, /* ... */ with nested pairs) are kept byte
// for byte; names in square brackets, and in double quotation marks when
// `quotedId` is non-zero, are mapped.  The N of N'...' and the U of U&'...'
// keep their upper case when they begin a word.  Nothing happens for NULL
// or empty code or a NULL map; ZEAL_STR_BAD_MAP leaves the code as it is.
ZELSTR_API void _zmaptsqlapply(ZelStrMap map, char* code, int quotedId) noexcept;
// The same, telling in `*context` (when not NULL) the context at the code's
// end, as _ztsqlcodecontext (codehide.h) gives it at the code's length under
// the same quoted-identifier setting, and in `*open` (when not NULL) where
// the part left open there begins (its prefix or opening mark; the code's
// length when the end is in code).  The code before `*open` ends in code,
// and the open part maps from there alike whatever came before it: code
// read a piece at a time is mapped piece by piece, the open part of each
// carried, unmapped, to the front of the next.  One pass does it all.
// NULL or empty code gives ZEAL_SQL_CODE and 0; a NULL or bad map leaves
// the code as it is but still tells.  Code longer than INT_MAX bytes is
// not for this overload.
ZELSTR_API void _zmaptsqlapply(ZelStrMap map, char* code, int quotedId, int* context,
                               int* open = nullptr) noexcept;

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
  // 1 when `name` is one valid name in source form under the connection's
  // settings (regular, or delimited by a mark they accept), its system
  // form shorter than the maximum name length; else 0.  NULL: warning, 0.
  int IsValidCodeName(char const* name) const noexcept;

  // Qualified names: server.database.schema.object, one to four parts
  // separated by dots, blanks allowed around the dots.  A part is
  // delimited ([...] or "...", dots and blanks inside kept) or plain (any
  // characters but dots and delimiters, without the blanks at its ends),
  // and may be empty (db..t).  No part reaches the maximum name length.
  //
  // Splits `name` into `*components`, a NULL-terminated array of new
  // strings (release it with DeleteComponents), one per part in the order
  // written, in system form, empty parts as empty strings.  Returns the
  // number of parts; 0 and `*components` NULL on a syntax error (more than
  // four parts, an unterminated or misplaced delimiter), without a warning.
  // `flags` 0 takes both kinds of delimiters, as the server's PARSENAME
  // does; 1 only those the connection's settings accept.  NULL arguments:
  // warning, 0.
  int SplitQualCodeName(char const* name, char*** components,
                        unsigned long flags) const noexcept override;
  // Rewrites a qualified name in place with each part in the source form
  // _zsysname2tsql gives it (`flags` as there); empty parts stay empty.
  // The buffer needs room for twice the name's length plus 9 bytes.  1 on
  // success; 0 with a warning, the buffer as it was, for a name that does
  // not split or a part that cannot be written under the settings.
  int DenormalizeQualId(char* buffer, unsigned long flags) const noexcept override;
  // The same on a new copy (free it with _zstrdupfree), or NULL.
  char const* GetDenormalizedQualId(char const* name, unsigned long flags) const noexcept override;
  // _zistsqlresword(word, version): the version given, not the setting.
  int IsReservedWord(char const* word, int version) const noexcept override;
};

#endif  // ZELSTR_TSQL_H
