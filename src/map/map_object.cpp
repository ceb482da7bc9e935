// map_object.cpp - _zmapfree, _zmapclone, _zmapisinsensitive,
// _zmapchrapply, _zmapstrapply, _zmapstrcpy, _zmapstrncpy.
#include <cstdint>
#include <cstring>

#include "frame/memory.h"
#include "map/map_handle.h"
#include "map/translate.h"
#include "platform/map_block.h"
#include "zelstr/copy.h"
#include "zelstr/map.h"

using namespace zelstr::map;

int _zmapfree(void* map) noexcept {
  if (map == nullptr) return 1;
  if (is_bad(map)) {
    warn(msg::kMapFreeInvalid);
    return 0;
  }
  zelstr::platform::MapRelease const done =
      zelstr::platform::release_map_block(static_cast<unsigned char*>(map));
  int result = 1;
  if (!done.unlocked) {
    warn(msg::kMapFreeProblem);
    result = 0;
  }
  if (!done.freed) {
    warn(msg::kMapFreeProblem);
    return 0;
  }
  return result;
}

void* _zmapclone(void* map) noexcept {
  if (map == nullptr || is_bad(map)) return map;
  unsigned char* const copy = zelstr::platform::allocate_map_block();
  if (copy == nullptr) {
    zelstr::frame::note_allocation_failure();
    warn(msg::kMapNoRamClone, "_zmapclone()");
    return ZEAL_STR_BAD_MAP;
  }
  std::memcpy(copy, table_of(map), 256);
  return copy;
}

// Folding to `upper` case (or to lower), every other byte left alone.
int _zmapisinsensitive(void* map) noexcept {
  if (map == nullptr) return 0;
  if (is_bad(map)) {
    warn(msg::kMapStrapplyInvalid);  // the message of _zmapstrapply, as callers know it
    return 0;
  }
  unsigned char const* const t = table_of(map);
  constexpr int kUpperA = 'A', kLowerA = 'a';
  bool to_upper;
  if (t[kUpperA] == kUpperA && t[kLowerA] == kUpperA) {
    to_upper = true;
  } else if (t[kLowerA] == kLowerA && t[kUpperA] == kLowerA) {
    to_upper = false;
  } else {
    return 0;
  }
  for (int c = 'A'; c <= 'Z'; ++c) {
    int const image = to_upper ? c : c + 32;
    if (t[c] != image || t[c + 32] != image) return 0;
  }
  for (int c = 1; c < 256; ++c) {
    bool const letter = (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
    if (!letter && t[c] != c) return 0;
  }
  return 1;
}

char _zmapchrapply(void* map, char c) noexcept {
  if (map == nullptr || is_bad(map)) return c;
  return static_cast<char>(table_of(map)[static_cast<unsigned char>(c)]);
}

char* _zmapstrapply(void* map, char* string) noexcept {
  if (map == nullptr || string == nullptr) return string;
  if (is_bad(map)) {
    warn(msg::kMapStrapplyInvalid);
    return string;
  }
  // A short string is translated and measured in one loop, as a caller's
  // own loop would; only a longer one is measured for the vector kernel.
  // (The table keeps the terminator: entry 0 is 0.)
  Byte const* const table = table_of(map);
  auto* p = reinterpret_cast<Byte*>(string);
  for (auto* const short_end = p + zelstr::map::Translator::kKernelFrom; p < short_end; ++p) {
    Byte const c = *p;
    if (c == 0) return string;
    *p = table[c];
  }
  translate_span(table, p, p + std::strlen(reinterpret_cast<char*>(p)));
  return string;
}

char* _zmapstrcpy(void* map, char* dest, char const* src) noexcept {
  if (map == nullptr) return _zstrcpy(dest, src);
  if (is_bad(map)) {
    warn(msg::kMapStrcpyInvalid);
    return _zstrcpy(dest, src);
  }
  if (dest == nullptr) {
    warn(msg::kMapStrcpyNullDest);
    return nullptr;
  }
  if (src == nullptr) {
    warn(msg::kMapStrcpyNullSrc);
    return nullptr;
  }
  unsigned char const* const t = table_of(map);
  std::size_t i = 0;
  for (; src[i] != '\0'; ++i) dest[i] = static_cast<char>(t[static_cast<unsigned char>(src[i])]);
  dest[i] = '\0';
  return dest;
}

char* _zmapstrncpy(void* map, char* dest, char const* src, unsigned long n) noexcept {
  std::size_t const count = static_cast<unsigned>(n);
  if (map == nullptr || is_bad(map)) {
    if (is_bad(map)) warn(msg::kMapStrncpyInvalid);
    // The C library's strncpy, made safe for the NULL pointers it would
    // dereference.
    if (dest == nullptr || src == nullptr) return dest;
    return dest == src || count == 0 ? dest : std::strncpy(dest, src, count);
  }
  if (dest == nullptr) {
    warn(msg::kMapStrncpyNullDest);
    return nullptr;
  }
  if (src == nullptr) {
    warn(msg::kMapStrncpyNullSrc);
    return nullptr;
  }
  if (src == dest || count == 0) return dest;
  unsigned char const* const t = table_of(map);
  std::size_t i = 0;
  for (; i < count && src[i] != '\0'; ++i) {
    dest[i] = static_cast<char>(t[static_cast<unsigned char>(src[i])]);
  }
  std::memset(dest + i, 0, count - i);
  return dest;
}
