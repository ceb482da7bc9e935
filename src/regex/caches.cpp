// caches.cpp - Tcl_CompileRE and Tcl_MatchRE: compiled expressions kept
// for the 256 patterns used last, and their release at unload.
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <string>
#include <vector>

#include "frame/module.h"
#include "frame/report.h"
#include "regex/compiler.h"
#include "regex/state.h"
#include "zelstr/alloc.h"
#include "zelstr/regex.h"
#include "zelstr/search.h"

namespace msg = zelstr::frame::msg;

namespace {

void warn(zelstr::frame::Message const& message, int line = __builtin_LINE()) {
  zelstr::frame::report(zelstr::frame::Unit::regexptcl, message, zelstr::frame::kUnknownFunction,
                        line);
}

// A composed warning (severity 4, id -1).
void warn_text(char const* text, int line = __builtin_LINE()) {
  warn(zelstr::frame::Message{-1, 4, text}, line);
}

std::string format(char const* fmt, char const* a, char const* b = nullptr) {
  char buffer[2048];
  std::snprintf(buffer, sizeof buffer, fmt, a, b);
  return buffer;
}

// A list of at most 256 compiled patterns, the most recently used first.
// A failed compile is kept too (with a NULL expression).
class CompiledCache {
 public:
  struct Entry {
    char* pattern;  // a heap copy
    int backslashes;
    Tcl_Interp* interp;
    Tcl_RegExp_* re;
  };

  // The entry for `pattern` compiled with `backslashes`, moved to the
  // front; NULL when there is none.
  Entry* find(char const* pattern, int backslashes) {
    for (std::size_t i = 0; i < m_entries.size(); ++i) {
      Entry& e = m_entries[i];
      if (e.backslashes == backslashes && std::strcmp(e.pattern, pattern) == 0) {
        if (i != 0) {
          Entry moved = std::move(e);
          m_entries.erase(m_entries.begin() + static_cast<std::ptrdiff_t>(i));
          m_entries.insert(m_entries.begin(), std::move(moved));
        }
        return &m_entries.front();
      }
    }
    return nullptr;
  }

  // A new entry at the front: the least recently used one is emptied and
  // reused when the list is full.
  Entry& add(Entry entry) {
    if (m_entries.size() == kCapacity) {
      empty(m_entries.back());
      m_entries.pop_back();
    }
    m_entries.insert(m_entries.begin(), std::move(entry));
    return m_entries.front();
  }

  void clear() {
    for (Entry& e : m_entries) empty(e);
    m_entries.clear();
    m_entries.shrink_to_fit();
  }

  std::size_t size() const { return m_entries.size(); }

 private:
  static constexpr std::size_t kCapacity = 256;

  static void empty(Entry& e) {
    _zstrdupfree(e.pattern);
    if (e.interp != nullptr || e.re != nullptr) Tcl_DeleteInterp(e.interp, e.re);
    e = Entry{};
  }

