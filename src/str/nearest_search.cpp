// nearest_search.cpp - _zstrneareststr, _zstrnearestistr: the occurrence
// nearest to a position, looking both ways ("which name is the cursor in").
//
// One forward walk over overlapping occurrences keeps the last one that
// starts at or before the position and stops at the first one after it;
// no other occurrence can be nearer than these two.
#include <climits>
#include <cstring>

#include "str/report.h"
#include "str/search/plan.h"
#include "zelstr/search.h"

using namespace zelstr::str;
using zelstr::str::search::SearchState;

namespace {

struct Neighbours {
  char const* at;
  char const* before = nullptr;  // the last occurrence starting at or before `at`
  char const* after = nullptr;   // the first one starting after it
};
char const* visit(void* context, char const* match) {
  Neighbours& n = *static_cast<Neighbours*>(context);
  if (match > n.at) {
    n.after = match;
    return nullptr;
  }
  n.before = match;
  return match + 1;
}

// The distance from `at` to the bytes of an occurrence at `p` of length
// `m`: 0 inside it, else to its nearest byte.
std::size_t distance(char const* at, char const* p, std::size_t m) {
  if (p > at) return static_cast<std::size_t>(p - at);
  return p + m > at ? 0 : static_cast<std::size_t>(at - (p + m - 1));
}

char const* nearest(char const* s1, char const* s2, int position, bool ignore_case,
                    char const* function) {
  if (s1 == nullptr || s2 == nullptr) {
    warn_format(msg::kRangeSearchNullArgumentFormat, function);
    return nullptr;
  }
  if (position < 0) {
    warn_format(msg::kNearestBadPositionFormat, function);
    return nullptr;
  }
  char const* const at = s1 + strnlen(s1, static_cast<std::size_t>(position));
  std::size_t const m = std::strlen(s2);
  if (m == 0) return at;
  if (m > INT_MAX) return nullptr;
  SearchState state;
  state.ignore_case = ignore_case;
  if (!search::prepare(state, s2, static_cast<std::uint32_t>(m))) return nullptr;  // no memory
  Neighbours n{at};
  search::find_all(s1, s2, state, search::Visitor{visit, &n});
  if (n.before == nullptr) return n.after;
  if (n.after == nullptr) return n.before;
  return distance(at, n.before, m) <= distance(at, n.after, m) ? n.before : n.after;
}

}  // namespace

char const* _zstrneareststr(char const* string1, char const* string2, int position) noexcept {
  return nearest(string1, string2, position, false, "_zstrneareststr");
}
char const* _zstrnearestistr(char const* string1, char const* string2, int position) noexcept {
  return nearest(string1, string2, position, true, "_zstrnearestistr");
}
char* _zstrneareststr(char* string1, char const* string2, int position) noexcept {
  return const_cast<char*>(_zstrneareststr(static_cast<char const*>(string1), string2, position));
}
char* _zstrnearestistr(char* string1, char const* string2, int position) noexcept {
  return const_cast<char*>(
      _zstrnearestistr(static_cast<char const*>(string1), string2, position));
}
