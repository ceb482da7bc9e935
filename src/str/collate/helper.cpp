// helper.cpp - ZealStrHelper: the string operations over the system's
// collator (platform/collation.h).
//
// Each operation converts its code page 1252 text into UTF-16 one byte for
// one unit (code_page.h), on the stack when short, and hands it to the
// collator.  A comparison first skips the head the strings share, and
// calls no collator at all when their first difference is two characters
// ranked by their first-level weights (platform::primary_ranks).  The case
// tables are built once, when the helper is opened, by asking the collator
// for the case of each of the code page's characters: upper and lower then
// cost one table look-up a byte.
#include <algorithm>
#include <bit>
#include <climits>
#include <cstdint>
#include <cstring>
#include <new>

#include "frame/memory.h"
#include "platform/collation.h"
#include "str/collate/code_page.h"
#include "str/collate/report.h"
#include "zelstr/compare.h"
#include "zelstr/search.h"
#include "zelstr/strhelper.h"

struct ZealStrHelper::Impl {
  zelstr::platform::Collation* collation = nullptr;
  char locale[160] = {};  // as asked, when the collator knows it
  unsigned char upper[256] = {};
  unsigned char lower[256] = {};
  bool joins[256] = {};  // bytes that may join their neighbours
  std::uint16_t rank[256] = {};  // bytes whose difference decides alone
};

namespace {

using zelstr::collate::kUnitOf;
using zelstr::collate::warn;
using zelstr::collate::warn_format;
namespace msg = zelstr::collate::msg;
namespace platform = zelstr::platform;

constexpr unsigned long kWhole = ULONG_MAX;
// The collators take lengths as int: longer texts are seen up to this.
constexpr unsigned long kMaxUnits = INT_MAX;

typedef unsigned char Bytes16 __attribute__((vector_size(16)));
typedef std::uint16_t Units16 __attribute__((vector_size(32)));

// True when a byte of the block is not 0.
bool any_set(Bytes16 block) {
  std::uint64_t halves[2];
  std::memcpy(halves, &block, sizeof halves);
  return (halves[0] | halves[1]) != 0;
}

// Bytes as UTF-16: on the stack up to kSmall units, in a heap buffer
// beyond.
class Units {
 public:
  static constexpr std::size_t kSmall = 256;

  // The first `n` bytes of `p`, none of them the terminator.
  Units(unsigned char const* p, std::size_t n) noexcept { convert(p, n); }

  ~Units() { delete[] m_heap; }
  Units(Units const&) = delete;
  Units& operator=(Units const&) = delete;

  bool ok() const noexcept { return m_size >= 0; }
  char16_t const* data() const noexcept { return m_data; }
  int size() const noexcept { return m_size; }

 private:
  // Converts the `n` bytes of `p`.
  void convert(unsigned char const* p, std::size_t n) noexcept {
    char16_t* out = m_small;
    if (n > kSmall) {
      m_heap = zelstr::frame::new_array<char16_t>(n);
      if (m_heap == nullptr) {
        m_size = -1;
        return;
      }
      out = m_heap;
      m_data = m_heap;
    }
    widen(p, n, out);
    m_size = static_cast<int>(n);
  }

  // A block of bytes below 0x80 only widens: sixteen at a time in the
  // compiler's generic vectors (SSE2 on x86-64, Advanced SIMD on ARM).
  static void widen(unsigned char const* p, std::size_t n, char16_t* out) {
    std::size_t i = 0;
    for (; i + 16 <= n; i += 16) {
      Bytes16 bytes;
      std::memcpy(&bytes, p + i, sizeof bytes);
      if (any_set(bytes & 0x80)) {
        for (std::size_t k = 0; k < 16; ++k) out[i + k] = kUnitOf[p[i + k]];
      } else {
        Units16 const units = __builtin_convertvector(bytes, Units16);
        std::memcpy(out + i, &units, sizeof units);
      }
    }
    for (; i < n; ++i) out[i] = kUnitOf[p[i]];
  }

