// copy.cpp - whole and bounded copies: _zstrcpy, _zstrncpy, _zstrncpyf0,
// _zsamestrncpy, _zstrsafecpyf0, _zstrcpyuntil.
#include "zelstr/copy.h"

#include <cstring>

#include "str/copy_run.h"
#include "str/report.h"

using namespace zelstr::str;

namespace {

// The _zstrsafecpyf0 rule on checked arguments.  The copy stops after
// count - 1 bytes or after the terminator; the zero is then written at the
// position reached, which is one past the copied terminator when `src` was
// the shorter.
char* safe_copy(char* dest, char const* src, std::uint32_t count) {
  if (count == 0) return dest;
  std::size_t const room = count - 1;
  std::size_t const n = ::strnlen(src, room);
  if (n < room) {
    std::memmove(dest, src, n + 1);
    dest[n + 1] = '\0';
  } else {
    std::memmove(dest, src, n);
    dest[n] = '\0';
  }
  return dest;
}

}  // namespace

char* _zstrcpy(char* dest, char const* src) noexcept {
  if (dest == nullptr) {
    warn(msg::kStrcpyNullDest);
    return nullptr;
  }
  if (src == nullptr) {
    warn(msg::kStrcpyNullSrc);
    return nullptr;
  }
  if (dest != src) std::memmove(dest, src, std::strlen(src) + 1);
  return dest;
}

char* _zstrncpy(char* dest, char const* src, unsigned long count) noexcept {
  if (dest == nullptr) {
    warn(msg::kStrncpyNullDest);
    return nullptr;
  }
  if (src == nullptr) {
    warn(msg::kStrncpyNullSrc);
    return nullptr;
  }
  return strncpy_rule(dest, src, count32(count));
}

char* _zstrncpyf0(char* dest, char const* src, unsigned long count) noexcept {
  char* const result = _zstrncpy(dest, src, count);
  if (result != nullptr && count32(count) != 0) dest[count32(count) - 1] = '\0';
  return result;
}

char* _zsamestrncpy(char* dest, char* src, unsigned long count) noexcept {
  if (dest == nullptr) {
    warn(msg::kSamestrncpyNullDest);
    return nullptr;
  }
  if (src == nullptr) {
    warn(msg::kSamestrncpyNullSrc);
    return nullptr;
  }
  std::uint32_t const n = count32(count);
  if (src == dest || n == 0) return dest;
  // A forward walk is right when dest lies before src or past the source
  // area, and a backward one when dest lies inside it; copying the run with
  // memmove and zeroing the rest gives the same bytes in every case.
  return copy_run(dest, src, ::strnlen(src, n), n);
}

char* _zstrsafecpyf0(char* dest, char const* src, unsigned long count) noexcept {
  if (dest == nullptr) {
    warn(msg::kSafecpyNullDest);
    return nullptr;
  }
  std::uint32_t const n = count32(count);
  if (src == nullptr) {
    if (n >= 1) {
      dest[0] = '\0';
      warn(msg::kSafecpyNullSrcEmptied);
    } else {
      warn(msg::kSafecpyNullSrcIntact);
    }
    return dest;
  }
  return safe_copy(dest, src, n);
}

char* _zstrcpyuntil(char* dest, char const* src, char const* stop_at_pos_in_src) noexcept {
  if (dest == nullptr) {
    warn(msg::kCpyuntilNullDest);
    return nullptr;
  }
  if (src == nullptr) {
    warn(msg::kCpyuntilNullSrc);
    return nullptr;
  }
  if (stop_at_pos_in_src == nullptr) {
    warn(msg::kCpyuntilNullStop);
    return nullptr;
  }
  return safe_copy(dest, src, static_cast<std::uint32_t>((stop_at_pos_in_src - src) + 1));
}
