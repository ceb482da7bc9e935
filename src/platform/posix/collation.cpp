// collation.cpp - ZealStrHelper's collator, from ICU.
//
// A collation keeps two ICU collators: one at the asked strength, and one
// that ignores case (secondary, or the asked strength when that is lower)
// for the case-insensitive search.  Both are only read after opening:
// ucol_strcoll takes a const collator, and each search opens a searcher of
// its own over it.
#include "platform/collation.h"

#include <unicode/ucol.h>
#include <unicode/uchar.h>
#include <unicode/uloc.h>
#include <unicode/unorm2.h>
#include <unicode/usearch.h>
#include <unicode/uset.h>
#include <unicode/ustring.h>

#include <algorithm>
#include <bitset>
#include <cstdint>
#include <cstring>
#include <mutex>
#include <new>

#include "frame/memory.h"

namespace zelstr::platform {

struct Collation {
  UCollator* exact = nullptr;
  UCollator* caseless = nullptr;
  USet* tailored = nullptr;  // the characters of the locale's own rules
  UNormalizer2 const* nfd = nullptr;
  bool numeric = false;  // digits read together as numbers
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

// Every character the root collation's contractions are made of: "l" and
// the middle dot of "l\u00B7", say.  Each locale's collation has these and
// the contractions of its own rules (joined_by_rules).  Reading them takes
// milliseconds, so they are read once for the process, into a table of one
// bit per UTF-16 unit that needs no freeing.
class RootContractions {
 public:
  // Reads the characters the first time; false when ICU could not (memory
  // was short), and the next call tries again.
  bool load() noexcept {
    std::lock_guard<std::mutex> const guard(m_lock);
    if (!m_ready) m_ready = read();
    return m_ready;
  }

  // After a successful load: whether `unit` is one of the characters.
  bool has(char16_t unit) const noexcept { return m_units[unit]; }

 private:
  bool read() noexcept {
    UErrorCode status = U_ZERO_ERROR;
    UCollator* const root = ucol_open("", &status);
    USet* const contractions = U_SUCCESS(status) ? uset_openEmpty() : nullptr;
    if (contractions != nullptr) {
      ucol_getContractionsAndExpansions(root, contractions, nullptr, true, &status);
    }
    int32_t const items = U_SUCCESS(status) ? uset_getItemCount(contractions) : 0;
    for (int32_t i = 0; i < items && U_SUCCESS(status); ++i) {
      UChar32 first = 0;
      UChar32 last = 0;
      UChar text[64];
      int32_t const length = uset_getItem(contractions, i, &first, &last, text, 64, &status);
      if (status == U_BUFFER_OVERFLOW_ERROR) status = U_ZERO_ERROR;  // none of the code page's
      for (int32_t k = 0; k < std::min(length, int32_t{64}); ++k) m_units[text[k]] = true;
    }
    if (contractions == nullptr || U_FAILURE(status)) frame::note_allocation_failure();
    uset_close(contractions);
    ucol_close(root);
    return contractions != nullptr && U_SUCCESS(status);
  }

  std::mutex m_lock;
  bool m_ready = false;
  std::bitset<0x10000> m_units;
};

RootContractions g_root_contractions;

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
    collation->numeric =
        ucol_getAttribute(collation->exact, UCOL_NUMERIC_COLLATION, &status) == UCOL_ON;
    if (collation->tailored != nullptr && U_SUCCESS(status) && g_root_contractions.load()) {
      return collation;
    }
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

// A character of a contraction (the root's or the locale's), a digit when
// digits are read together as numbers, or one that stands for a letter and
// an accent (which the collator takes apart, and may reorder with a mark
// that follows).
bool joins_neighbours(Collation const& collation, char16_t unit) noexcept {
  if (uset_contains(collation.tailored, unit) != 0 || g_root_contractions.has(unit)) return true;
  if (collation.numeric && u_getNumericValue(unit) != U_NO_NUMERIC_VALUE) return true;
  UChar parts[8];
  UErrorCode status = U_ZERO_ERROR;
  return unorm2_getRawDecomposition(collation.nfd, unit, parts, 8, &status) > 0 ||
         status == U_BUFFER_OVERFLOW_ERROR;
}

namespace {

// The first-level part of a unit's sort key: the bytes before the first
// level separator.
struct PrimaryKey {
  std::uint8_t bytes[32];
  int size = 0;  // 0: the unit gets no rank
  int index = 0;

  bool operator<(PrimaryKey const& other) const {
    int const r = std::memcmp(bytes, other.bytes, std::min(size, other.size));
    return r != 0 ? r < 0 : size < other.size;
  }
  bool operator==(PrimaryKey const& other) const {
    return size == other.size && std::memcmp(bytes, other.bytes, size) == 0;
  }
};

// The key of `unit` when it is one collation element of its own with a
// first-level weight; a key of size 0 otherwise.
PrimaryKey primary_key(Collation const& collation, char16_t unit) {
  PrimaryKey key;
  UChar const text[1] = {unit};
  if (unit == 0 || joins_neighbours(collation, unit) || u_getCombiningClass(unit) != 0) return key;
  UErrorCode status = U_ZERO_ERROR;
  UCollationElements* const elements = ucol_openElements(collation.exact, text, 1, &status);
  int count = 0;
  while (U_SUCCESS(status) && ucol_next(elements, &status) != UCOL_NULLORDER) ++count;
  ucol_closeElements(elements);
  if (status == U_MEMORY_ALLOCATION_ERROR) frame::note_allocation_failure();
  if (U_FAILURE(status) || count != 1) return key;
  std::uint8_t whole[64];
  int32_t const size = ucol_getSortKey(collation.exact, text, 1, whole, sizeof whole);
  if (size > int32_t{sizeof whole}) return key;
  int primary = 0;
  while (primary < size && whole[primary] > 1) ++primary;
  if (primary > int{sizeof key.bytes}) return key;
  std::memcpy(key.bytes, whole, static_cast<std::size_t>(primary));
  key.size = primary;
  return key;
}

}  // namespace

// Units are ranked by their first-level sort-key parts.  Two strings that
// agree up to a unit of each such kind differ first at the first level
// there: nothing before it can join it (it is in no contraction, stands
// for itself and is no mark the collator moves), and its one element has a
// weight that counts at that level.
void primary_ranks(Collation const& collation, char16_t const* units, int n,
                   std::uint16_t* ranks) noexcept {
  PrimaryKey keys[kMaxRanked];
  int ranked = 0;
  for (int i = 0; i < n; ++i) {
    ranks[i] = 0;
    PrimaryKey key = primary_key(collation, units[i]);
    key.index = i;
    if (key.size > 0 && i < kMaxRanked) keys[ranked++] = key;
  }
  std::sort(keys, keys + ranked);
  std::uint16_t rank = 0;
  for (int k = 0; k < ranked; ++k) {
    if (k == 0 || !(keys[k] == keys[k - 1])) ++rank;
    ranks[keys[k].index] = rank;
  }
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
