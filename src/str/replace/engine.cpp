// engine.cpp - replacement runs in linear time.
#include "str/replace/engine.h"

#include <cstring>
#include <new>
#include <optional>
#include <vector>

#include "chars/upper_fold.h"
#include "frame/memory.h"
#include "str/search/plan.h"

namespace zelstr::str::replace {
namespace {

using search::SearchState;

// The state of the forward search this run uses: prepared for `s1` as the
// first search of a run does; the later searches of the run reuse it, and
// the flag is left set, ready for the next run.  A run through a map uses
// `own`, leaving the library-wide states alone.  NULL when memory is short
// for the preparation.
SearchState* prepared_search(Run const& run, std::optional<SearchState>& own) {
  SearchState* st;
  if (run.map != nullptr) {
    st = &own.emplace();
    st->map = run.map;
  } else {
    st = run.ignore_case ? &search::case_insensitive_state() : &search::case_sensitive_state();
  }
  bool const prepared = search::prepare(*st, run.s1, static_cast<std::uint32_t>(run.len1));
  st->first_search = 1;
  return prepared ? st : nullptr;
}

// Walks the occurrences and rebuilds the string as it goes, left to right:
// the text between occurrences moves down over the room freed, so this
// serves runs that do not grow the string.
struct Compactor {
  Run const& run;
  char* write;       // the end of the result so far
  char const* read;  // the start of the text not copied yet
  std::size_t replaced = 0;
  int last = -1;  // the result's last byte so far; -1 before the first

  // The occurrence at `at` stands apart: no delimiter just before it in the
  // result so far, nor just after it.
  bool stands_apart(char const* at) const {
    if (run.delimiters == nullptr) return true;
    int const before = at > read ? static_cast<unsigned char>(at[-1]) : last;
    if (before >= 0 && run.delimiters[before]) return false;
    return !run.delimiters[static_cast<unsigned char>(at[run.len1])];
  }

  void copy_up_to(char const* at) {
    std::size_t const n = static_cast<std::size_t>(at - read);
    if (n == 0) return;
    if (write != read) std::memmove(write, read, n);
    write += n;
    read = at;
    last = static_cast<unsigned char>(write[-1]);
  }

  static char const* visit(void* context, char const* at) {
    auto& self = *static_cast<Compactor*>(context);
    char const* const next = at + self.run.len1;
    if (!self.stands_apart(at)) return next;  // skipped whole, copied later
    self.copy_up_to(at);
    std::memcpy(self.write, self.run.s2, self.run.len2);
    self.write += self.run.len2;
    if (self.run.len2 != 0) self.last = static_cast<unsigned char>(self.run.s2[self.run.len2 - 1]);
    self.read = next;
    ++self.replaced;
    return next;
  }
};

// Collects the positions of the occurrences a growing run replaces, as
// long as the result fits `size`.
struct Collector {
  Run const& run;
  std::vector<std::uint32_t>& positions;
  bool overflow = false;
  char const* previous_end = nullptr;  // where the last replaced one ended

  bool stands_apart(char const* at) const {
    if (run.delimiters == nullptr) return true;
    if (at != run.string) {
      auto const before =
          static_cast<unsigned char>(at == previous_end ? run.s2[run.len2 - 1] : at[-1]);
      if (run.delimiters[before]) return false;
    }
    return !run.delimiters[static_cast<unsigned char>(at[run.len1])];
  }

  static char const* visit(void* context, char const* at) {
    auto& self = *static_cast<Collector*>(context);
    char const* const next = at + self.run.len1;
    if (!self.stands_apart(at)) return next;
    std::uint64_t const grown =
        self.run.length + (self.positions.size() + 1) * (self.run.len2 - self.run.len1);
    if (grown > self.run.size) {
      self.overflow = true;
      return nullptr;
    }
    self.positions.push_back(static_cast<std::uint32_t>(at - self.run.string));
    self.previous_end = next;
    return next;
  }
};

char* shrink_or_keep(Run const& run) {
  std::optional<SearchState> own;
  SearchState* const st = prepared_search(run, own);
  if (st == nullptr) return nullptr;  // nothing changed
  Compactor c{run, run.string, run.string};
  search::find_all(run.string, run.s1, *st, search::Visitor{Compactor::visit, &c});
  if (c.replaced == 0) return run.string;
  // The rest of the text, terminator included.
  std::size_t const tail = run.length + 1 - static_cast<std::size_t>(c.read - run.string);
  if (c.write != c.read) std::memmove(c.write, c.read, tail);
  std::size_t const shift = run.len1 - run.len2;
  if (shift > 0 && !run.compact) {
    leave_shift_residue(run.string, run.length, c.replaced, [shift](std::size_t) { return shift; });
  }
  return run.string;
}

char* grow(Run const& run) {
  std::vector<std::uint32_t> positions;
  std::optional<SearchState> own;
  SearchState* const st = prepared_search(run, own);
  if (st == nullptr) return nullptr;  // nothing changed
  Collector c{run, positions};
  search::find_all(run.string, run.s1, *st, search::Visitor{Collector::visit, &c});
  std::size_t const delta = run.len2 - run.len1;
  // From the end: each piece of text moves once, to its final place.
  char* const s = run.string;
  std::size_t source_end = run.length + 1;  // one past the terminator
  for (std::size_t i = positions.size(); i-- > 0;) {
    std::size_t const at = positions[i];
    std::size_t const moved_from = at + run.len1;
    std::memmove(s + moved_from + (i + 1) * delta, s + moved_from, source_end - moved_from);
    std::memcpy(s + at + i * delta, run.s2, run.len2);
    source_end = at;
  }
  return c.overflow ? nullptr : run.string;
}

}  // namespace

char* replace_all(Run const& run) {
  if (run.len2 > run.len1) {
    try {
      return grow(run);
    } catch (std::bad_alloc const&) {
      frame::note_allocation_failure();
      return nullptr;  // no room to remember the positions: nothing changed
    }
  }
  return shrink_or_keep(run);
}

char* replace_one(Run const& run, char* at) {
  std::uint64_t const length = run.length + run.len2 - run.len1;
  if (run.len2 > run.len1 && length > run.size) return nullptr;
  char* const tail = at + run.len1;
  std::memmove(at + run.len2, tail, run.length + 1 - static_cast<std::size_t>(tail - run.string));
  std::memcpy(at, run.s2, run.len2);
  return run.string;
}

unsigned char const* byte_fold(bool ignore_case) {
  return ignore_case ? chars::upper_fold().upper : nullptr;
}

void replace_bytes(char* string, char from, char to, unsigned char const* fold) {
  if (fold == nullptr) {
    for (char* p = std::strchr(string, from); p != nullptr; p = std::strchr(p + 1, from)) *p = to;
    return;
  }
  unsigned char const wanted = fold[static_cast<unsigned char>(from)];
  for (char* p = string; *p != '\0'; ++p) {
    if (fold[static_cast<unsigned char>(*p)] == wanted) *p = to;
  }
}

void remove_bytes(char* string, char c, unsigned char const* fold) {
  auto const image = [fold](unsigned char b) { return fold != nullptr ? fold[b] : b; };
  unsigned char const wanted = image(static_cast<unsigned char>(c));
  char* write = string;
  for (char const* read = string; *read != '\0'; ++read) {
    if (image(static_cast<unsigned char>(*read)) != wanted) *write++ = *read;
  }
  *write = '\0';
}

}  // namespace zelstr::str::replace
