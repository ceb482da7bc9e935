// aligned_bytes.cpp - the aligned memory an input reads into.
#include "tool/aligned_bytes.h"

#include <cstring>
#include <new>

namespace zelstr::tool {

AlignedBytes::~AlignedBytes() { ::operator delete[](m_data, std::align_val_t{kAlignment}); }

void AlignedBytes::reserve(std::size_t wanted, std::size_t kept) {
  if (wanted <= m_capacity) return;
  std::size_t capacity = m_capacity != 0 ? m_capacity : wanted;
  while (capacity < wanted) capacity *= 2;
  auto* const data = static_cast<char*>(::operator new[](capacity, std::align_val_t{kAlignment}));
  if (kept > 0) std::memcpy(data, m_data, kept);
  ::operator delete[](m_data, std::align_val_t{kAlignment});
  m_data = data;
  m_capacity = capacity;
}

}  // namespace zelstr::tool
