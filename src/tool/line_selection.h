// line_selection.h - a command's lines handed to its LinePrinter: every
// line with whether it matches (for -v, context, or a match that must see
// each line alone), or only the lines a search of a stretch hits.
#ifndef ZELSTR_TOOL_LINE_SELECTION_H
#define ZELSTR_TOOL_LINE_SELECTION_H

#include <cstddef>

#include "tool/input.h"
#include "tool/line_printer.h"
#include "tool/line_search.h"

namespace zelstr::tool {

// Every line of `in`, zero-terminated in place: `matches(line, length)`
// gives 1 when it matches, 0 when not, -1 when the match failed (then
// false is returned).  The lines are printed from `original` when it is
// not NULL: the text as written, of which the input is a changed copy with
// the same lines.
template <class Matches>
bool select_each_line(Input& in, LinePrinter& printer, char const* original, Matches matches) {
  char* line;
  std::size_t length;
  while (in.next_line(line, length)) {
    char const* const written = original != nullptr ? original + in.line_offset() : line;
    int const r = matches(line, length);
    if (r < 0) return false;
    if (!printer.take(in, {written, length}, r == 1, line)) break;
  }
  return !printer.failed();
}

// Runs `each(line, length)` on a line picked out of a stretch, with a
// terminator written over its end meanwhile (the stretch is writable, and
// the byte is put back), for the calls that need a line alone.
template <class Each>
bool with_line_alone(PickedLine const& picked, Each each) {
  auto* const line = const_cast<char*>(picked.text.data());
  char* const end = line + picked.text.size();
  char const kept = *end;
  *end = '\0';
  bool const done = each(line, picked.text.size());
  *end = kept;
  return done;
}

// The take(line) of the stretch searches (line_search.h) that hands each
// line they hit to the printer, as a line alone when its parts are wanted.
inline auto hit_line_taker(Input& in, LinePrinter& printer) {
  return [&in, &printer](PickedLine const& picked) {
    if (!printer.wants_parts()) return printer.take(in, picked.text, true, nullptr);
    return with_line_alone(picked, [&](char const* line, std::size_t) {
      return printer.take(in, picked.text, true, line);
    });
  };
}

}  // namespace zelstr::tool

#endif  // ZELSTR_TOOL_LINE_SELECTION_H
