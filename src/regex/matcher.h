// matcher.h - running a compiled program over a subject.
#ifndef ZELSTR_REGEX_MATCHER_H
#define ZELSTR_REGEX_MATCHER_H

struct Tcl_RegExp_;

namespace zelstr::regex {

// Finds the first position of `subject`, from `from` on, where the program
// matches and keeps the ranges in the record: 1, 0 for no match, -1 on an
// error (its text set).  '^' matches at `subject` only.  `re`, `subject`
// and `from` are not NULL, `from` lies in the subject, and the check byte
// was tested.
int execute(Tcl_RegExp_* re, char const* subject, char const* from);

}  // namespace zelstr::regex

#endif  // ZELSTR_REGEX_MATCHER_H
