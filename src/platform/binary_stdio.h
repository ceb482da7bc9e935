// binary_stdio.h - standard input and output as bytes.
#ifndef ZELSTR_PLATFORM_BINARY_STDIO_H
#define ZELSTR_PLATFORM_BINARY_STDIO_H

namespace zelstr::platform {

// Makes standard input and output pass bytes unchanged (no line-end
// translation), so that a tool's output is its input's bytes transformed.
void use_binary_stdio();

}  // namespace zelstr::platform

#endif  // ZELSTR_PLATFORM_BINARY_STDIO_H
