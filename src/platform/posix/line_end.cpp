// line_end.cpp - POSIX systems end lines with LF.
#include "platform/line_end.h"

namespace zelstr::platform {

bool line_end_is_crlf() noexcept { return false; }

}  // namespace zelstr::platform
