// out_of_memory.h - the tool's answer to memory running out: one line,
// "zelstr: out of memory", on standard error and the exit status 2, never an
// abort.
//
// An allocation may fail in the tool's own code (operator new throws
// std::bad_alloc, which main catches) or inside the library, which answers
// with a fallback value and goes on.  Either way the tool learns of it here,
// and an error message that would only be its consequence ("bad pattern",
// "cannot open") gives way to the out-of-memory line.
#ifndef ZELSTR_TOOL_OUT_OF_MEMORY_H
#define ZELSTR_TOOL_OUT_OF_MEMORY_H

namespace zelstr::tool {

// Makes every failed operator new of the process (the tool's, the
// library's) noted before it fails as usual.
void watch_memory() noexcept;

// Notes a failure the tool met itself (a file that could not be opened for
// lack of memory, a std::bad_alloc caught).
void note_out_of_memory() noexcept;

// True once an allocation failed anywhere: in the tool, or in the library
// (its count of failures, the regular-expression engine's included, or a
// warning record the service could not keep).
bool memory_ran_out() noexcept;

// Prints "zelstr: out of memory" on standard error, the first time only.
void report_out_of_memory() noexcept;

}  // namespace zelstr::tool

#endif  // ZELSTR_TOOL_OUT_OF_MEMORY_H
