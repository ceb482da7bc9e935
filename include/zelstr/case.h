// case.h - the library's own ASCII case tables, comparisons built on them,
// and the exported upper- and lower-casing functions.
//
// The tables know only the 26 ASCII letters: bytes 128 to 255 are never
// letters and always map to themselves, whatever the code page or locale.
//
// Memory: nothing here allocates (the ...ized copies live in the calling
// thread's clone arena, scratch.h).
//
// Threads: every function here may run on several threads at once: the
// tables are filled when the module is loaded and only read afterwards.  The
// copying ...ized functions take their results from the calling thread's
// clone arena (scratch.h): a result stays valid until that thread's arena
// wraps over it, or the thread ends.
#ifndef ZELSTR_CASE_H
#define ZELSTR_CASE_H

#include "zelstr/export.h"

// Static case tables, built once when the module is loaded.
//
// Every table has 384 entries: 0..255 indexed by the byte as an unsigned
// value (the ...UC arrays), and 256..383 repeating 0..127.  The pointer
// members point at entry 256, so they may be indexed by the byte as a signed
// char (-128..127) and give the same answer for every byte.
class ZELSTR_API CCharCaseRelatedOps {
 public:
  static bool m_bMembersInitialized;
  static char m_acToUpperUC[384];
  static char m_acToLowerUC[384];
  static char m_acSwpCaseUC[384];
  static bool m_pbIsAlphaUC[384];
  static bool m_pbIsLowerUC[384];
  static char* m_acToUpper;
  static char* m_acToLower;
  static char* m_acSwpCase;
  static bool* m_pbIsAlpha;
  static bool* m_pbIsLower;

  // Fills the tables (once; later calls return at once).
  static void InitMembers() noexcept;

  // Case-insensitive comparison through m_acToLower: the difference of the
  // folded bytes (as unsigned values) at the first mismatch, 0 at the common
  // end.  Stops when the byte of `s1` is 0 (a 0 in `s2` alone mismatches).
  static int AZ_StrICmp(char const* s1, char const* s2) noexcept;

  // The same over at most `count` bytes; -1, 0 or +1 (count 0 gives 0).
  static int AZ_StrNICmp(char const* s1, char const* s2, unsigned int count) noexcept;

  // Exactly `count` folded bytes, terminators compared like other bytes;
  // -1, 0 or +1.
  static int AZ_StrNICmp_DontCareOfEOS(char const* s1, char const* s2, unsigned int count) noexcept;

  // Case-sensitive over at most `count` bytes, stopping at the terminator of
  // `s1`: the difference of the first differing bytes (unsigned), or 0.
  static int Standard_StrNCmp(char const* s1, char const* s2, unsigned int count) noexcept;

  // Exactly `count` bytes, like a memory comparison: the difference of the
  // first differing bytes (unsigned), 0 when equal or count is 0.
  static int StrNCmp_DontCareOfEOS(char const* s1, char const* s2, unsigned int count) noexcept;
};

// In place: every byte below 128 that the C library's islower accepts is
// made upper case.  NULL: warning 143, NULL.  _zstrupperASCII is the same
// function.
ZELSTR_API char* _zstrupper(char* s) noexcept;
ZELSTR_API char* _zstrupperASCII(char* s) noexcept;

// In place: every byte below 128 that isupper accepts is made lower case.
// NULL: warning 142, NULL.  _zstrlowerASCII is the same function.
ZELSTR_API char* _zstrlower(char* s) noexcept;
ZELSTR_API char* _zstrlowerASCII(char* s) noexcept;

// One character: its other case when it is below 128 and islower / isupper
// accepts it; `ch` otherwise.
ZELSTR_API char _zstrupper(char ch) noexcept;
ZELSTR_API char _zstrupperASCII(char ch) noexcept;
ZELSTR_API char _zstrlower(char ch) noexcept;
ZELSTR_API char _zstrlowerASCII(char ch) noexcept;

// An upper- / lower-cased copy in the clone arena (_zstrclone(s, 0)): not
// released by the caller, valid until later clones of the same thread
// overwrite it.  NULL gives NULL without a warning.
ZELSTR_API char* _zstrupperized(char const* s) noexcept;
ZELSTR_API char* _zstrupperizedASCII(char const* s) noexcept;
ZELSTR_API char* _zstrlowerized(char const* s) noexcept;
ZELSTR_API char* _zstrlowerizedASCII(char const* s) noexcept;

#endif  // ZELSTR_CASE_H
