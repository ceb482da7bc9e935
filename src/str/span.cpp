// span.cpp - _zstrspn, _zstrrspn: runs over a plain list of bytes.
#include <cstring>

#include "str/report.h"
#include "zelstr/position.h"

using namespace zelstr::str;

unsigned int _zstrspn(char const* s, char const* accept) noexcept {
  if (s == nullptr) {
    warn(msg::kSpnNullString);
    return 0;
  }
  if (accept == nullptr) {
    warn(msg::kSpnNullAccept);
    return 0;
  }
  return static_cast<unsigned int>(std::strspn(s, accept));
}

unsigned int _zstrrspn(char const* s, char const* accept) noexcept {
  if (s == nullptr) {
    warn(msg::kRspnNullString);
    return 0;
  }
  if (accept == nullptr) {
    warn(msg::kRspnNullAccept);
    return 0;
  }
  std::size_t const n = std::strlen(s);
  std::size_t i = n;
  if (accept[0] != '\0' && accept[1] == '\0') {
    // One byte (a blank, most often): no table to fill for a short run.
    while (i > 0 && s[i - 1] == accept[0]) --i;
    return static_cast<unsigned int>(n - i);
  }
  bool in[256] = {};
  for (char const* a = accept; *a != '\0'; ++a) in[static_cast<unsigned char>(*a)] = true;
  while (i > 0 && in[static_cast<unsigned char>(s[i - 1])]) --i;
  return static_cast<unsigned int>(n - i);
}
