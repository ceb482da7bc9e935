// findmany.h - searching a text for many strings at once.
//
//   CFindManyStrHoary names;
//   for (char const* n : {"Orders", "Customers", "usp_Load"}) names.Add(n);
//   names.Prepare(ZEAL_MANY_WORDS);
//   int which;
//   for (char const* at = names.Find(text, &which); at; at = names.FindNext(&which)) ...
//
// Strings are added one at a time (or from a NULL-terminated array by the
// constructor), then the object is prepared once with its options, then
// searched any number of times.  An occurrence is reported by where it
// starts and which string it is (the index Add returned): the leftmost
// first, and among the strings that start there the longest
// (ZEAL_MANY_SHORTEST: the shortest).  The next search goes on after the
// occurrence (ZEAL_MANY_OVERLAP: one byte after its start, so occurrences
// that overlap it, and strings inside it, are reported too).
//
// Strings are compared byte for byte, ignoring ASCII case
// (ZEAL_MANY_ICASE), or through a character map (map.h): two bytes match
// when their images do.  Strings with the same image are duplicates: the
// one added first is reported.  An empty string is kept (it has an index)
// but never found.  With ZEAL_MANY_WORDS an occurrence counts only when no
// word character is next to it on either side: names in code do not match
// inside longer names.  Word characters are given by a set definition
// (setdef.h); NULL takes "[A-Za-z0-9_@#$\x80-\xFF]", the characters of
// T-SQL names.
//
// The two classes give the same results.  CFindManyStrOld suits a few
// strings: it skips along the text with a shift table over the shortest
// string's length and checks the strings that could start at a place by a
// hash table per string length.  CFindManyStrHoary scales to many thousand
// strings: with strings that begin in at most 64 ways, a vector filter of
// their first bytes skips 16 or 32 places at a time; then filters of the
// first one, two and three bytes skip the places where none can start, and
// a trie of the strings finds those that do.
//
// Bad arguments warn (the service's bad-argument text) and give the
// fallback named: Add a NULL string or after Prepare: -1; Prepare twice or
// with a wrong set definition or flags: 0; Find on an object not prepared,
// or a NULL text: NULL; FindNext without a Find before: NULL.  A text is
// read up to its terminator or its given length, never further.
//
// Memory: Add copies its string; Prepare builds the tables.  Without memory
// for them Add gives -1 and Prepare 0 (the failure counted, alloc.h).
//
// Threads: an object is one thread's at a time while it is built; once
// prepared, Find and FindNext keep the position of the last search in the
// object, so each thread searches with its own object.
#ifndef ZELSTR_FINDMANY_H
#define ZELSTR_FINDMANY_H

#include "zelstr/export.h"
#include "zelstr/types.h"

#define ZEAL_MANY_ICASE 0x01     // ASCII case ignored
#define ZEAL_MANY_SHORTEST 0x02  // the shortest string at a place, not the longest
#define ZEAL_MANY_OVERLAP 0x04   // the next search starts one byte after the last start
#define ZEAL_MANY_WORDS 0x08     // whole words only

namespace zelstr::findmany {
class Searcher;
}

class ZELSTR_API CFindManyStrOld {
 public:
  CFindManyStrOld() noexcept;
  // Adds every string of `strings` (NULL-terminated) and prepares.
  explicit CFindManyStrOld(char const* const* strings, int flags = 0, ZelStrMap map = nullptr,
                           char const* wordChars = nullptr) noexcept;
  ~CFindManyStrOld();
  CFindManyStrOld(CFindManyStrOld const&) = delete;
  CFindManyStrOld& operator=(CFindManyStrOld const&) = delete;

  // The new string's index (0 first), or -1.
  int Add(char const* string) noexcept;
  // Builds the tables: ZEAL_MANY_* flags, a map (NULL: none; only read
  // here) and the word characters.  1, or 0.
  int Prepare(int flags = 0, ZelStrMap map = nullptr, char const* wordChars = nullptr) noexcept;
  // The first occurrence in `text` (`length` bytes; -1: up to its
  // terminator) at or after `from` (NULL: the text's start): its start,
  // the string's index in `*index` (when not NULL); NULL when there is
  // none.
  char const* Find(char const* text, int* index, long length = -1,
                   char const* from = nullptr) noexcept;
  // The occurrence after the last one found.
  char const* FindNext(int* index) noexcept;
  // The number of strings added; a string by its index (NULL out of range).
  int GetCount() const noexcept;
  char const* GetString(int index) const noexcept;

 private:
  zelstr::findmany::Searcher* m_searcher;
};

// The same members as CFindManyStrOld.
class ZELSTR_API CFindManyStrHoary {
 public:
  CFindManyStrHoary() noexcept;
  explicit CFindManyStrHoary(char const* const* strings, int flags = 0, ZelStrMap map = nullptr,
                             char const* wordChars = nullptr) noexcept;
  ~CFindManyStrHoary();
  CFindManyStrHoary(CFindManyStrHoary const&) = delete;
  CFindManyStrHoary& operator=(CFindManyStrHoary const&) = delete;

  int Add(char const* string) noexcept;
  int Prepare(int flags = 0, ZelStrMap map = nullptr, char const* wordChars = nullptr) noexcept;
  char const* Find(char const* text, int* index, long length = -1,
                   char const* from = nullptr) noexcept;
  char const* FindNext(int* index) noexcept;
  int GetCount() const noexcept;
  char const* GetString(int index) const noexcept;

 private:
  zelstr::findmany::Searcher* m_searcher;
};

#endif  // ZELSTR_FINDMANY_H
