// line_search.h - the searching commands over an input a stretch of lines
// at a time: one search runs through many lines, and only the lines it
// hits are looked at, one by one.  Lines are numbered only when asked.  A
// named file is seen whole in memory when the system can (nothing is
// written into its lines but a stretch's terminator).
#ifndef ZELSTR_TOOL_LINE_SEARCH_H
#define ZELSTR_TOOL_LINE_SEARCH_H

#include <cstring>

#include "tool/input.h"
#include "zelstr/findall.h"

namespace zelstr::tool {

// `next(lines, from)` gives the first hit at or after `from` in the
// stretch, or NULL; each line that holds a hit is made the input's current
// line and handed to `take(line)` once (false stops the input), and the
// search goes on at the line after it.  A hit must lie in one line: the
// searches given here never match a line end.
template <class Next, class Take>
void for_each_hit_line(Input& in, bool numbered, Next next, Take take) {
  Lines lines;
  in.see_whole();
  while (in.next_lines(lines, numbered)) {
    LineLocator locate(lines, numbered);
    char const* const end = lines.text + lines.length;
    for (char const* from = lines.text; from < end;) {
      char const* const at = next(lines, from);
      if (at == nullptr) break;
      PickedLine const line = locate.line_at(at);
      in.pick(line);
      if (!take(line)) return;
      from = locate.after(line);
    }
  }
}

// The same for one string searched case for case: CFindAllStr::FindAll hands
// every occurrence in a stretch over in one call, which saves a search's
// setup per hit; occurrences in a line already taken are passed over.
template <class Take>
void for_each_line_with(Input& in, bool numbered, char const* string, Take take) {
  struct Walk {
    Input& in;
    LineLocator locate;
    Take& take;
    char const* next;  // the start of the line after the one taken last
    bool stopped;
    bool zero;  // a zero byte ends the line of a hit: the input is refused
    static int visit(char const* at, void* context) {
      auto& walk = *static_cast<Walk*>(context);
      if (at < walk.next) return 1;
      PickedLine const line = walk.locate.line_at(at);
      // The search stops at a zero byte, but the line around a hit is
      // found by its line feed: a zero after the hit is looked for here.
      char const* const end = line.text.data() + line.text.size();
      if (std::memchr(at, '\0', static_cast<std::size_t>(end - at)) != nullptr) {
        walk.zero = true;
        return 0;
      }
      walk.in.pick(line);
      walk.stopped = !walk.take(line);
      walk.next = walk.locate.after(line);
      return walk.stopped ? 0 : 1;
    }
  };
  // The search stops at a zero byte as at the stretch's terminator; after
  // a search to the end, the last window it tested ends where it stopped.
  Lines lines;
  in.see_whole(Input::Zeros::kFoundBySearch);
  std::size_t const length = std::strlen(string);
  while (in.next_lines(lines, numbered)) {
    Walk walk{in, LineLocator(lines, numbered), take, lines.text, false, false};
    CFindAllStr all(lines.text, string, 0);
    all.FindAll(&Walk::visit, &walk, 0);
    if (walk.stopped) return;
    char const* const last = walk.zero ? nullptr : all.GetLastFindPos();
    if (!in.searched_to(lines, last != nullptr ? last + length : nullptr)) return;
  }
}

}  // namespace zelstr::tool

#endif  // ZELSTR_TOOL_LINE_SEARCH_H
