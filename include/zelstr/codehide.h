// codehide.h - what is code in T-SQL and PL/SQL text: hiding the rest,
// the context of a position, discarding comments, and keeping the hidden
// parts aside to put them back later.
//
// A text is code and parts that are not code:
//   T-SQL   -- comments to the end of the line; /* */ comments, nested
//           pairs counted; string literals '...' with '' inside, N'...'
//           and U&'...' (the prefix beginning a word); "..." a string
//           literal when quoted identifiers are off, else a delimited name;
//           [...] names with ]] inside; and, when asked for, the command
//           lines of sqlcmd and osql: GO alone on its line (a count and a
//           -- comment may follow), :setvar, :r and every line opening
//           with ":" and a letter, or with "!!".
//   PL/SQL  -- comments; /* */ comments, not nested; '...' with '' inside,
//           N'...'; the alternative quoting q'c...c' and nq'c...c', where c
//           is any byte but a blank, and [, {, < and ( close with ], }, >
//           and ); "..." names; and, when asked for, the command lines of
//           SQL*Plus where a statement may begin (at the start, or after
//           a ";", a "/" line or another command line): REM[ARK],
//           PRO[MPT], SET (not SET TRANSACTION, ROLE or CONSTRAINT[S]),
//           SPO[OL], DEF[INE], UNDEF[INE], COL[UMN], SHO[W], ACC[EPT],
//           PAU[SE], WHENEVER, CONN[ECT], @file and @@file; and "/" alone
//           on a line, anywhere.
// Keywords are read in any case; blanks may open a command line.  A
// part's prefix (N, U&, q, nq) counts among its delimiters.  Line ends are
// LF and CR LF; a line comment or a command line ends before its line end.
// A part not closed runs to the end of the text.
//
// Connections: the T-SQL functions take the connection whose settings say
// whether double quotation marks delimit names (sqlsettings.h; off by
// default, "..." is then a string literal); the forms without one use the
// default settings.  Nothing in PL/SQL depends on a
// setting.
//
// NULL code draws the notice "Illegal NULL code to be processed." (id -1,
// severity 2); other bad arguments (flags outside those below, a filler of
// 0, a position outside the text) are reported with the service's
// bad-argument or incoherent-flag text (errsvc.h); the result is then 0,
// ZEAL_STR_ERR or NULL as each function says, and the text is left as it
// was.
//
// Memory: the copying forms give NULL when their copy cannot be allocated;
// HideCodeParts gives NULL (or 0) when it cannot hold its parts.  The rest
// allocates nothing.
//
// Threads: every function here may run on several threads at once; a
// HideCodeParts object is one thread's at a time.
#ifndef ZELSTR_CODEHIDE_H
#define ZELSTR_CODEHIDE_H

#include <cstddef>

#include "zelstr/export.h"

// What to hide.  Comments and command lines are hidden whole; string
// literals and names keep their delimiters (quotes, prefix, brackets)
// unless ZEAL_HIDE_DELIMITERS is given too.
#define ZEAL_HIDE_COMMENTS 0x01    // -- and /* */ comments
#define ZEAL_HIDE_STRINGS 0x02     // string literals
#define ZEAL_HIDE_NAMES 0x04       // delimited names
#define ZEAL_HIDE_COMMANDS 0x08    // command lines of sqlcmd, osql or SQL*Plus
#define ZEAL_HIDE_DELIMITERS 0x10  // the delimiters of literals and names too
// Comments and string literals, the quotes kept.
#define ZEAL_HIDE_DEFAULT (ZEAL_HIDE_COMMENTS | ZEAL_HIDE_STRINGS)

// The context of a position, and of the end of a text.  0 is the
// fallback of a bad argument.
#define ZEAL_SQL_CODE 1
#define ZEAL_SQL_LINE_COMMENT 2
#define ZEAL_SQL_BLOCK_COMMENT 3
#define ZEAL_SQL_STRING 4
#define ZEAL_SQL_NAME 5
#define ZEAL_SQL_COMMAND 6

// Hides, in place, what `flags` names: every byte of it but the line ends
// becomes `filler`, so that the text keeps its length, every position its
// meaning and every line its number.  Command lines are recognised only
// when ZEAL_HIDE_COMMANDS is given.  Returns the context at the end of the
// text: ZEAL_SQL_CODE, or the kind of the part left open there (hidden to
// the end when `flags` names it); 0 for a bad argument.
ZELSTR_API int _ztsqlhidenonsqlcode(void const* const connection, char* code, int flags,
                                    char filler = ' ') noexcept;
ZELSTR_API int _ztsqlhidenonsqlcode(char* code, int flags, char filler = ' ') noexcept;
// The same on a new copy (free it with _zstrdupfree), or NULL; the context
// at the end goes to `*context` when `context` is not NULL.
ZELSTR_API char* _ztsqlhidenonsqlcode(void const* const connection, char const* code, int flags,
                                      char filler = ' ', int* context = nullptr) noexcept;
