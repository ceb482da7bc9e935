// extract.h - walking the pieces of a text that lie between a header and a
// footer.
//
//   for (char* piece = _zstrextract(text, "[", "]", 1); piece != nullptr;
//        piece = _zstrextract(nullptr, "[", "]", 1)) { ... }
//   _zstrextract(nullptr, "[", "]", 0);  // ends the walk, restores the text
//
// Each piece is returned in place: the footer's first byte is replaced by
// NUL and put back at the next call.  Each function keeps one walk per
// thread: end every walk with `finished` 0 before the same thread starts
// another.
//
// Memory: _zstriextract ignores case through a folded copy of its header
// and footer, allocated when one is longer than 64 characters; without
// memory for it the call gives NULL, as when nothing is found
// (zelstr::allocation_failures, alloc.h, tells the two apart).  Nothing else
// allocates, but for the warning records.
//
// Threads: both functions may run on several threads at once: each thread
// has its own walk of each, and its own forward-search state and toupper
// table (search.h).
#ifndef ZELSTR_EXTRACT_H
#define ZELSTR_EXTRACT_H

#include "zelstr/export.h"

// The next piece, or NULL.  `finished` 1 goes on (`string` given on the
// first call only), 0 ends the walk; any other value: warning 0.  NULL
// header or footer: 124; a string on a later call: 125; none on the first:
// 126.  An empty header takes each piece from where the last ended.
ZELSTR_API char* _zstrextract(char* string, char const* header, char const* footer,
                              int finished) noexcept;
// The same, finding header and footer without case; its own state.
ZELSTR_API char* _zstriextract(char* string, char const* header, char const* footer,
                               int finished) noexcept;

#endif  // ZELSTR_EXTRACT_H
