// bytes.h - byte areas.
//
// Memory: nothing here allocates, but for the warning records; a record
// that cannot be allocated changes no result (alloc.h).
//
// Threads: both functions may run on several threads at once; neither shares
// library-wide state.
#ifndef ZELSTR_BYTES_H
#define ZELSTR_BYTES_H

#include "zelstr/export.h"

// Copies `count` bytes forwards, one after the other; nothing is done when
// `dest` is `src` or `count` is 0.  Overlapping areas are copied as the
// forward walk goes: when `dest` lies inside the source area the first
// dest - src bytes repeat.  NULL: warnings 99 and 100, NULL.
ZELSTR_API char* _zmemcpy(char* dest, char* src, unsigned long count) noexcept;

// Fills `count` bytes with `c`.  NULL: warning 101, NULL.
ZELSTR_API char* _zmemset(char* buffer, char c, unsigned long count) noexcept;

#endif  // ZELSTR_BYTES_H
