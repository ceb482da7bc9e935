// range_search.cpp - _zstrfind, _zstrifind, _zstrrfind, _zstrrifind: the
// first or last occurrence lying wholly inside a range of the subject.
//
// The range is searched in place, as the zero-terminated text it starts,
// with its end as the scan's limit: the scan stops at the terminator or at
// the limit, whichever comes first, and nothing past the limit decides
// anything.  So a range need not be measured: its start is found (strnlen,
// or strlen for a start counted from the end), its end is where the scan
// stops.  The last occurrence is the last one a forward walk meets, as for
// the whole-string reverse searches.
#include <algorithm>
#include <climits>
#include <cstdint>
#include <cstring>

#include "str/report.h"
#include "str/search/plan.h"
#include "zelstr/search.h"

using namespace zelstr::str;
using zelstr::str::search::SearchState;

namespace {

struct Range {
  char const* begin;
  std::uintptr_t limit;  // an occurrence ends by this address (or the terminator)
};

std::uintptr_t address(char const* p) { return reinterpret_cast<std::uintptr_t>(p); }

// The range `start`, `length` of `s`: a negative start counts back from the
// end, a negative length runs to the end.  Only as much of `s` is measured
// as it takes to find the start.
Range resolve(char const* s, int start, int length) {
  char const* begin;
  if (start >= 0) {
    begin = s + strnlen(s, static_cast<std::size_t>(start));
  } else {
    std::size_t const n = std::strlen(s);
    std::size_t const back = static_cast<std::size_t>(-static_cast<long long>(start));
    begin = s + (back >= n ? 0 : n - back);
  }
  if (length < 0) return {begin, search::kNoLimit};
  std::uintptr_t const room = search::kNoLimit - address(begin);
  return {begin, address(begin) + std::min<std::uintptr_t>(room, static_cast<unsigned>(length))};
}

// Remembers each occurrence it is told of and lets the next start one byte
// later: the last one told is the last.
char const* remember(void* context, char const* at) {
  *static_cast<char const**>(context) = at;
  return at + 1;
}

// Where an empty pattern's last occurrence is: the range's end.
char const* range_end(Range r) {
  std::size_t const most = r.limit - address(r.begin);
  return r.begin + strnlen(r.begin, most);
}

char const* find_in_range(char const* s1, char const* s2, int start, int length,
                          bool ignore_case, bool last, char const* function) {
  if (s1 == nullptr || s2 == nullptr) {
    warn_format(msg::kRangeSearchNullArgumentFormat, function);
    return nullptr;
  }
  Range const r = resolve(s1, start, length);
  std::size_t const m = std::strlen(s2);
  if (m == 0) return last ? range_end(r) : r.begin;
  if (m > INT_MAX) return nullptr;
  SearchState state;
  state.ignore_case = ignore_case;
  if (!search::prepare(state, s2, static_cast<std::uint32_t>(m))) return nullptr;  // no memory
  if (!last) return search::find_first(r.begin, s2, state, r.limit).match;
  char const* found = nullptr;
  search::find_all(r.begin, s2, state, search::Visitor{remember, &found}, r.limit);
  return found;
}

}  // namespace

char const* _zstrfind(char const* string1, char const* string2, int start, int length) noexcept {
  return find_in_range(string1, string2, start, length, false, false, "_zstrfind");
}
char const* _zstrifind(char const* string1, char const* string2, int start, int length) noexcept {
  return find_in_range(string1, string2, start, length, true, false, "_zstrifind");
}
char const* _zstrrfind(char const* string1, char const* string2, int start, int length) noexcept {
  return find_in_range(string1, string2, start, length, false, true, "_zstrrfind");
}
char const* _zstrrifind(char const* string1, char const* string2, int start, int length) noexcept {
  return find_in_range(string1, string2, start, length, true, true, "_zstrrifind");
}

char* _zstrfind(char* string1, char const* string2, int start, int length) noexcept {
  return const_cast<char*>(_zstrfind(static_cast<char const*>(string1), string2, start, length));
}
char* _zstrifind(char* string1, char const* string2, int start, int length) noexcept {
  return const_cast<char*>(_zstrifind(static_cast<char const*>(string1), string2, start, length));
}
char* _zstrrfind(char* string1, char const* string2, int start, int length) noexcept {
  return const_cast<char*>(_zstrrfind(static_cast<char const*>(string1), string2, start, length));
}
char* _zstrrifind(char* string1, char const* string2, int start, int length) noexcept {
  return const_cast<char*>(
      _zstrrifind(static_cast<char const*>(string1), string2, start, length));
}
