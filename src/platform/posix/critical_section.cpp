// critical_section.cpp - critical sections as recursive mutexes.
#include "platform/critical_section.h"

#include <mutex>
#include <new>

namespace zelstr::platform {
namespace {

static_assert(sizeof(std::recursive_mutex) <= 64, "storage too small for the mutex");

std::recursive_mutex& mutex_in(unsigned char* storage) {
  return *std::launder(reinterpret_cast<std::recursive_mutex*>(storage));
}

}  // namespace

void CriticalSection::Initialize() { ::new (m_abStorage) std::recursive_mutex(); }
void CriticalSection::Delete() { mutex_in(m_abStorage).~recursive_mutex(); }
void CriticalSection::Enter() { mutex_in(m_abStorage).lock(); }
void CriticalSection::Leave() { mutex_in(m_abStorage).unlock(); }

}  // namespace zelstr::platform
