// forward.cpp - the forward search's argument checks, measuring rules and
// state, around the scan of plan.cpp.
#include "str/search/forward.h"

#include <cstdint>
#include <cstring>

#include "str/report.h"

namespace zelstr::str::search {
namespace {

constexpr std::size_t kMaxLength = 2147483647;

// The text is too long to search: warning 79, and 80 as well when the
// stored pattern length is itself invalid.
char const* text_too_long(SearchState const& st) {
  warn(msg::kStrstrString1TooLong);
  if (st.pattern_length < 0) warn(msg::kStrstrString2TooLong);
  return nullptr;
}

}  // namespace

char const* forward_search(char const* s1, char const* s2, SearchState& st, char const** end_out) {
  if (s1 == nullptr) {
    warn(msg::kStrstrNullString1);
    if (s2 == nullptr) warn(msg::kStrstrNullString2);
    return nullptr;
  }
  // Only a search with the flag set is told a NULL pattern by the rules;
  // without it the stored length would be applied to nothing, so it is
  // refused the same way.
  if (s2 == nullptr) {
    warn(msg::kStrstrNullString2);
    return nullptr;
  }
  if (st.first_search != 0) {
    std::size_t const m = std::strlen(s2);
    if (m > kMaxLength) {
      // The text is measured before the pattern.
      if (std::strlen(s1) > kMaxLength) return text_too_long(st);
      st.pattern_length = -1;
      warn(msg::kStrstrString2TooLong);
      return nullptr;
    }
    st.pattern_length = static_cast<std::int32_t>(m);
    // Without memory to prepare the pattern nothing is found.
    if (m != 0 && !prepare(st, s2, static_cast<std::uint32_t>(m))) return nullptr;
  }
  if (st.pattern_length < 0) {
    warn(msg::kStrstrString2TooLong);
    return nullptr;
  }
  char const* end;
  char const* match;
  if (st.pattern_length == 0) {
    // The empty pattern is found at the start, once the text is measured.
    end = s1 + std::strlen(s1);
    match = s1;
  } else {
    Found const found = find_first(s1, s2, st);
    // A find before the end still measures the rest of the text.
    end = found.end ? found.end : found.match + std::strlen(found.match);
    match = found.match;
  }
  if (static_cast<std::size_t>(end - s1) > kMaxLength) return text_too_long(st);
  if (end_out != nullptr) *end_out = end;
  return match;
}

char const* SearchSeries::next(char const* from) {
  if (m_bFirst) {
    m_bFirst = false;
    char const* const found = forward_search(from, m_pattern, m_state, &m_end);
    m_state.first_search = 1;
    return found;
  }
  if (m_end == nullptr || from > m_end) return nullptr;  // the first search failed
  m_state.first_search = 0;
  char const* found = from;  // the empty pattern is found where it is asked for
  if (m_state.pattern_length != 0) found = find_first(from, m_pattern, m_state).match;
  m_state.first_search = 1;
  return found;
}

}  // namespace zelstr::str::search
