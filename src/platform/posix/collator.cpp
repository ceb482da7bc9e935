// collator.cpp - the server's upper case of code page 1252, decided by ICU.
#include "platform/collator.h"

#include <unicode/uchar.h>
#include <unicode/ucnv.h>

namespace zelstr::platform {
namespace {

// The upper case of byte `c` of the code page, or `c` itself when the
// conversion cannot say or the upper case is not in the code page.
unsigned char upper_of(UConverter* cp1252, unsigned char c) {
  UErrorCode error = U_ZERO_ERROR;
  UChar unit = 0;
  char const byte = static_cast<char>(c);
  int32_t const units = ucnv_toUChars(cp1252, &unit, 1, &byte, 1, &error);
  if (U_FAILURE(error) || units != 1) return c;
  UChar32 const upper = u_toupper(unit);
  if (upper == unit || upper > 0xFFFF) return c;
  UChar const upper_unit = static_cast<UChar>(upper);
  char out[4];
  error = U_ZERO_ERROR;
  int32_t const bytes = ucnv_fromUChars(cp1252, out, sizeof out, &upper_unit, 1, &error);
  if (U_FAILURE(error) || bytes != 1) return c;
  return static_cast<unsigned char>(out[0]);
}

}  // namespace

void code_page_upper_case(unsigned char (&upper)[256]) {
  for (int c = 0; c < 256; ++c) upper[c] = static_cast<unsigned char>(c);
  UErrorCode error = U_ZERO_ERROR;
  UConverter* const cp1252 = ucnv_open("windows-1252", &error);
  if (U_SUCCESS(error)) {
    // Characters the code page lacks must fail, not become a substitute.
    ucnv_setFromUCallBack(cp1252, UCNV_FROM_U_CALLBACK_STOP, nullptr, nullptr, nullptr, &error);
    ucnv_setToUCallBack(cp1252, UCNV_TO_U_CALLBACK_STOP, nullptr, nullptr, nullptr, &error);
  }
  if (U_SUCCESS(error)) {
    for (int c = 1; c < 256; ++c) upper[c] = upper_of(cp1252, static_cast<unsigned char>(c));
  } else {
    // Without the converter, ASCII letters are all that can be trusted.
    for (int c = 'a'; c <= 'z'; ++c) upper[c] = static_cast<unsigned char>(c - 'a' + 'A');
  }
  if (cp1252 != nullptr) ucnv_close(cp1252);
}

}  // namespace zelstr::platform
