// tokens.h - tokens of a string, and the parts of a qualified name.
//
// Separators are given as a set definition ("[...]", setdef.h) or, when the
// text does not begin with "[", as a plain list of bytes.  A token is a run
// of bytes between separators; a run of separators separates once, and
// separators at the ends separate nothing, so tokens are never empty.
//
// Memory: _zstrgetNth without a destination and _zstrcrack keep their
// results in the calling thread's buffers (see zelstr.h); _zstrcrack grows
// its buffers as needed and gives 0 with a warning when it cannot;
// _zstrsplitqname's allocating form gives 0 when its copies cannot be made.
//
// Threads: every function here may run on several threads at once; the
// buffers are each thread's own, and so is the compiled set definition
// (setdef.h).
#ifndef ZELSTR_TOKENS_H
#define ZELSTR_TOKENS_H

#include "zelstr/export.h"

// The token numbered `n` (the first is 1) of `string`, copied into `dest`
// (`size` bytes, the terminator included; a longer token is cut) or, when
// `dest` is NULL, into the calling thread's buffer of 2048 bytes, valid
// until its next call.  NULL when there are fewer than `n` tokens.  NULL
// with a warning for a NULL `string` or `separators`, an `n` below 1, or a
// wrong set definition.
ZELSTR_API char* _zstrgetNth(char const* string, int n, char const* separators,
                             char* dest = nullptr, unsigned int size = 0) noexcept;

// Splits `string` into its tokens: sets `*tokens` to a NULL-terminated array
// of them, in the calling thread's buffers (valid until its next call), and
// returns their number.  `quotes` (may be NULL) lists pairs of opening and
// closing characters, such as "[]\"\"''": from an opening character to its
// closing one, separators do not separate (a doubled closing character
// stands inside), and the quoting characters stay in the token; a quote
// never closed runs to the end.  0 and `*tokens` NULL with a warning for a
// NULL argument or a wrong set definition.  All arguments NULL: releases
// the calling thread's buffers and returns 0 (the unload sequence does this
// for every thread).
ZELSTR_API int _zstrcrack(char const* string, char const* separators, char const* quotes,
                          char const* const** tokens) noexcept;

// Splits the qualified name `name` on the dots that are not inside
// delimiters.  `delimiters` names the opening marks that delimit: "[" for
// [...], "\"" for "...", "[\"" for both (NULL: both).  A delimited part
// loses its marks, a doubled closing mark inside becoming one; a plain part
// is kept as written, without the blanks around it; parts may be empty.
// An empty name has no parts.  An "@" outside delimiters starts an Oracle
// database link: the rest of the
// name, "@" included, is the last part (scott.emp@sales.example.com gives
// scott, emp, @sales.example.com).  An unterminated delimiter, or text
// between a closing mark and the next dot, is a syntax error.
//
// Into `*parts`: a NULL-terminated array of new strings (release it with
// CHSQL::DeleteComponents, dialect.h).  Returns the number of parts; 0 and
// `*parts` NULL on a syntax error or without memory.  NULL `name` or
// `parts`, or another character in `delimiters`: warning, 0.
ZELSTR_API int _zstrsplitqname(char const* name, char const* delimiters, char*** parts) noexcept;
// The same into `count` caller buffers of `size` bytes each (a longer part
// is cut); returns the number of parts, 0 on a syntax error or when the
// name has more than `count` parts.
ZELSTR_API int _zstrsplitqname(char const* name, char const* delimiters, char** parts, int count,
                               unsigned int size) noexcept;

#endif  // ZELSTR_TOKENS_H
