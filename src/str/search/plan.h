// plan.h - how one pattern is searched for, and the state a series of
// searches for it keeps.
//
// A search first looks for a pair of the pattern's rarer bytes (at offsets
// k1 <= k2) with vector compares, sixteen or thirty-two text positions at a
// time, while it watches for the text's terminator in the same loads; each
// position where both bytes agree is then compared in full.  When such
// candidates turn out to be frequent, the search goes on with the
// bad-character Boyer-Moore walk, whose skip table is built on first need.
#ifndef ZELSTR_STR_SEARCH_PLAN_H
#define ZELSTR_STR_SEARCH_PLAN_H

#include <cstddef>
#include <cstdint>

namespace zelstr::str::search {

struct Plan {
  std::uint32_t length = 0;              // pattern length m (1 or more)
  std::uint32_t k1 = 0, k2 = 0;          // offsets of the pair, k1 <= k2 < m
  unsigned char c1[2] = {}, c2[2] = {};  // the bytes accepted at k1 and k2
  bool two_variants = false;             // c1[1] / c2[1] differ from c1[0] / c2[0]
  bool vector = false;                   // the pair scan applies
  unsigned char const* fold = nullptr;   // the fold table (toupper or a map), or NULL
};

// What a scan found.
struct Found {
  char const* match = nullptr;   // the occurrence the scan stopped at, or NULL
  char const* end = nullptr;     // the text's terminator, when the scan saw it
  char const* resume = nullptr;  // set when the pair scan gave up: no
                                 // occurrence starts before it
};

// Told each occurrence a scan finds, in order: returns the first position
// where the next occurrence may start (behind this one, for a walk without
// overlaps), or NULL to stop the scan there.
struct Visitor {
  char const* (*visit)(void* context, char const* match);
  void* context;
  char const* operator()(char const* match) const { return visit(context, match); }
};

// The pattern through the fold table: inside the state up to kInline bytes
// (a name, a keyword), on the heap beyond.  No copy: a state is prepared
// where it lives.
class FoldedPattern {
 public:
  FoldedPattern() = default;
  ~FoldedPattern() { delete[] m_heap; }
  FoldedPattern(FoldedPattern&& other) noexcept;
  FoldedPattern(FoldedPattern const&) = delete;
  FoldedPattern& operator=(FoldedPattern const&) = delete;

  // Room for `n` bytes and a terminator (written); false, counted, when
  // memory is short.
  bool resize(std::size_t n) noexcept;
  char* data() noexcept { return m_heap != nullptr ? m_heap : m_inline; }
  char const* c_str() const noexcept { return m_heap != nullptr ? m_heap : m_inline; }

 private:
  static constexpr std::size_t kInline = 64;
  char m_inline[kInline + 1] = {};
  char* m_heap = nullptr;
  std::size_t m_capacity = 0;  // of m_heap
};

// One kind of search (case-sensitive or not) and the state a thread keeps
// for it.
struct SearchState {
  // 1: the next search measures its pattern and prepares anew; 0: it reuses
  // the stored length and preparation (a caller running a series of
  // searches for one pattern clears it, then sets it back to 1).
  int first_search = 1;
  // Length of the pattern measured last; -1 after a pattern too long.
  std::int32_t pattern_length = 0;
  // Boyer-Moore skip table: for each byte (upper-cased by the
  // case-insensitive search), the distance from its last place in the
  // pattern to the pattern's end; the pattern length for absent bytes.
  std::int32_t skip[256] = {};
  bool skip_ready = false;
  Plan plan;
  FoldedPattern folded;           // the pattern through the fold table
  unsigned char upper[256] = {};  // the fold table as it was when the pattern was
                                  // prepared: toupper, or the map
  bool ignore_case = false;
  // A character map (256-byte table) to compare through instead of toupper:
  // text and pattern bytes agree when their images do.  Searches through a
  // map keep a state of their own, so a map may be searched with from
  // several threads.
  unsigned char const* map = nullptr;

  // Pattern and text compare through `upper`.
  bool folds() const { return ignore_case || map != nullptr; }
};

// The calling thread's states.
SearchState& case_sensitive_state();
SearchState& case_insensitive_state();

// The delimiters of the last delimited search as a table (see
// forward_search.cpp), kept by each thread.
struct DelimiterCache {
  char list[256] = {};
  unsigned char table[256] = {};
};
DelimiterCache& delimiter_cache();

// Measures nothing: prepares `state` for `pattern` of length `m` >= 1.  False
// when memory is short for the folded pattern (counted): the state is then
// left for a pattern of length 0, which the callers never search, and
// they give their failure value.
bool prepare(SearchState& state, char const* pattern, std::uint32_t m) noexcept;

// No limit: a scan runs to the text's terminator.
inline constexpr std::uintptr_t kNoLimit = UINTPTR_MAX;

// The first occurrence of the prepared pattern (`pattern` as given to
// prepare) in `text`, measuring the text on the way where it can.  With a
// `limit` (an address), only an occurrence that ends by it counts, and the
// scan stops there: the text is still a zero-terminated string, which may
// run on past the limit, and no byte at or after the limit decides
// anything.
Found find_first(char const* text, char const* pattern, SearchState& state,
                 std::uintptr_t limit = kNoLimit);

// Every occurrence in `text` (ending by `limit`), left to right, each handed
// to `visitor`, which says where the next may start; one pass over the text.
// Returns the text's terminator, or NULL when the visitor stopped the scan
// first or the scan stopped at the limit.
char const* find_all(char const* text, char const* pattern, SearchState& state, Visitor visitor,
                     std::uintptr_t limit = kNoLimit);

}  // namespace zelstr::str::search

#endif  // ZELSTR_STR_SEARCH_PLAN_H
