// binary_stdio.h - standard input and output as bytes.
#ifndef ZELSTR_PLATFORM_BINARY_STDIO_H
#define ZELSTR_PLATFORM_BINARY_STDIO_H

#include <cstddef>
#include <cstdio>

namespace zelstr::platform {

// Makes standard input and output pass bytes unchanged (no line-end
// translation), so that a tool's output is its input's bytes transformed.
void use_binary_stdio();

// Whether standard output is a terminal (which wants each line as it comes,
// where a file or a pipe is best written in large blocks).
bool stdout_is_terminal();

// Reads up to `n` bytes of a file the caller opened and reads through
// nothing else, straight from the system: the count, 0 at the end, -1 on
// an error (errno set).  The stream's own buffer is never made, so a file
// costs no query of its block size and no buffer of its own.
long read_file(std::FILE* file, char* into, std::size_t n);

// Writes to standard output without taking the stream's lock: the tool
// writes from one thread only, many short pieces (a line and its end), and
// the lock was the largest part of each write.
void write_stdout(char const* data, std::size_t length);

}  // namespace zelstr::platform

#endif  // ZELSTR_PLATFORM_BINARY_STDIO_H
