// mapped.h - string functions that compare characters through a map.
//
// Each function here is a plain function of the library with a character
// map (map.h) as its first argument: wherever the plain one tests two
// characters for equality or orders them, this one compares their images
// through the map; the text it returns or edits is the caller's own,
// untranslated.  With the map made from "A-Z=a-z", _zmapstrstr finds "abc"
// in "xABCx".
//
// Shared rules, in this order:
//   1. a NULL map calls the plain counterpart, without a warning;
//   2. ZEAL_STR_BAD_MAP reports the function's invalid-map warning (its
//      number is given below), then calls the plain counterpart;
//   3. otherwise NULL strings draw the plain counterpart's warnings and
//      fallback values, unless stated otherwise.
//
// Functions that also ignore case fold with the plain counterpart's case
// function first (toupper, or tolower for the two `icmp` comparisons), then
// map; _zmapstrichr alone maps first, then folds the images with toupper.
//
// Memory: a search through a map works on a copy of its pattern through the
// map, allocated when the pattern is longer than 64 characters.  Without
// memory for it the searches give NULL, the counts -1, the length
// variations ZEAL_STR_ERR, and the replacements NULL with the string
// unchanged; the replacements also give NULL, nothing changed, when there
// is no memory to remember the occurrences of a growing replacement.
//
// Threads: every function here may run on several threads at once, and one
// map may serve them all: the map is only read and the search state kept on
// the stack.  _zmapstristr, _zmapstrichr and _zmapstrdiffpoint with
// `case_sensitive` 0 read the calling thread's toupper table (search.h); a
// fallback to a plain function, for a NULL or invalid map, follows that
// function's rules.
#ifndef ZELSTR_MAPPED_H
#define ZELSTR_MAPPED_H

#include "zelstr/export.h"
#include "zelstr/types.h"
#include "zelstr/replace.h"

// ---- Replacement -----------------------------------------------------------

// Replaces every occurrence of `s2` (found through the map, left to right
// without overlap; a replacement is never searched again) by `s3`, copied
// as given, as _zstrNreplace does; `maxlen` is the greatest length the
// result may reach.  Linear in the length of `string`.  Invalid map:
// warning 21, _zstrNreplace.  NULL `s2` or `s3`: warning 120, NULL.
ZELSTR_API char* _zmapstrNreplace(ZelStrMap map, char* string, char const* s2, char const* s3,
                                  unsigned long maxlen) noexcept;

// Replaces the first occurrence of `s2` found through the map by `s3`.  An
// empty `s2`, one longer than `string`, or no occurrence leave `string` as
// it is.  A growing replacement that would pass `maxlen` gives NULL and
// leaves `string` untouched.  Invalid map: warning 21, _zstr1replace.
// NULL `s2` or `s3`: warning 120, NULL; NULL `string`: NULL.
ZELSTR_API char* _zmapstr1replace(ZelStrMap map, char* string, char const* s2, char const* s3,
                                  unsigned long maxlen) noexcept;

// The length change _zmapstrNreplace(map, string, s2, s3, ...) would cause
// (occurrences counted through the map), with the warnings and
// ZEAL_STR_ERR of _zstrdeltalen.  Invalid map: warning 15, _zstrdeltalen.
ZELSTR_API long _zmapstrdeltalen(ZelStrMap map, char* string, char* s2, char* s3) noexcept;

// The sum of _zmapstrdeltalen over the couples, as _zstrmultideltalen sums.
// Invalid map: warning 16, _zstrmultideltalen.
ZELSTR_API long _zmapstrmultideltalen(ZelStrMap map, char* string, zstr_couple* couples) noexcept;

// ---- Counting and searching ------------------------------------------------

// Occurrences of `string2` in `string1` through the map, left to right
// without overlap; the warnings and -1 of _zstrstrcnt.  Invalid map:
// warning 17, _zstrstrcnt.
ZELSTR_API long _zmapstrstrcnt(ZelStrMap map, char* string1, char* string2) noexcept;

// Bytes of `string` whose image is that of `c` (0 for c = 0).  NULL
// `string`: the warning of _zstrccnt, and its -1 as an unsigned long (all
// bits set).  Invalid map: warning 18, _zstrccnt.
ZELSTR_API unsigned long _zmapstrccnt(ZelStrMap map, char* string, char c) noexcept;

