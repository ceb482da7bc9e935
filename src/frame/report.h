// report.h - the one way the library reports a warning.
//
// A function that meets a bad argument calls report() (or its unit's short
// wrapper) and then returns the fallback value its message names.  The
// record goes to the error-handler service; the call never fails, never
// throws and never changes the caller's data.  When memory is short for the
// record or for a text in it, the service is handed a NULL record instead
// (and the failure is counted, memory.h): the caller returns its fallback
// all the same.
#ifndef ZELSTR_FRAME_REPORT_H
#define ZELSTR_FRAME_REPORT_H

#include <cstdarg>

#include "frame/messages.h"
#include "frame/units.h"

namespace zelstr::frame {

// Function name carried by the warnings of the exported `_z` functions.
inline constexpr char kUnknownFunction[] = "<unknown>";

// Files `message` with the error-handler service as reported by `unit` from
// `function` at source line `line`.  A literal message is filed with id -1
// and its own severity; a string-table message is filed with its id, the
// text loaded from the module's string table and severity 4.  An id that
// cannot be loaded is filed with the text "<Bad resource ID=...>".
void report(Unit unit, Message const& message, char const* function = kUnknownFunction,
            int line = __builtin_LINE()) noexcept;

// Files the text `format` and the arguments in `args` make (cut at 2047
// bytes) as a literal warning (id -1, severity 4) of `unit` at source line
// `line`: the warnings composed from a format and the bad value.  Each
// unit's short wrapper takes the arguments themselves.
void report_formatted(Unit unit, int line, char const* format, std::va_list args) noexcept;

// The id of the last string-table message reported: one module-wide value,
// written and read back while a record is built.
int current_message_id() noexcept;

// Size of the service's buffer for a loaded message.
inline constexpr int kLoadStringBufferSize = 2048;
// Size given to the system when it writes its error text.
inline constexpr unsigned kFormatMessageBufferSize = 2047;

}  // namespace zelstr::frame

#endif  // ZELSTR_FRAME_REPORT_H
