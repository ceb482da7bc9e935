// reserved.h - reserved words of T-SQL and Oracle SQL, per server version.
//
// Both tests upper-case a copy of the word (ASCII letters only), so they
// ignore case; the caller's string is not changed.
//
// Memory: nothing here allocates.
//
// Threads: both tests may run on several threads at once: the word lists
// are constant tables built into the library.
#ifndef ZELSTR_RESERVED_H
#define ZELSTR_RESERVED_H

#include "zelstr/export.h"

// 1 when `word` is reserved in the T-SQL version `version`: 4, 6 to 17, or
// the year forms 2004 and 2006 to 2017 (2008 is 8, 2015 is 15).  0 for NULL
// and, without looking further, for a word that does not begin with an
// ASCII letter.  Any other version (5 and 2005 among them) gives a warning
// and 0.
ZELSTR_API int _zistsqlresword(char const* word, int version) noexcept;

// 1 when `word` is reserved in the Oracle SQL / PL/SQL version `version`:
// 102 to 105, 107 to 110, 120, 130, 140, 150 to 152, 1160 to 1165.  NULL is
// never reserved.  Any other version gives a warning and 0.
ZELSTR_API int _zisosqlresword(char const* word, int version) noexcept;

#endif  // ZELSTR_RESERVED_H
