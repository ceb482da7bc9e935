// setdef.h - spans and positions over a set definition.
//
// A set definition is a short text naming a set of bytes: "[" items "]",
// an item being a byte or a range "x-y" (inclusive, unsigned order; an
// inverted range adds nothing).  "`" takes the byte after it literally (so
// "`", "-" and "]" can be members); an unescaped "-" cannot begin an item; a
// "]" that is not the last byte is an ordinary member ("[]]" is the set of
// "]"); a range cannot end on the last byte ("[a-]" is wrong).  There is no
// negation and there are no named classes.  Bytes 128 to 255 stand as they
// are.
//
// The last definition a thread used (when shorter than 256 bytes) is kept
// compiled for it: applying one definition to many strings in a row costs a
// text comparison per call.  The `i` forms ignore the case of the ASCII
// letters only.
//
// Memory: nothing here allocates, but for the calling thread's state (the
// compiled definitions) and the warning records; a record that cannot be
// allocated changes no result (alloc.h).
//
// Threads: every function here may run on several threads at once.  The
// compiled definitions (one for the member tests, one for the others) are
// the calling thread's own; the thread's other readers of set definitions
// (the `Ex` replacements, _zstrmultireplace1, _zstrlonesomize, the SQL
// settings) share them.
#ifndef ZELSTR_SETDEF_H
#define ZELSTR_SETDEF_H

#include "zelstr/export.h"

// Length of the initial run of `string` whose bytes are members.  An empty
// `string` gives 0 at once.  NULL `string`: warning 188; NULL `setdef`:
// warning 189; empty or wrong `setdef`: warning 206; each returns 0.
ZELSTR_API unsigned int _zstrspnex(char const* string, char const* setdef) noexcept;

// The same, a byte counting as a member when it or its other-case ASCII
// letter is one.
ZELSTR_API unsigned int _zstrispnex(char const* string, char const* setdef) noexcept;

// Length of the initial run of `string` whose bytes are not members.
// Warnings 104, 105 and 202 in the same cases, each returning 0.
ZELSTR_API unsigned int _zstrcspnex(char const* string, char const* setdef) noexcept;

// The same; the run also ends at a letter whose other-case form is a member.
ZELSTR_API unsigned int _zstricspnex(char const* string, char const* setdef) noexcept;

// The position just after the initial run of members, or NULL when that is
// the terminator.  No warnings: NULL, empty or wrong arguments give NULL.
ZELSTR_API char* _zstrposex(char* string, char const* setdef) noexcept;
ZELSTR_API char const* _zstrposex(char const* string, char const* setdef) noexcept;
ZELSTR_API char* _zstriposex(char* string, char const* setdef) noexcept;
ZELSTR_API char const* _zstriposex(char const* string, char const* setdef) noexcept;

// The position of the first member, or NULL when there is none.  No
// warnings: NULL, empty or wrong arguments give NULL.
ZELSTR_API char* _zstrcposex(char* string, char const* setdef) noexcept;
ZELSTR_API char const* _zstrcposex(char const* string, char const* setdef) noexcept;
ZELSTR_API char* _zstricposex(char* string, char const* setdef) noexcept;
ZELSTR_API char const* _zstricposex(char const* string, char const* setdef) noexcept;

// 1 (TRUE) when the byte `c` is a member, 0 (FALSE) otherwise.  NULL
// `setdef`: warning 145; empty: warning 203; wrong: warning 204; each
// returns FALSE.
ZELSTR_API int _zchrspnex(char c, char* setdef) noexcept;

#endif  // ZELSTR_SETDEF_H
