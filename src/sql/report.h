// report.h - warnings of the SQL dialect functions.
//
// Most of these warnings are composed from a format and the bad value; they
// are filed as literal texts (id -1) with severity 4 and the function name
// "<unknown>".
#ifndef ZELSTR_SQL_REPORT_H
#define ZELSTR_SQL_REPORT_H

#include <cstdarg>

#include "frame/report.h"
#include "zelstr/export.h"

namespace zelstr::sql {

namespace msg = frame::msg;

inline void warn(frame::Unit unit, frame::Message const& message, int line = __builtin_LINE()) {
  frame::report(unit, message, frame::kUnknownFunction, line);
}

// Files the text that `format` and the arguments give (at most 2047 bytes).
inline void warn_format(frame::Unit unit, int line, char const* format, ...)
    ZELSTR_PRINTF_LIKE(3, 4);
inline void warn_format(frame::Unit unit, int line, char const* format, ...) {
  va_list args;
  va_start(args, format);
  frame::report_formatted(unit, line, format, args);
  va_end(args);
}

}  // namespace zelstr::sql

#endif  // ZELSTR_SQL_REPORT_H