  char16_t m_small[kSmall];
  char16_t* m_heap = nullptr;
  char16_t const* m_data = m_small;
  int m_size = 0;
};

// The bytes' order over at most `limit` bytes: _zstrncmp's, as -1, 0 or +1.
int byte_order(char const* s1, char const* s2, unsigned long limit) {
  int const r = _zstrncmp(s1, s2, limit);
  return (r > 0) - (r < 0);
}

// The length of the head two strings of `na` and `nb` bytes share.
std::size_t common_head(unsigned char const* a, unsigned char const* b, std::size_t na,
                        std::size_t nb) {
  std::size_t const n = std::min(na, nb);
  std::size_t i = 0;
  // Eight bytes a word: the first differing byte is the lowest set byte of
  // the words' difference on a little-endian processor.
  static_assert(std::endian::native == std::endian::little);
  for (; i + 8 <= n; i += 8) {
    std::uint64_t x, y;
    std::memcpy(&x, a + i, sizeof x);
    std::memcpy(&y, b + i, sizeof y);
    if (x != y) return i + static_cast<std::size_t>(std::countr_zero(x ^ y)) / 8;
  }
  while (i < n && a[i] == b[i]) ++i;
  return i;
}

// True when no byte of `p[0..n)` is 0x80 or above.
bool ascii_only(unsigned char const* p, std::size_t n) {
  unsigned char any = 0;
  for (std::size_t i = 0; i < n; ++i) any |= p[i];
  return any < 0x80;
}

// The order of two strings that first differ in bytes `x` and `y`, when
// the collator orders them by their first-level weights alone: nothing
// else then counts (most names differ so, in two letters).  0 otherwise.
int first_level_order(ZealStrHelper::Impl const* impl, unsigned char x, unsigned char y) {
  unsigned const rx = impl->rank[x];
  unsigned const ry = impl->rank[y];
  if (rx == 0 || ry == 0 || rx == ry) return 0;
  return rx < ry ? -1 : 1;
}

// The order of two non-NULL strings over at most `limit` bytes.  An
// identical head collates the same in both, so the collator is given what
// follows it only, from a cut that no character joining its neighbours
// stands beside (strings sorted together often share long heads).
int order(ZealStrHelper::Impl const* impl, char const* s1, char const* s2, unsigned long limit) {
  if (impl == nullptr) return byte_order(s1, s2, limit);
  auto const* a = reinterpret_cast<unsigned char const*>(s1);
  auto const* b = reinterpret_cast<unsigned char const*>(s2);
  std::size_t const cap = std::min(limit, kMaxUnits);
  // Names differ early: a byte loop over the first ones costs less than
  // measuring both strings.
  std::size_t const quick = std::min<std::size_t>(cap, 16);
  std::size_t head = 0;
  while (head < quick && a[head] == b[head] && a[head] != 0) ++head;
  if (head == cap || (a[head] == b[head] && a[head] == 0)) return 0;
  if (head < quick) {
    if (int const r = first_level_order(impl, a[head], b[head])) return r;
  }
  std::size_t const na = head + strnlen(s1 + head, cap - head);
  std::size_t const nb = head + strnlen(s2 + head, cap - head);
  head += common_head(a + head, b + head, na - head, nb - head);
  if (head == na && head == nb) return 0;
  // (A head shorter than the quick loop's was tried above.)
  if (head >= quick && head < na && head < nb) {
    if (int const r = first_level_order(impl, a[head], b[head])) return r;
  }
  while (head > 0 && (impl->joins[a[head]] || impl->joins[b[head]] || impl->joins[a[head - 1]])) {
    --head;
  }
  // ASCII rests go to the collator as they stand, the others as UTF-16.
  if (ascii_only(a + head, na - head) && ascii_only(b + head, nb - head)) {
    int const r = platform::collate_ascii(*impl->collation, s1 + head, static_cast<int>(na - head),
                                          s2 + head, static_cast<int>(nb - head));
    if (r != platform::kNoAsciiCollate) return r;
  }
  Units const ua(a + head, na - head);
  Units const ub(b + head, nb - head);
  if (!ua.ok() || !ub.ok()) return byte_order(s1, s2, limit);
  return platform::collate(*impl->collation, ua.data(), ua.size(), ub.data(), ub.size());
}

// _zstrcmp's order of NULL, with the warning of `function`.
int null_order(char const* s1, char const* s2, char const* function) {
  if (s1 == nullptr && s2 == nullptr) {
    warn_format(msg::kHelperNullBothFormat, function);
    return 0;
  }
  if (s1 == nullptr) {
    warn_format(msg::kHelperNullFirstFormat, function);
    return -1;
  }
  warn_format(msg::kHelperNullSecondFormat, function);
  return 1;
}

char* find_piece(ZealStrHelper::Impl const* impl, char const* text, char const* pattern,
                 unsigned long* length, bool ignore_case, char const* function) {
  if (text == nullptr || pattern == nullptr) {
    warn_format(msg::kHelperNullSearchFormat, function);
    return nullptr;
  }
  if (pattern[0] == '\0') {
    if (length != nullptr) *length = 0;
    return const_cast<char*>(text);
  }
  if (impl == nullptr) {
    char const* const at = ignore_case ? _zstristr(text, pattern) : _zstrstr(text, pattern);
    if (at != nullptr && length != nullptr) *length = std::strlen(pattern);
    return const_cast<char*>(at);
  }
  Units const t(reinterpret_cast<unsigned char const*>(text), strnlen(text, kMaxUnits));
  Units const p(reinterpret_cast<unsigned char const*>(pattern), strnlen(pattern, kMaxUnits));
  if (!t.ok() || !p.ok()) return nullptr;
  int found = 0;
  int const at =
      platform::find(*impl->collation, t.data(), t.size(), p.data(), p.size(), ignore_case, found);
  if (at < 0) return nullptr;
  if (length != nullptr) *length = static_cast<unsigned long>(found);
  return const_cast<char*>(text) + at;
}

// The byte each byte's case goes to in the collator's locale (itself when
// that case is not a single character of the code page).
void build_case_table(platform::Collation const& collation, bool upper,
                      unsigned char (&table)[256]) {
  char16_t units[256];
  std::copy(kUnitOf.begin(), kUnitOf.end(), units);
  platform::change_case(collation, units, 256, upper);
  for (int b = 0; b < 256; ++b) {
    int const changed = zelstr::collate::byte_of(units[b]);
    table[b] = static_cast<unsigned char>(b != 0 && changed > 0 ? changed : b);
  }
}

char* apply(unsigned char const* table, char* text) {
  if (table == nullptr) return text;
  for (auto* p = reinterpret_cast<unsigned char*>(text); *p != 0; ++p) *p = table[*p];
  return text;
}

}  // namespace

