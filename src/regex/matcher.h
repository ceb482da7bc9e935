// matcher.h - running a compiled program over a subject.
#ifndef ZELSTR_REGEX_MATCHER_H
#define ZELSTR_REGEX_MATCHER_H

struct Tcl_RegExp_;

namespace zelstr::regex {

// Finds the first position of `subject` where the program matches and keeps
// the ranges in the record: 1, 0 for no match, -1 on an error (its text
// set).  `re` and `subject` are not NULL and the check byte was tested.
int execute(Tcl_RegExp_* re, char const* subject);

}  // namespace zelstr::regex

#endif  // ZELSTR_REGEX_MATCHER_H
