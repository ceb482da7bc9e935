// copy.h - copying strings into a caller's buffer.
//
// The destination must be large enough: no function here checks its room.
// A NULL pointer is reported as a warning and the function returns NULL
// unless stated otherwise.  Counts are unsigned 32-bit values: a wider count
// is cut to its low 32 bits.
//
// Memory: nothing here allocates (_zstrgetbefore's copy lives in the calling
// thread's clone arena), but for the warning records; a record that cannot
// be allocated changes no result (alloc.h).
//
// Threads: every function here may run on several threads at once.
// _zstrgetbefore takes its result from the calling thread's clone arena
// (scratch.h): it stays valid until that thread's arena wraps over it, or
// the thread ends.
#ifndef ZELSTR_COPY_H
#define ZELSTR_COPY_H

#include "zelstr/export.h"

// Copies `src` with its terminator.  Does nothing when `dest` is `src`.
ZELSTR_API char* _zstrcpy(char* dest, char const* src) noexcept;

// Writes exactly `count` bytes: the bytes of `src` up to its terminator, then
// zero bytes.  When `src` has `count` or more characters no terminator is
// written.  Does nothing when `dest` is `src` or `count` is 0.  The two areas
// must not overlap (see _zsamestrncpy).  NULL: warnings 95 and 96.
ZELSTR_API char* _zstrncpy(char* dest, char const* src, unsigned long count) noexcept;

// _zstrncpy, then (when it succeeded and `count` is not 0) dest[count - 1]
// is set to zero.  NULL: the warnings of _zstrncpy.
ZELSTR_API char* _zstrncpyf0(char* dest, char const* src, unsigned long count) noexcept;

// _zstrncpy that is also right when the two areas overlap: shifting a string
// right by one with _zsamestrncpy(p + 1, p, n) does not smear its first
// byte.  NULL: warnings 97 and 98.
ZELSTR_API char* _zsamestrncpy(char* dest, char* src, unsigned long count) noexcept;

// Copies at most count - 1 bytes and always terminates.  The copy stops after
// count - 1 bytes or after the terminator has been copied, and a zero byte is
// then written at the current position (so when `src` is shorter, the byte
// after its copied terminator is zeroed too).  `count` 0 leaves `dest` as it
// is.  NULL `dest`: warning 134, NULL.  NULL `src`: with count >= 1, dest[0]
// is zeroed, warning 135 and `dest` is returned; with count 0, warning 136
// and `dest` is returned intact.
ZELSTR_API char* _zstrsafecpyf0(char* dest, char const* src, unsigned long count) noexcept;

// Copies the bytes of `src` before `stop_at_pos_in_src` and terminates:
// _zstrsafecpyf0(dest, src, (stop_at_pos_in_src - src) + 1).
ZELSTR_API char* _zstrcpyuntil(char* dest, char const* src,
                               char const* stop_at_pos_in_src) noexcept;

// Copies `src` up to (not including) its first byte found in `reject`, and
// terminates.  A NULL or empty `reject` copies all of `src`.
ZELSTR_API char* _zstrcpybefore(char* dest, char const* src, char const* reject) noexcept;

// Copies `src` up to (not including) its first `c`, and terminates.  The
// character 0 copies all of `src`.
ZELSTR_API char* _zstrcpybefore(char* dest, char const* src, char c) noexcept;

// Bounded _zstrcpybefore.  With a NULL or empty `reject`, or `count` 0, this
// is _zstrncpy.  Otherwise, with n the length of the leading run of `src`
// holding no byte of `reject`: min(count, n) bytes are copied, then zero
// bytes up to `count`; when n >= count no terminator is written.  Its
// warnings name _zstrcpybefore().
ZELSTR_API char* _zstrncpybefore(char* dest, char const* src, char const* reject,
                                 unsigned long count) noexcept;

// The same, the run ending at the first `c` (or at the terminator).
ZELSTR_API char* _zstrncpybefore(char* dest, char const* src, char c, unsigned long count) noexcept;

// The leading run of `src` that holds no byte of `reject` (NULL counts as
// empty), copied into a scratch area of run + 1 bytes taken from _zstrclone:
// not released by the caller, valid until later clones of the same thread
// overwrite it.
ZELSTR_API char* _zstrgetbefore(char const* src, char const* reject) noexcept;

// The same, the run ending at the first `c` (or at the terminator).
ZELSTR_API char* _zstrgetbefore(char const* src, char c) noexcept;

#endif  // ZELSTR_COPY_H
