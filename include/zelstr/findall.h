// findall.h - every occurrence of a string in a text, one position per call
// or all of them in one.
//
//   CFindAllStr find(text, "aa", 0);
//   for (;;) {
//     char* at = find.FindByXOR();   // tests the next window
//     if (at != nullptr) ...;        // an occurrence at `at`
//     else if (the text is exhausted: GetLastFindPos() stopped moving) break;
//   }
//
// Each call moves a window as wide as the searched string by 1 + jump
// positions and tests it: a one-byte XOR of the window's characters, kept
// rolling, and the window's first character filter the positions, and a
// full comparison confirms every one that passes.  With jump 0 overlapping
// occurrences are all reported; after a success, a jump of length - 1 goes
// on behind the occurrence.  A negative jump moves the window back but not
// the look-ahead, so the XOR no longer describes the window: occurrences
// may be missed, never invented.  The object keeps pointers into the text
// and the searched string, which must outlive it.
//
// Memory: nothing here allocates, but for the warning records; a record
// that cannot be allocated changes no result (alloc.h).
//
// Threads: an object belongs to one thread at a time; different objects may
// walk on several threads at once.  The jump FindByXOR() uses is one
// process-wide value: set it with SetJumpQty before the threads start, or
// pass each walk's jump to FindByXOR(int).  The case-insensitive walk uses
// the C library's toupper and strncasecmp, no table of the library.
#ifndef ZELSTR_FINDALL_H
#define ZELSTR_FINDALL_H

#include "zelstr/export.h"

class ZELSTR_API CFindAllStr {
 public:
  // `string1` is the text, `string2` the searched string; `caseInsensitive`
  // non-zero compares through the C library's toupper.  NULL: warning 75
  // (`string1`, tested first) or 76, and every call gives NULL.
  CFindAllStr(char const* string1, char const* string2, int caseInsensitive) noexcept;

  // Moves the window by 1 + `jump` positions; its start when the searched
  // string is there, else NULL (also once the text is exhausted).  An empty
  // searched string is found once, at the text's start.
  char* FindByXOR(int jump) noexcept;
  char* FindByXOR() noexcept;  // FindByXOR(GetJumpQty())

  // Every occurrence from the window after the one tested last, in one
  // call: each is handed to `found` with `context`, in order; with
  // `overlap` non-zero overlapping occurrences are all reported (as by
  // FindByXOR(0)), with 0 the walk goes on behind each occurrence (as by a
  // jump of the length less one).  The hash plays no part: after a negative
  // jump nothing is missed.  Returns the number of occurrences reported.
  // The walk is then finished, GetLastFindPos() on the last window of the
  // text; when `found` returns 0 it stops at that occurrence instead,
  // GetLastFindPos() on it, and the next call (or FindByXOR) goes on from
  // there.  An empty searched string is reported once, at the text's start.
  // A NULL `found`: the service's bad-argument warning (function
  // "CFindAllStr::FindAll"), -1; after a bad construction: 0.
  int FindAll(int (*found)(char const* at, void* context), void* context, int overlap = 1) noexcept;
  // The same into `positions`, at most `capacity` of them: the walk stops at
  // the last one stored when the array is full.  Returns the number stored;
  // NULL `positions` or a negative `capacity`: warning, -1.
  int FindAll(char const** positions, int capacity, int overlap = 1) noexcept;

  // The start of the window tested last (after a success, the occurrence).
  char const* GetLastFindPos() const noexcept;

  // The jump FindByXOR() uses: one value for the whole process.
  static void SetJumpQty(int jump) noexcept;
  static int GetJumpQty() noexcept;

  CFindAllStr& operator=(CFindAllStr const& other) noexcept;

 private:
  // The window's characters from `from` to `to` (inclusive) XORed into
  // `hash`, upper-cased when the search ignores case.
  unsigned char window_xor(unsigned char hash, int from, int to) const noexcept;
  unsigned char fold(char c) const noexcept;
  // The first occurrence at or after `from`, or NULL.
  char const* next_occurrence(char const* from) const noexcept;
  // Leaves the walk on the occurrence at `at`, as FindByXOR does.
  void stop_on(char const* at) noexcept;

  int state;             // 0 ready, 1 empty searched string, 2 text too short,
                         // 3 searching, 4 finished, 5 bad argument
  char* current;         // the window tested last; one before the text at first
  char const* searched;  // the searched string
  char const* ahead;     // the next text character to enter the window
  int caseInsensitive;
  int searchedLen;
  unsigned char searchedHash;  // XOR of the searched string's characters
  unsigned char windowHash;    // searchedHash XOR the window's: 0 when they agree
  unsigned char windowFirst;   // the window's first character
  unsigned char searchedFirst;
  char const* text;  // the text's start: a negative jump stops one before it

  static int m_nJumpQty;
};

#endif  // ZELSTR_FINDALL_H
