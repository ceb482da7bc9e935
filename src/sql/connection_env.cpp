// connection_env.cpp - the registry of dialect settings and its look-up.
#include "sql/connection_env.h"

#include <atomic>
#include <cstring>
#include <new>

#include "frame/memory.h"
#include "frame/module.h"
#include "frame/own_lock.h"
#include "frame/per_thread.h"
#include "sql/find_cache.h"
#include "sql/report.h"

namespace {

using zelstr::frame::Unit;
namespace msg = zelstr::sql::msg;
namespace sql = zelstr::sql;

using Guard = zelstr::platform::CriticalSectionGuard;
zelstr::platform::CriticalSection& registry_lock() {
  return zelstr::frame::own_lock(zelstr::frame::OwnLock::kSettings);
}

// The one-entry look-up cache of Find, each thread's own.  Entries are only
// deleted all together, which starts a new generation of the list.
std::atomic<unsigned long> g_generation{0};
using FindCache = zelstr::sql::FindCache<CConnectionEnv>;
using CacheSlot = zelstr::frame::PerThread<FindCache, zelstr::frame::ThreadSlot::kSqlSettings>;

// Unload step 2: every thread's look-up cache, which points into the
// registry that step 1 emptied.
ZELSTR_MODULE_HOOK zelstr::frame::UnloadHook g_release_caches(
    zelstr::frame::UnloadStep::kObjectList, [] { CacheSlot::release_every_thread(); });

// Numbers for definitions (CConnectionEnv::m_nCharsetsVersion).
std::atomic<unsigned long> g_definitions{0};

bool is_blank(char c) { return c == ' ' || c == '\t' || c == '\n' || c == '\r'; }

char* new_string(std::size_t length) { return zelstr::frame::new_array<char>(length + 1); }

// A new array holding `prefix` followed by `rest`.
char* join(char const* prefix, char const* rest) {
  std::size_t const prefix_length = std::strlen(prefix);
  std::size_t const rest_length = std::strlen(rest);
  char* const joined = new_string(prefix_length + rest_length);
  if (joined == nullptr) return nullptr;
  std::memcpy(joined, prefix, prefix_length);
  std::memcpy(joined + prefix_length, rest, rest_length + 1);
  return joined;
}

// The caller's definition with its blanks cut off, or NULL when nothing but
// blanks is left.  The trailing blanks are cut by a NUL written into the
// caller's string, as the settings functions document.
char const* trimmed(char const* definition) {
  if (definition == nullptr) return nullptr;
  while (is_blank(*definition)) ++definition;
  if (*definition == '\0') return nullptr;
  std::size_t end = std::strlen(definition);
  while (is_blank(definition[end - 1])) --end;
  if (definition[end] != '\0') const_cast<char*>(definition)[end] = '\0';
  return definition;
}

// Exactly one of "[" at the start and "]" at the end.
bool half_bracketed(char const* definition) {
  bool const opens = definition[0] == '[';
  bool const closes = definition[std::strlen(definition) - 1] == ']';
  return opens != closes;
}

void release_settings_arena() { CConnectionEnv::DeleteWholeArena(); }

ZELSTR_MODULE_HOOK zelstr::frame::UnloadHook g_release_hook(
    zelstr::frame::UnloadStep::kConnectionArena, &release_settings_arena);

}  // namespace

CConnectionEnv* CConnectionEnv::m_pFirst = nullptr;
CConnectionEnv* CConnectionEnv::m_pLast = nullptr;

CConnectionEnv::CConnectionEnv(void const* connection, int version, int maxName, int quotedId,
                               int bracketedId, char defltQuote, char const* allowedAs1st) noexcept
    : m_pConnection(connection),
      m_cLanguage('T'),
      m_nVersion(version),
      m_nMaxName(maxName),
      m_bQuotedId(quotedId),
      m_bBracketedId(bracketedId),
      m_cDefltQuote(defltQuote) {
  Redefine(allowedAs1st);
}

CConnectionEnv::CConnectionEnv(void const* connection, int version, int maxName, int maxDbLinkName,
                               char const* allowedAs1st) noexcept
    : m_pConnection(connection),
      m_cLanguage('P'),
      m_nVersion(version),
      m_nMaxName(maxName),
      m_nMaxDbLinkName(maxDbLinkName) {
  Redefine(allowedAs1st);
}

CConnectionEnv::~CConnectionEnv() { FreeDefinitions(); }

bool CConnectionEnv::Redefine(char const* allowedAs1st) noexcept {
  if (!ComputeCharsetsFor1stAndNthChars(allowedAs1st)) return false;
  m_nCharsetsVersion = g_definitions.fetch_add(1, std::memory_order_relaxed) + 1;
  return true;
}

