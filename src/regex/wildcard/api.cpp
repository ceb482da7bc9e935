// api.cpp - the exported MATCH and LIKE functions, their three workers and
// the workers' caches of read patterns.
//
// A worker reads a pattern into a program once and keeps it: an analyser
// tests one pattern against many names or lines.  Each worker keeps, per
// thread, the eight patterns it used last, replacing the least recently
// used; an entry is found by the pattern's text, the escape character and
// the image table it was read through.  Before any of that, the pattern's
// opening is walked beside the subject, which decides most calls at once.
#include <cstdarg>
#include <cstdint>
#include <cstdio>
#include <cstring>

#include "frame/memory.h"
#include "frame/messages.h"
#include "frame/module.h"
#include "frame/per_thread.h"
#include "frame/report.h"
#include "map/map_handle.h"
#include "regex/wildcard/opening.h"
#include "regex/wildcard/program.h"
#include "regex/wildcard/translate.h"
#include "zelstr/types.h"
#include "zelstr/wildcard.h"

namespace {

namespace wc = zelstr::regex::wildcard;
namespace msg = zelstr::frame::msg;
using wc::Byte;

struct ImageTable {
  Byte at[256];
};
constexpr ImageTable make_identity() {
  ImageTable t{};
  for (int c = 0; c < 256; ++c) t.at[c] = static_cast<Byte>(c);
  return t;
}
constexpr ImageTable make_folding() {
  ImageTable t = make_identity();
  for (int c = 'A'; c <= 'Z'; ++c) t.at[c] = static_cast<Byte>(c - 'A' + 'a');
  return t;
}
constexpr ImageTable kIdentity = make_identity();
constexpr ImageTable kFolding = make_folding();

void warn(char const* format, ...) ZELSTR_PRINTF_LIKE(1, 2);
void warn(char const* format, ...) {
  va_list args;
  va_start(args, format);
  zelstr::frame::report_formatted(zelstr::frame::Unit::zeal_str, __LINE__, format, args);
  va_end(args);
}

class Cache {
 public:
  ~Cache() { clear(); }

  // The program of `pattern` read as `how`; NULL with `*status` set when
  // it cannot be read.
  // The tables of the plain and i forms are constant, known by their
  // address; a map's memory may be reused for another map, so a map's
  // table is compared by its contents.
  wc::Program const* find(char const* pattern, wc::Reading const& how, bool by_contents,
                          wc::ReadStatus* status) {
    *status = wc::ReadStatus::kOk;
    for (std::size_t i = 0; i < kEntries && m_entries[i].program != nullptr; ++i) {
      Entry const& e = m_entries[i];
      if (e.syntax == how.syntax && e.escape == how.escape && same_text(e.pattern, pattern) &&
          (by_contents ? std::memcmp(e.program->table(), how.table, 256) == 0
                       : e.table == how.table)) {
        return to_front(i).program;
      }
    }
    std::size_t const length = std::strlen(pattern);
    auto* const program = new (std::nothrow) wc::Program;
    char* const copy = zelstr::frame::new_array<char>(length + 1);
    *status = program != nullptr && copy != nullptr ? program->read(pattern, length, how)
                                                    : wc::ReadStatus::kNoMemory;
    if (*status != wc::ReadStatus::kOk) {
      if (program == nullptr) zelstr::frame::note_allocation_failure();
      delete program;
      delete[] copy;
      return nullptr;
    }
    std::memcpy(copy, pattern, length + 1);
    Entry& e = to_front(kEntries - 1);  // the least recently used
    empty(e);
    e = Entry{copy, how.table, how.syntax, how.escape, program};
    return program;
  }

  void clear() {
    for (Entry& e : m_entries) empty(e);
  }

 private:
  // Patterns are short: a plain loop beats the C library's call here.
  static bool same_text(char const* a, char const* b) {
    while (*a == *b) {
      if (*a == '\0') return true;
      ++a;
      ++b;
    }
    return false;
  }

