// scanner_bytes.h - the classes of bytes CStrScanner reads.
#ifndef ZELSTR_GRWSTR_SCANNER_BYTES_H
#define ZELSTR_GRWSTR_SCANNER_BYTES_H

namespace zelstr::grwstr {

// Space, TAB, LF, VT, FF and CR, in any locale.
inline bool is_blank(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }

inline bool is_digit(char c) { return c >= '0' && c <= '9'; }

// The value of a hexadecimal digit, or -1.
inline int hex_value(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  if (c >= 'A' && c <= 'F') return c - 'A' + 10;
  return -1;
}

}  // namespace zelstr::grwstr

#endif  // ZELSTR_GRWSTR_SCANNER_BYTES_H
