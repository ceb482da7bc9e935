// trim.h - removing blanks or chosen characters from the ends of a string,
// in place.
//
// Memory: nothing here allocates, but for the warning records; a record
// that cannot be allocated changes no result (alloc.h).
//
// Threads: every function here may run on several threads at once; none
// shares library-wide state.
#ifndef ZELSTR_TRIM_H
#define ZELSTR_TRIM_H

#include "zelstr/export.h"

// Leading / trailing / both runs of spaces (not tabs).  NULL: warning 111,
// 112, 113, NULL.
ZELSTR_API char* _zstrltrim(char* string) noexcept;
ZELSTR_API char* _zstrrtrim(char* string) noexcept;
ZELSTR_API char* _zstrbtrim(char* string) noexcept;

// Leading / trailing / both runs of the characters listed in `string2` (a
// plain list); a string made only of them becomes empty, an empty list
// changes nothing.  NULL `string1` or `string2`: warnings 114 to 119, NULL.
ZELSTR_API char* _zstrltrimex(char* string1, char const* string2) noexcept;
ZELSTR_API char* _zstrrtrimex(char* string1, char const* string2) noexcept;
ZELSTR_API char* _zstrbtrimex(char* string1, char const* string2) noexcept;

// Copies the text, dropping every run of spaces and tabs that stands just
// before a CR or LF or at the end.  NULL destination: warning 131, NULL;
// NULL source: warning 132, the destination emptied and returned.
ZELSTR_API char* _zstrrtrimlines(char* o_DestinationBuffer, char const* i_SourceText) noexcept;
// In place.  NULL: warning 133, NULL.
ZELSTR_API char* _zstrrtrimlines(char* io_SourceText) noexcept;

#endif  // ZELSTR_TRIM_H
