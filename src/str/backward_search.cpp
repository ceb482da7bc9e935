// backward_search.cpp - _zstrrstr, _zstrristr: the last occurrence.
#include <cstring>

#include "str/report.h"
#include "str/search/walks.h"
#include "zelstr/search.h"

using namespace zelstr::str;
using zelstr::str::search::SearchState;

namespace {

// Walks the occurrences forwards in one pass and keeps the last.  A search
// state of its own leaves the library-wide state of the forward searches
// alone.
char const* last_occurrence(char const* s1, char const* s2, bool ignore_case) {
  if (s1 == nullptr) {
    warn(msg::kRstrNullString1);
    return nullptr;
  }
  if (s2 == nullptr) {
    warn(msg::kRstrNullString2);
    return nullptr;
  }
  std::size_t const m = std::strlen(s2);
  if (m == 0) return s1 + std::strlen(s1);
  SearchState state;
  state.ignore_case = ignore_case;
  if (!search::prepare(state, s2, static_cast<std::uint32_t>(m))) return nullptr;  // no memory
  return search::last_occurrence(s1, s2, state);
}

}  // namespace

char const* _zstrrstr(char const* string1, char const* string2) noexcept {
  return last_occurrence(string1, string2, false);
}
char* _zstrrstr(char* string1, char const* string2) noexcept {
  return const_cast<char*>(last_occurrence(string1, string2, false));
}
char const* _zstrristr(char const* string1, char const* string2) noexcept {
  return last_occurrence(string1, string2, true);
}
char* _zstrristr(char* string1, char const* string2) noexcept {
  return const_cast<char*>(last_occurrence(string1, string2, true));
}
