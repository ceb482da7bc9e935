// replace.h - substitutions in place, and the length changes they cause.
//
// The replacements work in the caller's buffer.  `size` is the greatest
// length the result may reach, terminator not counted (the buffer holds
// size + 1 bytes); 4294967295 means no limit.  Occurrences are taken from
// left to right without overlap, and a replacement is never searched again.
// When a growing replacement would pass `size`, the function returns NULL at
// once: the occurrences replaced before it stay replaced, it and the rest
// are left as they were.  That is not a warning: size the buffer first with
// _zstrdeltalen or _zstrmultideltalen.  A NULL `s1` or `s2` gives warning 120
// and NULL; a NULL `string` gives NULL without a warning.
//
// Each run takes linear time: the occurrences are found in one pass and the
// buffer is rebuilt once (from the end when it grows), leaving exactly the
// bytes, up to size + 1, that shifting the tail at each occurrence would.
//
// Memory: a growing replacement remembers the occurrences it replaces, and
// a replacement ignoring case (or through a map) works on a folded copy of
// `s1` when it is longer than 64 characters.  Without that memory the
// function returns NULL and the string is left unchanged; _zstr1replace,
// _zstri1replace and _zstrr1replace too.  _zstrclean still cleans, though
// the bytes behind the new terminator may differ.  _zstrpurge, without
// memory for its buffer, files warning 199 and returns NULL.
// zelstr::allocation_failures (alloc.h) tells such a NULL from the size
// limit's.
//
// Threads: every function here may run on several threads at once.  What
// some keep between calls is the calling thread's own: the forward search's
// state (search.h; _zstrNreplace and _zstr1replace with their `i` and `Ex`
// forms, the multi replacements, _zstrNby0replace), the toupper table (the
// `i` forms), the compiled set definitions (setdef.h; the `Ex` forms,
// _zstrmultireplace1 given delimiters, _zstrlonesomize) and _zstrpurge's
// work buffer.
#ifndef ZELSTR_REPLACE_H
#define ZELSTR_REPLACE_H

#include "zelstr/export.h"

// One substitution of a list: `s1` is searched for, `s2` replaces it.  A list
// ends with a couple whose two pointers are NULL.
struct zstr_couple {
  char const* s1;
  char const* s2;
};

// Replaces every `s1` by `s2`.  Equal `s1` and `s2`, or an empty `s1`, leave
// the string as it is; one character for another is a plain overwrite.
ZELSTR_API char* _zstrNreplace(char* string, char const* s1, char const* s2,
                               unsigned long size) noexcept;

// The same, matching through the C library's toupper; `s2` is written as
// given.  Only an empty `s1` is taken as "nothing to do" (replacing A by A
// turns every a into A).
ZELSTR_API char* _zstriNreplace(char* string, char const* s1, char const* s2,
                                unsigned long size) noexcept;

// Every occurrence that no byte of the set `delimiters` touches (a set
// definition, see setdef.h): the byte before it (if any) and the byte after
// it are not members.  A rejected occurrence is skipped whole.  A NULL or
// empty `delimiters` makes these _zstrNreplace / _zstriNreplace.
ZELSTR_API char* _zstrNreplaceEx(char* string, char const* s1, char const* s2, unsigned long size,
                                 char const* delimiters) noexcept;
ZELSTR_API char* _zstriNreplaceEx(char* string, char const* s1, char const* s2, unsigned long size,
                                  char const* delimiters) noexcept;

// The first (last) occurrence only.  The size is tested once, before
// anything changes: a result longer than `size` gives NULL and an unchanged
// string.
ZELSTR_API char* _zstr1replace(char* string, char const* s1, char const* s2,
                               unsigned long size) noexcept;
ZELSTR_API char* _zstri1replace(char* string, char const* s1, char const* s2,
                                unsigned long size) noexcept;
ZELSTR_API char* _zstrr1replace(char* string, char const* s1, char const* s2,
                                unsigned long size) noexcept;

