// position.cpp - _zstrchr, _zstrmax, _zstrmin.
#include "zelstr/position.h"

#include <cstdint>
#include <cstring>

#include "str/report.h"

using namespace zelstr::str;

char const* _zstrchr(char const* s, char c) {
  if (s == nullptr) {
    warn(msg::kChrNullString);
    return nullptr;
  }
  return std::strchr(s, c);
}

char* _zstrchr(char* s, char c) {
  return const_cast<char*>(_zstrchr(static_cast<char const*>(s), c));
}

// Positions compare as addresses, even when they lie in different strings.
char const* _zstrmax(char const* p, char const* q) {
  if (p == nullptr) return q;
  if (q == nullptr) return p;
  return reinterpret_cast<std::uintptr_t>(p) >= reinterpret_cast<std::uintptr_t>(q) ? p : q;
}

char const* _zstrmin(char const* p, char const* q) {
  if (p == nullptr) return q;
  if (q == nullptr) return p;
  return reinterpret_cast<std::uintptr_t>(p) <= reinterpret_cast<std::uintptr_t>(q) ? p : q;
}
