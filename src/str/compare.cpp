// compare.cpp - _zstrcmp, _zstricmp, _zstrncmp, _zstrnicmp and the
// NULL-accepting comparisons.
#include "zelstr/compare.h"

#include <cstring>

#include "platform/case_compare.h"
#include "str/report.h"

using namespace zelstr::str;

namespace {

using zelstr::frame::Message;

// The three NULL warnings of one comparison.
struct NullWarnings {
  Message const& both;
  Message const& first;
  Message const& second;
};

constexpr NullWarnings kStrcmpWarnings{msg::kStrcmpBothNull, msg::kStrcmpString1Null,
                                       msg::kStrcmpString2Null};
constexpr NullWarnings kStricmpWarnings{msg::kStricmpBothNull, msg::kStricmpString1Null,
                                        msg::kStricmpString2Null};
constexpr NullWarnings kStrncmpWarnings{msg::kStrncmpBothNull, msg::kStrncmpString1Null,
                                        msg::kStrncmpString2Null};
constexpr NullWarnings kStrnicmpWarnings{msg::kStrnicmpBothNull, msg::kStrnicmpString1Null,
                                         msg::kStrnicmpString2Null};

int sign(int r) { return (r > 0) - (r < 0); }

// NULL sorts before every string; both NULL are equal.
int null_order(char const* s1, char const* s2) {
  if (s1 == nullptr && s2 == nullptr) return 0;
  return s1 == nullptr ? -1 : 1;
}

int compare(char const* s1, char const* s2, NullWarnings const& warnings,
            int (*cmp)(char const*, char const*)) {
  if (s1 != nullptr && s2 != nullptr) return sign(cmp(s1, s2));
  warn(s1 == nullptr ? (s2 == nullptr ? warnings.both : warnings.first) : warnings.second);
  return null_order(s1, s2);
}

int compare_n(char const* s1, char const* s2, unsigned long count, NullWarnings const& warnings,
              int (*cmp)(char const*, char const*, std::size_t)) {
  std::uint32_t const n = count32(count);
  if (s1 != nullptr && s2 != nullptr) return n == 0 ? 0 : sign(cmp(s1, s2, n));
  warn(s1 == nullptr ? (s2 == nullptr ? warnings.both : warnings.first) : warnings.second);
  return n == 0 ? 0 : null_order(s1, s2);
}

}  // namespace

int _zstrcmp(char const* s1, char const* s2) noexcept {
  return compare(s1, s2, kStrcmpWarnings, std::strcmp);
}

int _zstricmp(char const* s1, char const* s2) noexcept {
  return compare(s1, s2, kStricmpWarnings, zelstr::platform::case_compare);
}

int _zstrncmp(char const* s1, char const* s2, unsigned long count) noexcept {
  return compare_n(s1, s2, count, kStrncmpWarnings, std::strncmp);
}

int _zstrnicmp(char const* s1, char const* s2, unsigned long count) noexcept {
  return compare_n(s1, s2, count, kStrnicmpWarnings, zelstr::platform::case_compare_n);
}

int _zstrnullisablecmp(char const* s1, char const* s2) noexcept {
  if (s1 == nullptr || s2 == nullptr) return null_order(s1, s2);
  return sign(std::strcmp(s1, s2));
}

int _zstrnullisableicmp(char const* s1, char const* s2) noexcept {
  if (s1 == nullptr || s2 == nullptr) return null_order(s1, s2);
  return sign(zelstr::platform::case_compare(s1, s2));
}
