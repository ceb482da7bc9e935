// forward_search.cpp - _zstrstr, _zstristr, _zstrstr1, _zstristr1,
// _zstrstr2chars, _zstrstr3chars.
#include <cstring>

#include "str/search/forward.h"
#include "zelstr/search.h"

using zelstr::str::search::case_insensitive_state;
using zelstr::str::search::case_sensitive_state;
using zelstr::str::search::forward_search;
using zelstr::str::search::SearchSeries;
using zelstr::str::search::SearchState;

namespace {

// A plain list of delimiters as a table: 1 for bytes that are not listed,
// 0 for listed bytes and for the terminator.  The table of the last list
// shorter than 256 bytes is kept for the thread's next call.
unsigned char const* delimiter_table(char const* delimiters) {
  zelstr::str::search::DelimiterCache& cache = zelstr::str::search::delimiter_cache();
  if (cache.list[0] != '\0' && std::strcmp(cache.list, delimiters) == 0) return cache.table;
  std::memset(cache.table, 1, sizeof cache.table);
  cache.table[0] = 0;
  for (char const* d = delimiters; *d != '\0'; ++d) cache.table[static_cast<unsigned char>(*d)] = 0;
  std::size_t const n = std::strlen(delimiters);
  if (n < sizeof cache.list) {
    std::memcpy(cache.list, delimiters, n + 1);
  } else {
    cache.list[0] = '\0';
  }
  return cache.table;
}

// Walks the occurrences from left to right and returns the first that has a
// delimiter (or the start) before it and a delimiter (or the end) after it;
// a rejected occurrence is skipped whole.
char const* delimited_search(char const* s1, char const* s2, char const* delimiters,
                             SearchState& state) {
  if (s1 == nullptr || s2 == nullptr || delimiters == nullptr || *delimiters == '\0') {
    return forward_search(s1, s2, state);
  }
  unsigned char const* const outside = delimiter_table(delimiters);
  SearchSeries series(s2, state);
  for (char const* from = s1;;) {
    char const* const at = series.next(from);
    if (at == nullptr) return nullptr;
    std::uint32_t const m = series.pattern_length();
    bool const starts = at == s1 || outside[static_cast<unsigned char>(at[-1])] == 0;
    if (starts && outside[static_cast<unsigned char>(at[m])] == 0) return at;
    if (m == 0 && *at == '\0') return nullptr;
    from = at + (m != 0 ? m : 1);  // an empty pattern moves on by one byte
  }
}

// The first place of `pattern[0]` in `s` followed by the next `followers`
// bytes of the pattern; a shorter pattern is compared with its terminator.
char const* first_with_followers(char const* s, char const* pattern, std::size_t followers) {
  if (s == nullptr || pattern == nullptr || *pattern == '\0') return nullptr;
  for (char const* p = std::strchr(s, *pattern); p != nullptr; p = std::strchr(p + 1, *pattern)) {
    if (std::strncmp(p + 1, pattern + 1, followers) == 0) return p;
  }
  return nullptr;
}

}  // namespace

char const* _zstrstr(char const* string1, char const* string2) noexcept {
  return forward_search(string1, string2, case_sensitive_state());
}
char* _zstrstr(char* string1, char const* string2) noexcept {
  return const_cast<char*>(forward_search(string1, string2, case_sensitive_state()));
}
char const* _zstristr(char const* string1, char const* string2) noexcept {
  return forward_search(string1, string2, case_insensitive_state());
}
char* _zstristr(char* string1, char const* string2) noexcept {
  return const_cast<char*>(forward_search(string1, string2, case_insensitive_state()));
}

char const* _zstrstr1(char const* string1, char const* string2, char const* delimiters) noexcept {
  return delimited_search(string1, string2, delimiters, case_sensitive_state());
}
char const* _zstristr1(char const* string1, char const* string2, char const* delimiters) noexcept {
  return delimited_search(string1, string2, delimiters, case_insensitive_state());
}

char const* _zstrstr2chars(char const* string1, char const* string2) noexcept {
  return first_with_followers(string1, string2, 1);
}
char const* _zstrstr3chars(char const* string1, char const* string2) noexcept {
  return first_with_followers(string1, string2, 2);
}
