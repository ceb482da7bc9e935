// delimit.h - delimiting names in place, and undoing it.
#ifndef ZELSTR_SQL_DELIMIT_H
#define ZELSTR_SQL_DELIMIT_H

#include <cstddef>

namespace zelstr::sql {

// Doubles each `close` of `name` (working from its end), then puts `open`
// before and `close` after it.  The buffer needs room for two more
// characters and one per `close` of the name.
void delimit(char* name, char open, char close);

// Drops the first and the last character of `name` (the last one is not
// checked), then turns each pair of adjacent `close` characters into one.
// False when a `close` that is not doubled is left (it is kept).
bool undelimit(char* name, char close);

}  // namespace zelstr::sql

#endif  // ZELSTR_SQL_DELIMIT_H