ZELSTR_API char* _ztsqlhidenonsqlcode(char const* code, int flags, char filler = ' ',
                                      int* context = nullptr) noexcept;

ZELSTR_API int _zplsqlhidenonsqlcode(char* code, int flags, char filler = ' ') noexcept;
ZELSTR_API char* _zplsqlhidenonsqlcode(char const* code, int flags, char filler = ' ',
                                       int* context = nullptr) noexcept;

// The context of the byte at `position` (0 is the first byte; the length of
// the text asks for the context at its end).  A delimiter belongs to its
// part: the "-" of "--" is in the comment, the quotes in the literal.  For
// a block comment, `*depth` (when not NULL) receives how many comments
// enclose the position (1 outside nested ones); else 0.  `commands`
// non-zero recognises command lines.  The text is read from its start.
ZELSTR_API int _ztsqlcodecontext(void const* const connection, char const* code, int position,
                                 int commands = 0, int* depth = nullptr) noexcept;
ZELSTR_API int _ztsqlcodecontext(char const* code, int position, int commands = 0,
                                 int* depth = nullptr) noexcept;
ZELSTR_API int _zplsqlcodecontext(char const* code, int position, int commands = 0,
                                  int* depth = nullptr) noexcept;

// Removes the comments in place: each becomes one blank, so that the
// tokens around it stay apart, followed by the line ends it held, so that
// every line keeps its number.  Returns the new length; ZEAL_STR_ERR
// (types.h) for a bad argument.
ZELSTR_API int _ztsqldiscardcomments(void const* const connection, char* code) noexcept;
ZELSTR_API int _ztsqldiscardcomments(char* code) noexcept;
ZELSTR_API int _zplsqldiscardcomments(char* code) noexcept;
// The same on a new copy (free it with _zstrdupfree), or NULL.
ZELSTR_API char* _ztsqldiscardcomments(void const* const connection, char const* code) noexcept;
ZELSTR_API char* _ztsqldiscardcomments(char const* code) noexcept;
ZELSTR_API char* _zplsqldiscardcomments(char const* code) noexcept;

// Sets the parts that are not code aside and gives the code with a
// placeholder in place of each, to be searched, replaced or mapped freely
// (its length may change), and then puts the parts back.
//
// A placeholder is a marker byte, the part's number in decimal and the
// marker again: "\x01" "0" "\x01" for the first.  The marker is the first
// byte from 0x01 to 0x1F (LF, CR and TAB skipped), then from 0x7F up,
// that the text does not hold, so no placeholder can be mistaken for code.
// Hiding fails (NULL, no warning) for a text holding every such byte.
//
// Restoring refuses, with a warning, a text in which a marker is not part
// of a whole placeholder or a number names no part; a placeholder may be
// dropped (its part is then lost) or repeated.
class ZELSTR_API HideCodeParts {
 public:
  // Made with new, an object takes its memory from the library: the
  // new-expression gives NULL when memory is short.
  static void* operator new(std::size_t size) noexcept;
  static void operator delete(void* p) noexcept;

  HideCodeParts() noexcept;
  ~HideCodeParts();
  HideCodeParts(HideCodeParts const&) = delete;
  HideCodeParts& operator=(HideCodeParts const&) = delete;

  // Sets aside the parts `flags` names (ZEAL_HIDE_*: the delimiters of
  // literals and names stay in the code unless ZEAL_HIDE_DELIMITERS is
  // given) and returns the code with placeholders, valid until the next
  // call of Hide, Clear or the destructor; NULL for a bad argument (with
  // a warning) or without memory.  Drops the parts of an earlier call.
  char const* HideTSql(void const* const connection, char const* code, int flags) noexcept;
  char const* HidePlSql(char const* code, int flags) noexcept;

  // `code` (the hidden text, changed or not) with every placeholder
  // replaced by its part, on a new copy (free it with _zstrdupfree); NULL
  // with a warning for NULL or damaged code, NULL without memory.
  char* Restore(char const* code) const noexcept;

  // How many parts are set aside, and the marker byte (0 before Hide).
  int GetCount() const noexcept;
  char GetMarker() const noexcept;
  // The text of part `index` (0 first) and its kind (ZEAL_SQL_*); NULL
  // and 0 with a warning for an index out of range.
  char const* GetPart(int index) const noexcept;
  int GetPartKind(int index) const noexcept;
  // Drops the parts and the hidden text.
  void Clear() noexcept;

 private:
  char const* Hide(bool tsql, void const* connection, char const* code, int flags) noexcept;

  struct Part;
  Part* m_parts = nullptr;
  int m_count = 0;
  char* m_texts = nullptr;  // the parts' texts, each with its terminator
  char* m_hidden = nullptr;
  char m_marker = 0;
};

#endif  // ZELSTR_CODEHIDE_H
