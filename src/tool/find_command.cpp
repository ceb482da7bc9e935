// find_command.cpp - the find subcommand: the lines that hold a plain
// string, compared byte by byte, without case or through a character map;
// with grep's options of output.
#include <array>
#include <cstring>
#include <memory>
#include <span>

#include "tool/input.h"
#include "tool/input_threads.h"
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
        m_words(inv.flag("-w") && !m_whole_line),
        m_word(set_members(inv.value("--word-set"))) {}

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
  std::array<bool, 256> m_word;
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

// The reader of find on one thread: its own searches.
class FindReader {
 public:
  FindReader(Invocation& inv, std::span<char const* const> names, char const* pattern, void* map)
      : m_inv(inv),
        m_pattern(pattern),
        m_map(map),
        m_insensitive(inv.flag("-i")),
        m_printer(inv, names),
        m_search(inv, pattern, map),
        m_strings{pattern, nullptr},
        m_many(m_strings, m_insensitive ? ZEAL_MANY_ICASE : 0, map),
        m_by_lines(*pattern == '\0' || may_match_line_end(pattern, map) ||
                   m_printer.wants_every_line()) {
    m_printer.parts_by([this](char const* line, std::size_t length, LinePrinter::Each const& each) {
      each_occurrence(line, length, m_search, each);
      return true;
    });
  }

  void operator()(Input& in) {
    in.take_zero_bytes(m_printer.zero_bytes());
    auto const take = hit_line_taker(in, m_printer);
    bool const numbered = m_inv.flag("-n");
    if (m_by_lines) {
      select_each_line(in, m_printer, nullptr, [&](char const* line, std::size_t length) {
        return m_search.next(line, line + length, line) != nullptr ? 1 : 0;
      });
    } else if (m_search.bounded()) {
      for_each_hit_line(
          in, numbered,
          [&](Lines const& lines, char const* from) {
            return m_search.next(lines.text, lines.text + lines.length, from);
          },
          take);
    } else if (!m_insensitive && m_map == nullptr) {
      for_each_line_with(in, numbered, m_pattern, take);
    } else {
      for_each_hit_line(
          in, numbered,
          [&](Lines const& lines, char const* from) {
            int index;
            return m_many.Find(lines.text, &index, static_cast<long>(lines.length), from);
          },
          take);
    }
    m_printer.end_of(in);
  }

 private:
  Invocation& m_inv;
  char const* m_pattern;
  void* m_map;
  bool m_insensitive;
  LinePrinter m_printer;
  Occurrences const m_search;
  char const* m_strings[2];
  CFindManyStrHoary m_many;
  bool m_by_lines;
};

}  // namespace

// find [-i|--map DEFINITION] [-w|-x] [-v] [-o] ... PATTERN [FILE...]: a
// stretch of lines at a time where only matching lines are printed (the
// string searched by CFindAllStr's walk, or, ignoring ASCII case or
// through the map, as the one string of a CFindManyStrHoary); line by line
// for every line's selection, for an empty pattern (in every line) or one
// that may match a line end.  Each thread has a reader of its own; the
// map is shared, only read.
int run_find(Invocation& inv) {
  if (inv.operands().empty()) return inv.usage_error("no pattern");
  char const* const pattern = inv.operands()[0];
  DefinedMap const map(inv, inv.value("--map"));
  if (map.bad()) return kError;
  char const* const word_set = inv.value("--word-set");
  if (word_set != nullptr && !check_set_definition(inv, word_set)) return kError;
  auto const names = inv.operands().subspan(1);
  if (LinePrinter const checked(inv, names); !inv.parsed()) return kError;
  for_each_input_on_threads(inv, names, [&] {
    return std::make_unique<FindReader>(inv, names, pattern, map.get());
  });
  return inv.exit_status();
}

}  // namespace zelstr::tool