// Applies _zstrNreplace (_zstrNreplaceEx with `delimiters`, when it is
// neither NULL nor empty) couple by couple, each to the result of the one
// before, and stops at the first NULL.  A NULL `string` or `couples` returns
// `string`.
ZELSTR_API char* _zstrmultireplace(char* string, zstr_couple* couples, unsigned long size) noexcept;
ZELSTR_API char* _zstrmultireplace1(char* string, zstr_couple* couples, unsigned long size,
                                    char* delimiters) noexcept;

// By how many bytes _zstrNreplace(string, s1, s2, ...) would change the
// length (negative when it shrinks); exact for distinct `s1` and `s2`.  A
// NULL or empty `string` counts no occurrence.  Errors give ZEAL_STR_ERR:
// NULL `s1` or `s2` (warning 40), a length above 2147483647 (41, 42), an
// overflow (43).
ZELSTR_API long _zstrdeltalen(char* string, char* s1, char* s2) noexcept;

// The sum of _zstrdeltalen over the couples, each against the unchanged
// `string`.  NULL `string` or `couples` give 0.  A term in error stops the
// sum (warning 44), so does an overflow (warning 45); both give ZEAL_STR_ERR.
ZELSTR_API long _zstrmultideltalen(char* string, zstr_couple* couples) noexcept;

// Replaces every `s1` by one NUL byte, cutting the string into pieces that
// follow each other in the buffer.  NULL `s1`: warning 121, NULL.  NULL
// `string`: NULL; an empty `s1`, or a `string` shorter than it: `string`
// unchanged.
ZELSTR_API char* _zstrNby0replace(char* string, char* s1) noexcept;

// The same for the first `s1` only: "a,b,c" at "," becomes the bytes a,
// NUL, b, ",", c, NUL.  Same warning and fallbacks.
ZELSTR_API char* _zstr1by0replace(char* string, char* s1) noexcept;

// Copies `src` to `dest` writing `s` (NULL counts as empty) for every `c`.
// On one buffer: c = 0 appends `s`; `s` = "cc" doubles every `c`; an empty
// `s` removes every `c`.  The caller guarantees the room.  NULL: warnings 93
// and 94, NULL.
ZELSTR_API char* _zstrcpyNreplace(char* dest, char* src, char c, char const* s) noexcept;
ZELSTR_API char* _zstrcpyNreplace(char* dest, char const* src, char c, char const* s) noexcept;

// Cuts out every span that begins with `s1` and ends with the next `s2`;
// `keep_s1` / `keep_s2` non-zero keep those delimiters.  Spans do not nest.
// A NULL or empty `s1` (warning 63) or `s2` (warning 64) returns `string`
// intact.
ZELSTR_API char* _zstrclean(char* string, char const* s1, char const* s2, int keep_s1,
                            int keep_s2) noexcept;

// Removes every span from `s1` to the next `s2` like _zstrclean (delimiters
// dropped), but spans nest: an `s1` inside a span opens a deeper one, and
// the span ends at the `s2` that closes the outermost `s1`; an `s1` never
// closed keeps the text from it to the end.  With `flag` non-zero the
// delimiters of the outermost span are kept.  The work is done in a buffer
// the calling thread keeps for its next calls (no memory: warning 199,
// NULL); the call with all arguments NULL / 0 releases that thread's buffer.
ZELSTR_API char* _zstrpurge(char* string, char* s1, char* s2, int flag) noexcept;

// Collapses runs of the set's characters (a set definition), left to right:
// with n = 0 a run of one character becomes one; with n > 1 each group of n
// identical set characters becomes one, and a shorter remainder stays as it
// is and sets *lonesome to 1; n = 1 or n < 0 change nothing.  *lonesome (when
// `lonesome` is not NULL) is set to 0 first.
ZELSTR_API char* _zstrlonesomize(char* string, int n, char const* set, int* lonesome) noexcept;
// The same with the one-character set {c}; c = 0 changes nothing.
ZELSTR_API char* _zstrlonesomize(char* string, int n, char c, int* lonesome) noexcept;

#endif  // ZELSTR_REPLACE_H
