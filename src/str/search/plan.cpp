// plan.cpp - preparing a pattern, and running the search: the pair scan for
// the instruction set at hand (kernels.h), and the Boyer-Moore walk when the pair scan
// gives up or cannot serve.
#include "str/search/plan.h"

#include <cstring>

#include "chars/upper_fold.h"
#include "frame/memory.h"
#include "frame/per_thread.h"
#include "str/search/kernels.h"

namespace zelstr::str::search {

namespace {

// A thread's two searches and its delimiter list.
struct SearchStates {
  SearchState case_sensitive;
  SearchState case_insensitive;
  DelimiterCache delimiters;
  SearchStates() noexcept { case_insensitive.ignore_case = true; }
};
using SearchSlot = frame::PerThread<SearchStates, frame::ThreadSlot::kSearch>;

// How common a byte is in SQL scripts and English prose: 0 for rare bytes,
// higher for commoner ones.  The pair scan looks for the pattern's rarest
// bytes, so that few positions need a full comparison.
struct Commonness {
  unsigned char score[256] = {};
  constexpr Commonness() {
    constexpr char kByFrequency[] =
        " eEtTaAoOiInNsSrRlLhHdDcCuU\r\n\t_mMpP.,()'fFgG=yYbBwW0;1vVkK2*-@x3[]X45";
    for (int i = 0; kByFrequency[i] != '\0'; ++i) {
      score[static_cast<unsigned char>(kByFrequency[i])] = static_cast<unsigned char>(255 - i);
    }
  }
};
constexpr Commonness kCommonness;

unsigned score_at(char const* pattern, std::uint32_t k, SearchState const& st) {
  auto const b = static_cast<unsigned char>(pattern[k]);
  if (!st.folds()) return kCommonness.score[b];
  unsigned const image = kCommonness.score[st.upper[b]];
  unsigned const lower = kCommonness.score[static_cast<unsigned char>(b | 0x20)];
  unsigned const own = kCommonness.score[b];
  unsigned const most = image > lower ? image : lower;
  return most > own ? most : own;
}

// The pattern's rarest position, skipping `except`; ties go to the position
// farthest from `except` (a wider pair is less likely to agree by chance).
std::uint32_t rarest(char const* pattern, std::uint32_t m, SearchState const& st,
                     std::uint32_t except) {
  std::uint32_t best = except == 0 ? 1 : 0;
  auto distance = [except](std::uint32_t k) { return k > except ? k - except : except - k; };
  for (std::uint32_t k = 0; k < m; ++k) {
    if (k == except) continue;
    unsigned const s = score_at(pattern, k, st), b = score_at(pattern, best, st);
    if (s < b || (s == b && distance(k) > distance(best))) best = k;
  }
  return best;
}

// The bytes other than `b` whose image through `table` is b's: at most one
// fits in `out[1]` (`out[0]` is b).  False when more share it.
bool preimages(unsigned char const* table, unsigned char b, unsigned char out[2]) {
  unsigned char const image = table[b];
  out[0] = out[1] = b;
  int others = 0;
  for (int c = 1; c < 256; ++c) {
    if (c == b || table[c] != image) continue;
    if (++others > 1) return false;
    out[1] = static_cast<unsigned char>(c);
  }
  return true;
}

// The text bytes the scan accepts at offset k of the pattern as given: the
// byte itself, and when the search folds, the other byte with the same
// image.  False when more than two bytes share it (the scan compares
// against two at most).  `fold`: the toupper table of a case-insensitive
// search.
bool accepted_bytes(SearchState const& st, chars::UpperFold const* fold, char const* pattern,
                    std::uint32_t k, unsigned char out[2]) {
  auto const b = static_cast<unsigned char>(pattern[k]);
  if (st.map != nullptr) return preimages(st.map, b, out);
  out[0] = out[1] = b;
  if (fold == nullptr) return true;
  out[1] = fold->other[b];
  return !fold->crowded[b];
}

// `fold`: the case-insensitive search's table, NULL for the others.
void plan_pair(SearchState& st, char const* pattern, std::uint32_t m,
               chars::UpperFold const* fold) {
  Plan& plan = st.plan;
  std::uint32_t k1 = 0, k2 = 0;
  if (m > 1) {
    std::uint32_t const first = rarest(pattern, m, st, m);  // m: no position excluded
    std::uint32_t const second = rarest(pattern, m, st, first);
    k1 = first < second ? first : second;
    k2 = first < second ? second : first;
  }
  plan.k1 = k1;
  plan.k2 = k2;
  plan.vector = accepted_bytes(st, fold, pattern, k1, plan.c1) &&
                accepted_bytes(st, fold, pattern, k2, plan.c2);
  plan.two_variants = plan.c1[0] != plan.c1[1] || plan.c2[0] != plan.c2[1];
}

// The table of the bad-character rule, indexed by the (upper-cased) byte.
void build_skip(SearchState& st, char const* pattern) {
  auto const m = static_cast<std::int32_t>(st.plan.length);
  for (auto& entry : st.skip) entry = m;
  for (std::int32_t i = 0; i < m; ++i) {
    st.skip[static_cast<unsigned char>(pattern[i])] = m - 1 - i;
  }
  st.skip_ready = true;
}

// Measures the text a page at a time, just ahead of a walk that does not
// read every byte, so that the walk never steps over the terminator.
class MeasuredText {
 public:
  MeasuredText(char const* from, std::uintptr_t limit) : m_known(from), m_limit(limit) {}

