// forward.h - the forward search with its warnings and library-wide state,
// for the exported searches and for the functions that search in loops.
#ifndef ZELSTR_STR_SEARCH_FORWARD_H
#define ZELSTR_STR_SEARCH_FORWARD_H

#include <cstdint>

#include "str/search/plan.h"

namespace zelstr::str::search {

// The body of _zstrstr (state of the case-sensitive search) and _zstristr
// (case-insensitive): the first occurrence of `s2` in `s1`, or NULL, with
// the warnings 77 to 80.  With the state's flag set, `s2` is measured and
// prepared; with it clear, the stored length and preparation are reused.
// When `end` is given and the text was measured, it receives the position
// of the text's terminator.
char const* forward_search(char const* s1, char const* s2, SearchState& state,
                           char const** end = nullptr);

// Searches one pattern again and again through one text, as callers that
// walk from one occurrence to the next do: the first search is a full
// forward_search (warnings, measuring, preparation); each later one runs with
// the flag cleared, reusing the preparation, and the flag is set back to 1
// after every search.  The text is measured once, by the first search, so a
// walk over the whole text stays linear.
class SearchSeries {
 public:
  SearchSeries(char const* pattern, SearchState& state) : m_pattern(pattern), m_state(state) {}

  // The first occurrence at or after `from` (which lies in the text given to
  // the first call), or NULL.
  char const* next(char const* from);

  // The pattern's length, known after the first call.
  std::uint32_t pattern_length() const {
    return static_cast<std::uint32_t>(m_state.pattern_length);
  }

 private:
  char const* m_pattern;
  SearchState& m_state;
  char const* m_end = nullptr;  // the text's terminator, once measured
  bool m_bFirst = true;
};

}  // namespace zelstr::str::search

#endif  // ZELSTR_STR_SEARCH_FORWARD_H
