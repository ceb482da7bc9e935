// binary_stdio.cpp - POSIX streams never translate line ends; a terminal
// is told by isatty.
#include "platform/binary_stdio.h"

#include <unistd.h>

namespace zelstr::platform {

void use_binary_stdio() {}

bool stdout_is_terminal() { return isatty(STDOUT_FILENO) != 0; }

}  // namespace zelstr::platform
