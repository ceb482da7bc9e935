// mapped_compare.cpp - _zmapstrcmp, _zmapstrncmp, _zmapstricmp,
// _zmapstrnicmp, _zmapstrdiffpoint, _zmapstrishead, _zmapstristail.
#include <cctype>
#include <cstdint>
#include <cstring>

#include "chars/upper_fold.h"
#include "map/map_handle.h"
#include "platform/case_compare.h"
#include "zelstr/compare.h"
#include "zelstr/mapped.h"
#include "zelstr/quote.h"

using namespace zelstr::map;

namespace {

constexpr std::size_t kNoLimit = SIZE_MAX;

// The image of a byte: through the map, after a case function when one is
// given (tolower or a toupper table).
struct Image {
  unsigned char const* map;
  unsigned char const* upper = nullptr;  // toupper first, from this table
  bool lower = false;                    // tolower first

  unsigned operator()(char c) const {
    auto b = static_cast<unsigned char>(c);
    if (upper != nullptr) b = upper[b];
    if (lower) b = static_cast<unsigned char>(std::tolower(b));
    return map[b];
  }
};

// Where two strings first differ through the map, and the two images there.
struct Difference {
  char const* at;  // the place in the first string; NULL when they are equal
  unsigned a, b;
};

// Walks both strings together over at most `count` bytes and stops at the
// first pair whose images differ, or at the terminator of `s1` (only 0 has
// the image 0, so `s2` ends there too).
Difference first_difference(char const* s1, char const* s2, std::size_t count, Image image) {
  for (std::size_t i = 0; i < count; ++i) {
    unsigned const a = image(s1[i]), b = image(s2[i]);
    if (a != b) return Difference{s1 + i, a, b};
    if (s1[i] == '\0') break;
  }
  return Difference{nullptr, 0, 0};
}

// The sign of the images' difference where they first differ.
int compare_images(char const* s1, char const* s2, std::size_t count, Image image) {
  Difference const d = first_difference(s1, s2, count, image);
  if (d.at == nullptr) return 0;
  return d.a < d.b ? -1 : 1;
}

int sign(int r) { return (r > 0) - (r < 0); }

}  // namespace

int _zmapstrcmp(void* map, char const* string1, char const* string2) noexcept {
  if (is_bad(map)) warn(msg::kMapStrcmpInvalid);
  if (map == nullptr || is_bad(map) || string1 == nullptr || string2 == nullptr) {
    return _zstrcmp(string1, string2);
  }
  return compare_images(string1, string2, kNoLimit, Image{table_of(map)});
}

int _zmapstrncmp(void* map, char const* string1, char const* string2,
                 unsigned long count) noexcept {
  if (is_bad(map)) warn(msg::kMapStrncmpInvalid);
  if (map == nullptr || is_bad(map) || string1 == nullptr || string2 == nullptr) {
    return _zstrncmp(string1, string2, count);
  }
  return compare_images(string1, string2, static_cast<std::uint32_t>(count), Image{table_of(map)});
}

int _zmapstricmp(void* map, char const* string1, char const* string2) noexcept {
  if (map == nullptr) return _zstricmp(string1, string2);
  if (is_bad(map)) warn(msg::kMapStricmpInvalid);
  if (string2 == nullptr) {
    warn(msg::kMapStricmpNullString2);
    return 1;
  }
  if (string1 == nullptr) {
    warn(msg::kMapStricmpNullString1);
    return -1;
  }
  if (is_bad(map)) return sign(zelstr::platform::case_compare(string1, string2));
  return compare_images(string1, string2, kNoLimit, Image{table_of(map), nullptr, true});
}

int _zmapstrnicmp(void* map, char const* string1, char const* string2,
                  unsigned long count) noexcept {
  if (is_bad(map)) warn(msg::kMapStrnicmpInvalid);
  if (map == nullptr || is_bad(map)) return _zstrnicmp(string1, string2, count);
  std::uint32_t const n = static_cast<std::uint32_t>(count);
  if (string1 == nullptr || string2 == nullptr) {
    if (string1 == nullptr && string2 == nullptr) {
      warn(msg::kMapStrnicmpBothNull);
      return 0;
    }
    warn(string1 == nullptr ? msg::kMapStrnicmpNullString1 : msg::kMapStrnicmpNullString2);
    if (n == 0) return 0;
    return string1 == nullptr ? -1 : 1;
  }
  return compare_images(string1, string2, n, Image{table_of(map), nullptr, true});
}

char const* _zmapstrdiffpoint(void* map, char const* string1, char const* string2,
                              int case_sensitive) noexcept {
  if (is_bad(map)) warn(msg::kMapDiffpointInvalid);
  if (map == nullptr || is_bad(map) || string1 == nullptr || string2 == nullptr) {
    return _zstrdiffpoint(string1, string2, case_sensitive);
  }
  Image image{table_of(map)};
  if (case_sensitive == 0) image.upper = zelstr::chars::upper_fold().upper;
  return first_difference(string1, string2, kNoLimit, image).at;
}

int _zmapstrishead(void* map, char const* string1, char const* string2) noexcept {
  if (map == nullptr || is_bad(map) || string1 == nullptr || string2 == nullptr) {
    return _zstrishead(string1, string2, 1);
  }
  // A head longer than the string differs at the string's terminator.
  std::size_t const n = std::strlen(string2);
  return first_difference(string1, string2, n, Image{table_of(map)}).at == nullptr ? 1 : 0;
}

int _zmapstristail(void* map, char const* string1, char const* string2) noexcept {
  if (map == nullptr || is_bad(map) || string1 == nullptr || string2 == nullptr) {
    return _zstristail(string1, string2, 1);
  }
  std::size_t const length = std::strlen(string1), n = std::strlen(string2);
  if (n > length) return 0;
  return first_difference(string1 + length - n, string2, n, Image{table_of(map)}).at == nullptr ? 1
                                                                                                : 0;
}
