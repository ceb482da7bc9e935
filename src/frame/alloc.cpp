// alloc.cpp - heap copies of strings.
//
// Blocks come from the array form of the global allocator, without
// exceptions: a failed allocation gives NULL, as a NULL source does.
#include "zelstr/alloc.h"

#include <cstring>

#include "frame/memory.h"

using zelstr::frame::new_array;

char* _zstrdupalloc(char const* src, unsigned int extra) noexcept {
  if (src == nullptr) return nullptr;
  std::size_t const length = std::strlen(src);
  char* const copy = new_array<char>(length + extra + 1);
  if (copy != nullptr) std::memcpy(copy, src, length + 1);
  return copy;
}

char* _zstrdupnalloc(char const* src, unsigned int n, unsigned int extra) noexcept {
  if (src == nullptr) return nullptr;
  char* const copy = new_array<char>(std::size_t{n} + extra + 1);
  if (copy == nullptr) return nullptr;
  std::memcpy(copy, src, n);
  copy[n] = '\0';
  return copy;
}

void _zstrdupfree(char*& p) noexcept {
  delete[] p;
  p = nullptr;
}

CStringAlloc::CStringAlloc(char const* src) noexcept : m_pszString(_zstrdupalloc(src, 0)) {}

CStringAlloc::~CStringAlloc() { _zstrdupfree(m_pszString); }
