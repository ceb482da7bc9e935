// allowed_charsets.cpp - the tables of characters allowed in identifiers.
//
// Each thread has one pair of tables per language, which serves every
// connection.  An entry whose settings changed since the thread last built
// tables from them rebuilds the thread's tables; an entry the thread built
// from before, unchanged since, receives the tables as they are, possibly
// built from another connection's settings.  The tables are only rebuilt on
// demand.
#include <cstring>
#include <utility>
#include <vector>

#include "chars/setdef.h"
#include "frame/memory.h"
#include "frame/module.h"
#include "frame/per_thread.h"
#include "sql/connection_env.h"
#include "sql/report.h"
#include "zelstr/sqlsettings.h"

namespace {

using zelstr::frame::Unit;
namespace msg = zelstr::sql::msg;
namespace sql = zelstr::sql;

struct Language {
  char language;
  char const* bad_first_format;
  char const* bad_others_format;
};
constexpr Language kTsql{'T', msg::kTsqlCharsetBadFirstFormat, msg::kTsqlCharsetBadOthersFormat};
constexpr Language kPlsql{'P', msg::kPlsqlCharsetBadFirstFormat, msg::kPlsqlCharsetBadOthersFormat};

struct CharsetPair {
  unsigned char first[256] = {};
  unsigned char others[256] = {};
};

// A thread's tables, and the definitions (CConnectionEnv::m_nCharsetsVersion)
// it built tables from.
struct ThreadCharsets {
  CharsetPair tsql;
  CharsetPair plsql;
  std::vector<std::pair<CConnectionEnv const*, unsigned long>> built;

  bool has_built(CConnectionEnv const* entry) const {
    for (auto const& b : built) {
      if (b.first == entry) return b.second == entry->m_nCharsetsVersion;
    }
    return false;
  }
  // Without memory the note is lost: the next call builds again.
  void note_built(CConnectionEnv const* entry) {
    for (auto& b : built) {
      if (b.first == entry) {
        b.second = entry->m_nCharsetsVersion;
        return;
      }
    }
    try {
      built.emplace_back(entry, entry->m_nCharsetsVersion);
    } catch (std::bad_alloc const&) {
      zelstr::frame::note_allocation_failure();
    }
  }
};
using CharsetSlot =
    zelstr::frame::PerThread<ThreadCharsets, zelstr::frame::ThreadSlot::kSqlCharsets>;

// Unload step 2: every thread's tables, built for entries of the arena
// that step 1 emptied.
ZELSTR_MODULE_HOOK zelstr::frame::UnloadHook g_release_tables(
    zelstr::frame::UnloadStep::kObjectList, [] { CharsetSlot::release_every_thread(); });

// Reads `definition` into `table`: a bracketed set definition, or a plain
// list of characters.  False when it cannot be read.
bool read_definition(char const* definition, unsigned char* table) {
  if (definition == nullptr || *definition == '\0') return false;
  if (definition[0] == '[') {
    unsigned char const* const members = zelstr::chars::compile_members(definition);
    if (members == nullptr) return false;
    std::memcpy(table, members, 256);
    return true;
  }
  std::memset(table, 0, 256);
  for (char const* p = definition; *p != '\0'; ++p) table[static_cast<unsigned char>(*p)] = 1;
  return true;
}

bool read_or_warn(char const* definition, unsigned char* table, char const* format) {
  if (read_definition(definition, table)) return true;
  sql::warn_format(Unit::connectionenv, __LINE__, format,
                   definition == nullptr ? "<null>" : definition);
  return false;
}

int build(Language const& language, char*& allowedAs1st, char*& allowedAsOthers,
          void const* connection) {
  allowedAs1st = nullptr;
  allowedAsOthers = nullptr;
  bool own = false;
  CConnectionEnv* const entry = CConnectionEnv::FindOrDefault(connection, language.language, &own);
  if (entry == nullptr) return 0;
  ThreadCharsets& mine = CharsetSlot::get();
  CharsetPair& pair = language.language == 'T' ? mine.tsql : mine.plsql;
  if (!mine.has_built(entry)) {
    if (!read_or_warn(entry->m_pszAllowedAs1st, pair.first, language.bad_first_format)) return 0;
    if (!read_or_warn(entry->m_pszAllowedAsOthers, pair.others, language.bad_others_format)) {
      return 0;
    }
  }
  allowedAs1st = reinterpret_cast<char*>(pair.first);
  allowedAsOthers = reinterpret_cast<char*>(pair.others);
  mine.note_built(entry);
  return own ? 1 : 0;
}

}  // namespace

int _zstr_build_tsql_allowed_charsets(char*& allowedAs1st, char*& allowedAsOthers,
                                      void const* const connection) noexcept {
  return build(kTsql, allowedAs1st, allowedAsOthers, connection);
}

int _zstr_build_plsql_allowed_charsets(char*& allowedAs1st, char*& allowedAsOthers,
                                       void const* const connection) noexcept {
  return build(kPlsql, allowedAs1st, allowedAsOthers, connection);
}
