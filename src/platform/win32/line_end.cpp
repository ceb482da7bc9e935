// line_end.cpp - Windows ends lines with CR LF.
#include "platform/line_end.h"

namespace zelstr::platform {

bool line_end_is_crlf() noexcept { return true; }

}  // namespace zelstr::platform
