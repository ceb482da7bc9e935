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
// Threads: every function here may run on several threads at once (a map
// is only read).  The
// compiled definitions (one for the member tests, one for the others) are
// the calling thread's own; the thread's other readers of set definitions
// (the `Ex` replacements, _zstrmultireplace1, _zstrlonesomize, the SQL
// settings) share them.
#ifndef ZELSTR_SETDEF_H
#define ZELSTR_SETDEF_H

#include "zelstr/export.h"
#include "zelstr/types.h"

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

// The same spans and positions through a character map (map.h): each byte
// of `string` is translated through the map before the membership test
// (the set definition is read as it is); the i forms then take the image
// or its other-case ASCII letter, as the plain i forms take the byte.  A
// NULL map gives the plain form, without a warning; ZEAL_STR_BAD_MAP warns
// "_zmapstrspnex() - Warning: An invalid map was given in argument to
// function: _zstrspnex(...) was called instead." (with each function's own
// names; id -1, severity 4), then gives the plain form.  The other
// arguments are checked, and warned about, as the plain forms do: the
// spans with warnings 188, 189 and 206 (104, 105 and 202 for the
// complements), whose texts name the map forms too; the positions
// quietly.
ZELSTR_API unsigned int _zmapstrspnex(ZelStrMap map, char const* string,
                                      char const* setdef) noexcept;
ZELSTR_API unsigned int _zmapstrispnex(ZelStrMap map, char const* string,
                                       char const* setdef) noexcept;
ZELSTR_API unsigned int _zmapstrcspnex(ZelStrMap map, char const* string,
                                       char const* setdef) noexcept;
ZELSTR_API unsigned int _zmapstricspnex(ZelStrMap map, char const* string,
                                        char const* setdef) noexcept;
ZELSTR_API char* _zmapstrposex(ZelStrMap map, char* string, char const* setdef) noexcept;
ZELSTR_API char const* _zmapstrposex(ZelStrMap map, char const* string,
                                     char const* setdef) noexcept;
ZELSTR_API char* _zmapstriposex(ZelStrMap map, char* string, char const* setdef) noexcept;
ZELSTR_API char const* _zmapstriposex(ZelStrMap map, char const* string,
                                      char const* setdef) noexcept;
ZELSTR_API char* _zmapstrcposex(ZelStrMap map, char* string, char const* setdef) noexcept;
ZELSTR_API char const* _zmapstrcposex(ZelStrMap map, char const* string,
                                      char const* setdef) noexcept;
ZELSTR_API char* _zmapstricposex(ZelStrMap map, char* string, char const* setdef) noexcept;
ZELSTR_API char const* _zmapstricposex(ZelStrMap map, char const* string,
                                       char const* setdef) noexcept;

// 1 (TRUE) when the byte `c` is a member, 0 (FALSE) otherwise.  NULL
// `setdef`: warning 145; empty: warning 203; wrong: warning 204; each
// returns FALSE.
ZELSTR_API int _zchrspnex(char c, char* setdef) noexcept;

#endif  // ZELSTR_SETDEF_H
