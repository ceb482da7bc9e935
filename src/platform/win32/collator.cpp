// collator.cpp - the server's upper case of code page 1252, decided by the
// system's own case mapping.
#include "platform/collator.h"

#include <windows.h>

namespace zelstr::platform {
namespace {

constexpr UINT kCodePage = 1252;

// The upper case of byte `c` of the code page, or `c` itself when the
// upper case is not in the code page.
unsigned char upper_of(unsigned char c) {
  char const byte = static_cast<char>(c);
  wchar_t unit = 0;
  if (MultiByteToWideChar(kCodePage, MB_ERR_INVALID_CHARS, &byte, 1, &unit, 1) != 1) return c;
  wchar_t upper = 0;
  if (LCMapStringW(LOCALE_INVARIANT, LCMAP_UPPERCASE, &unit, 1, &upper, 1) != 1) return c;
  if (upper == unit) return c;
  char out = 0;
  BOOL lossy = FALSE;
  if (WideCharToMultiByte(kCodePage, WC_NO_BEST_FIT_CHARS, &upper, 1, &out, 1, nullptr, &lossy) !=
          1 ||
      lossy) {
    return c;
  }
  return static_cast<unsigned char>(out);
}

}  // namespace

void code_page_upper_case(unsigned char (&upper)[256]) {
  upper[0] = 0;
  for (int c = 1; c < 256; ++c) upper[c] = upper_of(static_cast<unsigned char>(c));
}

}  // namespace zelstr::platform