ZealStrHelper::ZealStrHelper(char const* locale, int strength) noexcept
    : m_impl(nullptr), m_strength(strength) {
  if (strength < primary || strength > tertiary) {
    warn_format(msg::kHelperBadStrengthFormat, strength);
    m_strength = tertiary;
  }
  char const* asked = locale;
  if (asked == nullptr) {
    warn(msg::kHelperNullLocale);
    asked = "";
  }
  Impl* const impl = new (std::nothrow) Impl;
  if (impl == nullptr) {
    zelstr::frame::note_allocation_failure();
    warn_format(msg::kHelperNoCollatorFormat, asked);
    return;
  }
  bool known = std::strlen(asked) < sizeof impl->locale;
  if (known) {
    impl->collation = platform::open_collation(asked, m_strength, known);
  } else {
    bool root_known = true;
    impl->collation = platform::open_collation("", m_strength, root_known);
  }
  if (!known) warn_format(msg::kHelperUnknownLocaleFormat, asked);
  if (impl->collation == nullptr) {
    warn_format(msg::kHelperNoCollatorFormat, asked);
    delete impl;
    return;
  }
  if (known) std::strcpy(impl->locale, asked);
  build_case_table(*impl->collation, true, impl->upper);
  build_case_table(*impl->collation, false, impl->lower);
  for (int c = 0; c < 256; ++c) {
    impl->joins[c] = c != 0 && platform::joins_neighbours(*impl->collation, kUnitOf[c]);
  }
  platform::primary_ranks(*impl->collation, kUnitOf.data(), 256, impl->rank);
  m_impl = impl;
}

ZealStrHelper::~ZealStrHelper() {
  if (m_impl != nullptr) platform::close_collation(m_impl->collation);
  delete m_impl;
}

char const* ZealStrHelper::locale() const noexcept {
  return m_impl != nullptr ? m_impl->locale : "";
}

int ZealStrHelper::strength() const noexcept { return m_strength; }

bool ZealStrHelper::has_collator() const noexcept { return m_impl != nullptr; }

int ZealStrHelper::compare(char const* s1, char const* s2) const noexcept {
  if (s1 == nullptr || s2 == nullptr) return null_order(s1, s2, "compare");
  return order(m_impl, s1, s2, kWhole);
}

int ZealStrHelper::ncompare(char const* s1, char const* s2, unsigned long count) const noexcept {
  if (count == 0) return 0;
  if (s1 == nullptr || s2 == nullptr) return null_order(s1, s2, "ncompare");
  return order(m_impl, s1, s2, count);
}

char* ZealStrHelper::search(char const* text, char const* pattern,
                            unsigned long* length) const noexcept {
  return find_piece(m_impl, text, pattern, length, false, "search");
}

char* ZealStrHelper::isearch(char const* text, char const* pattern,
                             unsigned long* length) const noexcept {
  return find_piece(m_impl, text, pattern, length, true, "isearch");
}

char* ZealStrHelper::upper(char* text) const noexcept {
  if (text == nullptr) {
    warn_format(msg::kHelperNullCaseFormat, "upper");
    return nullptr;
  }
  return apply(m_impl != nullptr ? m_impl->upper : nullptr, text);
}

char* ZealStrHelper::lower(char* text) const noexcept {
  if (text == nullptr) {
    warn_format(msg::kHelperNullCaseFormat, "lower");
    return nullptr;
  }
  return apply(m_impl != nullptr ? m_impl->lower : nullptr, text);
}

void ZealStrHelper::sort(char const** strings, unsigned long count) const noexcept {
  if (count == 0) return;
  if (strings == nullptr) {
    warn_format(msg::kHelperNullArrayFormat, count);
    return;
  }
  unsigned long const nulls =
      static_cast<unsigned long>(std::count(strings, strings + count, nullptr));
  if (nulls != 0) warn_format(msg::kHelperNullEntriesFormat, nulls);
  Impl const* const impl = m_impl;
  // The merge sort keeps equal strings in their order; it sorts in place,
  // more slowly, when it cannot get its buffer.
  std::stable_sort(strings, strings + count, [impl](char const* a, char const* b) {
    if (a == nullptr || b == nullptr) return a == nullptr && b != nullptr;
    return order(impl, a, b, kWhole) < 0;
  });
}
