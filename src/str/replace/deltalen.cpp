// deltalen.cpp - _zstrdeltalen, _zstrmultideltalen: the length change a
// replacement would cause, to size a buffer before replacing.
#include "str/replace/deltalen.h"

#include <cstdint>
#include <cstring>

#include "str/report.h"
#include "str/search/walks.h"
#include "zelstr/replace.h"
#include "zelstr/types.h"

using namespace zelstr::str;

namespace {

constexpr std::int64_t kMaxLength = 2147483647;

// Occurrences as _zstrNreplace would find them (through `map` when given):
// bytes for a pattern shorter than two (none for an empty one), occurrences
// without overlap otherwise.
std::int64_t occurrences(char const* string, char const* s1, std::size_t len1,
                         unsigned char const* map) {
  if (string == nullptr || *string == '\0' || len1 == 0) return 0;
  if (len1 == 1) return static_cast<std::int64_t>(search::count_bytes(string, *s1, map));
  return search::count_occurrences(string, s1, map);
}

}  // namespace

namespace zelstr::str::replace {

long delta_length(char const* string, char const* s1, char const* s2, unsigned char const* map) {
  if (s1 == nullptr || s2 == nullptr) {
    warn(msg::kDeltalenNullStrings);
    return ZEAL_STR_ERR;
  }
  std::size_t const len1 = std::strlen(s1);
  if (len1 > static_cast<std::size_t>(kMaxLength)) {
    warn(msg::kDeltalenS1TooLong);
    return ZEAL_STR_ERR;
  }
  std::size_t const len2 = std::strlen(s2);
  if (len2 > static_cast<std::size_t>(kMaxLength)) {
    warn(msg::kDeltalenS2TooLong);
    return ZEAL_STR_ERR;
  }
  std::int64_t const delta = static_cast<std::int64_t>(len2) - static_cast<std::int64_t>(len1);
  if (delta == 0) return 0;
  std::int64_t const count = occurrences(string, s1, len1, map);
  if (count < 0) return ZEAL_STR_ERR;  // no memory to search through the map
  std::int64_t const magnitude = delta < 0 ? -delta : delta;
  if (count > kMaxLength / magnitude) {
    warn(msg::kDeltalenOverflow);
    return ZEAL_STR_ERR;
  }
  return static_cast<long>(count * delta);
}

long multi_delta_length(char const* string, zstr_couple const* couples, unsigned char const* map) {
  if (string == nullptr || couples == nullptr) return 0;
  std::int64_t sum = 0;
  for (zstr_couple const* c = couples; c->s1 != nullptr || c->s2 != nullptr; ++c) {
    long const term = delta_length(string, c->s1, c->s2, map);
    if (term == ZEAL_STR_ERR) {
      warn(msg::kMultiDeltalenError);
      return ZEAL_STR_ERR;
    }
    if (sum + term > kMaxLength || sum + term < -kMaxLength) {
      warn(msg::kMultiDeltalenOverflow);
      return ZEAL_STR_ERR;
    }
    sum += term;
  }
  return static_cast<long>(sum);
}

}  // namespace zelstr::str::replace

long _zstrdeltalen(char* string, char* s1, char* s2) noexcept {
  return replace::delta_length(string, s1, s2, nullptr);
}

long _zstrmultideltalen(char* string, zstr_couple* couples) noexcept {
  return replace::multi_delta_length(string, couples, nullptr);
}
