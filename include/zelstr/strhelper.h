// strhelper.h - ZealStrHelper, the everyday string operations driven by a
// collator: comparison, comparison of heads, search, search ignoring case,
// upper and lower case, and sorting an array of strings.
//
// A helper is opened for one locale and one strength and keeps the
// system's collator for them: ICU on Linux, the system's own collation
// (CompareStringEx, FindNLSStringEx, LCMapStringEx) on Windows.  The text is
// code page 1252, as everywhere in the library; each byte stands for one
// Unicode character (the five bytes the code page leaves undefined for the
// C1 controls U+0081, U+008D, U+008F, U+0090 and U+009D), so an offset in
// the text is an offset in what the collator sees.
//
// Why a class rather than free functions: opening a collator costs far
// more than a comparison (it reads the locale's rules), so the caller opens
// it once and keeps it; the helper owns it and closes it when it goes.
// Every operation is a const member, so one helper serves a whole program.
//
// Locale: an ICU or BCP 47 name, parts joined by "_" or "-" ("de", "de_DE",
// "sv-SE"); "" and "root" name the root collation (the Unicode order with no
// language's tailoring).  On Linux ICU keywords are accepted too
// ("de@collation=phonebook").  A NULL or unknown locale opens the root
// collation, with a warning.
//
// Strength: 1 (primary: base letters only, "a" = "A" = "\xE1"), 2 (secondary:
// accents count, case does not) or 3 (tertiary: case counts too).  Any other
// value gives tertiary, with a warning.
//
// Results: the comparisons return exactly -1, 0 or +1.  NULL strings compare
// as in _zstrcmp (compare.h): NULL before any string, two NULLs equal, with
// a warning.  Every warning is a literal (id -1, severity 4) of the source
// unit "zealstrhelper"; its text names the fallback returned.
//
// Memory: a comparison allocates nothing unless a string is longer than 256
// bytes past the head the two share (on Linux; on Windows the whole string
// counts); a search converts its text into a heap buffer.  When memory is
// short the failure is counted (zelstr::allocation_failures(), alloc.h) and
// the call falls back: a comparison compares the bytes (as _zstrcmp), a
// search returns NULL.  A helper whose collator could not be opened at all
// (memory, or the system's collation data missing) says so with a warning
// and behaves the same way in every call; its case mapping leaves the text
// unchanged.  Nothing throws.
//
// Threads: one helper may be used by several threads at once.  Comparisons
// and sorts only read the collator (ICU's read-only collator operations
// are safe to call concurrently; the Windows functions keep no state), each
// search opens a searcher of its own, and the case tables are built when
// the helper is opened.  Opening and destroying a helper are not to overlap
// any other use of it.
#ifndef ZELSTR_STRHELPER_H
#define ZELSTR_STRHELPER_H

#include "zelstr/export.h"

class ZELSTR_API ZealStrHelper {
 public:
  // The strengths of the comparisons.
  enum Strength { primary = 1, secondary = 2, tertiary = 3 };

  // Opens the collator of `locale` at `strength` (see above for a NULL or
  // unknown locale and a bad strength).
  explicit ZealStrHelper(char const* locale = "", int strength = tertiary) noexcept;
  ~ZealStrHelper();
  ZealStrHelper(ZealStrHelper const&) = delete;
  ZealStrHelper& operator=(ZealStrHelper const&) = delete;

  // The locale as it was asked for when the collator knows it ("" when the
  // root collation stands in for a NULL or unknown one), and the strength
  // in use.
  char const* locale() const noexcept;
  int strength() const noexcept;
  // False when no collator could be opened: the helper compares bytes.
  bool has_collator() const noexcept;

  // -1, 0 or +1 as `s1` sorts before, equal to or after `s2`.
  int compare(char const* s1, char const* s2) const noexcept;

  // As compare, over the first `count` bytes of each string at most (the
  // strings' heads: a string shorter than `count` is taken whole).  `count`
  // 0 gives 0 without looking at the strings.
  int ncompare(char const* s1, char const* s2, unsigned long count) const noexcept;

  // The first piece of `text` that the collator finds equal to `pattern` at
  // the helper's strength, as a pointer into `text`; its length in bytes is
  // stored in `*length` when `length` is not NULL (a piece may be longer or
  // shorter than the pattern: "\xDF" matches "ss" at primary strength).
  // NULL when there is none.  An empty pattern is found at `text`, length 0.
  // NULL `text` or `pattern`: a warning and NULL.
  char* search(char const* text, char const* pattern,
               unsigned long* length = nullptr) const noexcept;

  // As search, ignoring case: at the secondary strength when the helper's
  // is tertiary (at its own otherwise).
  char* isearch(char const* text, char const* pattern,
                unsigned long* length = nullptr) const noexcept;

  // Upper-cases (or lower-cases) `text` in place as the locale does ("i"
  // becomes "I" in English, stays "i" in Turkish, whose upper case is not in
  // the code page), one character for one character: a character whose case
  // is not a single character of the code page ("\xDF", whose upper case is
  // "SS") stays as it is, so the text never grows.  Returns `text`; NULL:
  // a warning and NULL.
  char* upper(char* text) const noexcept;
  char* lower(char* text) const noexcept;

  // Sorts `strings[0..count)` in place by compare, keeping the given order
  // of strings that compare equal.  NULL entries go first, with one warning
  // for the call.  NULL `strings` with a nonzero `count`: a warning and
  // nothing sorted.
  void sort(char const** strings, unsigned long count) const noexcept;
  void sort(char** strings, unsigned long count) const noexcept {
    sort(const_cast<char const**>(strings), count);
  }

  // The helper's state, defined inside the library.
  struct Impl;

 private:
  Impl* m_impl;
  int m_strength;
};

#endif  // ZELSTR_STRHELPER_H
