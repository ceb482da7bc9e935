// binary_stdio.cpp - POSIX streams never translate line ends; a terminal
// is told by isatty.
#include "platform/binary_stdio.h"

#include <unistd.h>

#include <cerrno>
#include <cstdio>

namespace zelstr::platform {

void use_binary_stdio() {}

bool stdout_is_terminal() { return isatty(STDOUT_FILENO) != 0; }

long read_file(std::FILE* file, char* into, std::size_t n) {
  for (;;) {
    ssize_t const got = ::read(fileno(file), into, n);
    if (got >= 0 || errno != EINTR) return static_cast<long>(got);
  }
}

void write_stdout(char const* data, std::size_t length) {
  fwrite_unlocked(data, 1, length, stdout);
}

}  // namespace zelstr::platform
