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
// false is returned).  `parts(line, length, written)` prints the parts of a
// selected line when the printer asks (false: a failure).  The lines are
// printed from `original` when it is not NULL: the text as written, of
// which the input is a changed copy with the same lines.
template <class Matches, class Parts>
bool select_each_line(Input& in, LinePrinter& printer, char const* original, Matches matches,
                      Parts parts) {
  char* line;
  std::size_t length;
  while (in.next_line(line, length)) {
    char const* const written = original != nullptr ? original + in.line_offset() : line;
    int const r = matches(line, length);
    if (r < 0) return false;
    switch (printer.take(in, {written, length}, r == 1)) {
      case LinePrinter::Next::kStop:
        return true;
      case LinePrinter::Next::kPrintParts:
        if (!parts(line, length, written)) return false;
        break;
      case LinePrinter::Next::kGoOn:
        break;
    }
  }
  return true;
}

// Turns a take(line) of the stretch searches (line_search.h) into the
// printer's: `parts(line)` prints the parts of a selected line.  `ok` turns
// false when printing them failed.
template <class Parts>
auto hit_line_taker(Input& in, LinePrinter& printer, bool& ok, Parts& parts) {
  return [&in, &printer, &ok, &parts](PickedLine const& line) {
    switch (printer.take(in, line.text, true)) {
      case LinePrinter::Next::kStop:
        return false;
      case LinePrinter::Next::kPrintParts:
        ok = parts(line);
        return ok;
      case LinePrinter::Next::kGoOn:
        break;
    }
    return true;
  };
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

}  // namespace zelstr::tool

#endif  // ZELSTR_TOOL_LINE_SELECTION_H
