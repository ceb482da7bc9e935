// pieces.cpp - _zstrNby0replace, _zstr1by0replace, _zstrcpyNreplace, _zstrclean,
// _zstrlonesomize.
#include <cstring>
#include <new>
#include <vector>

#include "chars/setdef.h"
#include "frame/memory.h"
#include "str/expand.h"
#include "str/replace/engine.h"
#include "str/report.h"
#include "str/search/plan.h"
#include "zelstr/quote.h"
#include "zelstr/search.h"
#include "zelstr/replace.h"

using namespace zelstr::str;

namespace {

// Copies `src` into `dest` (different buffers), writing `s` for every `c`;
// with c = 0 the terminator is the one `c`, so `s` is appended.
char* copy_replacing(char* dest, char const* src, char c, char const* s) {
  std::size_t const n = std::strlen(s);
  char* w = dest;
  for (char const* r = src; *r != '\0'; ++r) {
    if (*r == c) {
      std::memcpy(w, s, n);
      w += n;
    } else {
      *w++ = *r;
    }
  }
  if (c == '\0') {
    std::memcpy(w, s, n);
    w += n;
  }
  *w = '\0';
  return dest;
}

// Replaces every occurrence of `s1` (or, without `every`, the first) by one
// NUL byte: the replacement is the one byte of "" with its terminator.
char* by0replace(char* string, char* s1, bool every) {
  if (s1 == nullptr) {
    warn(msg::kBy0ReplaceNullS1);
    return nullptr;
  }
  if (string == nullptr || *s1 == '\0') return string;
  replace::Run run{string, std::strlen(string), s1, std::strlen(s1), "", 1, ~0ull, false, nullptr};
  if (run.length < run.len1) return string;
  if (every) return replace::replace_all(run);
  zelstr::frame::FailureWatch const watch;
  char* const at = _zstrstr(string, s1);
  if (at == nullptr) return watch.failed() ? nullptr : string;  // no memory for the search
  return replace::replace_one(run, at);
}

}  // namespace

char* _zstrNby0replace(char* string, char* s1) noexcept { return by0replace(string, s1, true); }

char* _zstr1by0replace(char* string, char* s1) noexcept { return by0replace(string, s1, false); }

char* _zstrcpyNreplace(char* dest, char const* src, char c, char const* s) noexcept {
  if (dest == nullptr) {
    warn(msg::kCpyNreplaceNullDest);
    return nullptr;
  }
  if (src == nullptr) {
    warn(msg::kCpyNreplaceNullSrc);
    return nullptr;
  }
  return copy_replacing(dest, src, c, s != nullptr ? s : "");
}

char* _zstrcpyNreplace(char* dest, char* src, char c, char const* s) noexcept {
  if (dest == nullptr || src == nullptr || dest != src) {
    return _zstrcpyNreplace(dest, static_cast<char const*>(src), c, s);
  }
  if (s == nullptr) s = "";
  std::size_t const n = std::strlen(s);
  if (c == '\0') {
    std::memmove(dest + std::strlen(dest), s, n + 1);  // the terminator is the one `c`
  } else if (n == 2 && s[0] == c && s[1] == c) {
    _zstrdoubleq(dest, c);
  } else if (n == 0) {
    replace::remove_bytes(dest, c, nullptr);
  } else if (n == 1) {
    replace::replace_bytes(dest, c, s[0], nullptr);
  } else {
    expand_each(dest, c, s);
  }
  return dest;
}

char* _zstrclean(char* string, char const* s1, char const* s2, int keep_s1, int keep_s2) noexcept {
  if (string == nullptr || *string == '\0') return string;
  if (s1 == nullptr || *s1 == '\0') {
    warn(msg::kCleanBadS1);
    return string;
  }
  if (s2 == nullptr || *s2 == '\0') {
    warn(msg::kCleanBadS2);
    return string;
  }
  std::size_t const length = std::strlen(string);
  std::size_t const len1 = std::strlen(s1), len2 = std::strlen(s2);
  search::SearchState opening, closing;
  // Exact searches need no memory to be prepared.
  search::prepare(opening, s1, static_cast<std::uint32_t>(len1));
  search::prepare(closing, s2, static_cast<std::uint32_t>(len2));
  // The spans are found in the original text and cut by compaction; the
  // shifts are remembered for the bytes left behind the new end.
  std::vector<std::uint32_t> shifts;
  char* write = string;
  char const* read = string;
  for (char const* from = string;;) {
    char const* const open = search::find_first(from, s1, opening).match;
    if (open == nullptr) break;
    char const* const close = search::find_first(open + len1, s2, closing).match;
    if (close == nullptr) break;
    char const* const cut_from = keep_s1 ? open + len1 : open;
    char const* const cut_to = keep_s2 ? close : close + len2;
    std::size_t const kept = static_cast<std::size_t>(cut_from - read);
    std::memmove(write, read, kept);
    write += kept;
    read = cut_to;
    from = keep_s2 ? close + len2 : cut_to;
    if (cut_to > cut_from) {
      try {
        shifts.push_back(static_cast<std::uint32_t>(cut_to - cut_from));
      } catch (std::bad_alloc const&) {
        // The text stays right; only the bytes behind its end may differ.
        zelstr::frame::note_allocation_failure();
      }
    }
  }
  std::memmove(write, read, length + 1 - static_cast<std::size_t>(read - string));
  replace::leave_shift_residue(string, length, shifts.size(),
                               [&shifts](std::size_t k) { return shifts[k - 1]; });
  return string;
}

char* _zstrlonesomize(char* string, int n, char const* set, int* lonesome) noexcept {
  if (lonesome != nullptr) *lonesome = 0;
  if (string == nullptr || *string == '\0' || n == 1 || n < 0) return string;
  if (set == nullptr || *set == '\0') return string;
  unsigned char const* const members = zelstr::chars::compile_members(set);
  if (members == nullptr) return string;
  char* write = string;
  for (char const* read = string; *read != '\0';) {
    char const c = *read;
    if (!members[static_cast<unsigned char>(c)]) {
      *write++ = *read++;
      continue;
    }
    std::size_t run = 0;
    while (read[run] == c) ++run;
    read += run;
    std::size_t kept = 1;
    if (n > 1) {
      std::size_t const rest = run % static_cast<std::size_t>(n);
      kept = run / static_cast<std::size_t>(n) + rest;
      if (rest != 0 && lonesome != nullptr) *lonesome = 1;
    }
    std::memset(write, c, kept);
    write += kept;
  }
  *write = '\0';
  return string;
}

char* _zstrlonesomize(char* string, int n, char c, int* lonesome) noexcept {
  if (c == '\0') {
    if (lonesome != nullptr) *lonesome = 0;
    return string;
  }
  char set[] = {'[', '`', c, ']', '\0'};
  return _zstrlonesomize(string, n, set, lonesome);
}
