// copy_run.h - the copy rules shared by the bounded copies.
#ifndef ZELSTR_STR_COPY_RUN_H
#define ZELSTR_STR_COPY_RUN_H

#include <cstdint>
#include <cstring>

namespace zelstr::str {

// Copies the first min(run, count) bytes of `src` and zeroes dest[run ..
// count - 1]; when run >= count nothing more is written (no terminator).
// The areas may overlap.
inline char* copy_run(char* dest, char const* src, std::size_t run, std::uint32_t count) {
  std::size_t const copied = run < count ? run : count;
  std::memmove(dest, src, copied);
  std::memset(dest + copied, 0, count - copied);
  return dest;
}

// The strncpy rule: exactly `count` bytes, the string then zeros; nothing
// is done when `dest` is `src` or `count` is 0.
inline char* strncpy_rule(char* dest, char const* src, std::uint32_t count) {
  if (dest == src || count == 0) return dest;
  return std::strncpy(dest, src, count);
}

// Length of the leading run of `s` that holds no byte of `reject`; a NULL or
// empty `reject` gives the whole length.
inline std::size_t run_before(char const* s, char const* reject) {
  return reject != nullptr && *reject != '\0' ? std::strcspn(s, reject) : std::strlen(s);
}

// Length of the leading run of `s` before the first `c`; the whole length
// when `c` is 0 or absent.
inline std::size_t run_before(char const* s, char c) {
  char const* const at = c != '\0' ? std::strchr(s, c) : nullptr;
  return at != nullptr ? static_cast<std::size_t>(at - s) : std::strlen(s);
}

}  // namespace zelstr::str

#endif  // ZELSTR_STR_COPY_RUN_H
