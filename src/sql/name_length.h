// name_length.h - where the T-SQL name functions report the length of the
// name they read (the caller's address registered with
// _ztsqlwritenamelength, each thread its own).
#ifndef ZELSTR_SQL_NAME_LENGTH_H
#define ZELSTR_SQL_NAME_LENGTH_H

#include <cstddef>

namespace zelstr::sql {

// Writes `length` (the system form's length in bytes), or -1 for a name the
// call refused, at the address the calling thread registered, if any.
void note_name_length(std::ptrdiff_t length) noexcept;

}  // namespace zelstr::sql

#endif  // ZELSTR_SQL_NAME_LENGTH_H
