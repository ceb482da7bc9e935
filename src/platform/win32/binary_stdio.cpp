// binary_stdio.cpp - Windows streams translate line ends in text mode: the
// tool's are switched to binary mode.
#include "platform/binary_stdio.h"

#include <fcntl.h>
#include <io.h>

#include <cstdio>

namespace zelstr::platform {

void use_binary_stdio() {
  _setmode(_fileno(stdin), _O_BINARY);
  _setmode(_fileno(stdout), _O_BINARY);
}

bool stdout_is_terminal() { return _isatty(_fileno(stdout)) != 0; }

// The stream's read, which on Windows fills the caller's block directly.
long read_file(std::FILE* file, char* into, std::size_t n) {
  std::size_t const got = std::fread(into, 1, n, file);
  return got == 0 && std::ferror(file) ? -1 : static_cast<long>(got);
}

// The C library MinGW links has no unlocked write: the plain one, locked.
void write_stdout(char const* data, std::size_t length) { std::fwrite(data, 1, length, stdout); }

}  // namespace zelstr::platform
