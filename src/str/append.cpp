// append.cpp - _zstrcat, _zstrncat, _zstrins, _zstrshift.
#include "zelstr/append.h"

#include <cstring>

#include "str/report.h"

using namespace zelstr::str;

namespace {

// Moves the whole string, terminator included, to s + n.
void move_string(char* s, int n, char fill) {
  std::memmove(s + n, s, std::strlen(s) + 1);
  if (n > 0) std::memset(s, fill, static_cast<std::size_t>(n));
}

// Shifts the characters within the string's own length.
void shift_within(char* s, int n, char fill) {
  std::size_t const length = std::strlen(s);
  std::size_t const k = n < 0 ? 0u - static_cast<std::size_t>(n) : static_cast<std::size_t>(n);
  std::size_t const moved = k < length ? length - k : 0;
  std::size_t const filled = length - moved;
  if (n > 0) {
    std::memmove(s + filled, s, moved);
    std::memset(s, fill, filled);
  } else {
    std::memmove(s, s + filled, moved);
    std::memset(s + moved, fill, filled);
  }
}

}  // namespace

char* _zstrcat(char* dest, char* src) noexcept {
  if (dest == nullptr) {
    warn(msg::kStrcatNullDest);
    return nullptr;
  }
  if (src == nullptr) {
    warn(msg::kStrcatNullSrc);
    return dest;
  }
  // Measured first, so that appending a string to itself is well defined.
  std::size_t const n = std::strlen(src);
  std::memmove(dest + std::strlen(dest), src, n + 1);
  return dest;
}

char* _zstrncat(char* dest, char const* src, unsigned long count) noexcept {
  if (dest == nullptr) {
    warn(msg::kStrncatNullDest);
    return nullptr;
  }
  if (src == nullptr) {
    warn(msg::kStrncatNullSrc);
    return dest;
  }
  std::uint32_t const limit = count32(count);
  if (limit == 0) return dest;
  std::size_t const n = ::strnlen(src, limit);
  char* const end = dest + std::strlen(dest);
  std::memmove(end, src, n);
  end[n] = '\0';
  return dest;
}

char* _zstrins(char* dest, char const* src) noexcept {
  if (dest == nullptr) {
    warn(msg::kStrinsNullDest);
    return nullptr;
  }
  if (src == nullptr) {
    warn(msg::kStrinsNullSrc);
    return dest;
  }
  std::size_t const n = std::strlen(src);
  if (n == 0) return dest;
  _zstrshift(dest, static_cast<int>(n), '\0', 0);
  std::memcpy(dest, src, n);
  return dest;
}

char* _zstrshift(char* s, int n, char fill, int flag) noexcept {
  if (s == nullptr) {
    warn(msg::kStrshiftNullString);
    return nullptr;
  }
  if (n == 0) return s;
  if (flag == 0) {
    move_string(s, n, fill);
  } else {
    shift_within(s, n, fill);
  }
  return s;
}