  static constexpr std::size_t kEntries = 8;
  struct Entry {
    char* pattern;
    Byte const* table;
    wc::Syntax syntax;
    Byte escape;
    wc::Program* program;
  };
  static void empty(Entry& e) {
    delete[] e.pattern;
    delete e.program;
    e = Entry{};
  }

  // Moves entry `i` to the front, the others keeping their order.
  Entry& to_front(std::size_t i) {
    Entry const e = m_entries[i];
    for (; i > 0; --i) m_entries[i] = m_entries[i - 1];
    m_entries[0] = e;
    return m_entries[0];
  }

  // Most recently used first; the used entries come before the empty ones.
  Entry m_entries[kEntries] = {};
};

// A thread's caches, one per worker.
struct WorkerCaches {
  Cache mapped;
  Cache like;
  Cache match;
};
using CacheSlot = zelstr::frame::PerThread<WorkerCaches, zelstr::frame::ThreadSlot::kWildcard>;

bool is_clear_command(void const* p) { return reinterpret_cast<std::intptr_t>(p) == 1; }

// Reads `pattern` into a program, or finds it in the calling thread's
// `cache`, and matches; `function` names the caller in warnings.  Out of
// line: most calls never come here.
__attribute__((noinline)) int run_program(Cache WorkerCaches::*cache, char const* string,
                                          char const* pattern, wc::Reading const& how,
                                          char const* function, bool mapped) {
  wc::ReadStatus status;
  wc::Program const* const program = (CacheSlot::get().*cache).find(pattern, how, mapped, &status);
  if (status == wc::ReadStatus::kEscapeAtEnd) warn(msg::kWildcardEscapeAtEndFormat, function);
  if (program == nullptr) return 0;
  bool const like = how.syntax == wc::Syntax::kLike;
  return program->matches(reinterpret_cast<Byte const*>(string), like) ? 1 : 0;
}

// Checks the arguments, walks the pattern's opening, then lets the program
// decide what the opening leaves open.  Inlined into each exported
// function, where the reading is a constant.
[[gnu::always_inline]] inline int run(Cache WorkerCaches::*cache, char const* string,
                                      char const* pattern, wc::Reading const& how,
                                      char const* function, bool mapped = false) {
  if (string == nullptr || pattern == nullptr) {
    warn(msg::kWildcardNullArgumentFormat, function);
    return 0;
  }
  switch (wc::read_opening(pattern, reinterpret_cast<Byte const*>(string), how)) {
    case wc::Opening::kNo:
      return 0;
    case wc::Opening::kYes:
      return 1;
    case wc::Opening::kOpen:
      break;
  }
  return run_program(cache, string, pattern, how, function, mapped);
}

[[gnu::always_inline]] inline int match_worker(char const* string, char const* pattern, bool fold,
                                               char const* function) {
  if (is_clear_command(string) && is_clear_command(pattern)) {
    CacheSlot::get().match.clear();
    return 0;
  }
  wc::Reading const how{wc::Syntax::kMatch, 0, fold ? kFolding.at : kIdentity.at,
                        fold ? wc::Images::kAsciiFolded : wc::Images::kOwn};
  return run(&WorkerCaches::match, string, pattern, how, function);
}

[[gnu::always_inline]] inline int like_worker(char const* string, char const* pattern, char escape,
                                              bool fold, char const* function) {
  if (is_clear_command(string) && is_clear_command(pattern)) {
    CacheSlot::get().like.clear();
    return 0;
  }
  wc::Reading const how{wc::Syntax::kLike, static_cast<Byte>(escape),
                        fold ? kFolding.at : kIdentity.at,
                        fold ? wc::Images::kAsciiFolded : wc::Images::kOwn};
  return run(&WorkerCaches::like, string, pattern, how, function);
}

int mapped_worker(void* map, char const* string, char const* pattern, wc::Syntax syntax,
                  char escape, char const* function) {
  if (is_clear_command(map) && is_clear_command(string) && is_clear_command(pattern)) {
    CacheSlot::get().mapped.clear();
    return 0;
  }
  bool const like = syntax == wc::Syntax::kLike;
  char const* const plain = like ? "_zstrlike" : "_zstrmatch";
  if (zelstr::map::is_bad(map)) warn(msg::kWildcardBadMapFormat, function, plain);
  if (map == nullptr || zelstr::map::is_bad(map)) {
    return like ? like_worker(string, pattern, escape, false, plain)
                : match_worker(string, pattern, false, plain);
  }
  wc::Reading const how{syntax, static_cast<Byte>(escape), zelstr::map::table_of(map),
                        wc::Images::kMapped};
  return run(&WorkerCaches::mapped, string, pattern, how, function, true);
}

char* translate(char const* pattern, wc::Reading const& how, char const* function) {
  if (pattern == nullptr) {
    warn(msg::kWildcardNullPatternFormat, function);
    return nullptr;
  }
  wc::Program program;
  wc::ReadStatus const status = program.read(pattern, std::strlen(pattern), how);
  if (status == wc::ReadStatus::kEscapeAtEnd) {
    warn(msg::kWildcardTranslateEscapeAtEndFormat, function);
  }
  if (status != wc::ReadStatus::kOk) return nullptr;
  char* const out = zelstr::frame::new_array<char>(wc::expression_length(program) + 1);
  if (out != nullptr) wc::write_expression(program, out);
  return out;
}

// The unload sequence empties every thread's caches: the mapped worker's,
// the LIKE worker's, then the MATCH worker's.
void release_caches() {
  CacheSlot::for_each([](WorkerCaches& caches) {
    caches.mapped.clear();
    caches.like.clear();
    caches.match.clear();
  });
}

ZELSTR_MODULE_HOOK zelstr::frame::UnloadHook g_release_hook(
    zelstr::frame::UnloadStep::kMatchWorkerCaches, &release_caches);

}  // namespace

