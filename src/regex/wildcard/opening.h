// opening.h - what a wildcard pattern's own text decides of a subject,
// before any program is read or looked up.
//
// Most subjects an analyser tests fail a pattern within its first bytes
// ("usp[_]%" against a line that does not begin with "usp"), a pattern
// made of literals and any-one tokens is decided by one walk, and "%lit%"
// is a search for the literal.  These walks follow the pattern's text
// through the same image table the program would use and give its
// answers; the answer is kOpen where the program must decide.
//
// A LIKE pattern with an escape character is never walked: an escape at
// its end must be reported, and that is known only once the whole pattern
// is read.
#ifndef ZELSTR_REGEX_WILDCARD_OPENING_H
#define ZELSTR_REGEX_WILDCARD_OPENING_H

#include "regex/wildcard/lead_scan.h"
#include "regex/wildcard/program.h"

namespace zelstr::regex::wildcard {

enum class Opening { kNo, kYes, kOpen };

namespace detail {

struct Marks {
  Byte star, any;
};

// Whether two bytes have one image; bytes that are their own images are
// compared without the table.
inline bool same_image(Reading const& how, Byte a, Byte b) {
  return how.images == Images::kOwn ? a == b : how.table[a] == how.table[b];
}
inline Marks marks_of(Syntax syntax) {
  return syntax == Syntax::kLike ? Marks{'%', '_'} : Marks{'*', '?'};
}

// "STAR literal... STAR" (every literal plain, at least one): whether the
// subject holds the literals anywhere.  The subject's trailing blanks take
// no part: keeping them all is the reading that finds the most.  Out of
// line: the scan is long beside the walk.
[[gnu::noinline]] inline Opening read_contains(Byte const* p, Byte const* subject,
                                               Reading const& how, Marks m) {
  if (how.images == Images::kMapped) return Opening::kOpen;  // its leads cost a table walk
  std::size_t n = 0;
  while (p[n] != '\0' && p[n] != m.star && p[n] != m.any && p[n] != '[') ++n;
  if (n == 0 || p[n] != m.star || p[n + 1] != '\0') return Opening::kOpen;
  Leads leads;
  leads.add(p[0]);
  Byte const other = static_cast<Byte>(p[0] ^ 0x20);
  if (how.images == Images::kAsciiFolded && how.table[other] == how.table[p[0]]) {
    leads.add(other);
  }
  for (Byte const* s = subject; (s = find_lead(s, leads)) != nullptr; ++s) {
    std::size_t k = 1;
    while (k < n && s[k] != '\0' && same_image(how, s[k], p[k])) ++k;
    if (k == n) return Opening::kYes;
  }
  return Opening::kNo;
}

}  // namespace detail

// Walks the pattern from its start beside the subject, as the program
// would read it: kNo when a literal or an any-one token fails, kYes or kNo
// when the pattern ends without a star or a set; a pattern that opens with
// a star is tried as "%lit%"; anything else is kOpen at the first star or
// "[".  Inline: this is the whole of most calls.
inline Opening read_opening(char const* pattern, Byte const* subject, Reading const& how) {
  bool const like = how.syntax == Syntax::kLike;
  if (like && how.escape != 0) return Opening::kOpen;
  detail::Marks const m = detail::marks_of(how.syntax);
  auto const* p = reinterpret_cast<Byte const*>(pattern);
  if (*p == m.star) return detail::read_contains(p + 1, subject, how, m);
  for (Byte const* s = subject;; ++p, ++s) {
    Byte const c = *p;
    if (c == '\0') return ends_here(s, like) ? Opening::kYes : Opening::kNo;
    if (c == m.star || c == '[') return Opening::kOpen;
    if (*s == '\0' || (c != m.any && !detail::same_image(how, *s, c))) return Opening::kNo;
  }
}

}  // namespace zelstr::regex::wildcard

#endif  // ZELSTR_REGEX_WILDCARD_OPENING_H
