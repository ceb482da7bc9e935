// critical_section.h - a recursive lock with explicit set-up and tear-down.
//
// The module creates its critical sections when it is loaded and deletes them
// when it is unloaded, so the lock is not tied to a constructor: Initialize()
// and Delete() bracket its use.  Windows uses a CRITICAL_SECTION, other
// systems a recursive mutex; both allow the owning thread to enter again.
#ifndef ZELSTR_PLATFORM_CRITICAL_SECTION_H
#define ZELSTR_PLATFORM_CRITICAL_SECTION_H

namespace zelstr::platform {

class CriticalSection {
 public:
  void Initialize();
  void Delete();
  void Enter();
  void Leave();

 private:
  // Room for the system's lock object, which the header does not name.
  alignas(16) unsigned char m_abStorage[64];
};

// Holds a critical section for the life of a scope.
class CriticalSectionGuard {
 public:
  explicit CriticalSectionGuard(CriticalSection& cs) : m_cs(cs) { m_cs.Enter(); }
  ~CriticalSectionGuard() { m_cs.Leave(); }
  CriticalSectionGuard(CriticalSectionGuard const&) = delete;
  CriticalSectionGuard& operator=(CriticalSectionGuard const&) = delete;

 private:
  CriticalSection& m_cs;
};

}  // namespace zelstr::platform

#endif  // ZELSTR_PLATFORM_CRITICAL_SECTION_H
