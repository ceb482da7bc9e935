// report.h - warnings of ZealStrHelper.
#ifndef ZELSTR_STR_COLLATE_REPORT_H
#define ZELSTR_STR_COLLATE_REPORT_H

#include <cstdarg>

#include "frame/report.h"
#include "zelstr/export.h"

namespace zelstr::collate {

namespace msg = frame::msg;

// Reports `message` for this unit.
inline void warn(frame::Message const& message, int line = __builtin_LINE()) {
  frame::report(frame::Unit::zealstrhelper, message, frame::kUnknownFunction, line);
}

// Files the text `format` and the arguments make as a literal warning of
// this unit (id -1, severity 4).
inline void warn_format(char const* format, ...) ZELSTR_PRINTF_LIKE(1, 2);
inline void warn_format(char const* format, ...) {
  va_list args;
  va_start(args, format);
  frame::report_formatted(frame::Unit::zealstrhelper, __LINE__, format, args);
  va_end(args);
}

}  // namespace zelstr::collate

#endif  // ZELSTR_STR_COLLATE_REPORT_H
