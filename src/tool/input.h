// input.h - the tool's inputs: files or standard input, read a block or a
// line at a time, so that no input needs to fit in memory; or, for the
// commands that must see a whole text at once (a comment or a literal of
// SQL code may span lines), read whole, then gone over again line by line
// in a changed copy.
//
// The library works on zero-terminated strings, so a zero byte in the
// input cannot be handed to it: the reader stops there and the input is
// refused as binary data.
#ifndef ZELSTR_TOOL_INPUT_H
#define ZELSTR_TOOL_INPUT_H

#include <cstdint>
#include <cstdio>
#include <string>
#include <string_view>

#include "tool/invocation.h"

namespace zelstr::tool {

class Input {
 public:
  static constexpr std::size_t kBlock = 1 << 16;

  // `name` is a file, or "-" for standard input.  A file that cannot be
  // opened is reported on `invocation` (ok() is then false).
  Input(Invocation& invocation, char const* name);
  ~Input();
  Input(Input const&) = delete;
  Input& operator=(Input const&) = delete;

  bool ok() const { return m_file != nullptr && !m_failed; }
  char const* name() const { return m_name; }

  // The next block of at most kBlock bytes; empty at the end or on an
  // error (reported).
  std::string_view next_block();

  // The next line, zero-terminated in place (valid until the next call);
  // false at the end or on an error (reported).  A line ends at a line
  // feed or a carriage return and line feed: the end is not part of the
  // line, and line_end() tells which it was ("" for a last line without
  // one).
  bool next_line(char*& line, std::size_t& length);
  std::uint64_t line_number() const { return m_line_number; }
  std::string_view line_end() const { return m_line_end; }
  // The offset in the input of the line next_line gave last.
  std::uint64_t line_offset() const { return m_line_offset; }

  // Appends what is left of the input to `text`; false on an error
  // (reported), with `text` holding what was read before it.
  bool read_rest(std::string& text);
  // Goes over the input again as `text`, a copy of it as read_rest gave it
  // with bytes changed but its lines kept (the same length, the same line
  // ends): next_line then gives the copy's lines from the first, with their
  // numbers and offsets in the input.
  void reread(std::string text);

 private:
  bool fill();  // reads more into m_buffer; false at the end or on an error

  Invocation& m_invocation;
  char const* m_name;
  std::FILE* m_file = nullptr;
  bool m_failed = false;
  bool m_ended = false;  // the file gave its last byte: no more reading
  std::string m_buffer;  // bytes read and not yet handed out, from m_start
  std::size_t m_start = 0;
  std::uint64_t m_offset = 0;  // of m_buffer[0] in the input
  std::uint64_t m_line_number = 0;
  std::uint64_t m_line_offset = 0;
  std::string_view m_line_end;
};

// Runs `each(input)` on every operand as a file, or on standard input when
// there are none; an operand "-" is standard input too.
template <class Each>
void for_each_input(Invocation& invocation, std::span<char const* const> names, Each each) {
  if (names.empty()) {
    Input in(invocation, "-");
    each(in);
    return;
  }
  for (char const* name : names) {
    Input in(invocation, name);
    if (in.ok()) each(in);
  }
}

// Runs `each(input, line, length)` on every line of every input (see
// for_each_input), stopping at an input's first error.
template <class Each>
void for_each_line(Invocation& invocation, std::span<char const* const> names, Each each) {
  for_each_input(invocation, names, [&each](Input& in) {
    char* line;
    std::size_t length;
    while (in.next_line(line, length)) {
      if (!each(in, line, length)) return;
    }
  });
}

// Writes to standard output.
void write_out(char const* data, std::size_t length);
inline void write_out(std::string_view s) { write_out(s.data(), s.size()); }

// A line of `in` that the command changed or passed on whole: with the end
// the line came with, none for a last line that had none (so that a text
// goes through unchanged but for what the command does).
void write_passed_line(Input const& in, std::string_view text);
// A line or a result the command picked out of its input: with the end the
// line came with, or a line feed for a last line that had none (so that
// results from several inputs never run together).
void write_picked_line(Input const& in, std::string_view text);

}  // namespace zelstr::tool

#endif  // ZELSTR_TOOL_INPUT_H
