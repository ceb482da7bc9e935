// deltalen.cpp - _zstrdeltalen, _zstrmultideltalen: the length change a
// replacement would cause, to size a buffer before replacing.
#include <cstdint>
#include <cstring>

#include "str/report.h"
#include "zelstr/replace.h"
#include "zelstr/search.h"
#include "zelstr/types.h"

using namespace zelstr::str;

namespace {

constexpr std::int64_t kMaxLength = 2147483647;

// Occurrences as _zstrNreplace would find them: bytes for a pattern shorter
// than two (none for an empty one), occurrences without overlap otherwise.
std::int64_t occurrences(char const* string, char const* s1, std::size_t len1) {
  if (string == nullptr || *string == '\0' || len1 == 0) return 0;
  return len1 == 1 ? _zstrccnt(string, *s1) : _zstrstrcnt(string, s1);
}

}  // namespace

long _zstrdeltalen(char* string, char* s1, char* s2) {
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
  std::int64_t const count = occurrences(string, s1, len1);
  std::int64_t const magnitude = delta < 0 ? -delta : delta;
  if (count > kMaxLength / magnitude) {
    warn(msg::kDeltalenOverflow);
    return ZEAL_STR_ERR;
  }
  return static_cast<long>(count * delta);
}

long _zstrmultideltalen(char* string, zstr_couple* couples) {
  if (string == nullptr || couples == nullptr) return 0;
  std::int64_t sum = 0;
  for (zstr_couple const* c = couples; c->s1 != nullptr || c->s2 != nullptr; ++c) {
    long const term = _zstrdeltalen(string, const_cast<char*>(c->s1), const_cast<char*>(c->s2));
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
