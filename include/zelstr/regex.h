// regex.h - the library's regular-expression engine.
//
// The syntax and the results of Henry Spencer's backtracking regex as Tcl
// adapted it, found in time linear in the subject for every pattern: the
// compiled program is run as a forward automaton (where the match ends), a
// reverse one (where it starts) and, for the group ranges, a search of the
// match that never tries a state twice at one position; Tcl_RegExpFindLine
// runs a third automaton, of matching lines.  The automata of an
// expression are made as subjects need them and kept in a cache of at most
// 1 MB each (emptied and rebuilt when full); the group search uses at most
// 1 MB more.  Syntax:
//   x|y        alternatives, tried in order
//   x* x+ x?   0 or more, 1 or more, 0 or 1 (greedy; a quantifier may not
//              follow another, and * or + may not apply to what can match
//              the empty string)
//   ^ $ .      the subject's start, its end, any character
//   ( x )      a group, numbered by its '(' from 1 (at most 120)
//   \c         the character c itself (there are no escape classes)
//   [list]     one character of the list; [^list] one not in it.  A ']' or
//              '-' first is literal; "x-y" is a range of byte values; named
//              classes such as [:alpha:], [:digit:], [:w:], [:space:] (names
//              ignore case; an unknown name is taken as its characters).  A
//              backslash in a list is an ordinary member, unless the switch
//              below is on: then it makes the next character literal.
// A group whose body begins with a group may be named by a capital letter:
// "(@A=(...)...)" names the outer group A; "(...(...)=A@)" too.
//
// Compiling and matching do not warn: they set the text Tcl_GetRegError
// returns (cleared when each compile or match starts).  Tcl_CompileRE and
// Tcl_MatchRE cache their expressions and report warnings.  A compiled
// expression keeps the results of its last match.
//
// Memory: a compile that cannot get memory (its work buffer, the compiled
// record, its automata) gives NULL with the error text "Out of space for
// creating a new TCL reg.exp. interpretor."; a match that cannot gives -1
// with the same text; Tcl_CreateInterp gives NULL.  Tcl_CompileRE and
// Tcl_MatchRE give FALSE with their compile warnings, and keep no such
// failure in their caches.
//
// Threads: every function here may run on several threads at once, as long
// as the threads share no compiled expression (nor its Tcl_Interp): one,
// from Tcl_RegExpCompile or Tcl_CompileRE, keeps its automata and its last
// match, so it belongs to one thread at a time.  The error text, the
// backslash switch, the compile work buffer, the backtracking stack and the
// two caches are each thread's own, as is the forward-search state of
// Tcl_MatchRE's plain-text shortcut.  The caches share what they compiled
// through one locked list for the process: a thread missing in its own
// cache takes a copy of an expression another thread compiled from the
// same text (a record of its own, as compiling would give).
// _zstrrev, Tcl_ReplaceRegExpEscapedChars, TCL_DigNextPointer,
// Tcl_CreateInterp and Tcl_DeleteInterp share nothing; Tcl_RegExpRange,
// Tcl_RegExpRewriteSubMatches and Tcl_GetGroupsCount only read their
// expression, which must not be matched meanwhile.
#ifndef ZELSTR_REGEX_H
#define ZELSTR_REGEX_H

#include "zelstr/export.h"

// A compiled expression (opaque).
struct Tcl_RegExp_;

// An error carrier kept alongside expressions by some callers.
struct Tcl_Interp {
  int flags;     // bit 0: deleted
  char* result;  // points at `buffer`
  char buffer[200];
};

// Compiles `pattern`; NULL on error (the text in Tcl_GetRegError).  A
// pattern holding an '@' may carry an attached text: "pattern$$$(text)",
// or "(text)$$$nrettap" whose pattern part is reversed before compiling.
// `interp` is not used.
ZELSTR_API Tcl_RegExp_* Tcl_RegExpCompile(char const* pattern) noexcept;
ZELSTR_API Tcl_RegExp_* Tcl_RegExpCompile(Tcl_Interp* interp, char const* pattern) noexcept;
// The same, ignoring the case of ASCII letters: each letter of the pattern,
// alone, escaped or in a bracket list (named classes too), stands for both
// its cases ("[^a]" refuses 'A' too; "A-Z" and "[:upper:]" take a-z as
// well).  Other bytes and '.' are as they are.  The expression is the pattern with
// each letter made a list of its two cases, and matches, groups and ranges
// follow from that; nothing of the subject is copied or changed.
ZELSTR_API Tcl_RegExp_* Tcl_RegExpCompileNoCase(char const* pattern) noexcept;

// 1 when `string` matches somewhere, 0 when not, -1 on an error or a NULL
// expression.  The second form matches the first `length` characters: the
// byte at `length` is set to NUL for the call and put back afterwards.  In
// the third, `interp` and `start` are not used.
ZELSTR_API int Tcl_RegExpMatch(char const* string, Tcl_RegExp_* re) noexcept;
ZELSTR_API int Tcl_RegExpMatch(char const* string, int length, Tcl_RegExp_* re) noexcept;
ZELSTR_API int Tcl_RegExpMatch(Tcl_Interp* interp, char const* string, char const* start,
                               Tcl_RegExp_* re) noexcept;

// Matches from `string` on, inside the larger text that begins at `start`:
// the first match that begins at or after `string`, where '^' still means
// `start` only (so a caller can find every match of a line in turn, each
// search beginning where the last match ended).  `string` must lie in the
// text of `start`.  1, 0 or -1 as above: a NULL argument sets "Invalid NULL
// parameter.", a `string` before `start` "Invalid call. ".  `interp` is not
// used.
ZELSTR_API int Tcl_RegExpExec(Tcl_Interp* interp, Tcl_RegExp_* re, char const* string,
                              char const* start) noexcept;

