// regextras.h - over the regular-expression engine (regex.h): substitution
// with replacement templates, pattern reversal, and the expression of a
// user's plain text.
//
// Patterns are compiled as Tcl_RegExpCompile compiles them (the calling
// thread's backslash switch applies).  A pattern the engine refuses is
// reported with the engine's error text.  Bad arguments warn and give the
// fallback each function names.
//
// Memory: the copying forms give NULL, and the growing-string form -1,
// when memory is short (the failure counted, alloc.h), without a warning.
//
// Threads: every function here may run on several threads at once; each
// compiles its own expression.
#ifndef ZELSTR_REGEXTRAS_H
#define ZELSTR_REGEXTRAS_H

#include "zelstr/export.h"

class CGrwStr;

// Replaces the first match of `pattern` in `string` (every match, left to
// right and not overlapping, when `all` is non-zero) with `replacement`
// expanded: "&" and "\0" stand for the whole match, "\1" to "\9" for a
// group (nothing for a group that took no part), "\&" and "\\" for "&" and
// "\"; every other byte for itself.  After an empty match the search goes
// on one byte further.  A backslash before anything else, or a group the
// expression does not have, makes the template bad.
//
// A new copy (free it with _zstrdupfree); NULL with a warning for a NULL
// argument, a pattern that does not compile or a bad template.
ZELSTR_API char* _zstrregsub(char const* string, char const* pattern, char const* replacement,
                             int all) noexcept;
// The same appended to `out`; the number of replacements, -1 with a
// warning (nothing appended) as above.
ZELSTR_API int _zstrregsub(CGrwStr& out, char const* string, char const* pattern,
                           char const* replacement, int all) noexcept;

// An expression that matches the reversed texts of the texts `pattern`
// matches: where a match of `pattern` lies in a subject, a match of the
// result lies, reversed, in the reversed subject (_zstrrev).  So the last
// match of a subject is the first match of the reversed pattern in the
// reversed subject.  Alternatives keep their order; groups are numbered
// anew (by their "(" in the result).  "^" and "$" trade places.  Refused,
// NULL with a warning: a NULL or wrong pattern, a named group ("(@A=" or
// "=A@)") and an attached text ("$$$(", ")$$$"): their meaning depends on
// the direction.  A new copy (free it with _zstrdupfree).
ZELSTR_API char* _zstrregrev(char const* pattern) noexcept;

// The expression that matches `text` literally: every byte the engine
// would read as an operator (\ ^ $ . [ ] | ( ) * + ?) escaped.  With
// `wildcards` non-zero, "*" stands for any run and "?" for one character
// instead.  Not anchored: it finds the text inside a subject.  An empty
// text gives an empty expression, which matches everywhere.  The result
// compiles whenever it is within the engine's size limit (65535 bytes);
// a longer one is refused.  NULL with a warning for a NULL or too long
// text; a new copy (free it with _zstrdupfree).
ZELSTR_API char* _zstr2regex(char const* text, int wildcards) noexcept;

#endif  // ZELSTR_REGEXTRAS_H
