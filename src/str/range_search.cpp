// range_search.cpp - _zstrfind, _zstrifind, _zstrrfind, _zstrrifind: the
// first or last occurrence lying wholly inside a range of the subject.
//
// The forward search's kernels read a zero-terminated text.  A range that
// runs to the subject's terminator is searched in place; one that stops
// short of it is searched through windows copied to the stack and
// terminated there, each window overlapping the next by the pattern's
// length less one, so no occurrence falls between two windows and nothing
// is ever written into the subject.
#include <algorithm>
#include <climits>
#include <cstdint>
#include <new>
#include <cstring>

#include "str/report.h"
#include "str/search/plan.h"
#include "str/search/walks.h"
#include "zelstr/search.h"

using namespace zelstr::str;
using zelstr::str::search::SearchState;

namespace {

// Window sizes: a window holds the starting places of kSmallWindow bytes
// on the stack, or of kLargeWindow on the heap when the range is longer
// (fewer, longer scans).  Longer patterns are searched in place, see
// long_pattern_in_range.
constexpr std::size_t kSmallWindow = 4096;
constexpr std::size_t kLargeWindow = 1 << 16;
constexpr std::size_t kLongestWindowed = 1024;

// The bytes of the windows: the stack's, or a heap block for a long range.
// Without memory for the block the stack's serve: slower, same result, so
// the failure is not counted as one that changed a result.
class WindowBuffer {
 public:
  explicit WindowBuffer(std::size_t range_length) {
    if (range_length > kSmallWindow + kLongestWindowed) {
      m_heap = new (std::nothrow) char[kLargeWindow + kLongestWindowed];
      if (m_heap != nullptr) m_starts = kLargeWindow;
    }
  }
  ~WindowBuffer() { delete[] m_heap; }
  WindowBuffer(WindowBuffer const&) = delete;
  WindowBuffer& operator=(WindowBuffer const&) = delete;

  char* data() { return m_heap != nullptr ? m_heap : m_stack; }
  std::size_t starts() const { return m_starts; }

 private:
  char m_stack[kSmallWindow + kLongestWindowed];
  char* m_heap = nullptr;
  std::size_t m_starts = kSmallWindow;
};

struct Range {
  char const* begin;
  std::size_t length;
  bool reaches_end;  // the subject's terminator follows the range
};

// Length of a range that runs to the terminator and was not measured.
constexpr std::size_t kUnmeasured = SIZE_MAX;

// The range `start`, `length` of `s`, clipped to the string: a negative
// start counts back from the end, a negative length runs to the end.  Only
// as much of `s` is measured as the range needs.
Range resolve(char const* s, int start, int length) {
  std::size_t n;
  std::size_t begin;
  if (start >= 0 && length < 0) {
    begin = strnlen(s, static_cast<std::size_t>(start));
    return {s + begin, s[begin] == '\0' ? 0 : kUnmeasured, true};
  }
  if (start < 0) {
    n = std::strlen(s);
    std::size_t const back = static_cast<std::size_t>(-static_cast<long long>(start));
    begin = back >= n ? 0 : n - back;
  } else {
    begin = static_cast<std::size_t>(start);
    n = length < 0 ? std::strlen(s) : strnlen(s, begin + static_cast<std::size_t>(length));
    begin = std::min(begin, n);
  }
  std::size_t const rest = n - begin;
  if (length < 0 || static_cast<std::size_t>(length) > rest) return {s + begin, rest, true};
  return {s + begin, static_cast<std::size_t>(length), false};
}

// Each place of `text` a search visits, kept or not by `keep`.
struct Walk {
  char const* end;     // the range's end: an occurrence must end by it
  std::size_t m;       // the pattern's length
  char const* found = nullptr;
  bool last = false;   // keep walking for the last occurrence
};
char const* visit(void* context, char const* match) {
  Walk& w = *static_cast<Walk*>(context);
  if (match + w.m > w.end) return nullptr;
  w.found = match;
  return w.last ? match + 1 : nullptr;
}

// A pattern too long for a window: walked in place from the range's start;
// the walk stops at the first occurrence that leaves the range.
char const* long_pattern_in_range(Range r, char const* p, std::size_t m, SearchState& state,
                                  bool last) {
  Walk w{r.begin + r.length, m};
  w.last = last;
  search::find_all(r.begin, p, state, search::Visitor{visit, &w});
  return w.found;
}

char const* first_in_range(Range r, char const* p, std::size_t m, SearchState& state) {
  if (r.reaches_end) return search::find_first(r.begin, p, state).match;
  if (m > kLongestWindowed) return long_pattern_in_range(r, p, m, state, false);
  WindowBuffer buffer(r.length);
  char* const window = buffer.data();
  std::size_t const starts = buffer.starts();
  for (std::size_t at = 0; at + m <= r.length; at += starts) {
    std::size_t const take = std::min(r.length - at, starts + m - 1);
    std::memcpy(window, r.begin + at, take);
    window[take] = '\0';
    if (char const* found = search::find_first(window, p, state).match)
      return r.begin + at + (found - window);
  }
  return nullptr;
}

char const* last_in_range(Range r, char const* p, std::size_t m, SearchState& state) {
  if (r.reaches_end) return search::last_occurrence(r.begin, p, state);
  if (m > kLongestWindowed) return long_pattern_in_range(r, p, m, state, true);
  WindowBuffer buffer(r.length);
  char* const window = buffer.data();
  std::size_t const starts = buffer.starts();
  for (std::size_t end = r.length; end >= m;) {
    std::size_t const at = end > starts + m - 1 ? end - (starts + m - 1) : 0;
    std::memcpy(window, r.begin + at, end - at);
    window[end - at] = '\0';
    if (char const* found = search::last_occurrence(window, p, state))
      return r.begin + at + (found - window);
    if (at == 0) break;
    end = at + m - 1;
  }
  return nullptr;
}

char const* find_in_range(char const* s1, char const* s2, int start, int length,
                          bool ignore_case, bool last, char const* function) {
  if (s1 == nullptr || s2 == nullptr) {
    warn_format(msg::kRangeSearchNullArgumentFormat, function);
    return nullptr;
  }
  Range const r = resolve(s1, start, length);
  std::size_t const m = std::strlen(s2);
  if (m == 0) {
    if (!last) return r.begin;
    return r.length == kUnmeasured ? r.begin + std::strlen(r.begin) : r.begin + r.length;
  }
  if (m > r.length || m > INT_MAX) return nullptr;
  SearchState state;
  state.ignore_case = ignore_case;
  if (!search::prepare(state, s2, static_cast<std::uint32_t>(m))) return nullptr;  // no memory
  return last ? last_in_range(r, s2, m, state) : first_in_range(r, s2, m, state);
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
