// hints.h - the tests that settle most start positions without running the
// program.
#ifndef ZELSTR_REGEX_HINTS_H
#define ZELSTR_REGEX_HINTS_H


struct Tcl_RegExp_;

namespace zelstr::regex {

// Sets the hints of a freshly compiled program.  With one top-level
// alternative: its first node gives the character every match starts with
// (EXACTLY) or the anchoring (BOL); when the expression starts with a * or
// ? piece (`starts_optional`), the longest literal of two characters or more
// on its top-level chain (the first of equally long ones) is the string
// every match must contain.  Also the set of bytes a match can start with,
// when the program tells.
void set_hints(Tcl_RegExp_* re, bool starts_optional);

// The first position at or after `p` where a match may start, by the
// hints: the subject's start only for an anchored expression, the next
// required first character, the next byte of the first-byte set (the
// terminator included when a match can start there), or `p` itself when
// the hints tell nothing; NULL when there is none.  Every matcher tries,
// or jumps to, exactly these positions.
char const* next_start(Tcl_RegExp_ const* re, char const* subject, char const* p);

// The literal the whole expression is, when it is one string and nothing
// else (no group, alternative, loop or anchor), else NULL.
char const* sole_literal(Tcl_RegExp_ const* re);

}  // namespace zelstr::regex

#endif  // ZELSTR_REGEX_HINTS_H
