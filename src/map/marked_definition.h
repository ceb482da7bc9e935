// marked_definition.h - the notice that shows a refused definition with the
// element at fault between << and >>, shared by maps and sort orders.
#ifndef ZELSTR_MAP_MARKED_DEFINITION_H
#define ZELSTR_MAP_MARKED_DEFINITION_H

#include <cstddef>

namespace zelstr::map {

// Files `format` (one %s) with a copy of `definition` (of `length` bytes)
// in which the `n` bytes from `start` stand between << and >>, or with
// "<null>" when there is no memory for the copy; a notice (id -1, severity
// 2) naming `function`.
void report_marked_definition(char const* format, char const* function, char const* definition,
                              std::size_t length, std::size_t start, std::size_t n);

}  // namespace zelstr::map

#endif  // ZELSTR_MAP_MARKED_DEFINITION_H
