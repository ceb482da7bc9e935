// line_rewrite.h - the commands that rewrite each line alone (trim, quote,
// unquote), over an input a stretch of lines at a time: each line is handed
// over zero-terminated in place, and what becomes of a stretch is gathered
// and written in one piece, not a line at a time.
#ifndef ZELSTR_TOOL_LINE_REWRITE_H
#define ZELSTR_TOOL_LINE_REWRITE_H

#include <cstring>
#include <string>
#include <string_view>

#include "tool/input.h"

namespace zelstr::tool {

// Calls `each(line, length, out)` on every line of every input (see
// for_each_input), which appends the line's new text to `out`; the line's
// own end follows it ("\n", "\r\n", or none for a last line without one),
// so that a text goes through unchanged but for what the command does.
template <class Each>
void rewrite_lines(Invocation& invocation, std::span<char const* const> names, Each each) {
  std::string out;
  for_each_input(invocation, names, [&](Input& in) {
    Lines lines;
    while (in.next_lines(lines, false)) {
      out.clear();
      char* const end = lines.text + lines.length;
      for (char* line = lines.text; line < end;) {
        auto* const lf = static_cast<char*>(std::memchr(line, '\n', end - line));
        std::size_t length = static_cast<std::size_t>((lf != nullptr ? lf : end) - line);
        std::string_view line_end = lf != nullptr ? "\n" : "";
        if (lf != nullptr && length > 0 && line[length - 1] == '\r') {
          --length;
          line_end = "\r\n";
        }
        line[length] = '\0';  // its end, or the stretch's own terminator
        each(line, length, out);
        out.append(line_end);
        line = lf != nullptr ? lf + 1 : end;
      }
      write_out(out);
    }
  });
}

}  // namespace zelstr::tool

#endif  // ZELSTR_TOOL_LINE_REWRITE_H
