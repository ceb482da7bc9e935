// sqlsettings.h - dialect settings per database connection.
//
// The analyser may work for several connections at once.  A connection is a
// key of the caller's choice (never dereferenced); NULL stands for no
// particular connection and owns the defaults of each language:
//
//   T-SQL:  version 15, names up to 1020 characters, quoted and bracketed
//           identifiers off, the double quotation mark for delimiting,
//           first characters "[A-Za-z_#@\x80-\xFF]".
//   PL/SQL: version 152, names up to 30 characters, database-link names up
//           to 512, first characters "[A-Z]".
//
// A connection without settings of its own uses the defaults.
//
// The first-character definitions are set definitions ("[A-Z_]", see
// setdef.h) or plain lists of characters ("ABC"); the characters allowed at
// the other positions are derived from them by adding the digits and "$"
// (T-SQL) or the digits, "$", "_" and "#" (PL/SQL).  A NULL or blank
// definition selects the default; one that has only one of its brackets
// selects it too, with a warning.  Trailing blanks of a definition are cut
// in the caller's own string (it must be writable when it has some).
//
// Memory: a setting for which an entry, or the copies of its definitions,
// cannot be allocated is not made: the settings stay as they were and the
// set functions still return 1.  Until a language's defaults can be made,
// the get functions return 0 and fill nothing, and the builders return 0
// with both tables NULL (no warning).
//
// Threads: every function here may run on several threads at once.  The
// registry is locked for look-ups, the making of a language's defaults and
// each setter, from its look-up to its last change (so two threads setting
// one connection make one entry).  Readers do not lock: do not change
// settings while other threads use them.  The look-up cache, the builders'
// tables and the set-definition cache (setdef.h) are each thread's own.
#ifndef ZELSTR_SQLSETTINGS_H
#define ZELSTR_SQLSETTINGS_H

#include "zelstr/export.h"

// Valid T-SQL versions: 4, 6 to 17 and 2004 to 2017 (5 is not one).  The
// quotation mark is '"' or '['.  Invalid values give a warning naming the
// value, change nothing and return 0; otherwise 1.
ZELSTR_API int _ztsqlsetdefaults(void const* const connection, int i_nTSqlVersion, int i_nMaxName,
                                 int quotedId, int bracketedId, char i_cDefltQuote,
                                 char const* allowedAs1st) noexcept;

// Fills each non-NULL out-argument from the connection's settings (the
// defaults when it has none).  1 when the connection has settings of its own
// (always for NULL), else 0.  `*allowedAs1st` belongs to the settings and
// stays valid until they change.
ZELSTR_API int _ztsqlgetdefaults(void const* const connection, int* version, int* maxName,
                                 int* quotedId, int* bracketedId, char* defltQuote,
                                 char const** allowedAs1st) noexcept;

// Sets the QUOTED_IDENTIFIER flag: 1 when the connection's own settings were
// changed; 0 when it has none, in which case the defaults shared by every
// such connection were changed instead.
ZELSTR_API int _ztsqlsetquotedid(void const* const connection, int quotedId) noexcept;

// Valid PL/SQL versions: 102 to 105, 107 to 110, 120, 130, 140, 150 to 152
// and 1160 to 1165.  Maximum lengths at least 1.  As _ztsqlsetdefaults.
ZELSTR_API int _zplsqlsetdefaults(void const* const connection, int i_nPlSqlVersion, int i_nMaxName,
                                  int i_nMaxDbLinkName, char const* allowedAs1st) noexcept;

// As _ztsqlgetdefaults, for PL/SQL.
ZELSTR_API int _zplsqlgetdefaults(void const* const connection, int* version, int* maxName,
                                  int* maxDbLinkName, char const** allowedAs1st) noexcept;

// Hands out the calling thread's two 256-entry tables (non-zero for an
// allowed character) of the characters allowed first and at the other
// positions of a T-SQL identifier.  Each thread has one pair, which serves
// every connection: it is built from a connection's settings when the
// thread has not built from them since they last changed, and handed as it
// is otherwise, so a connection whose characters differ may see the tables
// the thread last built for another, until its own settings are set again.
// The tables may change at the same thread's next build (a dialect member's
// included) and are released when the thread ends.  1 for NULL and for a
// connection with its own settings, 0 for one using the defaults; 0 with
// both tables NULL when a definition cannot be read (with a warning).
ZELSTR_API int _zstr_build_tsql_allowed_charsets(char*& allowedAs1st, char*& allowedAsOthers,
                                                 void const* const connection) noexcept;

// The same for PL/SQL, with its own pair of tables.
ZELSTR_API int _zstr_build_plsql_allowed_charsets(char*& allowedAs1st, char*& allowedAsOthers,
                                                  void const* const connection) noexcept;

#endif  // ZELSTR_SQLSETTINGS_H
