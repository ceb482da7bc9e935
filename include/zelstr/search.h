// search.h - searching strings: forward, delimited, backward, and counting.
//
// The forward searches keep, for each thread, the last pattern's length and
// preparation between calls, which the library's own loops reuse from one
// occurrence to the next.
//
// Memory: a search ignoring case works on a folded copy of its pattern,
// allocated when the pattern is longer than 64 characters; without memory
// for it _zstristr, _zstristr1 and _zstrristr give NULL and _zstristrcnt -1
// (zelstr::allocation_failures, alloc.h, tells NULL from "not found").  A
// thread's search ignoring case keeps that copy until the same thread's next
// search ignoring case replaces it.  Nothing else allocates, but for the
// warning records.
//
// Threads: every function here may run on several threads at once.  The
// preparation of _zstrstr, _zstristr, _zstrstr1 and _zstristr1 (pattern,
// plan and skip tables, one for each case mode), their last delimiter list,
// and the toupper table of the case-insensitive searches and counts, rebuilt
// when the thread's locale mapping changes, are each thread's own.
#ifndef ZELSTR_SEARCH_H
#define ZELSTR_SEARCH_H

#include "zelstr/export.h"

// The first occurrence of `string2` in `string1`, or NULL.  An empty
// pattern is found at the start (also in an empty text).  NULL `string1`:
// warning 77 (and 78 when `string2` is NULL too); NULL `string2`: warning
// 78; a string longer than 2147483647 bytes: warning 79 or 80.  All return
// NULL.
ZELSTR_API char* _zstrstr(char* string1, char const* string2) noexcept;
ZELSTR_API char const* _zstrstr(char const* string1, char const* string2) noexcept;

// The same, ignoring case: both sides compare through the C library's
// toupper (current locale).  Same warnings.
ZELSTR_API char* _zstristr(char* string1, char const* string2) noexcept;
ZELSTR_API char const* _zstristr(char const* string1, char const* string2) noexcept;

// The first occurrence of `string2` that stands between delimiters: at the
// start of `string1` or after a byte of `delimiters`, and before a byte of
// `delimiters` or the end.  `delimiters` is a plain list of bytes.  A NULL
// argument or an empty list gives _zstrstr(string1, string2).  A rejected
// occurrence is skipped whole: overlapping occurrences are not considered.
ZELSTR_API char const* _zstrstr1(char const* string1, char const* string2,
                                 char const* delimiters) noexcept;
ZELSTR_API char const* _zstristr1(char const* string1, char const* string2,
                                  char const* delimiters) noexcept;

// The first place where the first two (three) bytes of `string2` stand in
// `string1`.  These do not report: NULL arguments give NULL.  A pattern
// shorter than two (three) bytes is taken with its terminator, so it can
// only match at the end of `string1`.
ZELSTR_API char const* _zstrstr2chars(char const* string1, char const* string2) noexcept;
ZELSTR_API char const* _zstrstr3chars(char const* string1, char const* string2) noexcept;

// The last occurrence of `string2` in `string1`, or NULL (the case-
// insensitive form through toupper).  An empty pattern is found at the
// terminator.  NULL: warning 81 (`string1`) or 82 (`string2`), NULL.
ZELSTR_API char* _zstrrstr(char* string1, char const* string2) noexcept;
ZELSTR_API char const* _zstrrstr(char const* string1, char const* string2) noexcept;
ZELSTR_API char* _zstrristr(char* string1, char const* string2) noexcept;
ZELSTR_API char const* _zstrristr(char const* string1, char const* string2) noexcept;

// The number of occurrences of `string2` in `string1`, counted from left to
// right without overlap (as the replacements find them).  NULL: warning 83
// (`string1`) or 102 (`string2`); empty `string2`: warning 103; each
// returns -1.
ZELSTR_API int _zstrstrcnt(char const* string1, char const* string2) noexcept;
ZELSTR_API int _zstristrcnt(char const* string1, char const* string2) noexcept;

// The number of bytes `c` in `string` (0 for c = 0).  NULL: warning 106, -1.
ZELSTR_API int _zstrccnt(char const* string, char c) noexcept;

#endif  // ZELSTR_SEARCH_H
