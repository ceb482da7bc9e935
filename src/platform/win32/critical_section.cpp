// critical_section.cpp - critical sections of the Windows API.
#include "platform/critical_section.h"

#include <windows.h>

namespace zelstr::platform {
namespace {

static_assert(sizeof(CRITICAL_SECTION) <= 64, "storage too small for the critical section");

CRITICAL_SECTION* section_in(unsigned char* storage) {
  return reinterpret_cast<CRITICAL_SECTION*>(storage);
}

}  // namespace

void CriticalSection::Initialize() { InitializeCriticalSection(section_in(m_abStorage)); }
void CriticalSection::Delete() { DeleteCriticalSection(section_in(m_abStorage)); }
void CriticalSection::Enter() { EnterCriticalSection(section_in(m_abStorage)); }
void CriticalSection::Leave() { LeaveCriticalSection(section_in(m_abStorage)); }

}  // namespace zelstr::platform
