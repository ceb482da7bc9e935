// compare.h - comparing strings.
//
// Bytes compare as unsigned values and every comparison returns exactly -1,
// 0 or +1.  The case-insensitive comparisons follow the C library's current
// locale (strcasecmp / _stricmp), not the library's own case tables.
//
// Memory: nothing here allocates, but for the warning records; a record
// that cannot be allocated changes no result (alloc.h).
//
// Threads: every function here may run on several threads at once; none
// shares library-wide state (_zstrdiffpoint, too, calls the C library's
// toupper directly).
#ifndef ZELSTR_COMPARE_H
#define ZELSTR_COMPARE_H

#include "zelstr/export.h"

// NULL: both, warning 192 and 0; `s1`, warning 193 and -1; `s2`, warning
// 194 and +1.
ZELSTR_API int _zstrcmp(char const* s1, char const* s2) noexcept;

// Case-insensitive; warnings 195, 196 and 197 with the same fallbacks.
ZELSTR_API int _zstricmp(char const* s1, char const* s2) noexcept;

// Over at most `count` bytes; `count` 0 gives 0.  NULL: both, warning 87 and
// 0; `s1`, warning 88 and -1 (0 when `count` is 0); `s2`, warning 89 and +1
// (0 when `count` is 0).
ZELSTR_API int _zstrncmp(char const* s1, char const* s2, unsigned long count) noexcept;

// Case-insensitive; warnings 90, 91 and 92 with the same fallbacks.
ZELSTR_API int _zstrnicmp(char const* s1, char const* s2, unsigned long count) noexcept;

// NULL is a legal value ordered before every string; no warning.
ZELSTR_API int _zstrnullisablecmp(char const* s1, char const* s2) noexcept;
ZELSTR_API int _zstrnullisableicmp(char const* s1, char const* s2) noexcept;

// The first position where `s1` and `s2` differ, as a position in `s1`
// (the terminator of `s1` when `s1` is a prefix of `s2`); NULL when they are
// equal.  With `case_sensitive` 0 the bytes compare through toupper.  NULL
// `s1` gives NULL, NULL `s2` gives `s1`; no warning.
ZELSTR_API char const* _zstrdiffpoint(char const* s1, char const* s2, int case_sensitive) noexcept;

// The first mismatching byte of `s1` (its terminator when `s1` ends first);
// NULL when the strings are equal.  NULL: both, warning 146 and NULL; `s2`
// only, warning 148 and `s1`; `s1` only, warning 147 and NULL.
ZELSTR_API char* _zstrneq(char* s1, char* s2) noexcept;

#endif  // ZELSTR_COMPARE_H
