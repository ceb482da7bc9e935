// bytes.cpp - _zmemcpy, _zmemset.
#include "zelstr/bytes.h"

#include <cstdint>
#include <cstring>

#include "str/report.h"

using namespace zelstr::str;

char* _zmemcpy(char* dest, char* src, unsigned long count) noexcept {
  if (dest == nullptr) {
    warn(msg::kMemcpyNullDest);
    return nullptr;
  }
  if (src == nullptr) {
    warn(msg::kMemcpyNullSrc);
    return nullptr;
  }
  std::uint32_t const n = count32(count);
  if (dest == src || n == 0) return dest;
  auto const d = reinterpret_cast<std::uintptr_t>(dest);
  auto const s = reinterpret_cast<std::uintptr_t>(src);
  if (d < s || d - s >= n) {
    // No byte is read after it was written: a forward walk equals memmove.
    std::memmove(dest, src, n);
  } else {
    // dest lies inside the source area: the forward walk repeats its first
    // d - s bytes, and the loop keeps exactly that.
    for (std::uint32_t i = 0; i < n; ++i) dest[i] = src[i];
  }
  return dest;
}

char* _zmemset(char* buffer, char c, unsigned long count) noexcept {
  if (buffer == nullptr) {
    warn(msg::kMemsetNullBuffer);
    return nullptr;
  }
  std::memset(buffer, static_cast<unsigned char>(c), count32(count));
  return buffer;
}
