// map.h - character maps: user-defined translations of the 256 byte values.
//
// A map handle is the address of a 256-byte table (entry c: the byte c is
// translated to); entry 0 never changes, so a translated string keeps its
// terminator.  NULL is the identity map; ZEAL_STR_BAD_MAP (types.h) the
// invalid map, which the functions report before falling back to their
// unmapped counterparts.  Maps are read-only once made.  The caller releases
// every map it was given with _zmapfree.
//
// Definitions are elements separated by blanks (the space only):
//   "A-Z=a-z"   a range: a..z take the images of A..Z (pairwise)
//   "s=t1=t2"   a chain: t1, t2 take the image of s; "?" as a target is a
//               placeholder, "?=" as the start of an element is skipped
//   "x"         a single character: ignored
// An '=' preceded by two blanks makes the blank before it the source of a
// chain.  A target already mapped elsewhere is kept (two notices); a
// syntax error gives ZEAL_STR_BAD_MAP (a warning and a notice showing the
// definition with the element marked <<...>>).  Ranges compare and walk the
// bytes as signed values: a range cannot run across 0x80.
//
// Memory: a map without memory for its block is ZEAL_STR_BAD_MAP with the
// warning "Not enough RAM to allocate a new map, sorry." (_zmapdefine) or
// "Not enough RAM to clone a map, sorry." (_zmapclone), severity 4.  A
// warning that quotes a copy of the definition quotes "<null>" when the
// copy cannot be made.  _zmapdump2string gives NULL without memory for its
// text.
//
// Threads: every function here may run on several threads at once, with one
// map or several: a finished map is only read.  Free a map only once no
// other thread uses it.  _zmapdump2string's text is the calling thread's,
// and _zmapdefine composes its reports of a syntax error or a conflict in
// the calling thread's print arena (scratch.h).
#ifndef ZELSTR_MAP_H
#define ZELSTR_MAP_H

#include "zelstr/export.h"
#include "zelstr/types.h"

// A new map, NULL when the definition maps nothing (or is empty; a NULL one
// draws a notice), ZEAL_STR_BAD_MAP on a syntax error or without memory.
ZELSTR_API ZelStrMap _zmapdefine(char const* definition) noexcept;

// Releases a map.  TRUE when all went well; NULL is TRUE; ZEAL_STR_BAD_MAP
// is FALSE with warning 30; a release that went wrong is FALSE (warning 84).
ZELSTR_API int _zmapfree(ZelStrMap map) noexcept;

// An independent copy (NULL and ZEAL_STR_BAD_MAP give themselves).
ZELSTR_API ZelStrMap _zmapclone(ZelStrMap map) noexcept;

// TRUE when the map is exactly ASCII case folding, to upper or to lower
// case, every other byte left alone.  ZEAL_STR_BAD_MAP: warning 11, FALSE.
ZELSTR_API int _zmapisinsensitive(ZelStrMap map) noexcept;

// The image of `c` (c itself for NULL or ZEAL_STR_BAD_MAP).
ZELSTR_API char _zmapchrapply(ZelStrMap map, char c) noexcept;

// Translates `string` in place.  ZEAL_STR_BAD_MAP: warning 11, unchanged.
ZELSTR_API char* _zmapstrapply(ZelStrMap map, char* string) noexcept;

// Copies `src` to `dest` translating every byte.  NULL map: _zstrcpy;
// ZEAL_STR_BAD_MAP: warning 13, then _zstrcpy.  NULL: warnings 175, 176.
ZELSTR_API char* _zmapstrcpy(ZelStrMap map, char* dest, char const* src) noexcept;

// Bounded like strncpy (exactly `n` bytes, no terminator when `src` is that
// long); `src` equal to `dest`, or n = 0, leaves `dest` untouched.  NULL map:
// strncpy; ZEAL_STR_BAD_MAP: warning 14, then strncpy.  NULL: warnings 177,
// 178.
ZELSTR_API char* _zmapstrncpy(ZelStrMap map, char* dest, char const* src, unsigned long n) noexcept;

// The table as text, one line per byte ("map['a']-->'A'\r\n"), only the
// bytes that change when `changedOnly` is not 0; in a static buffer of the
// calling thread, valid until its next call.  ZEAL_STR_BAD_MAP gives NULL;
// NULL with `changedOnly` gives "".
ZELSTR_API char const* _zmapdump2string(void const* map, int changedOnly) noexcept;

#endif  // ZELSTR_MAP_H
