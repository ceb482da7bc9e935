// case_compare.h - the C library's case-insensitive comparisons.
//
// Both lower each byte with the current locale's tolower and compare the
// results as unsigned values, returning their difference at the first
// mismatch (negative, 0 or positive).
#ifndef ZELSTR_PLATFORM_CASE_COMPARE_H
#define ZELSTR_PLATFORM_CASE_COMPARE_H

#include <cstddef>

namespace zelstr::platform {

int case_compare(char const* s1, char const* s2);
int case_compare_n(char const* s1, char const* s2, std::size_t count);

}  // namespace zelstr::platform

#endif  // ZELSTR_PLATFORM_CASE_COMPARE_H
