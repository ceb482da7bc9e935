// fixed_strings.h - the words of grep -F and findall -f: read from -e
// options, from -f files (one word a line) or from the pattern operand (one
// word a line, as grep splits it), and searched all at once with
// CFindManyStrHoary.
#ifndef ZELSTR_TOOL_FIXED_STRINGS_H
#define ZELSTR_TOOL_FIXED_STRINGS_H

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "tool/invocation.h"
#include "zelstr/findmany.h"

namespace zelstr::tool {

class FixedStrings {
 public:
  // The words of -e and -f, or, when neither is given and `pattern` is not
  // NULL, the lines of `pattern`.  ASCII case ignored with `insensitive`,
  // whole words only (no letter, digit or underscore on either side) with
  // `words`; every occurrence (`overlap`) or each behind the last.  False,
  // reported, when a file of words cannot be read or memory runs out.
  // `word_set` is the set definition of the characters words are made of
  // (NULL: letters, digits and _).
  bool read(Invocation& inv, char const* pattern, bool insensitive, bool words,
            bool overlap = false, char const* word_set = nullptr);

  // The same words as `other` read (for another thread), prepared anew.
  bool copy(Invocation& inv, FixedStrings const& other, bool insensitive, bool words,
            char const* word_set);

  // The words of -e and -f, or the lines of `pattern` (see read), appended
  // to `out`; `from_options` tells which.  False, reported, when a file of
  // words cannot be read.
  static bool gather(Invocation& inv, char const* pattern, std::vector<std::string>& out,
                     bool& from_options);

  // Whether the words were read from -e or -f (the operands are then all
  // files).
  bool from_options() const { return m_from_options; }
  std::vector<std::string> const& words() const { return m_words; }

  // Whether the line holds a word; an empty word is in every line.
  bool in(std::string_view line) const;

  // Whether the line is one of the words (-x).
  bool is_line(std::string_view line) const;

  // The first occurrence in the `length` bytes of `text` at or after
  // `from`, or NULL; with an empty word, `from` itself.
  char const* find(char const* text, std::size_t length, char const* from) const;

  // Whether a word holds a line end: then it must be searched line by line.
  bool spans_lines() const { return m_spans_lines; }

  // Calls `each(offset, length, index)` for every occurrence in `text`,
  // leftmost first, then the longest at a place; each behind the last, or
  // every place with `overlap`.  Empty words have no occurrences.
  template <class Each>
  void each(std::string_view text, Each each) const {
    int index = -1;
    long const length = static_cast<long>(text.size());
    for (char const* at = m_search->Find(text.data(), &index, length); at != nullptr;
         at = m_search->FindNext(&index)) {
      each(static_cast<std::size_t>(at - text.data()), m_lengths[static_cast<std::size_t>(index)],
           index);
    }
  }

 private:
  static bool add_file(Invocation& inv, char const* name, std::vector<std::string>& out);
  bool prepare(Invocation& inv, bool insensitive, bool words, bool overlap, char const* word_set);

  std::vector<std::string> m_words;
  std::vector<std::size_t> m_lengths;
  std::unique_ptr<CFindManyStrHoary> m_search;
  bool m_from_options = false;
  bool m_has_empty = false;
  bool m_insensitive = false;
  bool m_spans_lines = false;
};

}  // namespace zelstr::tool

#endif  // ZELSTR_TOOL_FIXED_STRINGS_H
