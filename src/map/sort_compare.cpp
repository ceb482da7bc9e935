// sort_compare.cpp - _zsortstrcmp, _zsortstrncmp, _zsortstrarray: strings
// compared by the weights of a sort order.
#include <algorithm>
#include <cstddef>
#include <cstdint>

#include "map/map_handle.h"
#include "zelstr/compare.h"
#include "zelstr/sortorder.h"

using namespace zelstr::map;

namespace {

constexpr std::size_t kNoLimit = SIZE_MAX;

int sign(int r) { return (r > 0) - (r < 0); }

// One walk over both strings: the first differing weight decides; failing
// that, when ties are broken, the first differing byte seen on the way.
// Only the terminator weighs 0, so the strings end together or not at all
// within an equal run.
int compare_weights(unsigned char const* weights, char const* s1, char const* s2,
                    std::size_t count, bool break_ties) {
  auto const* a = reinterpret_cast<unsigned char const*>(s1);
  auto const* b = reinterpret_cast<unsigned char const*>(s2);
  int tie = 0;
  for (std::size_t i = 0; i < count; ++i) {
    unsigned const wa = weights[a[i]], wb = weights[b[i]];
    if (wa != wb) return wa < wb ? -1 : 1;
    if (a[i] == 0) break;
    if (tie == 0 && a[i] != b[i]) tie = a[i] < b[i] ? -1 : 1;
  }
  return break_ties ? tie : 0;
}

// The handle's weights, or NULL for byte order (reported when invalid).
unsigned char const* weights_of(void const* order, zelstr::frame::Message const& invalid) {
  if (order == nullptr) return nullptr;
  if (is_bad(order)) {
    warn(invalid);
    return nullptr;
  }
  return table_of(order);
}

// NULL sorts before every string, and equal to NULL.
struct ArrayOrder {
  unsigned char const* weights;
  bool break_ties;

  bool operator()(char const* x, char const* y) const {
    if (x == nullptr || y == nullptr) return x == nullptr && y != nullptr;
    if (weights == nullptr) return _zstrcmp(x, y) < 0;
    return compare_weights(weights, x, y, kNoLimit, break_ties) < 0;
  }
};

}  // namespace

int _zsortstrcmp(void* order, char const* string1, char const* string2, int breakTies) noexcept {
  unsigned char const* const weights = weights_of(order, msg::kSortStrcmpInvalid);
  if (weights == nullptr || string1 == nullptr || string2 == nullptr) {
    return sign(_zstrcmp(string1, string2));
  }
  return compare_weights(weights, string1, string2, kNoLimit, breakTies != 0);
}

int _zsortstrncmp(void* order, char const* string1, char const* string2, unsigned long count,
                  int breakTies) noexcept {
  unsigned char const* const weights = weights_of(order, msg::kSortStrncmpInvalid);
  if (weights == nullptr || string1 == nullptr || string2 == nullptr) {
    return sign(_zstrncmp(string1, string2, count));
  }
  return compare_weights(weights, string1, string2, static_cast<std::uint32_t>(count),
                         breakTies != 0);
}

int _zsortstrarray(void* order, char const** strings, unsigned long count,
                   int breakTies) noexcept {
  if (strings == nullptr) {
    if (count == 0) return 1;
    warn(msg::kSortArrayNull, "_zsortstrarray()");
    return 0;
  }
  // stable_sort takes its buffer without throwing, and sorts in place when
  // it cannot get one.
  std::stable_sort(strings, strings + count,
                   ArrayOrder{weights_of(order, msg::kSortStrcmpInvalid), breakTies != 0});
  return 1;
}