  std::vector<Entry> m_entries;
};

// The caches are made on first use and deleted by the unload sequence,
// which may run after the program's statics are gone: a static cache would
// already be destroyed when the sequence comes to empty it.
CompiledCache* g_compile_cache = nullptr;
CompiledCache* g_match_cache = nullptr;

CompiledCache& cache(CompiledCache*& c) {
  if (c == nullptr) c = new CompiledCache;
  return *c;
}

CompiledCache& compile_cache() { return cache(g_compile_cache); }
CompiledCache& match_cache() { return cache(g_match_cache); }

void delete_cache(CompiledCache*& c) {
  if (c == nullptr) return;
  c->clear();
  delete c;
  c = nullptr;
}

// (char const*)-1, or 1 as the unload sequence passes it: a command to
// empty a cache.
bool is_clear_command(char const* p) {
  auto const value = reinterpret_cast<std::intptr_t>(p);
  return value == -1 || value == 1;
}

// Compiles `pattern` with the switch set to `backslashes` into a new entry.
CompiledCache::Entry compile_entry(char const* pattern, char const* source, int backslashes) {
  CompiledCache::Entry e{_zstrdupalloc(pattern, 0), backslashes, nullptr, nullptr};
  e.interp = Tcl_CreateInterp();
  if (e.interp == nullptr) return e;
  Tcl_TemporarilyDefineWhetherBackslashesInIntervalsAreHandled const scope(backslashes);
  e.re = Tcl_RegExpCompile(e.interp, source);
  return e;
}

void release_compile_cache() { delete_cache(g_compile_cache); }
void release_match_cache() {
  Tcl_MatchRE(reinterpret_cast<char const*>(1), reinterpret_cast<char const*>(1));
  delete_cache(g_match_cache);
  zelstr::regex::release_work_buffer();
}

ZELSTR_MODULE_HOOK zelstr::frame::UnloadHook g_compile_hook(zelstr::frame::UnloadStep::kRegexCache,
                                                            release_compile_cache);
ZELSTR_MODULE_HOOK zelstr::frame::UnloadHook g_match_hook(zelstr::frame::UnloadStep::kMatchReCache,
                                                          release_match_cache);

}  // namespace

int Tcl_CompileRE(char const* pattern, Tcl_Interp*& interp, Tcl_RegExp_*& re, int backslashes) {
  interp = nullptr;
  re = nullptr;
  if (reinterpret_cast<std::intptr_t>(pattern) == -1) {
    compile_cache().clear();
    return 1;
  }
  if (pattern == nullptr) {
    warn(msg::kCompileReNullPattern);
    return 0;
  }
  if (*pattern == '\0') {
    warn(msg::kCompileReEmptyPattern);
    return 0;
  }
  CompiledCache::Entry* e = compile_cache().find(pattern, backslashes);
  if (e == nullptr) e = &compile_cache().add(compile_entry(pattern, pattern, backslashes));
  if (e->re != nullptr) {
    interp = e->interp;
    re = e->re;
    return 1;
  }
  // The warning quotes the engine's current error text: a cached failure
  // is not compiled again, so that is whatever the last compile or match
  // left (the form without a text when there is none).
  char const* const error = Tcl_GetRegError();
  warn_text(error == nullptr ? format(msg::kCompileReFailedFormat, pattern).c_str()
                             : format(msg::kCompileReErrorFormat, pattern, error).c_str());
  return 0;
}

int Tcl_MatchRE(char const* string, char const* pattern) {
  if (is_clear_command(string)) {
    match_cache().clear();
    return 1;
  }
  if (string == nullptr) {
    warn(msg::kMatchReNullString);
    return 0;
  }
  if (pattern == nullptr) {
    warn(msg::kMatchReNullPattern);
    return 0;
  }
  // A pattern with no special character and no escape matches where it
  // occurs: the search gives the engine's answer without compiling.
  if (std::strpbrk(pattern, "^|()*+?.[]\\$") == nullptr) {
    return _zstrstr(string, pattern) != nullptr ? 1 : 0;
  }
  CompiledCache::Entry* e = match_cache().find(pattern, 1);
  if (e == nullptr) {
    std::string source = pattern;
    Tcl_ReplaceRegExpEscapedChars(source.data());
    e = &match_cache().add(compile_entry(pattern, source.c_str(), 1));
  }
  if (e->interp == nullptr) {
    warn_text(format(msg::kMatchReNoInterpFormat, pattern).c_str());
    return 0;
  }
  if (e->re == nullptr) {
    char const* const error = Tcl_GetRegError();
    warn_text(error == nullptr ? format(msg::kMatchReFailedFormat, pattern).c_str()
                               : format(msg::kMatchReErrorFormat, pattern, error).c_str());
    return 0;
  }
  int const result = Tcl_RegExpMatch(string, e->re);
  if (result < 0) {
    warn_text(format(msg::kMatchReMatchErrorFormat, string, pattern).c_str());
    return 0;
  }
  return result;
}
