// plural.cpp - _zstrplural and _zstraddplural: a noun in the plural by a
// count, with a list of the caller's own words.
#include <cstdio>
#include <cstring>
#include <new>

#include "frame/memory.h"
#include "frame/module.h"
#include "frame/own_lock.h"
#include "str/report.h"
#include "str/text/english.h"
#include "zelstr/textutil.h"

using namespace zelstr::str;
using namespace zelstr::str::text;

namespace {

struct Irregular {
  char const* singular;
  char const* plural;
};

constexpr Irregular kBuiltIn[] = {
    {"child", "children"}, {"person", "people"},     {"man", "men"},
    {"woman", "women"},    {"mouse", "mice"},        {"datum", "data"},
    {"criterion", "criteria"}, {"analysis", "analyses"}, {"axis", "axes"},
    {"crisis", "crises"},  {"series", "series"},     {"species", "species"},
    {"index", "indexes"}};
constexpr Irregular kLatin[] = {
    {"index", "indices"}, {"matrix", "matrices"}, {"vertex", "vertices"}, {"appendix", "appendices"}};

// The caller's words, newest first: one list for the process, behind the
// plural lock, released by unload step 2 (the module's list of objects).
struct CallerWord {
  CallerWord* next;
  char* singular;  // lower case
  char* plural;    // as given
};
CallerWord* g_words = nullptr;

zelstr::platform::CriticalSection& words_lock() {
  return zelstr::frame::own_lock(zelstr::frame::OwnLock::kPlurals);
}

void release(CallerWord* w) {
  delete[] w->singular;
  delete[] w->plural;
  delete w;
}

ZELSTR_MODULE_HOOK zelstr::frame::UnloadHook g_release(zelstr::frame::UnloadStep::kObjectList, [] {
  zelstr::platform::CriticalSectionGuard const guard(words_lock());
  while (CallerWord* const w = g_words) {
    g_words = w->next;
    release(w);
  }
});

char* copy_of(char const* s, bool lowered) {
  std::size_t const n = std::strlen(s);
  char* const c = new (std::nothrow) char[n + 1];
  if (c == nullptr) return nullptr;
  for (std::size_t i = 0; i <= n; ++i) c[i] = lowered ? lower(s[i]) : s[i];
  return c;
}

// Writes the caller's plural of the word, if it has one: true then.
bool put_caller_word(Writer& out, char const* w, std::size_t n) {
  zelstr::platform::CriticalSectionGuard const guard(words_lock());
  for (CallerWord const* c = g_words; c != nullptr; c = c->next) {
    if (!same_word(w, n, c->singular)) continue;
    out.put(c->plural, std::strlen(c->plural));
    return true;
  }
  return false;
}

template <std::size_t N>
bool put_from(Writer& out, Irregular const (&table)[N], char const* w, std::size_t n) {
  for (Irregular const& e : table) {
    if (!same_word(w, n, e.singular)) continue;
    put_cased(out, e.plural, casing_of(w, n), true);
    return true;
  }
  return false;
}

// The word `w` of `n` bytes in the plural.
void put_plural(Writer& out, char const* w, std::size_t n, int flags) {
  if (n == 0 || put_caller_word(out, w, n)) return;
  if ((flags & ZEAL_PLURAL_LATIN) != 0 && put_from(out, kLatin, w, n)) return;
  if (put_from(out, kBuiltIn, w, n)) return;
  put_regular_s(out, w, n, false);
}

// Where the last word of `noun` starts (after its last blank).
std::size_t last_word_at(char const* noun, std::size_t n) {
  while (n > 0 && noun[n - 1] != ' ') --n;
  return n;
}

}  // namespace

char* _zstrplural(char const* noun, long count, int flags) noexcept {
  if (noun == nullptr) {
    warn_format(msg::kTextNullArgumentFormat, "_zstrplural", "noun", "NULL");
    return nullptr;
  }
  std::size_t const n = std::strlen(noun);
  std::size_t const word = last_word_at(noun, n);
  return into_arena([&](Writer& out) {
    if ((flags & ZEAL_PLURAL_WORD_ONLY) == 0) {
      char digits[24];
      int const k = std::snprintf(digits, sizeof digits, "%ld ", count);
      out.put(digits, static_cast<std::size_t>(k));
    }
    out.put(noun, word);
    if (count == 1) {
      out.put(noun + word, n - word);
    } else {
      put_plural(out, noun + word, n - word, flags);
    }
  });
}

int _zstraddplural(char const* singular, char const* plural) noexcept {
  if (singular == nullptr || plural == nullptr) {
    warn_format(msg::kTextNullArgumentFormat, "_zstraddplural",
                singular == nullptr ? "singular" : "plural", "0");
    return 0;
  }
  if (*singular == '\0' || *plural == '\0') {
    warn_format(msg::kTextOutOfRangeFormat, "_zstraddplural",
                *singular == '\0' ? "singular" : "plural", "0");
    return 0;
  }
  auto* const w = new (std::nothrow) CallerWord{nullptr, nullptr, nullptr};
  if (w != nullptr) {
    w->singular = copy_of(singular, true);
    w->plural = copy_of(plural, false);
  }
  if (w == nullptr || w->singular == nullptr || w->plural == nullptr) {
    if (w != nullptr) release(w);
    zelstr::frame::note_allocation_failure();
    return 0;
  }
  zelstr::platform::CriticalSectionGuard const guard(words_lock());
  w->next = g_words;
  g_words = w;
  return 1;
}
