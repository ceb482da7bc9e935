// position.cpp - _zstrmax, _zstrmin.
#include "zelstr/position.h"

#include <cstdint>

// Positions compare as addresses, even when they lie in different strings.
char const* _zstrmax(char const* p, char const* q) noexcept {
  if (p == nullptr) return q;
  if (q == nullptr) return p;
  return reinterpret_cast<std::uintptr_t>(p) >= reinterpret_cast<std::uintptr_t>(q) ? p : q;
}

char const* _zstrmin(char const* p, char const* q) noexcept {
  if (p == nullptr) return q;
  if (q == nullptr) return p;
  return reinterpret_cast<std::uintptr_t>(p) <= reinterpret_cast<std::uintptr_t>(q) ? p : q;
}
