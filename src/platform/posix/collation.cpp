// collation.cpp - ZealStrHelper's collator, from ICU.
//
// A collation keeps two ICU collators: one at the asked strength, and one
// that ignores case (secondary, or the asked strength when that is lower)
// for the case-insensitive search.  Both are only read after opening:
// ucol_strcoll takes a const collator, and each search opens a searcher of
// its own over it.
#include "platform/collation.h"

#include <unicode/ucol.h>
#include <unicode/uloc.h>
#include <unicode/unorm2.h>
#include <unicode/usearch.h>
#include <unicode/uset.h>
#include <unicode/ustring.h>

#include <algorithm>
#include <cstring>
#include <new>

#include "frame/memory.h"

namespace zelstr::platform {

struct Collation {
  UCollator* exact = nullptr;
  UCollator* caseless = nullptr;
  USet* tailored = nullptr;  // the characters of the locale's own rules
  UNormalizer2 const* nfd = nullptr;
  char locale[ULOC_FULLNAME_CAPACITY] = {};  // for the case mapping
};

namespace {

UCollationStrength icu_strength(int strength) {
  switch (strength) {
    case 1:
      return UCOL_PRIMARY;
    case 2:
      return UCOL_SECONDARY;
    default:
      return UCOL_TERTIARY;
  }
}

// ICU opens the root collation, with a warning status, for a locale it has
// no data for; the valid locale then says "root" although another was
// asked for.
bool is_known(UCollator const* collator, char const* asked) {
  if (asked[0] == '\0' || std::strcmp(asked, "root") == 0) return true;
  UErrorCode status = U_ZERO_ERROR;
  char const* valid = ucol_getLocaleByType(collator, ULOC_VALID_LOCALE, &status);
  return U_SUCCESS(status) && valid != nullptr && std::strcmp(valid, "root") != 0;
}

UCollator* open_at(char const* locale, UCollationStrength strength) {
  UErrorCode status = U_ZERO_ERROR;
  UCollator* collator = ucol_open(locale, &status);
  if (U_FAILURE(status)) {
    if (status == U_MEMORY_ALLOCATION_ERROR) frame::note_allocation_failure();
    ucol_close(collator);
    return nullptr;
  }
  ucol_setStrength(collator, strength);
  return collator;
}

// Every character of what the locale's rules tailor: the letters its
// contractions are made of among them.  (Reading the collator's complete
// set of such characters takes milliseconds; this, a small fraction.)
USet* joined_by_rules(UCollator const* collator) {
  UErrorCode status = U_ZERO_ERROR;
  USet* const rules = ucol_getTailoredSet(collator, &status);
  USet* const joined = U_SUCCESS(status) ? uset_openEmpty() : nullptr;
  if (joined != nullptr) {
    int32_t const items = uset_getItemCount(rules);
    for (int32_t i = 0; i < items && U_SUCCESS(status); ++i) {
      UChar32 first = 0;
      UChar32 last = 0;
      UChar text[32];
      int32_t const length = uset_getItem(rules, i, &first, &last, text, 32, &status);
      if (status == U_BUFFER_OVERFLOW_ERROR) {
        // A contraction longer than any of the code page's languages has:
        // its characters are not needed.
        status = U_ZERO_ERROR;
      } else if (length == 0) {
        uset_addRange(joined, first, last);
      } else {
        for (int32_t k = 0; k < length; ++k) uset_add(joined, text[k]);
      }
    }
    uset_freeze(joined);
  }
  uset_close(rules);
  if (U_FAILURE(status)) {
    uset_close(joined);
    return nullptr;
  }
  return joined;
}

}  // namespace

Collation* open_collation(char const* locale, int strength, bool& known) noexcept {
  known = true;
  Collation* const collation = new (std::nothrow) Collation;
  if (collation == nullptr) {
    frame::note_allocation_failure();
    return nullptr;
  }
  UCollationStrength const exact = icu_strength(strength);
  collation->exact = open_at(locale, exact);
  if (collation->exact == nullptr) {
    // A locale name ICU refuses outright: the root collation.
    known = false;
    collation->exact = open_at("", exact);
  } else {
    known = is_known(collation->exact, locale);
  }
  if (collation->exact != nullptr) {
    char const* used = known ? locale : "";
    collation->caseless = open_at(used, std::min(exact, UCOL_SECONDARY));
    std::strncpy(collation->locale, used, sizeof collation->locale - 1);
  }
  if (collation->caseless != nullptr) {
    UErrorCode status = U_ZERO_ERROR;
    collation->nfd = unorm2_getNFDInstance(&status);
    collation->tailored = joined_by_rules(collation->exact);
    if (collation->tailored != nullptr && U_SUCCESS(status)) return collation;
    frame::note_allocation_failure();
  }
  close_collation(collation);
  return nullptr;
}

void close_collation(Collation* collation) noexcept {
  if (collation == nullptr) return;
  ucol_close(collation->exact);
  ucol_close(collation->caseless);
  if (collation->tailored != nullptr) uset_close(collation->tailored);
  delete collation;
}

int collate(Collation const& collation, char16_t const* a, int na, char16_t const* b,
            int nb) noexcept {
  UCollationResult const r = ucol_strcoll(collation.exact, a, na, b, nb);
  return r == UCOL_LESS ? -1 : r == UCOL_GREATER ? 1 : 0;
}

// ASCII bytes are UTF-8 as they stand: ICU reads them in place, as far as
// the first difference that decides.
int collate_ascii(Collation const& collation, char const* a, int na, char const* b,
                  int nb) noexcept {
  UErrorCode status = U_ZERO_ERROR;
  UCollationResult const r = ucol_strcollUTF8(collation.exact, a, na, b, nb, &status);
  if (U_FAILURE(status)) return kNoAsciiCollate;
  return r == UCOL_LESS ? -1 : r == UCOL_GREATER ? 1 : 0;
}

// A character the locale's rules name, or one that stands for a letter and
// an accent (which the collator takes apart, and may reorder with a mark
// that follows).
bool joins_neighbours(Collation const& collation, char16_t unit) noexcept {
  if (uset_contains(collation.tailored, unit) != 0) return true;
  UChar parts[8];
  UErrorCode status = U_ZERO_ERROR;
  return unorm2_getRawDecomposition(collation.nfd, unit, parts, 8, &status) > 0 ||
         status == U_BUFFER_OVERFLOW_ERROR;
}

int find(Collation const& collation, char16_t const* text, int n, char16_t const* pattern, int m,
         bool ignore_case, int& length) noexcept {
  UErrorCode status = U_ZERO_ERROR;
  UStringSearch* search = usearch_openFromCollator(
      pattern, m, text, n, ignore_case ? collation.caseless : collation.exact, nullptr, &status);
  int at = kNotFound;
  if (U_SUCCESS(status)) {
    at = usearch_first(search, &status);
    if (U_SUCCESS(status) && at != USEARCH_DONE) {
      length = usearch_getMatchedLength(search);
    } else {
      at = kNotFound;
    }
  }
  if (status == U_MEMORY_ALLOCATION_ERROR) {
    frame::note_allocation_failure();
    at = kCannotSearch;
  }
  usearch_close(search);
  return at;
}

void change_case(Collation const& collation, char16_t* units, int n, bool upper) noexcept {
  for (int i = 0; i < n; ++i) {
    UChar changed[4];
    UErrorCode status = U_ZERO_ERROR;
    int32_t const size = upper ? u_strToUpper(changed, 4, &units[i], 1, collation.locale, &status)
                               : u_strToLower(changed, 4, &units[i], 1, collation.locale, &status);
    if (U_SUCCESS(status) && size == 1) units[i] = changed[0];
  }
}

}  // namespace zelstr::platform
