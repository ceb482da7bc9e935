// line_end.h - the system's own line end.
#ifndef ZELSTR_PLATFORM_LINE_END_H
#define ZELSTR_PLATFORM_LINE_END_H

namespace zelstr::platform {

// True when the system's text files end their lines with CR LF.
bool line_end_is_crlf() noexcept;

}  // namespace zelstr::platform

#endif  // ZELSTR_PLATFORM_LINE_END_H
