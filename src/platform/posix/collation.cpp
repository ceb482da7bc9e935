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
  USet* unsafe = nullptr;                    // characters that may join their neighbours
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
    collation->unsafe = uset_openEmpty();
    if (collation->unsafe != nullptr) {
      ucol_getUnsafeSet(collation->exact, collation->unsafe, &status);
      uset_freeze(collation->unsafe);
    }
    if (collation->unsafe == nullptr || U_FAILURE(status)) {
      frame::note_allocation_failure();
      close_collation(collation);
      return nullptr;
    }
    return collation;
  }
  close_collation(collation);
  return nullptr;
}

void close_collation(Collation* collation) noexcept {
  if (collation == nullptr) return;
  ucol_close(collation->exact);
  ucol_close(collation->caseless);
  if (collation->unsafe != nullptr) uset_close(collation->unsafe);
  delete collation;
}

int collate(Collation const& collation, char16_t const* a, int na, char16_t const* b,
            int nb) noexcept {
  UCollationResult const r = ucol_strcoll(collation.exact, a, na, b, nb);
  return r == UCOL_LESS ? -1 : r == UCOL_GREATER ? 1 : 0;
}

bool joins_neighbours(Collation const& collation, char16_t unit) noexcept {
  return uset_contains(collation.unsafe, unit) != 0;
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
