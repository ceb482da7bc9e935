// compiler.h - turning a pattern into a compiled expression.
#ifndef ZELSTR_REGEX_COMPILER_H
#define ZELSTR_REGEX_COMPILER_H

struct Tcl_RegExp_;

namespace zelstr::regex {

// Compiles `pattern` (not NULL) into a new record holding `attached` as its
// attached text (NULL for none), with the current backslash switch; with
// `fold_case`, every letter of the pattern stands for both its cases.  NULL
// on an error, whose text is then the current error text.
Tcl_RegExp_* compile(char const* pattern, char const* attached, bool fold_case = false);

// A new record that matches as `re` does, with no match results and
// automata of its own (sharing `re`'s instructions, which are only read):
// what compiling `re`'s pattern again would give, for another thread.
// NULL, counted, when memory is short.
Tcl_RegExp_* copy(Tcl_RegExp_ const* re);

// Frees the compile work buffer (at unload).
void release_work_buffers();

}  // namespace zelstr::regex

#endif  // ZELSTR_REGEX_COMPILER_H
