// position.h - positions in strings.
//
// Memory: nothing here allocates, but for the warning records; a record
// that cannot be allocated changes no result (alloc.h).
//
// Threads: every function here may run on several threads at once.
// _zstrichr and _zstrrichr read the calling thread's table of toupper,
// rebuilt when that thread's locale mapping changes.
#ifndef ZELSTR_POSITION_H
#define ZELSTR_POSITION_H

#include "zelstr/export.h"

// The first `c` in `s` (c = 0 finds the terminator), or NULL.  NULL `s`:
// warning 123, NULL.
ZELSTR_API char* _zstrchr(char* s, char c) noexcept;
ZELSTR_API char const* _zstrchr(char const* s, char c) noexcept;

// The first byte whose upper case (the C library's toupper) is that of `c`
// (c = 0 finds the terminator), or NULL.  NULL `s`: warning 123, NULL.
ZELSTR_API char* _zstrichr(char* s, char c) noexcept;
ZELSTR_API char const* _zstrichr(char const* s, char c) noexcept;

// The last `c` in `s` (c = 0 finds the terminator), or NULL.  NULL `s`:
// warning 107, NULL.
ZELSTR_API char* _zstrrchr(char* s, char c) noexcept;
ZELSTR_API char const* _zstrrchr(char const* s, char c) noexcept;

// The last byte whose upper case is that of `c`, or NULL.  NULL `s`:
// warning 107, NULL.
ZELSTR_API char* _zstrrichr(char* s, char c) noexcept;
ZELSTR_API char const* _zstrrichr(char const* s, char c) noexcept;

// The n-th `c` of `s` counted from the start (Nth) or from the end (Nthr),
// n from 1; the i forms compare through toupper as _zstrichr does.  NULL
// when `s` holds fewer than n.  c = 0 finds the terminator for n = 1 and
// nothing for a larger n.  NULL `s`: warning "%s() - Warning: <string>
// given in argument is NULL: NULL was returned as result of search."; n
// smaller than 1: warning "%s() - Warning: <n> given in argument is smaller
// than 1: NULL was returned as result of search." (id -1, severity 4, the
// function's name for %s); both NULL.
ZELSTR_API char* _zstrNthchr(char* s, char c, int n) noexcept;
ZELSTR_API char const* _zstrNthchr(char const* s, char c, int n) noexcept;
ZELSTR_API char* _zstrNthichr(char* s, char c, int n) noexcept;
ZELSTR_API char const* _zstrNthichr(char const* s, char c, int n) noexcept;
ZELSTR_API char* _zstrNthrchr(char* s, char c, int n) noexcept;
ZELSTR_API char const* _zstrNthrchr(char const* s, char c, int n) noexcept;
ZELSTR_API char* _zstrNthrichr(char* s, char c, int n) noexcept;
ZELSTR_API char const* _zstrNthrichr(char const* s, char c, int n) noexcept;

// Length of the initial run of `s` made of bytes of `accept` (a plain list).
// NULL `s`: warning 108; NULL `accept`: warning 109; both return 0.
ZELSTR_API unsigned int _zstrspn(char const* s, char const* accept) noexcept;

// Length of the final run of `s` made of bytes of `accept` (a plain list):
// what trimming those bytes from the right would remove.  NULL `s`: warning
// 110; NULL `accept`: warning 122; both return 0.
ZELSTR_API unsigned int _zstrrspn(char const* s, char const* accept) noexcept;

// The later / earlier of two positions, compared as addresses (not as
// texts).  One NULL gives the other; both NULL give NULL; no warning.
ZELSTR_API char const* _zstrmax(char const* p, char const* q) noexcept;
ZELSTR_API char const* _zstrmin(char const* p, char const* q) noexcept;

#endif  // ZELSTR_POSITION_H
