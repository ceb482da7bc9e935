// line_rewrite.h - the commands that rewrite each line alone (trim, quote,
// unquote), over an input a stretch of lines at a time: each line is handed
// over zero-terminated in place, and what becomes of a stretch is gathered
// and written in one piece, not a line at a time.
#ifndef ZELSTR_TOOL_LINE_REWRITE_H
#define ZELSTR_TOOL_LINE_REWRITE_H

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
      LineLocator locate(lines, false);
      char const* const end = lines.text + lines.length;
      for (char const* at = lines.text; at < end;) {
        PickedLine const line = locate.line_from(at);
        // The stretch is the input's own writable buffer: the line's end is
        // its terminator meanwhile, then put back for the locator.
        auto* const text = const_cast<char*>(line.text.data());
        char const kept = text[line.text.size()];
        text[line.text.size()] = '\0';
        each(text, line.text.size(), out);
        text[line.text.size()] = kept;
        out.append(line.end);
        at = locate.after(line);
      }
      write_out(out);
    }
  });
}

}  // namespace zelstr::tool

#endif  // ZELSTR_TOOL_LINE_REWRITE_H
