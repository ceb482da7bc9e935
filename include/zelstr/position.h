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
