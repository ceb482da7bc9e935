// walks.cpp - occurrence walks in one pass of the scan.
#include "str/search/walks.h"

#include <climits>
#include <cstring>

namespace zelstr::str::search {
namespace {

// Remembers each occurrence it is told of and lets the next start one byte
// later (overlapping occurrences count): the last one told is the last.
char const* remember(void* context, char const* at) {
  *static_cast<char const**>(context) = at;
  return at + 1;
}

struct Counter {
  std::size_t length;
  int count = 0;
  static char const* visit(void* context, char const* at) {
    auto& self = *static_cast<Counter*>(context);
    if (self.count == INT_MAX) return nullptr;
    ++self.count;
    return at + self.length;
  }
};

}  // namespace

char const* last_occurrence(char const* text, char const* pattern, SearchState& state) {
  char const* last = nullptr;
  find_all(text, pattern, state, Visitor{remember, &last});
  return last;
}

int count_occurrences(char const* text, char const* pattern, SearchState& state) {
  Counter counter{state.plan.length};
  find_all(text, pattern, state, Visitor{Counter::visit, &counter});
  return counter.count;
}

namespace {

// Prepares `state` for `pattern` through `map`; false without memory.
bool prepared(SearchState& state, char const* pattern, unsigned char const* map) {
  state.map = map;
  return prepare(state, pattern, static_cast<std::uint32_t>(std::strlen(pattern)));
}

}  // namespace

char const* last_occurrence(char const* text, char const* pattern, unsigned char const* map) {
  SearchState state;
  if (!prepared(state, pattern, map)) return nullptr;
  return last_occurrence(text, pattern, state);
}

int count_occurrences(char const* text, char const* pattern, unsigned char const* map) {
  SearchState state;
  if (!prepared(state, pattern, map)) return -1;
  return count_occurrences(text, pattern, state);
}

std::size_t count_bytes(char const* text, char c, unsigned char const* fold) {
  if (c == '\0') return 0;
  std::size_t count = 0;
  if (fold == nullptr) {
    for (char const* p = std::strchr(text, c); p != nullptr; p = std::strchr(p + 1, c)) ++count;
    return count;
  }
  unsigned char const wanted = fold[static_cast<unsigned char>(c)];
  for (auto const* p = reinterpret_cast<unsigned char const*>(text); *p != 0; ++p) {
    count += fold[*p] == wanted;
  }
  return count;
}

char const* find_byte(char const* text, char c, unsigned char const* fold, bool last) {
  unsigned char const wanted = fold[static_cast<unsigned char>(c)];
  char const* found = nullptr;
  for (;; ++text) {
    auto const b = static_cast<unsigned char>(*text);
    if (fold[b] == wanted) {
      found = text;
      if (!last) return found;
    }
    if (b == 0) return found;
  }
}

}  // namespace zelstr::str::search
