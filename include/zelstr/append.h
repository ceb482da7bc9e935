// append.h - appending, inserting and shifting in place.
//
// The destination must be large enough: no function here checks its room.
//
// Memory: nothing here allocates, but for the warning records; a record
// that cannot be allocated changes no result (alloc.h).
//
// Threads: every function here may run on several threads at once, each on
// buffers of its own caller; none shares library-wide state.
#ifndef ZELSTR_APPEND_H
#define ZELSTR_APPEND_H

#include "zelstr/export.h"

// Appends `src` at the terminator of `dest`.  NULL `dest`: warning 180,
// NULL; NULL `src`: warning 181, `dest` returned intact.
ZELSTR_API char* _zstrcat(char* dest, char* src) noexcept;

// Appends at most `count` bytes of `src` and terminates; `count` 0 leaves
// `dest` as it is.  NULL `dest`: warning 184, NULL; NULL `src`: warning 185,
// `dest` returned intact.
ZELSTR_API char* _zstrncat(char* dest, char const* src, unsigned long count) noexcept;

// Inserts `src` at the head of `dest` (an empty `src` returns at once).
// NULL `dest`: warning 182, NULL; NULL `src`: warning 183, `dest` returned
// intact.
ZELSTR_API char* _zstrins(char* dest, char const* src) noexcept;

// Shifts the string `s`, terminator included, by `n` bytes and returns `s`.
//
// With `flag` 0 the whole string moves: to s + n for positive `n` (the `n`
// bytes freed at the head are set to `fill`), and for negative `n` to s + n
// too, that is over the -n bytes before `s`, which must belong to the same
// buffer.  The caller guarantees the room; this is how in-place edits open
// and close gaps.
//
// With any other `flag` the shift stays within the string's length: a right
// shift drops the last `n` characters and fills the head with `fill`; a left
// shift drops the first -n characters and fills the tail with `fill`.
//
// NULL `s`: warning 186, NULL.
ZELSTR_API char* _zstrshift(char* s, int n, char fill, int flag) noexcept;

#endif  // ZELSTR_APPEND_H
