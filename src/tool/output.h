// output.h - the tool's standard output, in the order of its inputs even
// when several threads read them.
//
// A command that reads its inputs on several threads (grep -j) numbers
// them in the order they are named or walked.  The thread of the input
// whose turn it is writes to standard output at once; the others keep what
// they write in memory until their turn comes (when it comes while such an
// input is still read, the kept text goes out and the rest is written at
// once).  So the output is byte for byte what one thread gives, and no
// more than the outputs of the inputs read ahead is ever held.
#ifndef ZELSTR_TOOL_OUTPUT_H
#define ZELSTR_TOOL_OUTPUT_H

#include <cstddef>
#include <string_view>

namespace zelstr::tool {

// Writes to standard output (or, on a thread reading an input whose turn
// has not come, to that input's kept text).
void write_out(char const* data, std::size_t length);
inline void write_out(std::string_view s) { write_out(s.data(), s.size()); }

// Begins a group of lines set apart from the one before by `separator`
// (grep's "--"): written when a group was begun before, by any earlier
// input, in the output's order.
void begin_group(std::string_view separator);

// The output of inputs read on several threads: input `index` (from 0, in
// order) is read on the calling thread between begin(index) and end().
class OrderedOutput {
 public:
  OrderedOutput();
  ~OrderedOutput();
  OrderedOutput(OrderedOutput const&) = delete;
  OrderedOutput& operator=(OrderedOutput const&) = delete;

  void begin(std::size_t index);
  void end();
};

}  // namespace zelstr::tool

#endif  // ZELSTR_TOOL_OUTPUT_H
