// conn_for_str_fncs.cpp - the registry of connection-keyed objects.
//
// Three of the module's critical sections serve it: the first guards the
// list itself (building, assigning, destroying, and the walk of Find), the
// second serialises Delete and the third DeleteWholeArena.  Delete and
// DeleteWholeArena thus do not exclude each other; each destruction they
// cause still takes the list's lock.  Delete leaves its lock held when it
// has destroyed an object (see dialect.h).
#include <atomic>
#include <cstdarg>
#include <new>

#include "frame/memory.h"
#include "frame/module.h"
#include "frame/per_thread.h"
#include "sql/find_cache.h"
#include "zelstr/dialect.h"

namespace {

zelstr::platform::CriticalSection& list_lock() { return zelstr::frame::critical_section(0); }
zelstr::platform::CriticalSection& delete_lock() { return zelstr::frame::critical_section(1); }
zelstr::platform::CriticalSection& arena_lock() { return zelstr::frame::critical_section(2); }

using Guard = zelstr::platform::CriticalSectionGuard;

// The one-entry look-up cache of Find, each thread's own; tested without
// the lock.  Every object taken off the list starts a new generation.
std::atomic<unsigned long> g_generation{0};
using FindCache = zelstr::sql::FindCache<CConnForStrFncs>;
using CacheSlot = zelstr::frame::PerThread<FindCache, zelstr::frame::ThreadSlot::kSqlObjects>;

// Unload step 2: every thread's look-up cache, which points into the list
// that step 1 emptied.
ZELSTR_MODULE_HOOK zelstr::frame::UnloadHook g_release_caches(
    zelstr::frame::UnloadStep::kObjectList, [] { CacheSlot::release_every_thread(); });

void release_object_arena() { CConnForStrFncs::DeleteWholeArena(); }

// The memory of the objects made with new: NULL, counted, when it is short.
void* allocate_object(std::size_t size) noexcept {
  void* const p = ::operator new(size, std::nothrow);
  if (p == nullptr) zelstr::frame::note_allocation_failure();
  return p;
}

ZELSTR_MODULE_HOOK zelstr::frame::UnloadHook g_release_hook(
    zelstr::frame::UnloadStep::kConnectionArena, &release_object_arena);

}  // namespace

void* CConnForStrFncs::operator new(std::size_t size) noexcept { return allocate_object(size); }
void CConnForStrFncs::operator delete(void* p) noexcept { ::operator delete(p); }
void* CHSQL::operator new(std::size_t size) noexcept { return allocate_object(size); }
void CHSQL::operator delete(void* p) noexcept { ::operator delete(p); }

CConnForStrFncs* CConnForStrFncs::m_p1stCnctEnv = nullptr;
CConnForStrFncs* CConnForStrFncs::m_pLastCnctEnv = nullptr;

CConnForStrFncs::CConnForStrFncs(void const* const connection, char language) noexcept
    : m_pNext(nullptr), m_pPrev(nullptr), m_pConnection(connection), m_cLanguage(language) {
  Guard guard(list_lock());
  Append();
}

CConnForStrFncs::CConnForStrFncs(CConnForStrFncs const& other) noexcept
    : m_pNext(nullptr), m_pPrev(nullptr), m_pConnection(nullptr), m_cLanguage('\0') {
  *this = other;
}

CConnForStrFncs const& CConnForStrFncs::operator=(CConnForStrFncs const& other) noexcept {
  Guard guard(list_lock());
  if (m_pNext == nullptr && m_pPrev == nullptr && m_p1stCnctEnv != this) Append();
  m_pConnection = other.m_pConnection;
  m_cLanguage = other.m_cLanguage;
  return *this;
}

CConnForStrFncs::~CConnForStrFncs() {
  Guard guard(list_lock());
  Unlink();
  m_pConnection = nullptr;
  m_cLanguage = '\0';
}

void CConnForStrFncs::Append() noexcept {
  m_pPrev = m_pLastCnctEnv;
  if (m_pLastCnctEnv != nullptr) {
    m_pLastCnctEnv->m_pNext = this;
  } else {
    m_p1stCnctEnv = this;
  }
  m_pLastCnctEnv = this;
}

void CConnForStrFncs::Unlink() noexcept {
  if (m_pPrev != nullptr) {
    m_pPrev->m_pNext = m_pNext;
  } else if (m_p1stCnctEnv == this) {
    m_p1stCnctEnv = m_pNext;
  }
  if (m_pNext != nullptr) {
    m_pNext->m_pPrev = m_pPrev;
  } else if (m_pLastCnctEnv == this) {
    m_pLastCnctEnv = m_pPrev;
  }
  m_pNext = nullptr;
  m_pPrev = nullptr;
  g_generation.fetch_add(1, std::memory_order_release);
}

CConnForStrFncs* CConnForStrFncs::Find(void const* const connection, char language) noexcept {
  FindCache& cache = CacheSlot::get();
  if (CConnForStrFncs* const hit = cache.hit(connection, language, g_generation)) return hit;
  Guard guard(list_lock());
  for (CConnForStrFncs* e = m_p1stCnctEnv; e != nullptr; e = e->m_pNext) {
    if (e->m_pConnection == connection && e->m_cLanguage == language) {
      cache = FindCache{connection, language, e, g_generation.load(std::memory_order_relaxed)};
      return e;
    }
  }
  return nullptr;
}

int CConnForStrFncs::Delete(void const* const connection) noexcept {
  delete_lock().Enter();
  CConnForStrFncs* found = nullptr;
  {
    Guard guard(list_lock());
    for (CConnForStrFncs* e = m_p1stCnctEnv; e != nullptr && found == nullptr; e = e->m_pNext) {
      if (e->m_pConnection == connection) found = e;
    }
  }
  if (found == nullptr) {
    delete_lock().Leave();
    return 0;
  }
  delete found;
  return 1;  // the lock stays held: see dialect.h
}

void CConnForStrFncs::DeleteWholeArena() noexcept {
  Guard guard(arena_lock());
  while (m_p1stCnctEnv != nullptr) delete m_p1stCnctEnv;
  m_p1stCnctEnv = nullptr;
  m_pLastCnctEnv = nullptr;
}

CConnForStrFncs* CConnForStrFncs::GetArenaEntry() noexcept { return m_p1stCnctEnv; }
CConnForStrFncs* CConnForStrFncs::GetNext() const noexcept { return m_pNext; }
void const* CConnForStrFncs::GetConnection() const noexcept { return m_pConnection; }
char CConnForStrFncs::GetLanguageChar() const noexcept { return m_cLanguage; }

CHSQL::CHSQL(void const* const connection, char language) noexcept
    : m_pConnection(connection), m_cLanguage(language) {}

CHSQL::CHSQL(CHSQL const& other) noexcept = default;
CHSQL& CHSQL::operator=(CHSQL const& other) noexcept = default;

CHSQL::~CHSQL() {
  m_pConnection = nullptr;
  m_cLanguage = '\0';
}

void const* CHSQL::GetConnection() const noexcept { return m_pConnection; }
char CHSQL::GetLanguageChar() const noexcept { return m_cLanguage; }

void CHSQL::DeleteComponents(char*** components, char** more, ...) noexcept {
  if (components != nullptr && *components != nullptr) {
    for (char** p = *components; *p != nullptr; ++p) delete[] * p;
    delete[] * components;
    *components = nullptr;
  }
  if (more == nullptr) return;
  va_list args;
  va_start(args, more);
  for (char** string = more; string != nullptr; string = va_arg(args, char**)) {
    delete[] * string;
    *string = nullptr;
  }
  va_end(args);
}
