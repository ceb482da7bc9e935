// translate.h - a wildcard program as an expression of the engine.
#ifndef ZELSTR_REGEX_WILDCARD_TRANSLATE_H
#define ZELSTR_REGEX_WILDCARD_TRANSLATE_H

#include <cstddef>

#include "regex/wildcard/program.h"

namespace zelstr::regex::wildcard {

// The length of the expression (without its terminator), and the
// expression written into `out` (that length and one more byte).
std::size_t expression_length(Program const& program);
void write_expression(Program const& program, char* out);

}  // namespace zelstr::regex::wildcard

#endif  // ZELSTR_REGEX_WILDCARD_TRANSLATE_H