CConnectionEnv* CConnectionEnv::Register(CConnectionEnv* fresh) noexcept {
  if (fresh == nullptr) {
    zelstr::frame::note_allocation_failure();
    return nullptr;
  }
  if (fresh->m_pszAllowedAs1st == nullptr || fresh->m_pszAllowedAsOthers == nullptr) {
    delete fresh;
    return nullptr;
  }
  Guard const guard(registry_lock());
  fresh->Append();
  return fresh;
}

void CConnectionEnv::Append() noexcept {
  m_pPrev = m_pLast;
  if (m_pLast != nullptr) {
    m_pLast->m_pNext = this;
  } else {
    m_pFirst = this;
  }
  m_pLast = this;
}

void CConnectionEnv::FreeDefinitions() noexcept {
  delete[] m_pszAllowedAs1st;
  delete[] m_pszAllowedAsOthers;
  m_pszAllowedAs1st = nullptr;
  m_pszAllowedAsOthers = nullptr;
}

bool CConnectionEnv::ComputeCharsetsFor1stAndNthChars(char const* definition) noexcept {
  char const* others_prefix;   // before a plain list of characters
  char const* bracket_prefix;  // replaces the "[" of a bracketed definition
  char const* fallback;
  char const* bad_definition_format;
  if (m_cLanguage == 'T') {
    others_prefix = "0123456789$";
    bracket_prefix = "[0-9$";
    fallback = sql::kTsqlDefaultFirst;
    bad_definition_format = msg::kEnvBadTsqlFirstDefinitionFormat;
  } else if (m_cLanguage == 'P') {
    others_prefix = "0123456789$_#";
    bracket_prefix = "[0-9$_#";
    fallback = sql::kPlsqlDefaultFirst;
    bad_definition_format = msg::kEnvBadPlsqlFirstDefinitionFormat;
  } else {
    sql::warn_format(Unit::connectionenv, __LINE__, msg::kEnvBadLanguageFormat, m_cLanguage);
    FreeDefinitions();
    return true;
  }
  definition = trimmed(definition);
  if (definition != nullptr && half_bracketed(definition)) {
    sql::warn_format(Unit::connectionenv, __LINE__, bad_definition_format, definition);
    definition = nullptr;
  }
  if (definition == nullptr) definition = fallback;

  char* const first = join("", definition);
  char* const others =
      definition[0] == '[' ? join(bracket_prefix, definition + 1) : join(others_prefix, definition);
  if (first == nullptr || others == nullptr) {
    delete[] first;
    delete[] others;
    return false;
  }
  FreeDefinitions();
  m_pszAllowedAs1st = first;
  m_pszAllowedAsOthers = others;
  return true;
}

CConnectionEnv* CConnectionEnv::Find(void const* connection, char i_cLanguage) noexcept {
  FindCache& cache = CacheSlot::get();
  if (CConnectionEnv* const hit = cache.hit(connection, i_cLanguage, g_generation)) return hit;
  Guard const guard(registry_lock());
  cache.generation = g_generation.load(std::memory_order_relaxed);
  cache.connection = connection;
  cache.language = i_cLanguage;
  for (CConnectionEnv* e = m_pFirst; e != nullptr; e = e->m_pNext) {
    cache.result = e;
    if (e->m_pConnection == connection && e->m_cLanguage == i_cLanguage) return e;
  }
  cache.result = nullptr;
  if (connection != nullptr) return nullptr;

  // Without memory there is no default entry yet: a later look-up tries again.
  CConnectionEnv* created = nullptr;
  if (i_cLanguage == 'T') {
    created = Register(new (std::nothrow) CConnectionEnv(
        nullptr, sql::kTsqlDefaultVersion, sql::kTsqlDefaultMaxName, 0, 0, '"', nullptr));
  } else if (i_cLanguage == 'P') {
    created = Register(new (std::nothrow) CConnectionEnv(nullptr, sql::kPlsqlDefaultVersion,
                                                         sql::kPlsqlDefaultMaxName,
                                                         sql::kPlsqlDefaultMaxDbLinkName, nullptr));
  } else {
    sql::warn_format(Unit::connectionenv, __LINE__, msg::kEnvFindBadLanguageFormat, i_cLanguage);
  }
  cache.result = created;
  return created;
}

CConnectionEnv* CConnectionEnv::FindOrDefault(void const* connection, char language,
                                              bool* own) noexcept {
  CConnectionEnv* entry = Find(connection, language);
  if (own != nullptr) *own = entry != nullptr;
  if (entry == nullptr) entry = Find(nullptr, language);
  return entry;
}

void CConnectionEnv::DeleteWholeArena() noexcept {
  Guard const guard(registry_lock());
  g_generation.fetch_add(1, std::memory_order_release);
  CConnectionEnv* e = m_pFirst;
  m_pFirst = nullptr;
  m_pLast = nullptr;
  while (e != nullptr) {
    CConnectionEnv* const next = e->m_pNext;
    delete e;
    e = next;
  }
}
