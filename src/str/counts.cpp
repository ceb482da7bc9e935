// counts.cpp - _zstrstrcnt, _zstristrcnt, _zstrccnt.
#include <climits>
#include <cstring>

#include "str/report.h"
#include "str/search/plan.h"
#include "zelstr/search.h"

using namespace zelstr::str;
using zelstr::str::search::SearchState;

namespace {

// Occurrences from left to right, each search starting after the previous
// occurrence, as the replacements walk them: one pass of the scan.  A search
// state of its own leaves the library-wide state alone.
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

int count_occurrences(char const* s1, char const* s2, bool ignore_case) {
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
  search::prepare(state, s2, static_cast<std::uint32_t>(m));
  Counter counter{m};
  search::find_all(s1, s2, state, search::Visitor{Counter::visit, &counter});
  return counter.count;
}

}  // namespace

int _zstrstrcnt(char const* string1, char const* string2) {
  return count_occurrences(string1, string2, false);
}
int _zstristrcnt(char const* string1, char const* string2) {
  return count_occurrences(string1, string2, true);
}

int _zstrccnt(char const* string, char c) {
  if (string == nullptr) {
    warn(msg::kCcntNullString);
    return -1;
  }
  if (c == '\0') return 0;
  int count = 0;
  for (char const* p = std::strchr(string, c); p != nullptr; p = std::strchr(p + 1, c)) ++count;
  return count;
}
