// find_command.cpp - the find subcommand: the lines that hold a plain
// string, compared byte by byte, without case or through a character map;
// with grep's options of output.
#include <cstring>

#include "tool/input.h"
#include "tool/line_selection.h"
#include "tool/text_tools.h"
#include "zelstr/zelstr.h"

namespace zelstr::tool {
namespace {

// The occurrences of the string that count in a zero-terminated text: all,
// those with no word character on either side (-w), or a whole line (-x).
class Occurrences {
 public:
  Occurrences(Invocation& inv, char const* pattern, void* map)
      : m_pattern(pattern),
        m_length(std::strlen(pattern)),
        m_map(map),
        m_insensitive(inv.flag("-i")),
        m_whole_line(inv.flag("-x")),
        m_words(inv.flag("-w") && !m_whole_line) {
    char const* const set = inv.value("--word-set");
    for (int c = 1; c < 256; ++c) {
      char const one[] = {static_cast<char>(c), '\0'};
      m_word[c] = set != nullptr ? _zstrspnex(one, set) == 1
                                 : (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') ||
                                       (c >= 'a' && c <= 'z') || c == '_';
    }
  }

  bool bounded() const { return m_words || m_whole_line; }
  std::size_t length() const { return m_length; }

  // The first occurrence that counts at or after `from` in the text that
  // begins at `text` and ends at `end` (a line, or a stretch of lines), or
  // NULL.
  char const* next(char const* text, char const* end, char const* from) const {
    for (char const* at = any(from); at != nullptr; at = any(at + 1)) {
      if (m_whole_line ? starts_line(text, at) && ends_line(at + m_length, end)
          : m_words    ? starts_word(text, at) && !m_word[byte(at[m_length])]
                       : true) {
        return at;
      }
      if (at >= end) break;
    }
    return nullptr;
  }

 private:
  char const* any(char const* from) const {
    return m_map != nullptr ? _zmapstrstr(m_map, from, m_pattern)
           : m_insensitive  ? _zstristr(from, m_pattern)
                            : _zstrstr(from, m_pattern);
  }
  static unsigned char byte(char c) { return static_cast<unsigned char>(c); }
  static bool starts_line(char const* text, char const* at) { return at == text || at[-1] == '\n'; }
  static bool ends_line(char const* at, char const* end) {
    return at == end || at[0] == '\n' || (at[0] == '\r' && at + 1 < end && at[1] == '\n');
  }
  // Whether no word character comes just before `at`.
  bool starts_word(char const* text, char const* at) const {
    return at == text || !m_word[byte(at[-1])];
  }

  char const* m_pattern;
  std::size_t m_length;
  void* m_map;
  bool m_insensitive, m_whole_line, m_words;
  bool m_word[256] = {};
};

// The parts of a line (zero-terminated at `length`): the occurrences that
// count, each behind the last; an empty string has none.
void each_occurrence(char const* line, std::size_t length, Occurrences const& search,
                     LinePrinter::Each const& each) {
  if (search.length() == 0) return;
  char const* const end = line + length;
  for (char const* at = search.next(line, end, line); at != nullptr;) {
    each(static_cast<std::size_t>(at - line), search.length());
    at = at + search.length() <= end ? search.next(line, end, at + search.length()) : nullptr;
  }
}

}  // namespace

// find [-i|--map DEFINITION] [-w|-x] [-v] [-o] ... PATTERN [FILE...]: a
// stretch of lines at a time where only matching lines are printed (the
// string searched by CFindAllStr's walk, or, ignoring ASCII case or
// through the map, as the one string of a CFindManyStrHoary); line by line
// for every line's selection, for an empty pattern (in every line) or one
// that may match a line end.
int run_find(Invocation& inv) {
  if (inv.operands().empty()) return inv.usage_error("no pattern");
  char const* const pattern = inv.operands()[0];
  DefinedMap const map(inv, inv.value("--map"));
  if (map.bad()) return kError;
  char const* const word_set = inv.value("--word-set");
  if (word_set != nullptr && !check_set_definition(inv, word_set)) return kError;
  bool const insensitive = inv.flag("-i");
  LinePrinter printer(inv, inv.operands().subspan(1));
  if (!inv.parsed()) return kError;
  Occurrences const search(inv, pattern, map.get());
  printer.parts_by([&](char const* line, std::size_t length, LinePrinter::Each const& each) {
    each_occurrence(line, length, search, each);
    return true;
  });
  char const* const strings[] = {pattern, nullptr};
  CFindManyStrHoary many(strings, insensitive ? ZEAL_MANY_ICASE : 0, map.get());
  bool const by_lines =
      *pattern == '\0' || may_match_line_end(pattern, map.get()) || printer.wants_every_line();
  for_each_input(inv, inv.operands().subspan(1), [&](Input& in) {
    in.take_zero_bytes(printer.zero_bytes());
    auto const take = hit_line_taker(in, printer);
    if (by_lines) {
      select_each_line(in, printer, nullptr, [&](char const* line, std::size_t length) {
        return search.next(line, line + length, line) != nullptr ? 1 : 0;
      });
    } else if (search.bounded()) {
      for_each_hit_line(
          in, inv.flag("-n"),
          [&](Lines const& lines, char const* from) {
            return search.next(lines.text, lines.text + lines.length, from);
          },
          take);
    } else if (!insensitive && !map.given()) {
      for_each_line_with(in, inv.flag("-n"), pattern, take);
    } else {
      for_each_hit_line(
          in, inv.flag("-n"),
          [&](Lines const& lines, char const* from) {
            int index;
            return many.Find(lines.text, &index, static_cast<long>(lines.length), from);
          },
          take);
    }
    printer.end_of(in);
  });
  return inv.exit_status();
}

}  // namespace zelstr::tool
