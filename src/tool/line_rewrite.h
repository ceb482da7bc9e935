// line_rewrite.h - the commands that rewrite an input a stretch of lines at
// a time, into room made beforehand, and write each stretch's new text in
// one piece.  trim and quote rewrite the whole stretch themselves, a block
// at a time (tool/line_trim.h, tool/line_quote.h).  unquote rewrites each
// line alone through a library call: most lines of a script go through it
// unchanged (few are quoted), the command says so from the line's bytes,
// and a run of such lines is copied in one piece with the stretch, so that
// a line costs a search for its line feed and a test, not a call.
#ifndef ZELSTR_TOOL_LINE_REWRITE_H
#define ZELSTR_TOOL_LINE_REWRITE_H

#include <cstring>
#include <memory>
#include <string_view>

#include "tool/input.h"
#include "tool/line_feeds.h"

namespace zelstr::tool {

// The new text of a stretch, written into room made beforehand for the
// most a command makes of it, so that writing a piece is a copy with no
// test for room.
class Rewritten {
 public:
  // Makes room for `most` bytes and empties the text; where the room begins.
  char* start(std::size_t most) {
    if (most > m_room) {
      m_bytes = std::make_unique_for_overwrite<char[]>(most);
      m_room = most;
    }
    m_size = 0;
    return m_bytes.get();
  }
  void push_back(char c) { m_bytes[m_size++] = c; }
  void append(char const* text, std::size_t length) {
    std::memcpy(m_bytes.get() + m_size, text, length);
    m_size += length;
  }
  void append(char const* text) { append(text, std::strlen(text)); }
  std::string_view text() const { return {m_bytes.get(), m_size}; }

 private:
  std::unique_ptr<char[]> m_bytes;
  std::size_t m_room = 0;
  std::size_t m_size = 0;
};

// For every stretch of lines of every input (see for_each_input):
// `rewrite(text, length, out)` writes the stretch's new text to `out`,
// which has room for `room(length)` bytes, and returns its length.
template <class Room, class Rewrite>
void rewrite_stretches(Invocation& invocation, std::span<char const* const> names, Room room,
                       Rewrite rewrite) {
  Rewritten out;
  for_each_input(invocation, names, [&](Input& in) {
    Lines lines;
    while (in.next_lines(lines, false)) {
      char* const bytes = out.start(room(lines.length));
      write_out(bytes, rewrite(lines.text, lines.length, bytes));
      invocation.found();
    }
  });
}

// For every line of every input (see for_each_input): `keeps(line, length)`
// tells that the line goes through unchanged; any other line is handed to
// `each(line, length, out)`, zero-terminated in place, which appends the
// line's new text, at most `length` bytes, to `out`.  A line's own end
// follows it ("\n", "\r\n", or none for a last line without one), so that
// a text goes through unchanged but for what the command does.
template <class Keeps, class Each>
void rewrite_lines(Invocation& invocation, std::span<char const* const> names, Keeps keeps,
                   Each each) {
  Rewritten out;
  for_each_input(invocation, names, [&](Input& in) {
    Lines lines;
    while (in.next_lines(lines, false)) {
      out.start(lines.length + 1);
      char* const end = lines.text + lines.length;
      char const* copied = lines.text;  // what is before here is in `out`
      char* line = lines.text;
      // The line from `line` to `text_end`, whose end runs to `next`.
      auto const take = [&](char* text_end, char* next) {
        std::size_t const length = static_cast<std::size_t>(text_end - line);
        if (!keeps(line, length)) {
          if (copied != line) out.append(copied, static_cast<std::size_t>(line - copied));
          // The stretch is the input's own writable buffer: the line's end
          // is its terminator meanwhile.
          char const kept = *text_end;
          *text_end = '\0';
          each(line, length, out);
          *text_end = kept;
          for (char const* e = text_end; e < next; ++e) out.push_back(*e);  // "\n", "\r\n", ""
          copied = next;
        }
        line = next;
      };
      for_each_line_feed(lines.text, end, [&](char* feed) {
        take(feed > line && feed[-1] == '\r' ? feed - 1 : feed, feed + 1);
      });
      if (line < end) take(end, end);  // a last line without its line feed
      out.append(copied, static_cast<std::size_t>(end - copied));
      write_out(out.text());
    }
  });
}

}  // namespace zelstr::tool

#endif  // ZELSTR_TOOL_LINE_REWRITE_H
