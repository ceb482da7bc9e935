// report.h - warnings of the `_zstr` functions.
#ifndef ZELSTR_STR_REPORT_H
#define ZELSTR_STR_REPORT_H

#include <cstdarg>
#include <cstdint>

#include "frame/report.h"
#include "zelstr/export.h"

namespace zelstr::str {

namespace msg = frame::msg;

// Reports `message` for an exported `_z` function of this unit.
inline void warn(frame::Message const& message, int line = __builtin_LINE()) {
  frame::report(frame::Unit::zeal_str, message, frame::kUnknownFunction, line);
}

// Files the text `format` and the arguments make as a literal warning of
// this unit, at the severity of every `_z` warning.
inline void warn_format(char const* format, ...) ZELSTR_PRINTF_LIKE(1, 2);
inline void warn_format(char const* format, ...) {
  va_list args;
  va_start(args, format);
  frame::report_formatted(frame::Unit::zeal_str, __LINE__, format, args);
  va_end(args);
}

// Counts are unsigned 32-bit: a wider count is cut to its low 32 bits.
inline std::uint32_t count32(unsigned long count) { return static_cast<std::uint32_t>(count); }

}  // namespace zelstr::str

#endif  // ZELSTR_STR_REPORT_H
