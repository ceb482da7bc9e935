// bits.cpp - _zstrbits and _zstrbits2ull: binary digits and back.
#include "str/report.h"
#include "str/text/writer.h"
#include "zelstr/textutil.h"

using namespace zelstr::str;
using namespace zelstr::str::text;

char* _zstrbits(unsigned long long value, int width, int group) noexcept {
  if (width < 0 || width > 64 || group < 0 || group > 64) {
    warn_format(msg::kTextOutOfRangeFormat, "_zstrbits",
                width < 0 || width > 64 ? "width" : "group", "NULL");
    return nullptr;
  }
  int digits = 1;
  while (digits < 64 && (value >> digits) != 0) ++digits;
  if (digits < width) digits = width;
  return into_arena([&](Writer& out) {
    for (int i = digits - 1; i >= 0; --i) {
      out.put((value >> i) & 1 ? '1' : '0');
      if (group > 0 && i > 0 && i % group == 0) out.put(' ');
    }
  });
}

int _zstrbits2ull(char const* bits, unsigned long long* value) noexcept {
  if (bits == nullptr || value == nullptr) {
    warn_format(msg::kTextNullArgumentFormat, "_zstrbits2ull", bits == nullptr ? "bits" : "value",
                "0");
    return 0;
  }
  unsigned long long v = 0;
  bool any = false;
  for (char const* p = bits; *p != '\0'; ++p) {
    if (*p == ' ' || *p == '_') continue;
    if (*p != '0' && *p != '1') {
      warn_format(msg::kBitsBadDigitFormat, "_zstrbits2ull", *p);
      return 0;
    }
    if ((v >> 63) != 0) {
      warn_format(msg::kBitsOverflowFormat, "_zstrbits2ull");
      return 0;
    }
    v = v << 1 | static_cast<unsigned long long>(*p - '0');
    any = true;
  }
  if (!any) {
    warn_format(msg::kBitsNoDigitFormat, "_zstrbits2ull");
    return 0;
  }
  *value = v;
  return 1;
}
