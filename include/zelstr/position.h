// position.h - positions in strings.
#ifndef ZELSTR_POSITION_H
#define ZELSTR_POSITION_H

#include "zelstr/export.h"

// The first `c` in `s` (c = 0 finds the terminator), or NULL.  NULL `s`:
// warning 123, NULL.
ZELSTR_API char* _zstrchr(char* s, char c);
ZELSTR_API char const* _zstrchr(char const* s, char c);

// The later / earlier of two positions, compared as addresses (not as
// texts).  One NULL gives the other; both NULL give NULL; no warning.
ZELSTR_API char const* _zstrmax(char const* p, char const* q);
ZELSTR_API char const* _zstrmin(char const* p, char const* q);

#endif  // ZELSTR_POSITION_H
