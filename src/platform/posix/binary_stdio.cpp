// binary_stdio.cpp - POSIX streams never translate line ends; a terminal
// is told by isatty.
#include "platform/binary_stdio.h"

#include <unistd.h>

#include <cstdio>

namespace zelstr::platform {

void use_binary_stdio() {}

bool stdout_is_terminal() { return isatty(STDOUT_FILENO) != 0; }

void write_stdout(char const* data, std::size_t length) {
  fwrite_unlocked(data, 1, length, stdout);
}

}  // namespace zelstr::platform
