// code_page.h - the characters of code page 1252, as the collator sees
// them.
//
// Every byte stands for one UTF-16 unit: bytes below 0x80 and from 0xA0 up
// for the same code points, 0x80 to 0x9F for the characters the code page
// puts there, and the five bytes it leaves undefined (0x81, 0x8D, 0x8F,
// 0x90, 0x9D) for the C1 controls of the same value, as the system's
// converters read them.  One byte for one unit keeps offsets in the text
// and in its conversion the same.
#ifndef ZELSTR_STR_COLLATE_CODE_PAGE_H
#define ZELSTR_STR_COLLATE_CODE_PAGE_H

#include <array>

namespace zelstr::collate {

inline constexpr char16_t kHighRow[32] = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

inline constexpr std::array<char16_t, 256> make_units() {
  std::array<char16_t, 256> units{};
  for (int b = 0; b < 256; ++b) {
    units[b] = b >= 0x80 && b < 0xA0 ? kHighRow[b - 0x80] : static_cast<char16_t>(b);
  }
  return units;
}

// The unit of each byte.
inline constexpr std::array<char16_t, 256> kUnitOf = make_units();

// The byte of `unit`, or -1 when the code page has none.
inline int byte_of(char16_t unit) {
  if (unit < 0x80 || (unit >= 0xA0 && unit <= 0xFF)) return unit;
  for (int i = 0; i < 32; ++i) {
    if (kHighRow[i] == unit) return 0x80 + i;
  }
  return -1;
}

}  // namespace zelstr::collate

#endif  // ZELSTR_STR_COLLATE_CODE_PAGE_H
