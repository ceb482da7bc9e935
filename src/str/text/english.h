// english.h - what plurals and verb forms share: the words' case, and the
// regular endings.
#ifndef ZELSTR_STR_TEXT_ENGLISH_H
#define ZELSTR_STR_TEXT_ENGLISH_H

#include <cstddef>

#include "str/text/writer.h"

namespace zelstr::str::text {

inline bool is_upper(char c) { return c >= 'A' && c <= 'Z'; }
inline bool is_lower(char c) { return c >= 'a' && c <= 'z'; }
inline char lower(char c) { return is_upper(c) ? static_cast<char>(c - 'A' + 'a') : c; }
inline char upper(char c) { return is_lower(c) ? static_cast<char>(c - 'a' + 'A') : c; }

// A word `w` of `n` bytes: how its letters are cased.
enum class Casing { kLower, kCapital, kUpper };
inline Casing casing_of(char const* w, std::size_t n) {
  std::size_t letters = 0, uppers = 0;
  for (std::size_t i = 0; i < n; ++i) {
    letters += is_upper(w[i]) || is_lower(w[i]);
    uppers += is_upper(w[i]);
  }
  if (letters > 1 && uppers == letters) return Casing::kUpper;
  return n > 0 && is_upper(w[0]) ? Casing::kCapital : Casing::kLower;
}

// Writes `s` (lower case, as the tables hold it) in `casing`; `first` says
// whether s begins the word.
inline void put_cased(Writer& out, char const* s, Casing casing, bool first) {
  for (std::size_t i = 0; s[i] != '\0'; ++i) {
    bool const up = casing == Casing::kUpper || (casing == Casing::kCapital && first && i == 0);
    out.put(up ? upper(s[i]) : s[i]);
  }
}

// Whether the word `w` of `n` bytes ends with `tail` (ASCII case ignored).
inline bool ends_with(char const* w, std::size_t n, char const* tail) {
  std::size_t t = 0;
  while (tail[t] != '\0') ++t;
  if (t > n) return false;
  for (std::size_t i = 0; i < t; ++i) {
    if (lower(w[n - t + i]) != tail[i]) return false;
  }
  return true;
}

// The word's case-blind equality with `table_word` (lower case).
inline bool same_word(char const* w, std::size_t n, char const* table_word) {
  std::size_t i = 0;
  for (; i < n && table_word[i] != '\0'; ++i) {
    if (lower(w[i]) != table_word[i]) return false;
  }
  return i == n && table_word[i] == '\0';
}

// The regular ending: "es" after a hissing end (and after -o when
// `o_takes_es`), "ies" for a consonant and "y", else "s"; written in the
// word's case after its bytes (less the "y" it replaces).
inline void put_regular_s(Writer& out, char const* w, std::size_t n, bool o_takes_es) {
  Casing const casing = casing_of(w, n);
  bool const hissing = ends_with(w, n, "s") || ends_with(w, n, "x") || ends_with(w, n, "z") ||
                       ends_with(w, n, "ch") || ends_with(w, n, "sh") ||
                       (o_takes_es && ends_with(w, n, "o"));
  bool const consonant_y =
      n >= 2 && lower(w[n - 1]) == 'y' && !ends_with(w, n, "ay") && !ends_with(w, n, "ey") &&
      !ends_with(w, n, "iy") && !ends_with(w, n, "oy") && !ends_with(w, n, "uy");
  if (consonant_y) {
    out.put(w, n - 1);
    put_cased(out, "ies", casing, false);
    return;
  }
  out.put(w, n);
  put_cased(out, hissing ? "es" : "s", casing, false);
}

}  // namespace zelstr::str::text

#endif  // ZELSTR_STR_TEXT_ENGLISH_H
