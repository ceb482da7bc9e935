// collator.cpp - the server's upper case of code page 1252, decided by ICU.
//
// The code page's bytes stand for fixed Unicode characters, so the table
// below says which; ICU's case properties, built into the library, give
// each one's upper case.  Nothing here loads data or allocates, so the
// table is complete even when memory is short.
#include "platform/collator.h"

#include <unicode/uchar.h>

namespace zelstr::platform {
namespace {

// The characters of bytes 0x80 to 0x9F (0 for the five the code page leaves
// undefined); the bytes below stand for U+0000 to U+007F and those above for
// U+00A0 to U+00FF.
constexpr UChar32 kHighControls[32] = {
    0x20AC, 0,      0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0,      0x017D, 0,      0,      0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0,      0x017E, 0x0178};

UChar32 character_of(int byte) {
  if (byte >= 0x80 && byte < 0xA0) return kHighControls[byte - 0x80];
  return byte;
}

// The byte that stands for `u`, or -1 when the code page has none.
int byte_of(UChar32 u) {
  if (u < 0x80 || (u >= 0xA0 && u <= 0xFF)) return static_cast<int>(u);
  for (int i = 0; i < 32; ++i) {
    if (kHighControls[i] == u) return 0x80 + i;
  }
  return -1;
}

}  // namespace

void code_page_upper_case(unsigned char (&upper)[256]) {
  for (int c = 0; c < 256; ++c) {
    upper[c] = static_cast<unsigned char>(c);
    UChar32 const u = character_of(c);
    if (u == 0) continue;
    int const b = byte_of(u_toupper(u));
    if (b >= 0) upper[c] = static_cast<unsigned char>(b);
  }
}

}  // namespace zelstr::platform
