// wildcard.h - wildcard MATCH and SQL LIKE: whole-string matching of a
// subject against a pattern, plainly, ignoring ASCII case, or through a
// character map.
//
// MATCH patterns: "*" any run of characters (also none), "?" one
// character, "[set]" one character of the set, "[!set]" or "[^set]" one
// not in it.  LIKE patterns (T-SQL's rules): "%" any run, "_" one
// character, "[set]" and "[^set]" ("!" is an ordinary member), and an
// optional escape character that makes the character after it literal
// ("a!%" with escape '!' matches "a%").  In a set, "x-y" is the range of
// byte values from x to y (none when y is below x), a "]" right after the
// opening "[" (or "[^", "[!") is a member, and the escape character is an
// ordinary member.  A "[" that no "]" closes is a literal.  Every other
// byte stands for itself; MATCH has no escape character ("[*]" matches a
// star).
//
// The subject of LIKE may end with blanks that the pattern does not
// account for, as the server ignores the trailing blanks of a varchar
// value: "abc  " is LIKE "abc" and LIKE "abc ".  The trailing blanks of the
// pattern count.  MATCH ignores nothing.
//
// The i forms compare the images of the characters under ASCII folding
// (A-Z as a-z); the map forms their images through the map (map.h), both
// in the pattern (literals and set members) and in the subject: with the
// map made from "A-Z=a-z", "ORD*" matches "orders".  A NULL map calls the
// plain form; ZEAL_STR_BAD_MAP warns, then calls the plain form.
//
// Results: 1 for a match, 0 for none.  NULL arguments, and an escape
// character that ends a LIKE pattern, warn and give 0.  Matching costs at
// most one pass over the subject per token of the pattern, whatever the
// number of stars or percent signs.
//
// Each form is the engine's (regex.h) expression that _zstrmatch2re or
// _zstrlike2re makes of the pattern, anchored at both ends: the results
// are the same, found without the engine.
//
// Memory: each of the three workers (MATCH and its i form, LIKE and its i
// form, the two map forms) keeps the eight patterns it used last in the
// calling thread's cache (a call decided by the pattern's opening, or a
// "%lit%" of the plain and i forms, is answered without it); a call with 1
// as every pointer argument, such as _zstrmatch((char const*)1,
// (char const*)1), empties the calling thread's cache of that worker and
// gives 0 (the unload sequence empties every thread's).  Without memory for a pattern a call gives 0 (the
// failure is counted, alloc.h), without a warning.
//
// Threads: every function here may run on several threads at once; a map
// is only read.
#ifndef ZELSTR_WILDCARD_H
#define ZELSTR_WILDCARD_H

#include "zelstr/export.h"
#include "zelstr/types.h"

ZELSTR_API int _zstrmatch(char const* string, char const* pattern) noexcept;
ZELSTR_API int _zstrimatch(char const* string, char const* pattern) noexcept;
ZELSTR_API int _zmapstrmatch(ZelStrMap map, char const* string, char const* pattern) noexcept;

// `escape` 0: no escape character.
ZELSTR_API int _zstrlike(char const* string, char const* pattern, char escape = 0) noexcept;
ZELSTR_API int _zstrilike(char const* string, char const* pattern, char escape = 0) noexcept;
ZELSTR_API int _zmapstrlike(ZelStrMap map, char const* string, char const* pattern,
                            char escape = 0) noexcept;

// The expression of the engine (regex.h) that matches what the pattern
// matches, "^" and "$" included, on a new copy (free it with _zstrdupfree):
// literals escaped, sets listed member by member, a run wildcard as ".*",
// a one-character wildcard as ".".  `ignoreCase` non-zero lists both cases
// of every letter.
// It compiles whatever the backslash switch.  (The trailing blanks LIKE
// ignores are the caller's to cut.)  NULL with a warning for a NULL
// pattern or an escape character at its end; NULL without memory.
ZELSTR_API char* _zstrmatch2re(char const* pattern, int ignoreCase) noexcept;
ZELSTR_API char* _zstrlike2re(char const* pattern, char escape, int ignoreCase) noexcept;

#endif  // ZELSTR_WILDCARD_H
