// caches.cpp - Tcl_CompileRE and Tcl_MatchRE: compiled expressions kept
// for the 256 patterns used last, and their release at unload.
//
// Each thread has its own two caches.  A compiled expression holds the
// results of its last match, so one record handed to two threads could not
// serve both; with a cache per thread, each thread's records are its own
// and stay valid exactly as long as they would in a program with one thread.
//
// What the threads share is the compiling: every expression a cache
// compiles is also kept, as compiled and never matched, in one list for the
// process (SharedPrograms), behind a lock.  A thread that misses in its own
// cache takes a copy from there when another thread compiled the same text
// before, which costs a block copy instead of a compile.
#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <new>
#include <vector>

#include "frame/memory.h"
#include "frame/module.h"
#include "frame/own_lock.h"
#include "frame/per_thread.h"
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

// A composed warning: the text is formatted on the stack.
void warn_format(char const* fmt, char const* a, char const* b = nullptr,
                 int line = __builtin_LINE()) {
  char buffer[2048];
  std::snprintf(buffer, sizeof buffer, fmt, a, b);
  warn_text(buffer, line);
}

bool out_of_space() {
  char const* const error = Tcl_GetRegError();
  return error != nullptr && std::strcmp(error, msg::kReOutOfSpace) == 0;
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
        auto const at = m_entries.begin() + static_cast<std::ptrdiff_t>(i);
        std::rotate(m_entries.begin(), at, at + 1);  // to the front, without memory
        return &m_entries.front();
      }
    }
    return nullptr;
  }

  // A new entry at the front: the least recently used one is emptied and
  // reused when the list is full.  NULL, the entry emptied, when the list
  // has no memory for it.
  Entry* add(Entry entry) {
    if (m_entries.size() == kCapacity) {
      empty(m_entries.back());
      m_entries.pop_back();
    }
    try {
      m_entries.insert(m_entries.begin(), entry);
    } catch (std::bad_alloc const&) {
      zelstr::frame::note_allocation_failure();
      empty(entry);
      return nullptr;
    }
    return &m_entries.front();
  }

  CompiledCache() noexcept = default;
  CompiledCache(CompiledCache const&) = delete;
  CompiledCache& operator=(CompiledCache const&) = delete;
  ~CompiledCache() { clear(); }

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

// The expressions compiled last by any thread, most recently used first,
// as they came from the compiler: a copy of one matches as compiling its
// text again would.  A list of the same kind as a thread's cache (with no
// interps), behind a lock.  Compiles that failed are not kept: a thread
// compiles those itself, which also gives it the engine's error text.
class SharedPrograms {
 public:
  // A copy of the expression compiled from `source` with `backslashes`;
  // NULL when there is none, or no memory for the copy.
  Tcl_RegExp_* copy_of(char const* source, int backslashes) {
    zelstr::platform::CriticalSectionGuard const guard(lock());
    CompiledCache::Entry const* const e = m_programs.find(source, backslashes);
    return e != nullptr ? zelstr::regex::copy(e->re) : nullptr;
  }

  // Keeps a copy of `re`, just compiled from `source` with `backslashes`,
  // unless another thread has kept one meanwhile.  Nothing is kept when
  // memory is short.
  void keep(char const* source, int backslashes, Tcl_RegExp_ const* re) {
    CompiledCache::Entry entry{_zstrdupalloc(source, 0), backslashes, nullptr, nullptr};
    if (entry.pattern != nullptr) entry.re = zelstr::regex::copy(re);
    if (entry.re == nullptr) {
      _zstrdupfree(entry.pattern);
      return;
    }
    zelstr::platform::CriticalSectionGuard const guard(lock());
    if (m_programs.find(source, backslashes) != nullptr) {
      _zstrdupfree(entry.pattern);
      Tcl_DeleteInterp(entry.re);
      return;
    }
    m_programs.add(entry);
  }

  void clear() {
    zelstr::platform::CriticalSectionGuard const guard(lock());
    m_programs.clear();
  }

 private:
  static zelstr::platform::CriticalSection& lock() {
    return zelstr::frame::own_lock(zelstr::frame::OwnLock::kPrograms);
  }

  CompiledCache m_programs;
};

// Made in place and never destroyed by a static destructor: the unload
// sequence, which may run after static destruction, still empties it.
SharedPrograms& shared_programs() {
  alignas(SharedPrograms) static unsigned char storage[sizeof(SharedPrograms)];
  static SharedPrograms* const made = ::new (storage) SharedPrograms;
  return *made;
}

// A thread's two caches.
struct ThreadCaches {
  CompiledCache compile;
  CompiledCache match;
};
using CacheSlot = zelstr::frame::PerThread<ThreadCaches, zelstr::frame::ThreadSlot::kRegexCaches>;

CompiledCache& compile_cache() { return CacheSlot::get().compile; }
CompiledCache& match_cache() { return CacheSlot::get().match; }

// (char const*)-1, or 1 as the unload sequence passes it: a command to
// empty a cache.
bool is_clear_command(char const* p) {
  auto const value = reinterpret_cast<std::intptr_t>(p);
  return value == -1 || value == 1;
}

