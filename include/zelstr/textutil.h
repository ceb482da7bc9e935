// textutil.h - text for messages and for other systems: plurals and verb
// forms by a count, binary digits, line ends, wrapping, and swapping two
// substrings or two characters.
//
// Results: a function named `...ized`, and the word functions, write their
// result into the calling thread's clone arena (_zstrclone, scratch.h): not
// released by the caller, valid until that thread's later clones overwrite
// it.  The in-place functions (_zstreol, _zstrswap) work in the caller's
// string when the result is not longer, and give an arena copy otherwise,
// leaving the string as it was; either way the caller releases nothing.
// _zstreolcpy writes into the caller's buffer, for texts of any size.
//
// Warnings: literal (id -1, severity 4), the function's name in front; each
// function below names its fallback.  The texts:
//   "%s() - Warning: <%s> given in argument is NULL: %s was returned as result."
//   "%s() - Warning: <%s> given in argument is out of range: %s was returned as result."
//   "%s() - Warning: <bits> given in argument holds '%c', which is neither a binary digit nor a separator: 0 was returned as result."
//   "%s() - Warning: <bits> given in argument holds no binary digit: 0 was returned as result."
//   "%s() - Warning: <bits> given in argument has more than 64 significant digits: 0 was returned as result."
//
// Memory: only the plural list that _zstraddplural extends allocates (and
// the warning records); a word it cannot store draws 0.
//
// Threads: every function may run on several threads at once.  The plural
// list is one for the process, behind a lock; the arenas are each thread's.
#ifndef ZELSTR_TEXTUTIL_H
#define ZELSTR_TEXTUTIL_H

#include "zelstr/export.h"

// ---- Plurals and verb forms --------------------------------------------

// Flags of _zstrplural.
#define ZEAL_PLURAL_WORD_ONLY 0x1  // the word alone, without the count
#define ZEAL_PLURAL_LATIN 0x2      // index -> indices, matrix -> matrices, vertex -> vertices

// "<count> <noun>" with the noun's last word in the plural unless count is
// 1: "1 table", "0 tables", "3 stored procedures".  The rules, on the last
// word: the caller's words (_zstraddplural), then with ZEAL_PLURAL_LATIN the
// Latin forms, then the built-in irregular words (child, person, man,
// woman, mouse, datum, criterion, analysis, axis, crisis, series, species,
// index -> indexes); else -s, -x, -z, -ch and -sh take "es", a consonant and
// "y" become "ies", and any other word takes "s".  The case of the word is
// kept: "TABLE" -> "TABLES", "Child" -> "Children".  NULL `noun`: NULL.
ZELSTR_API char* _zstrplural(char const* noun, long count, int flags) noexcept;

// Adds (or replaces) the plural of `singular`, a word compared ignoring
// ASCII case; the caller's words come before the built-in ones, the newest
// first, and their plurals are written as given.  1, or 0 when an argument
// is NULL or empty (warning) or memory is short.  The list lasts until the
// library is unloaded.
ZELSTR_API int _zstraddplural(char const* singular, char const* plural) noexcept;

// Flags of _zstrverb.
#define ZEAL_VERB_PAST 0x1  // "be" as was / were (other verbs keep the present)

// The first word of `verb` (a base form: "be", "have", "drop", "be
// dropped") in the third person, singular when count is 1, plural
// otherwise: "is"/"are" ("was"/"were" with ZEAL_VERB_PAST), "has"/"have",
// "does"/"do", "goes"/"go"; modal verbs (can, could, may, might, must,
// shall, should, will, would) never change; otherwise the singular adds
// "es" after -s, -x, -z, -ch, -sh and -o, turns a consonant and "y" into
// "ies", and adds "s" to any other word.  The rest of `verb` follows as it
// stands; case is kept as in _zstrplural.  NULL `verb`: NULL.
ZELSTR_API char* _zstrverb(char const* verb, long count, int flags) noexcept;

// ---- Binary digits ------------------------------------------------------

// The binary digits of `value`, at least `width` of them (zeros in front;
// 0: as many as needed, at least one), with a blank between groups of
// `group` digits counted from the right (0: no groups).  `width` and
// `group` from 0 to 64; out of range: NULL.
ZELSTR_API char* _zstrbits(unsigned long long value, int width, int group) noexcept;

// Reads binary digits, blanks and underscores between them allowed, into
// `*value`: 1.  0 with a warning, `*value` untouched, when an argument is
// NULL, there is no digit, a byte is neither a digit nor a separator, or
// more than 64 significant digits would overflow.
ZELSTR_API int _zstrbits2ull(char const* bits, unsigned long long* value) noexcept;

// ---- Line ends ----------------------------------------------------------

// Line-end styles.  A line ends at LF or at CR LF; a CR alone is not a line
// end and stays as it is (SQL scripts hold them inside literals).
#define ZEAL_EOL_LF 0
#define ZEAL_EOL_CRLF 1
#define ZEAL_EOL_NATIVE 2  // CR LF on Windows, LF elsewhere

// Every line end of `string` in `style`, in place when the text does not
// grow (any text to LF), else in the clone arena.  NULL `string` or a style
// out of range: NULL.
ZELSTR_API char* _zstreol(char* string, int style) noexcept;
// The same, always in the clone arena (up to 640 KB, scratch.h).
ZELSTR_API char* _zstreolized(char const* string, int style) noexcept;
// The same into `dest` of `size` bytes, cut to size - 1 bytes and always
// terminated when size is not 0; the length of the whole result (as
// snprintf gives).  NULL `src`, NULL `dest` with a size, or a style out of
// range: 0 (dest untouched).
ZELSTR_API unsigned long _zstreolcpy(char* dest, unsigned long size, char const* src,
                                     int style) noexcept;

// ---- Wrapping -----------------------------------------------------------

// `text` wrapped at blanks into lines of at most `width` bytes, each line
// starting with `indent` blanks: words (runs of bytes other than blank, tab,
// CR and LF) are joined by one blank; a word longer than the room stands
// alone on its line.  A line end of `text` ends a paragraph (an empty line
// stays empty).  Lines end with LF; the last one has a line end only when
// `text` ended with one.  In the clone arena.  NULL `text`: NULL; `indent`
// below 0 or `width` not above it: NULL.
ZELSTR_API char* _zstrwrapped(char const* text, int width, int indent) noexcept;

// ---- Swapping -----------------------------------------------------------

// Every `a` in `string` becomes `b` and every `b` becomes `a`, in place
// (NULL `string`: NULL; a = 0 or b = 0: the string unchanged).
ZELSTR_API char* _zstrswapchr(char* string, char a, char b) noexcept;

// Every occurrence of `a` becomes `b` and every occurrence of `b` becomes
// `a`, in one pass from left to right: at each place the longer of the two
// is tried first (`a` when they are as long), and the scan goes on behind
// what it replaced.  In place when the text does not grow, else in the
// clone arena.  NULL argument or an empty `a` or `b`: NULL.
ZELSTR_API char* _zstrswap(char* string, char const* a, char const* b) noexcept;
// The same, always in the clone arena.
ZELSTR_API char* _zstrswapped(char const* string, char const* a, char const* b) noexcept;

#endif  // ZELSTR_TEXTUTIL_H
