// length.h - lengths and ends of strings.
//
// Like every `_z` function, these report a NULL argument as a warning to the
// error-handler service (see errsvc/errsvc.h) and return the fallback the
// warning names.  Lengths are unsigned 32-bit values.
//
// Memory: nothing here allocates, but for the warning records; a record
// that cannot be allocated changes no result (alloc.h).
//
// Threads: every function here may run on several threads at once; none
// shares library-wide state.
#ifndef ZELSTR_LENGTH_H
#define ZELSTR_LENGTH_H

#include "zelstr/export.h"

// Number of bytes before the terminator.  NULL: warning 86, returns 0.
ZELSTR_API unsigned int _zstrlen(char const* s) noexcept;

// Length of a strings-set: the bytes before the first zero byte, plus one
// for that zero.  The empty string gives 1.  NULL: warning 137, returns 0.
ZELSTR_API unsigned int _zstrsetlen(char* set) noexcept;

// Address of the terminator of `s`.  NULL: warning 166, returns NULL.
ZELSTR_API char* _zstreos(char* s) noexcept;
ZELSTR_API char const* _zstreos(char const* s) noexcept;

#endif  // ZELSTR_LENGTH_H
