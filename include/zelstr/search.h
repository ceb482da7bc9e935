// search.h - searching strings: forward, delimited, backward, within a
// range, nearest to a position, and counting.
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
// The range and nearest searches prepare their pattern on a state of the
// call's own (they leave the threads' states alone) and allocate only as
// the searches ignoring case do, for a pattern longer than 64 characters.
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

// The first (_zstrfind) or last (_zstrrfind) occurrence of `string2` lying
// wholly inside a range of `string1`, or NULL; the i forms compare as
// _zstristr does.  The range is `length` bytes from index `start`, clipped
// to the string: a negative `start` counts back from the end (-n: the last
// n bytes; past the start: from the start), a negative `length` runs to the
// end.  So (0, n) is the first n bytes, (-n, -1) the last n, (0, -1) the
// whole string.  Overlapping occurrences count.  An empty pattern is found
// at the range's start (forward) or end (backward).  Only as much of
// `string1` is read as the range needs, and nothing is written to it.
// NULL `string1` or `string2`: warning "%s() - Warning: <string1> or
// <string2> given in argument is NULL: NULL was returned as result of
// search." (id -1, severity 4), NULL.
ZELSTR_API char* _zstrfind(char* string1, char const* string2, int start, int length) noexcept;
ZELSTR_API char const* _zstrfind(char const* string1, char const* string2, int start,
                                 int length) noexcept;
ZELSTR_API char* _zstrifind(char* string1, char const* string2, int start, int length) noexcept;
ZELSTR_API char const* _zstrifind(char const* string1, char const* string2, int start,
                                  int length) noexcept;
ZELSTR_API char* _zstrrfind(char* string1, char const* string2, int start, int length) noexcept;
ZELSTR_API char const* _zstrrfind(char const* string1, char const* string2, int start,
                                  int length) noexcept;
ZELSTR_API char* _zstrrifind(char* string1, char const* string2, int start, int length) noexcept;
ZELSTR_API char const* _zstrrifind(char const* string1, char const* string2, int start,
                                   int length) noexcept;

// The occurrence of `string2` nearest to index `position` of `string1` (a
// cursor), or NULL when there is none; the i form compares as _zstristr
// does.  The distance of an occurrence is 0 when it covers the position,
// else the bytes from the position to its nearest byte.  Ties go to the
// occurrence that starts last at or before the position, then to the first
// after it.  A position past the end is the terminator's.  An empty
// pattern is found at the position.  NULL `string1` or `string2`: the
// warning of _zstrfind, NULL; a negative position: warning "%s() -
// Warning: <position> given in argument is negative: NULL was returned as
// result of search." (id -1, severity 4), NULL.
ZELSTR_API char* _zstrneareststr(char* string1, char const* string2, int position) noexcept;
ZELSTR_API char const* _zstrneareststr(char const* string1, char const* string2,
                                       int position) noexcept;
ZELSTR_API char* _zstrnearestistr(char* string1, char const* string2, int position) noexcept;
ZELSTR_API char const* _zstrnearestistr(char const* string1, char const* string2,
                                        int position) noexcept;

// The number of occurrences of `string2` in `string1`, counted from left to
// right without overlap (as the replacements find them).  NULL: warning 83
// (`string1`) or 102 (`string2`); empty `string2`: warning 103; each
// returns -1.
ZELSTR_API int _zstrstrcnt(char const* string1, char const* string2) noexcept;
ZELSTR_API int _zstristrcnt(char const* string1, char const* string2) noexcept;

// The number of bytes `c` in `string` (0 for c = 0).  NULL: warning 106, -1.
ZELSTR_API int _zstrccnt(char const* string, char c) noexcept;

#endif  // ZELSTR_SEARCH_H