// The first line, from the line that begins at `string` on, that `re`
// matches as Tcl_RegExpMatch would match that line alone (from its start,
// where '^' holds, to its end, where '$' holds): the line's start, or NULL
// when no line does.  A line ends at a line feed, or at a carriage return
// just before one (neither is part of it), or at the terminator; the
// terminator begins no line (an empty text has none, and a text that ends
// with a line end has no empty line after it).  The text
// is read once, by an automaton of matching lines kept with the expression
// (its states and transitions in at most 1 MB, emptied when full); an
// expression the automata cannot run is matched a line at a time.  No
// group range is set.  NULL also on an error, with the error text set
// ("Invalid NULL parameter." for a NULL argument).  For a caller that
// wants the matching lines of a long text, one call per matching line
// replaces a match per line.
ZELSTR_API char const* Tcl_RegExpFindLine(Tcl_RegExp_* re, char const* string) noexcept;

// The start and end of group `index` (0: the whole match) of the last match,
// NULL for a group that took no part; for index 0 of an expression with an
// attached text, the range Tcl_RegExpRewriteSubMatches gives.  A NULL
// expression or an index above the group count: both NULL, result 0; else
// 1.  Either out-pointer may be NULL.
ZELSTR_API int Tcl_RegExpRange(Tcl_RegExp_* re, int index, char const** start,
                               char const** end) noexcept;

// The number of groups; 0 for NULL.
ZELSTR_API int Tcl_GetGroupsCount(Tcl_RegExp_* re) noexcept;

ZELSTR_API Tcl_Interp* Tcl_CreateInterp() noexcept;

// Frees a compiled expression.  With an interp: a NULL one frees `re`; one
// not yet marked deleted is marked, and `re` and the interp are freed; one
// already marked leaves everything alone.
ZELSTR_API void Tcl_DeleteInterp(Tcl_RegExp_* re) noexcept;
ZELSTR_API void Tcl_DeleteInterp(Tcl_Interp* interp, Tcl_RegExp_* re) noexcept;

// The text of the calling thread's last compile or match error, NULL if
// none.
ZELSTR_API char const* Tcl_GetRegError() noexcept;

// TRUE when `pattern` compiles.
ZELSTR_API int Tcl_IsValidRegularExpression(char const* pattern) noexcept;

// The switch that makes a backslash in a bracket list escape the next
// character.  Each thread has its own, off when the thread starts.
ZELSTR_API void Tcl_SetWhetherBackslashesInIntervalsAreHandled(int handled, int& previous) noexcept;
ZELSTR_API int Tcl_GetIfBackslashesInIntervalsAreHandled() noexcept;

// Sets the calling thread's switch for the life of the object, then puts the
// previous value back.
class ZELSTR_API Tcl_TemporarilyDefineWhetherBackslashesInIntervalsAreHandled {
 public:
  explicit Tcl_TemporarilyDefineWhetherBackslashesInIntervalsAreHandled(int handled) noexcept;
  ~Tcl_TemporarilyDefineWhetherBackslashesInIntervalsAreHandled();
  Tcl_TemporarilyDefineWhetherBackslashesInIntervalsAreHandled(
      Tcl_TemporarilyDefineWhetherBackslashesInIntervalsAreHandled const&) = delete;
  Tcl_TemporarilyDefineWhetherBackslashesInIntervalsAreHandled& operator=(
      Tcl_TemporarilyDefineWhetherBackslashesInIntervalsAreHandled const&) = delete;

 private:
  int m_previous;
};

// Compiles through the calling thread's cache of the 256 patterns it used
// last (the pattern and the switch value `backslashes` it is compiled with
// make the key): sets `interp` and `re`, which stay the cache's, and returns
// TRUE; FALSE with a warning when the pattern is NULL, empty or wrong (wrong
// patterns are cached too).  The pattern (char const*)-1 empties the calling
// thread's cache.  `re` stays valid until that cache drops it: 256 other
// patterns later on the same thread, that thread's clear command, its end,
// or the unload.  Each thread has its own cache because an expression holds
// its last match: one record could not serve two threads at once.
ZELSTR_API int Tcl_CompileRE(char const* pattern, Tcl_Interp*& interp, Tcl_RegExp_*& re,
                             int backslashes) noexcept;

// TRUE when `string` matches `pattern`, compiled (escapes replaced, the
// switch on for the calling thread only) through a second cache of that
// thread's; warnings for NULL arguments and wrong patterns.  The string
// (char const*)-1 or 1 empties the calling thread's cache.
ZELSTR_API int Tcl_MatchRE(char const* string, char const* pattern) noexcept;

// The node that follows a node of a compiled program (NULL at the end).
ZELSTR_API char* TCL_DigNextPointer(char* node) noexcept;

// Replaces, in place, the escapes \t \n \r \f \v of `pattern` by the
// characters they name; every other backslash is left for the engine.
// Returns `pattern` (NULL for NULL).
ZELSTR_API char* Tcl_ReplaceRegExpEscapedChars(char* pattern) noexcept;

// The range index 0 stands for in an expression with an attached text: the
// attached text names a group, by its number ("2") or by its letter ("B");
// any other text, or a group that took no part, gives the whole match.
// Returns 1, or 0 for a NULL expression.
ZELSTR_API int Tcl_RegExpRewriteSubMatches(Tcl_RegExp_* re, char const** start,
                                           char const** end) noexcept;

// Reverses `string` in place and returns it (NULL gives NULL).
ZELSTR_API char* _zstrrev(char* string) noexcept;

#endif  // ZELSTR_REGEX_H