// The first occurrence of `string2` in `string1` through the map, with the
// warnings and fallbacks of _zstrstr (an empty pattern is found at the
// start).  Invalid map: warning 26, _zstrstr.
ZELSTR_API char const* _zmapstrstr(ZelStrMap map, char const* string1, char const* string2) noexcept;

// The same, ignoring case: bytes compare as map[toupper(c)].  Invalid map:
// warning 19, _zstristr.
ZELSTR_API char const* _zmapstristr(ZelStrMap map, char const* string1, char const* string2) noexcept;

// The last occurrence of `string2` in `string1` through the map (an empty
// pattern is found at the terminator), with the warnings of _zstrrstr.
// Invalid map: warning 28, _zstrrstr.
ZELSTR_API char const* _zmapstrrstr(ZelStrMap map, char const* string1, char const* string2) noexcept;

// The first (last) byte of `string` whose image is that of `c`; c = 0 finds
// the terminator.  NULL `string`: the warning of _zstrchr (_zstrrchr), NULL.
// Invalid map: warning 27 (29), _zstrchr (_zstrrchr).
ZELSTR_API char const* _zmapstrchr(ZelStrMap map, char const* string, char c) noexcept;
ZELSTR_API char const* _zmapstrrchr(ZelStrMap map, char const* string, char c) noexcept;

// The first byte x of `string` with toupper(map[x]) equal to
// toupper(map[c]).  Invalid map: warning 20, _zstrichr.
ZELSTR_API char const* _zmapstrichr(ZelStrMap map, char const* string, char c) noexcept;

// ---- Comparison ------------------------------------------------------------

// The sign (-1, 0, +1) of the difference of the unsigned images at the
// first place where they differ; 0 for strings equal through the map.  NULL
// strings: the warnings and values of _zstrcmp.  Invalid map: warning 22,
// _zstrcmp.
ZELSTR_API int _zmapstrcmp(ZelStrMap map, char const* string1, char const* string2) noexcept;

// The same over at most `count` bytes (0 compares nothing); NULL strings as
// _zstrncmp.  Invalid map: warning 25, _zstrncmp.
ZELSTR_API int _zmapstrncmp(ZelStrMap map, char const* string1, char const* string2,
                            unsigned long count) noexcept;

// Compares map[tolower(c)] byte by byte.  NULL map: _zstricmp.  Invalid
// map: warning 31, then the C library's case-insensitive comparison.  A NULL
// `string1` (with `string2` given) gives warning 170 and -1; a NULL
// `string2` gives warning 171 and +1, also when `string1` is NULL.
ZELSTR_API int _zmapstricmp(ZelStrMap map, char const* string1, char const* string2) noexcept;

// The same over at most `count` bytes.  NULL map: _zstrnicmp.  Invalid map:
// warning 12, _zstrnicmp.  Both NULL: warning 172, 0; `string1` NULL:
// warning 173, -1; `string2` NULL: warning 174, +1 (0 when count is 0).
ZELSTR_API int _zmapstrnicmp(ZelStrMap map, char const* string1, char const* string2,
                             unsigned long count) noexcept;

// The first position of `string1` whose image differs from `string2`'s (the
// terminator of `string1` when it ends first), NULL for strings equal
// through the map; with `case_sensitive` 0 the bytes compare as
// map[toupper(c)].  NULL strings as _zstrdiffpoint (no warning).  Invalid
// map: warning 24, _zstrdiffpoint.
ZELSTR_API char const* _zmapstrdiffpoint(ZelStrMap map, char const* string1, char const* string2,
                                         int case_sensitive) noexcept;

// 1 when `string1` begins (ends) with `string2` through the map, else 0,
// with the NULL rules of _zstrishead (_zstristail).  The map stands for the
// plain functions' case flag: a NULL map, and ZEAL_STR_BAD_MAP (which has
// no warning of its own), give the case-sensitive plain test.
ZELSTR_API int _zmapstrishead(ZelStrMap map, char const* string1, char const* string2) noexcept;
ZELSTR_API int _zmapstristail(ZelStrMap map, char const* string1, char const* string2) noexcept;

#endif  // ZELSTR_MAPPED_H
