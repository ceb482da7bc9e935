// counts.cpp - _zstrstrcnt, _zstristrcnt, _zstrccnt.
#include <climits>
#include <cstring>

#include "str/report.h"
#include "str/search/walks.h"
#include "zelstr/search.h"

using namespace zelstr::str;
using zelstr::str::search::SearchState;

namespace {

// Occurrences from left to right without overlap, in one pass of the scan.
// A search state of its own leaves the library-wide state alone.
int occurrences(char const* s1, char const* s2, bool ignore_case) {
  if (s1 == nullptr) {
    warn(msg::kStrcntNullString1);
    return -1;
  }
  if (s2 == nullptr) {
    warn(msg::kStrcntNullString2);
    return -1;
  }
  std::size_t const m = std::strlen(s2);
  if (m == 0) {
    warn(msg::kStrcntEmptyString2);
    return -1;
  }
  SearchState state;
  state.ignore_case = ignore_case;
  if (!search::prepare(state, s2, static_cast<std::uint32_t>(m))) return -1;  // no memory
  return search::count_occurrences(s1, s2, state);
}

}  // namespace

int _zstrstrcnt(char const* string1, char const* string2) noexcept {
  return occurrences(string1, string2, false);
}
int _zstristrcnt(char const* string1, char const* string2) noexcept {
  return occurrences(string1, string2, true);
}

int _zstrccnt(char const* string, char c) noexcept {
  if (string == nullptr) {
    warn(msg::kCcntNullString);
    return -1;
  }
  std::size_t const count = search::count_bytes(string, c, nullptr);
  return count > INT_MAX ? INT_MAX : static_cast<int>(count);
}
