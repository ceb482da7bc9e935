// sortorder.h - sort orders: the 256 byte values given weights, so that
// strings compare the way a server orders them.
//
// A sort order is a map (map.h) whose table holds weights instead of
// images: entry c is the weight of the byte c, 0 only for the terminator.
// Strings compare weight by weight from the left; a string that is a prefix
// of the other comes first.  Characters of equal weight tie; a comparison
// asked to break ties does so by the first differing byte, so that the
// order is total on distinct strings.  The handles follow the maps'
// conventions: NULL is byte order, ZEAL_STR_BAD_MAP the invalid order (each
// comparison reports it with its own warning, then compares the bytes), and
// _zmapfree (map.h) releases an order (warning 84 when the release fails).
// Since an order is a map, the mapped functions (mapped.h) accept it too and
// compare by its weights without breaking ties.
//
// Definitions list the characters in ascending order, in elements separated
// by blanks (space, tab, CR, LF).  Each element takes the next weights:
//   "x"         one character, one weight
//   "a-z"       a range: successive weights, a first
//   "a=A=\xE0"  a group: one weight for all its members
//   "a-z=A-Z"   ranges of one length in a group: a and A share a weight,
//               then b and B, and so on
// Characters are written as themselves or escaped: "\xHH" is the byte of two
// hexadecimal digits, a backslash before any other byte is that byte ("\ ",
// "\\", "\-").  Inside an element, '-' after a character opens a range and
// '=' starts the next member; the first byte of a member or a range's bound
// is always a character, so "-" or "+-=" need no escape.  Bytes are unsigned
// (0x80-0xFF come after 0x7F in a range).  A character the definition does
// not name comes after all named ones, in byte order.
//
// Memory: an order without memory for its block is ZEAL_STR_BAD_MAP with the
// warning "Not enough RAM to allocate a new sort order, sorry." (severity 4).
//
// Threads: a finished order is only read; every function here may run on
// several threads at once.  _zsortdefine composes its reports of a syntax
// error in the calling thread's print arena (scratch.h).
#ifndef ZELSTR_SORTORDER_H
#define ZELSTR_SORTORDER_H

#include "zelstr/export.h"
#include "zelstr/types.h"

// The ready orders, for _zsortreadydef.
#define ZEAL_SORT_BYTES 0        // byte order (an empty definition)
#define ZEAL_SORT_ASCII_CI 1     // byte order with ASCII letters folded to lower case
#define ZEAL_SORT_CP1252_CI_AI 2 // code page 1252, case and accents ignored
#define ZEAL_SORT_CP1252_CI_AS 3 // code page 1252, case ignored, accents kept

// A new order; NULL when the definition gives byte order (an empty one, or
// a NULL one with a notice); ZEAL_STR_BAD_MAP on a syntax error (a warning
// naming the fault, then a notice showing the definition with the faulty
// element between << and >>) or without memory.
ZELSTR_API ZelStrMap _zsortdefine(char const* definition) noexcept;

// The text of a ready order (ZEAL_SORT_*), for _zsortdefine as it is or
// changed.  An unknown number: a warning, NULL.
ZELSTR_API char const* _zsortreadydef(int order) noexcept;

// -1, 0 or +1 as `string1` sorts before, with or after `string2` by weight;
// with `breakTies` not 0, strings of equal weights compare by their first
// differing byte (0 only for equal strings).  NULL order: byte order.
// ZEAL_STR_BAD_MAP: warning 32 (33 for the bounded twin), then byte order.
// A NULL string: the result of _zstrcmp (compare.h).
ZELSTR_API int _zsortstrcmp(ZelStrMap order, char const* string1, char const* string2,
                            int breakTies = 0) noexcept;

// The same over at most `count` bytes of each string.
ZELSTR_API int _zsortstrncmp(ZelStrMap order, char const* string1, char const* string2,
                             unsigned long count, int breakTies = 0) noexcept;

// Sorts `count` string pointers in place by _zsortstrcmp; strings that
// compare equal keep their order.  NULL entries come first.  NULL `strings`
// with a count: a warning, FALSE.  ZEAL_STR_BAD_MAP: warning 32, then byte
// order.  TRUE otherwise.
ZELSTR_API int _zsortstrarray(ZelStrMap order, char const** strings, unsigned long count,
                              int breakTies = 0) noexcept;

#endif  // ZELSTR_SORTORDER_H