  // True when the text reaches position `p` (its terminator excluded).
  // Never beyond the limit.
  bool reaches(char const* p) {
    if (reinterpret_cast<std::uintptr_t>(p) >= m_limit) return false;
    while (p >= m_known) {
      if (m_end != nullptr) return false;
      // Never measured past the limit: p is before it.
      std::size_t const room = m_limit - reinterpret_cast<std::uintptr_t>(m_known);
      std::size_t const asked = room < kPiece ? room : kPiece;
      std::size_t const piece = ::strnlen(m_known, asked);
      m_known += piece;
      if (piece < asked) m_end = m_known;
    }
    return true;
  }
  char const* end() const { return m_end; }

 private:
  static constexpr std::size_t kPiece = 4096;
  char const* m_known;  // the text has no terminator before here
  char const* m_end = nullptr;
  std::uintptr_t m_limit;
};

// The Boyer-Moore walk from window start `from`: compare from the pattern's
// end; on a mismatch move the window by the larger of the bad-character
// distance and the part already matched.  A mismatch on the window's last
// byte, by far the commonest step, has a loop of its own.  The first
// occurrence, or NULL at the end of the text.
char const* boyer_moore(char const* from, char const* pattern, SearchState const& st,
                        MeasuredText& measured) {
  std::size_t const m = st.plan.length;
  unsigned char const* const upper = st.folds() ? st.upper : nullptr;
  auto byte = [upper](char const* at) {
    auto const b = static_cast<unsigned char>(*at);
    return upper ? upper[b] : b;
  };
  auto const last = static_cast<unsigned char>(pattern[m - 1]);
  char const* i = from + m - 1;
  for (;;) {
    unsigned char b;
    bool inside;
    while ((inside = measured.reaches(i)) && (b = byte(i)) != last) i += st.skip[b];
    if (!inside) return nullptr;
    // The last bytes agree: compare leftwards.
    std::size_t j = m - 1;
    for (;;) {
      if (j == 0) return i;
      --i;
      --j;
      b = byte(i);
      if (b != static_cast<unsigned char>(pattern[j])) break;
    }
    std::size_t const bad = static_cast<std::size_t>(st.skip[b]);
    i += bad > m - j ? bad : m - j;
  }
}

}  // namespace

SearchState& case_sensitive_state() { return SearchSlot::get().case_sensitive; }
SearchState& case_insensitive_state() { return SearchSlot::get().case_insensitive; }
DelimiterCache& delimiter_cache() { return SearchSlot::get().delimiters; }

FoldedPattern::FoldedPattern(FoldedPattern&& other) noexcept
    : m_heap(other.m_heap), m_capacity(other.m_capacity) {
  std::memcpy(m_inline, other.m_inline, sizeof m_inline);
  other.m_heap = nullptr;
  other.m_capacity = 0;
}

bool FoldedPattern::resize(std::size_t n) noexcept {
  if (n <= kInline) {
    delete[] m_heap;
    m_heap = nullptr;
    m_capacity = 0;
  } else if (n > m_capacity) {
    char* const bigger = frame::new_array<char>(n + 1);
    if (bigger == nullptr) return false;
    delete[] m_heap;
    m_heap = bigger;
    m_capacity = n;
  }
  data()[n] = '\0';
  return true;
}

bool prepare(SearchState& st, char const* pattern, std::uint32_t m) noexcept {
  st.skip_ready = false;
  st.plan.fold = nullptr;
  chars::UpperFold const* const fold =
      st.ignore_case && st.map == nullptr ? &chars::upper_fold() : nullptr;
  unsigned char const* const table = st.map != nullptr ? st.map : fold ? fold->upper : nullptr;
  if (table != nullptr && !st.folded.resize(m)) {
    st.pattern_length = 0;
    st.plan.length = 0;
    return false;
  }
  st.pattern_length = static_cast<std::int32_t>(m);
  st.plan.length = m;
  if (table != nullptr) {
    std::memcpy(st.upper, table, sizeof st.upper);
    char* const folded = st.folded.data();
    for (std::uint32_t i = 0; i < m; ++i) {
      folded[i] = static_cast<char>(st.upper[static_cast<unsigned char>(pattern[i])]);
    }
    st.plan.fold = st.upper;
  }
  plan_pair(st, pattern, m, fold);
  return true;
}

namespace {

// Runs the pair scan, then, if it gave up, the Boyer-Moore walk.
Found scan(char const* text, char const* pattern, SearchState& st, Visitor const& visitor,
           std::uintptr_t limit) {
  char const* const p = st.folds() ? st.folded.c_str() : pattern;
  Found found;
  if (st.plan.vector) {
    found = pair_scan_kernel()(text, p, st.plan, visitor, limit);
    if (found.resume == nullptr) return found;
  }
  if (!st.skip_ready) build_skip(st, p);
  char const* from = found.resume ? found.resume : text;
  MeasuredText measured(from, limit);
  for (;;) {
    char const* const match = boyer_moore(from, p, st, measured);
    if (match == nullptr) return Found{nullptr, measured.end(), nullptr};
    from = visitor(match);
    if (from == nullptr) return Found{match, measured.end(), nullptr};
  }
}

char const* stop_at_first(void*, char const*) { return nullptr; }

}  // namespace

Found find_first(char const* text, char const* pattern, SearchState& st, std::uintptr_t limit) {
  return scan(text, pattern, st, Visitor{stop_at_first, nullptr}, limit);
}

char const* find_all(char const* text, char const* pattern, SearchState& st, Visitor visitor,
                     std::uintptr_t limit) {
  Found const found = scan(text, pattern, st, visitor, limit);
  return found.match == nullptr ? found.end : nullptr;
}

}  // namespace zelstr::str::search
