// verb.cpp - _zstrverb: a verb in the third person by a count.
#include <cstring>

#include "str/report.h"
#include "str/text/english.h"
#include "zelstr/textutil.h"

using namespace zelstr::str;
using namespace zelstr::str::text;

namespace {

struct Forms {
  char const* base;
  char const* singular;
  char const* plural;
};

constexpr Forms kIrregular[] = {
    {"be", "is", "are"}, {"have", "has", "have"}, {"do", "does", "do"}, {"go", "goes", "go"}};
constexpr Forms kPast[] = {{"be", "was", "were"}};
constexpr char const* kModal[] = {"can",   "could", "may",    "might", "must",
                                  "shall", "should", "will", "would"};

template <std::size_t N>
bool put_from(Writer& out, Forms const (&table)[N], char const* w, std::size_t n, bool singular) {
  for (Forms const& f : table) {
    if (!same_word(w, n, f.base)) continue;
    put_cased(out, singular ? f.singular : f.plural, casing_of(w, n), true);
    return true;
  }
  return false;
}

bool is_modal(char const* w, std::size_t n) {
  for (char const* m : kModal) {
    if (same_word(w, n, m)) return true;
  }
  return false;
}

void put_verb(Writer& out, char const* w, std::size_t n, bool singular, int flags) {
  if ((flags & ZEAL_VERB_PAST) != 0 && put_from(out, kPast, w, n, singular)) return;
  if (put_from(out, kIrregular, w, n, singular)) return;
  if (!singular || n == 0 || is_modal(w, n)) {
    out.put(w, n);
    return;
  }
  put_regular_s(out, w, n, true);
}

}  // namespace

char* _zstrverb(char const* verb, long count, int flags) noexcept {
  if (verb == nullptr) {
    warn_format(msg::kTextNullArgumentFormat, "_zstrverb", "verb", "NULL");
    return nullptr;
  }
  std::size_t const n = std::strlen(verb);
  std::size_t const first = std::strcspn(verb, " ");
  return into_arena([&](Writer& out) {
    put_verb(out, verb, first, count == 1, flags);
    out.put(verb + first, n - first);
  });
}
