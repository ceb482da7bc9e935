// scanner_numbers.cpp - CStrScanner: integers and floating-point numbers.
//
// Integers are read by hand, their magnitude checked against the target's
// range digit by digit; floating-point numbers are delimited by hand and
// converted by std::from_chars, which reads "." as the point whatever the
// locale.
#include <charconv>
#include <climits>
#include <system_error>

#include "grwstr/scan_report.h"
#include "grwstr/scanner_bytes.h"
#include "zelstr/scanner.h"

namespace {

using zelstr::grwstr::hex_value;
using zelstr::grwstr::is_digit;

// The digits at `p`, hexadecimal after "0x"/"0X" when a hexadecimal digit
// follows it, else decimal.  Returns the end of the digits (`p` when there
// is none); `overflow` tells that the magnitude passed `limit`.
char const* read_magnitude(char const* p, unsigned long long limit, unsigned long long* magnitude,
                           bool* overflow) {
  unsigned base = 10;
  if (p[0] == '0' && (p[1] == 'x' || p[1] == 'X') && hex_value(p[2]) >= 0) {
    base = 16;
    p += 2;
  }
  unsigned long long value = 0;
  *overflow = false;
  for (;; ++p) {
    int const digit = base == 16 ? hex_value(*p) : (is_digit(*p) ? *p - '0' : -1);
    if (digit < 0) break;
    if (value > (limit - static_cast<unsigned>(digit)) / base) *overflow = true;
    if (!*overflow) value = value * base + static_cast<unsigned>(digit);
  }
  *magnitude = value;
  return p;
}

// The end of the decimal digits at `p`.
char const* skip_digits(char const* p) {
  while (is_digit(*p)) ++p;
  return p;
}

// The end of the floating-point number at `p` (after its sign), or `p`
// when there is none.
char const* number_end(char const* p) {
  char const* const integral = skip_digits(p);
  char const* q = integral;
  if (*q == '.') {
    char const* const fraction = skip_digits(q + 1);
    if (fraction == q + 1 && integral == p) return p;  // "." alone
    q = fraction;
  } else if (integral == p) {
    return p;
  }
  if (*q == 'e' || *q == 'E') {
    char const* e = q + 1;
    if (*e == '+' || *e == '-') ++e;
    if (is_digit(*e)) q = skip_digits(e);
  }
  return q;
}

}  // namespace

// The integer at the token start, checked against [low, high].
int CStrScanner::ReadSigned(char const* function, long long low, long long high,
                            long long* value) noexcept {
  char const* const start = TokenStart();
  char const* p = start;
  bool const negative = *p == '-';
  if (*p == '+' || *p == '-') ++p;
  // The magnitude of `low` without overflowing: -(low + 1) + 1.
  unsigned long long const limit = negative ? static_cast<unsigned long long>(-(low + 1)) + 1
                                            : static_cast<unsigned long long>(high);
  unsigned long long magnitude = 0;
  bool overflow = false;
  char const* const end = read_magnitude(p, limit, &magnitude, &overflow);
  if (end == p) return Fail(function, *start == '\0' ? ZEAL_SCAN_END : ZEAL_SCAN_SYNTAX, start);
  if (overflow) return Fail(function, ZEAL_SCAN_OVERFLOW, start);
  if (!negative) {
    *value = static_cast<long long>(magnitude);
  } else {
    *value = magnitude == limit ? low : -static_cast<long long>(magnitude);
  }
  return Succeed(end);
}

int CStrScanner::ReadUnsigned(char const* function, unsigned long long high,
                              unsigned long long* value) noexcept {
  char const* const start = TokenStart();
  char const* const p = *start == '+' ? start + 1 : start;
  unsigned long long magnitude = 0;
  bool overflow = false;
  char const* const end = read_magnitude(p, high, &magnitude, &overflow);
  if (end == p) return Fail(function, *start == '\0' ? ZEAL_SCAN_END : ZEAL_SCAN_SYNTAX, start);
  if (overflow) return Fail(function, ZEAL_SCAN_OVERFLOW, start);
  *value = magnitude;
  return Succeed(end);
}

int CStrScanner::ReadInt(long long* value) noexcept {
  if (value == nullptr) {
    return BadArgument("ReadInt", zelstr::grwstr::msg::kScanNullArgumentFormat, "value", "0");
  }
  return ReadSigned("ReadInt", LLONG_MIN, LLONG_MAX, value);
}

int CStrScanner::ReadInt(int* value) noexcept {
  if (value == nullptr) {
    return BadArgument("ReadInt", zelstr::grwstr::msg::kScanNullArgumentFormat, "value", "0");
  }
  long long wide = 0;
  if (ReadSigned("ReadInt", INT_MIN, INT_MAX, &wide) == 0) return 0;
  *value = static_cast<int>(wide);
  return 1;
}

int CStrScanner::ReadUInt(unsigned long long* value) noexcept {
  if (value == nullptr) {
    return BadArgument("ReadUInt", zelstr::grwstr::msg::kScanNullArgumentFormat, "value", "0");
  }
  return ReadUnsigned("ReadUInt", ULLONG_MAX, value);
}

int CStrScanner::ReadUInt(unsigned* value) noexcept {
  if (value == nullptr) {
    return BadArgument("ReadUInt", zelstr::grwstr::msg::kScanNullArgumentFormat, "value", "0");
  }
  unsigned long long wide = 0;
  if (ReadUnsigned("ReadUInt", UINT_MAX, &wide) == 0) return 0;
  *value = static_cast<unsigned>(wide);
  return 1;
}

int CStrScanner::ReadDouble(double* value) noexcept {
  if (value == nullptr) {
    return BadArgument("ReadDouble", zelstr::grwstr::msg::kScanNullArgumentFormat, "value", "0");
  }
  char const* const start = TokenStart();
  // from_chars takes a "-" but not a "+".
  char const* const signless = start + (*start == '+' || *start == '-');
  char const* const end = number_end(signless);
  if (end == signless) {
    return Fail("ReadDouble", *start == '\0' ? ZEAL_SCAN_END : ZEAL_SCAN_SYNTAX, start);
  }
  double number = 0;
  std::from_chars_result const r =
      std::from_chars(*start == '+' ? signless : start, end, number, std::chars_format::general);
  if (r.ec != std::errc() || r.ptr != end) return Fail("ReadDouble", ZEAL_SCAN_OVERFLOW, start);
  *value = number;
  return Succeed(end);
}
