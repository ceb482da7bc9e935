// report.h - the warnings of the functions over the engine.
#ifndef ZELSTR_REGEX_EXTRAS_REPORT_H
#define ZELSTR_REGEX_EXTRAS_REPORT_H

#include <cstdarg>

#include "frame/messages.h"
#include "frame/report.h"
#include "zelstr/export.h"

namespace zelstr::regex::extras {

namespace msg = frame::msg;

// Files the text `format` and the arguments make as a literal warning of
// the engine's unit.
inline void warn(char const* format, ...) ZELSTR_PRINTF_LIKE(1, 2);
inline void warn(char const* format, ...) {
  va_list args;
  va_start(args, format);
  frame::report_formatted(frame::Unit::regexptcl, __LINE__, format, args);
  va_end(args);
}

}  // namespace zelstr::regex::extras

#endif  // ZELSTR_REGEX_EXTRAS_REPORT_H
