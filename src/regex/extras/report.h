// report.h - the warnings of the functions over the engine.
#ifndef ZELSTR_REGEX_EXTRAS_REPORT_H
#define ZELSTR_REGEX_EXTRAS_REPORT_H

#include <cstdarg>
#include <cstdio>

#include "frame/messages.h"
#include "frame/report.h"
#include "zelstr/export.h"

namespace zelstr::regex::extras {

namespace msg = frame::msg;

// Files the text `format` and the arguments make (cut at 511 bytes) as a
// literal warning of the engine's unit.
inline void warn(char const* format, ...) ZELSTR_PRINTF_LIKE(1, 2);
inline void warn(char const* format, ...) {
  char text[512];
  va_list args;
  va_start(args, format);
  std::vsnprintf(text, sizeof text, format, args);
  va_end(args);
  frame::report(frame::Unit::regexptcl, frame::Message{-1, 4, text});
}

}  // namespace zelstr::regex::extras

#endif  // ZELSTR_REGEX_EXTRAS_REPORT_H