int _zstrmatch(char const* string, char const* pattern) noexcept {
  return match_worker(string, pattern, false, "_zstrmatch");
}

int _zstrimatch(char const* string, char const* pattern) noexcept {
  return match_worker(string, pattern, true, "_zstrimatch");
}

int _zmapstrmatch(void* map, char const* string, char const* pattern) noexcept {
  return mapped_worker(map, string, pattern, wc::Syntax::kMatch, 0, "_zmapstrmatch");
}

int _zstrlike(char const* string, char const* pattern, char escape) noexcept {
  return like_worker(string, pattern, escape, false, "_zstrlike");
}

int _zstrilike(char const* string, char const* pattern, char escape) noexcept {
  return like_worker(string, pattern, escape, true, "_zstrilike");
}

int _zmapstrlike(void* map, char const* string, char const* pattern, char escape) noexcept {
  return mapped_worker(map, string, pattern, wc::Syntax::kLike, escape, "_zmapstrlike");
}

char* _zstrmatch2re(char const* pattern, int ignoreCase) noexcept {
  bool const fold = ignoreCase != 0;
  wc::Reading const how{wc::Syntax::kMatch, 0, fold ? kFolding.at : kIdentity.at,
                        fold ? wc::Images::kAsciiFolded : wc::Images::kOwn};
  return translate(pattern, how, "_zstrmatch2re");
}

char* _zstrlike2re(char const* pattern, char escape, int ignoreCase) noexcept {
  bool const fold = ignoreCase != 0;
  wc::Reading const how{wc::Syntax::kLike, static_cast<Byte>(escape),
                        fold ? kFolding.at : kIdentity.at,
                        fold ? wc::Images::kAsciiFolded : wc::Images::kOwn};
  return translate(pattern, how, "_zstrlike2re");
}
