// collation.cpp - ZealStrHelper's collator, from the system's own
// collation: CompareStringEx, FindNLSStringEx and LCMapStringEx with the
// locale's name and the flags of the strength.
//
// The system keeps no state between calls, so a collation is only the
// locale's name and two sets of flags.  Punctuation and symbols sort as
// characters of their own (SORT_STRINGSORT), as in ICU, rather than being
// nearly ignored as in the system's default word sort.
#include "platform/collation.h"

#include <windows.h>

#include <cstdint>
#include <new>

#include "frame/memory.h"

namespace zelstr::platform {

struct Collation {
  wchar_t locale[LOCALE_NAME_MAX_LENGTH] = {};  // "" is the invariant locale
  DWORD exact = 0;
  DWORD caseless = 0;
};

namespace {

constexpr DWORD kIgnoreCase = NORM_IGNORECASE | NORM_IGNOREKANATYPE | NORM_IGNOREWIDTH;

DWORD flags_of(int strength) {
  switch (strength) {
    case 1:
      return SORT_STRINGSORT | kIgnoreCase | NORM_IGNORENONSPACE;
    case 2:
      return SORT_STRINGSORT | kIgnoreCase;
    default:
      return SORT_STRINGSORT;
  }
}

// The system's name of `locale`: parts joined by "-", "root" as "".  False
// when it does not fit or holds other than ASCII.
bool system_name(char const* locale, wchar_t (&name)[LOCALE_NAME_MAX_LENGTH]) {
  if (lstrcmpA(locale, "root") == 0) locale = "";
  int i = 0;
  for (; locale[i] != '\0'; ++i) {
    unsigned char const c = static_cast<unsigned char>(locale[i]);
    if (c >= 0x80 || i + 1 >= LOCALE_NAME_MAX_LENGTH) return false;
    name[i] = c == '_' ? L'-' : static_cast<wchar_t>(c);
  }
  name[i] = L'\0';
  return true;
}

}  // namespace

Collation* open_collation(char const* locale, int strength, bool& known) noexcept {
  Collation* const collation = new (std::nothrow) Collation;
  if (collation == nullptr) {
    frame::note_allocation_failure();
    return nullptr;
  }
  known = system_name(locale, collation->locale) &&
          (collation->locale[0] == L'\0' || IsValidLocaleName(collation->locale));
  if (!known) collation->locale[0] = L'\0';
  collation->exact = flags_of(strength);
  collation->caseless = flags_of(strength < 2 ? strength : 2);
  return collation;
}

void close_collation(Collation* collation) noexcept { delete collation; }

int collate(Collation const& collation, char16_t const* a, int na, char16_t const* b,
            int nb) noexcept {
  int const r = CompareStringEx(collation.locale, collation.exact, reinterpret_cast<LPCWCH>(a), na,
                                reinterpret_cast<LPCWCH>(b), nb, nullptr, nullptr, 0);
  return r == CSTR_LESS_THAN ? -1 : r == CSTR_GREATER_THAN ? 1 : 0;
}

// CompareStringEx takes UTF-16 only.
int collate_ascii(Collation const& /*collation*/, char const* /*a*/, int /*na*/,
                  char const* /*b*/, int /*nb*/) noexcept {
  return kNoAsciiCollate;
}

// The system says nothing of which characters its comparisons join.
bool joins_neighbours(Collation const& /*collation*/, char16_t /*unit*/) noexcept { return true; }

// The system says nothing of its weights: every order is its own.
void primary_ranks(Collation const& /*collation*/, char16_t const* /*units*/, int n,
                   std::uint16_t* ranks) noexcept {
  for (int i = 0; i < n; ++i) ranks[i] = 0;
}

int find(Collation const& collation, char16_t const* text, int n, char16_t const* pattern, int m,
         bool ignore_case, int& length) noexcept {
  // FindNLSStringEx takes the comparison flags but for the sort kind.
  DWORD const flags =
      (ignore_case ? collation.caseless : collation.exact) & ~DWORD{SORT_STRINGSORT};
  int found = 0;
  int const at =
      FindNLSStringEx(collation.locale, FIND_FROMSTART | flags, reinterpret_cast<LPCWSTR>(text), n,
                      reinterpret_cast<LPCWSTR>(pattern), m, &found, nullptr, nullptr, 0);
  if (at < 0) return kNotFound;
  length = found;
  return at;
}

void change_case(Collation const& collation, char16_t* units, int n, bool upper) noexcept {
  DWORD const flags = (upper ? LCMAP_UPPERCASE : LCMAP_LOWERCASE) | LCMAP_LINGUISTIC_CASING;
  for (int i = 0; i < n; ++i) {
    wchar_t changed[4];
    wchar_t const unit = static_cast<wchar_t>(units[i]);
    if (LCMapStringEx(collation.locale, flags, &unit, 1, changed, 4, nullptr, nullptr, 0) == 1) {
      units[i] = static_cast<char16_t>(changed[0]);
    }
  }
}

}  // namespace zelstr::platform
