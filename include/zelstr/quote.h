// quote.h - framing strings with quotes or a pair of characters, and
// testing their heads and tails.
//
// The ...ed functions return a static buffer of the calling thread
// (_zstrunquoted only when `dest` is NULL), overwritten by that thread's
// next call of the same function.
//
// Memory: nothing here allocates (results live in the calling thread's
// static buffers and arenas), but for the warning records; a record that
// cannot be allocated changes no result (alloc.h).
//
// Threads: every function here may run on several threads at once.  Each
// thread has its own static buffers, its own clone arena, where the copying
// _zstrdoubleq puts its result (valid until that arena wraps over it), and
// its own print arena, where _zstrunquoted composes its warnings about the
// string's ends (scratch.h).
#ifndef ZELSTR_QUOTE_H
#define ZELSTR_QUOTE_H

#include "zelstr/export.h"

// Frames `string` in place: `quote` (or `c1`) in front, `quote` (or `c2`)
// behind.  The buffer must hold two more bytes.  NULL: a notice (severity
// 2), NULL.
ZELSTR_API char* _zstrenquote(char* string, char quote) noexcept;
ZELSTR_API char* _zstrencapsulate(char* string, char c1, char c2) noexcept;

// `quote` + `string` + `quote` in a static buffer; a string longer than 2047
// characters is cut to them (warning 207), still closed by `quote`.  NULL is
// taken as empty (warning 138).
ZELSTR_API char* _zstrquoted(char const* string, char quote) noexcept;

// `c1` + `string` + `c2` in a static buffer, at most 511 characters of
// `string` (warning 208); NULL taken as empty (warning 139).
ZELSTR_API char* _zstrencapsulated(char const* string, char c1, char c2) noexcept;

// `string` without its first and last characters, in `dest` or, when `dest`
// is NULL, in a static buffer (2051 characters at most; a longer text gives
// warning 209 and the argument itself cut to 2049 characters).  A string
// that is too short, does not start or does not end with `quote` (any
// character when `quote` is 0) draws a formatted warning and is returned
// unchanged.  NULL: warning 140, NULL.
ZELSTR_API char* _zstrunquoted(char const* string, char quote, char* dest) noexcept;

// The characters between the first and the last of `string`, in a static
// buffer (515 characters at most, a longer text cut: warning 210).  When
// `c1` (or `c2`) is not 0 and the first (last) character is not it, warning
// 85 and `string` itself is returned.  NULL: warning 141, NULL.
ZELSTR_API char* _zstrunencapsulated(char* string, char c1, char c2) noexcept;

// A copy of `string` with every `quote` doubled, in the clone arena
// (_zstrclone: not released by the caller).  NULL gives NULL.
ZELSTR_API char* _zstrdoubleq(char const* string, char quote) noexcept;

// Doubles every `quote` of `string` in place; the caller guarantees the room.
ZELSTR_API void _zstrdoubleq(char* string, char quote) noexcept;

// 1 when `string` begins (ends) with `head` (`tail`), compared with case
// (strncmp) or without (`caseSensitive` 0); an empty head or tail always
// matches, a tail longer than the string never.  Both NULL: warning 127
// (129), 1; one NULL: warning 128 (130), 0.
ZELSTR_API int _zstrishead(char const* string, char const* head, int caseSensitive) noexcept;
ZELSTR_API int _zstristail(char const* string, char const* tail, int caseSensitive) noexcept;

#endif  // ZELSTR_QUOTE_H
