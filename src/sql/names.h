// names.h - what the dialects share about names: delimiting them in place
// and undoing it, testing them against character tables, and the copies the
// dialect objects hand out.
#ifndef ZELSTR_SQL_NAMES_H
#define ZELSTR_SQL_NAMES_H

#include <cstddef>

#include "zelstr/alloc.h"

namespace zelstr::sql {

// Doubles each `close` of `name` (working from its end), then puts `open`
// before and `close` after it.  The buffer needs room for two more
// characters and one per `close` of the name.
void delimit(char* name, char open, char close);

// Drops the first and the last character of `name` (the last one is not
// checked), then turns each pair of adjacent `close` characters into one.
// False when a `close` that is not doubled is left (it is kept).
bool undelimit(char* name, char close);

// How many times `c` occurs in `name`.
std::size_t count_of(char const* name, char c);

// A regular identifier: `first` marks its first character and `others`
// each following one (non-zero entries of 256-entry tables).
bool is_regular(char const* name, char const* first, char const* others);

// A heap copy of `name` (not NULL) with `room` more bytes, converted in
// place by `convert`: NULL, the copy freed, when `convert` gives 0; NULL
// too without memory.
template <class Convert>
char* converted_copy(char const* name, std::size_t room, Convert convert) {
  char* copy = _zstrdupalloc(name, static_cast<unsigned>(room));
  if (copy != nullptr && convert(copy) == 0) _zstrdupfree(copy);
  return copy;
}

}  // namespace zelstr::sql

#endif  // ZELSTR_SQL_NAMES_H
