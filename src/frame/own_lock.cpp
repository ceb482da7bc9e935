// own_lock.cpp - the registries' locks, made together on first use.
#include "frame/own_lock.h"

#include <new>

namespace zelstr::frame {

platform::CriticalSection& own_lock(OwnLock which) noexcept {
  constexpr int kCount = static_cast<int>(OwnLock::kCount);
  alignas(platform::CriticalSection) static unsigned char
      storage[kCount * sizeof(platform::CriticalSection)];
  static platform::CriticalSection* const locks = [] {
    auto* const first = ::new (storage) platform::CriticalSection[kCount];
    for (int i = 0; i < kCount; ++i) first[i].Initialize();
    return first;
  }();
  return locks[static_cast<int>(which)];
}

}  // namespace zelstr::frame
