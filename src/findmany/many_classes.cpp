// many_classes.cpp - the two exported many-strings classes, each a handle
// to its searcher.  Without memory for the searcher, an object behaves as
// one never prepared: Add gives -1, Prepare 0, Find NULL.
#include "findmany/searcher.h"
#include "frame/memory.h"
#include "zelstr/findmany.h"

namespace {

namespace fm = zelstr::findmany;

fm::Searcher* made(fm::Searcher* searcher) {
  if (searcher == nullptr) zelstr::frame::note_allocation_failure();
  return searcher;
}

// Adds the strings of a NULL-terminated array and prepares.
void add_all(fm::Searcher* s, char const* const* strings, int flags, void* map,
             char const* word_chars) {
  if (s == nullptr) return;
  if (strings != nullptr) {
    for (char const* const* p = strings; *p != nullptr; ++p) s->add(*p);
  } else {
    s->add(nullptr);  // the bad-argument warning
  }
  s->prepare(flags, map, word_chars);
}

}  // namespace

#define ZELSTR_DEFINE_FIND_MANY(Class, make)                                                       \
  Class::Class() noexcept : m_searcher(made(fm::make())) {}                                        \
  Class::Class(char const* const* strings, int flags, void* map, char const* wordChars) noexcept   \
      : m_searcher(made(fm::make())) {                                                             \
    add_all(m_searcher, strings, flags, map, wordChars);                                           \
  }                                                                                                \
  Class::~Class() { delete m_searcher; }                                                           \
  int Class::Add(char const* string) noexcept {                                                    \
    return m_searcher != nullptr ? m_searcher->add(string) : -1;                                   \
  }                                                                                                \
  int Class::Prepare(int flags, void* map, char const* wordChars) noexcept {                       \
    return m_searcher != nullptr ? m_searcher->prepare(flags, map, wordChars) : 0;                 \
  }                                                                                                \
  char const* Class::Find(char const* text, int* index, long length, char const* from) noexcept {  \
    if (m_searcher == nullptr) {                                                                   \
      if (index != nullptr) *index = -1;                                                           \
      return nullptr;                                                                              \
    }                                                                                              \
    return m_searcher->find(text, index, length, from);                                            \
  }                                                                                                \
  char const* Class::FindNext(int* index) noexcept {                                               \
    if (m_searcher == nullptr) {                                                                   \
      if (index != nullptr) *index = -1;                                                           \
      return nullptr;                                                                              \
    }                                                                                              \
    return m_searcher->find_next(index);                                                           \
  }                                                                                                \
  int Class::GetCount() const noexcept { return m_searcher != nullptr ? m_searcher->count() : 0; } \
  char const* Class::GetString(int index) const noexcept {                                         \
    return m_searcher != nullptr ? m_searcher->string(index) : nullptr;                            \
  }

ZELSTR_DEFINE_FIND_MANY(CFindManyStrOld, make_old_searcher)
ZELSTR_DEFINE_FIND_MANY(CFindManyStrHoary, make_hoary_searcher)
