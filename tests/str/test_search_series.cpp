// A series of searches for one pattern, with the first-search flag cleared
// after the first, as the replacement functions walk a text: every
// occurrence found in order, and the flag set back to 1.
#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

#include "str/search/forward.h"

namespace {

using zelstr::str::search::case_insensitive_state;
using zelstr::str::search::case_sensitive_state;
using zelstr::str::search::SearchSeries;

TEST(SearchSeries, WalksEveryOccurrenceWithTheFlagClearedAfterTheFirst) {
  std::mt19937 rng(43);
  for (int round = 0; round < 5000; ++round) {
    std::string text(rng() % 300, ' ');
    for (char& c : text) c = "abAB"[rng() % 4];
    std::string pattern(1 + rng() % 5, ' ');
    for (char& c : pattern) c = "ab"[rng() % 2];
    bool const fold = round % 2 != 0;
    auto& state = fold ? case_insensitive_state() : case_sensitive_state();
    // The model: occurrences without overlap, from the left.
    std::vector<std::size_t> expected;
    for (std::size_t s = 0; s + pattern.size() <= text.size();) {
      bool hit = true;
      for (std::size_t j = 0; j < pattern.size() && hit; ++j) {
        hit = fold ? (text[s + j] | 0x20) == pattern[j] : text[s + j] == pattern[j];
      }
      if (hit) {
        expected.push_back(s);
        s += pattern.size();
      } else {
        ++s;
      }
    }
    std::vector<std::size_t> found;
    SearchSeries series(pattern.c_str(), state);
    for (char const* at = series.next(text.c_str()); at != nullptr;
         at = series.next(at + series.pattern_length())) {
      found.push_back(static_cast<std::size_t>(at - text.c_str()));
      ASSERT_EQ(state.first_search, 1);
    }
    ASSERT_EQ(found, expected) << text << " / " << pattern;
    ASSERT_EQ(state.pattern_length, static_cast<int>(pattern.size()));
  }
}

}  // namespace
