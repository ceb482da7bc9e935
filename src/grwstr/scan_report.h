// scan_report.h - warnings of CStrScanner.
#ifndef ZELSTR_GRWSTR_SCAN_REPORT_H
#define ZELSTR_GRWSTR_SCAN_REPORT_H

#include <cstdarg>

#include "frame/report.h"
#include "zelstr/export.h"

namespace zelstr::grwstr {

namespace msg = frame::msg;

// Files the text `format` and the arguments make as a literal warning of
// the scanner's unit (id -1, severity 4).
inline void scan_warn(char const* format, ...) ZELSTR_PRINTF_LIKE(1, 2);
inline void scan_warn(char const* format, ...) {
  va_list args;
  va_start(args, format);
  frame::report_formatted(frame::Unit::stringscan, __LINE__, format, args);
  va_end(args);
}

}  // namespace zelstr::grwstr

#endif  // ZELSTR_GRWSTR_SCAN_REPORT_H
