// setdef.h - reading set definitions into 256-entry tables.
//
// A set definition is a text such as "[a-zA-Z_]": "[" items "]", where an
// item is a byte or a range "x-y" (unsigned order; an inverted range adds
// nothing), "`" escapes the byte after it, an unescaped "-" cannot begin an
// item, a "]" that is not the last byte is an ordinary member, and a range
// may not end on the last byte.  There is no negation and no named class.
//
// Each compiled form keeps the last definition it compiled (when shorter than
// 256 bytes) with its table: asking again for the same text costs one text
// comparison.  The tables live in the module; callers never free them.  Not
// safe for two threads at once.
#ifndef ZELSTR_CHARS_SETDEF_H
#define ZELSTR_CHARS_SETDEF_H

namespace zelstr::chars {

// 1 for members, 0 elsewhere; NULL when the definition is NULL, empty or
// wrong.
unsigned char const* compile_members(char const* setdef);

// 0 for members and for byte 0, 1 elsewhere, so that a scan that goes on
// while the flag is set stops at the terminator at the latest.  NULL when the
// definition is wrong; a NULL or empty definition empties the cache and gives
// the empty set.
unsigned char const* compile_non_members(char const* setdef);

}  // namespace zelstr::chars

#endif  // ZELSTR_CHARS_SETDEF_H