// The expression `source` compiles to with the switch set to `backslashes`:
// a copy of the shared one when there is one, as the compile would leave
// the engine's error text (cleared); else compiled, and shared when good.
Tcl_RegExp_* shared_or_compiled(char const* source, int backslashes) {
  if (Tcl_RegExp_* const twin = shared_programs().copy_of(source, backslashes)) {
    zelstr::regex::clear_error();
    return twin;
  }
  Tcl_TemporarilyDefineWhetherBackslashesInIntervalsAreHandled const scope(backslashes);
  Tcl_RegExp_* const re = Tcl_RegExpCompile(source);
  if (re != nullptr) shared_programs().keep(source, backslashes, re);
  return re;
}

// Compiles `pattern` with the switch set to `backslashes` into a new entry
// of `cache`.  A failure for lack of memory (the pattern's copy, the interp,
// or the compile's "out of space") is not cached, since the same pattern
// may well compile later: NULL then, with `*no_interp` set when it was the
// copy or the interp that could not be made.
CompiledCache::Entry* compile_entry(CompiledCache& cache, char const* pattern, char const* source,
                                    int backslashes, bool* no_interp) {
  CompiledCache::Entry e{_zstrdupalloc(pattern, 0), backslashes, nullptr, nullptr};
  e.interp = e.pattern != nullptr ? Tcl_CreateInterp() : nullptr;
  *no_interp = e.interp == nullptr;
  if (e.interp != nullptr) e.re = shared_or_compiled(source, backslashes);
  if (e.interp == nullptr || (e.re == nullptr && out_of_space())) {
    if (e.interp == nullptr) zelstr::frame::note_allocation_failure();
    _zstrdupfree(e.pattern);
    if (e.interp != nullptr) Tcl_DeleteInterp(e.interp, nullptr);
    return nullptr;
  }
  return cache.add(e);
}

void release_compile_cache() {
  CacheSlot::for_each([](ThreadCaches& caches) { caches.compile.clear(); });
  shared_programs().clear();
}

// The warning of a pattern that did not compile: with the engine's error
// text (out of space, when memory was short), or without one.
void warn_compile_failed(char const* with_error, char const* without, char const* pattern) {
  char const* const error = Tcl_GetRegError();
  if (error != nullptr) {
    warn_format(with_error, pattern, error);
  } else {
    warn_format(without, pattern);
  }
}
void release_match_cache() {
  Tcl_MatchRE(reinterpret_cast<char const*>(1), reinterpret_cast<char const*>(1));
  CacheSlot::for_each([](ThreadCaches& caches) { caches.match.clear(); });
  zelstr::regex::release_work_buffers();
}

ZELSTR_MODULE_HOOK zelstr::frame::UnloadHook g_compile_hook(zelstr::frame::UnloadStep::kRegexCache,
                                                            release_compile_cache);
ZELSTR_MODULE_HOOK zelstr::frame::UnloadHook g_match_hook(zelstr::frame::UnloadStep::kMatchReCache,
                                                          release_match_cache);

}  // namespace

int Tcl_CompileRE(char const* pattern, Tcl_Interp*& interp, Tcl_RegExp_*& re,
                  int backslashes) noexcept {
  interp = nullptr;
  re = nullptr;
  if (reinterpret_cast<std::intptr_t>(pattern) == -1) {
    compile_cache().clear();
    shared_programs().clear();
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
  CompiledCache& cache = compile_cache();
  CompiledCache::Entry* e = cache.find(pattern, backslashes);
  bool no_interp = false;
  if (e == nullptr) e = compile_entry(cache, pattern, pattern, backslashes, &no_interp);
  if (e != nullptr && e->re != nullptr) {
    interp = e->interp;
    re = e->re;
    return 1;
  }
  if (e == nullptr) {
    // Without memory: the engine's out-of-space text.
    warn_format(msg::kCompileReErrorFormat, pattern, msg::kReOutOfSpace);
    return 0;
  }
  // The warning quotes the engine's current error text: a cached failure
  // is not compiled again, so that is whatever the last compile or match
  // left (the form without a text when there is none).
  warn_compile_failed(msg::kCompileReErrorFormat, msg::kCompileReFailedFormat, pattern);
  return 0;
}

int Tcl_MatchRE(char const* string, char const* pattern) noexcept {
  if (is_clear_command(string)) {
    match_cache().clear();
    shared_programs().clear();
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
  CompiledCache& cache = match_cache();
  CompiledCache::Entry* e = cache.find(pattern, 1);
  bool no_interp = false;
  if (e == nullptr) {
    char* source = _zstrdupalloc(pattern, 0);
    if (source != nullptr) {
      Tcl_ReplaceRegExpEscapedChars(source);
      e = compile_entry(cache, pattern, source, 1, &no_interp);
      _zstrdupfree(source);
    } else {
      no_interp = true;
    }
  }
  if (e == nullptr && no_interp) {
    warn_format(msg::kMatchReNoInterpFormat, pattern);
    return 0;
  }
  if (e == nullptr) {
    warn_format(msg::kMatchReErrorFormat, pattern, msg::kReOutOfSpace);
    return 0;
  }
  if (e->re == nullptr) {
    warn_compile_failed(msg::kMatchReErrorFormat, msg::kMatchReFailedFormat, pattern);
    return 0;
  }
  int const result = Tcl_RegExpMatch(string, e->re);
  if (result < 0) {
    warn_format(msg::kMatchReMatchErrorFormat, string, pattern);
    return 0;
  }
  return result;
}
