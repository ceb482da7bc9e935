// grwstr.h - CGrwStr, the library's growable zero-terminated string.
//
// The buffer grows by a fixed step chosen at construction (2048 bytes by
// default, 32 MB at most).  Length and end-of-string pointer are kept, so
// appending does not measure the text.  The caller may register pointers of
// its own into the buffer (resync_ptr): each is moved with the buffer when
// it is reallocated.  Every writing operation returns the buffer after the
// change, or NULL when memory ran out; the object is then discarded (text
// gone, registered pointers set to NULL) and stays usable, empty.
//
// Invariants while a buffer exists: m_lpszEOS == m_lpszHOS + m_dwLen, the
// byte there is 0, and m_dwLen < m_dwSize.
//
// Memory: a constructor that cannot get memory leaves the object empty,
// without a buffer, and usable (the copy constructor too); get_dump gives
// NULL when its text cannot be built.  Nothing throws.
//
// Threads: an object belongs to one thread at a time; different objects may
// be used on several threads at once.  get_dump builds its text in the
// calling thread's clone and print arenas (scratch.h), and the notice of a
// step cut by the constructors or SetGrowing is composed in that thread's
// print arena.
#ifndef ZELSTR_GRWSTR_H
#define ZELSTR_GRWSTR_H

#include <cstdarg>

#include "zelstr/export.h"

class ZELSTR_API CGrwStr {
 public:
  // A step above 33554432 is cut to it with a notice (severity 2); 0 means
  // 2048.  A factor below 2 is stored as 0 (it is shown by get_dump; the
  // appends grow by the step alone).  See SetGrowing for `nMinSize`.
  CGrwStr(unsigned long dwGrowSize = 0, int nMinSize = 0, unsigned long dwGrowFactor = 0) noexcept;
  // Reserves strlen(init) + 1 + nMinSize bytes and copies `init`.
  CGrwStr(char const* init, unsigned long dwGrowSize = 0, unsigned long nMinSize = 0,
          unsigned long dwGrowFactor = 0) noexcept;
  // Copies the settings and the text (not the registered pointers).
  CGrwStr(CGrwStr const& other) noexcept;
  virtual ~CGrwStr();

  // Sets the step and the factor; `nMinSize` 0 empties the string (making a
  // first buffer of one step when there is none), a positive one grows the
  // buffer to at least that size.
  char* SetGrowing(unsigned long dwGrowSize, int nMinSize, unsigned long dwGrowFactor) noexcept;

  // Reading.
  operator char*() const noexcept { return m_lpszHOS; }
  char* gethos() const noexcept { return m_lpszHOS; }
  char* gethos(int offset) const noexcept { return m_lpszHOS + offset; }
  char* geteos() const noexcept { return m_lpszEOS; }
  char chreos(int offset) const noexcept { return m_lpszEOS[offset]; }
  // The character at the end of the buffer plus `offset` (use a negative
  // offset).
  char chreob(int offset) const noexcept {
    return m_lpszHOS[static_cast<long long>(m_dwSize) + offset];
  }
  char& operator[](int index) noexcept { return m_lpszHOS[index]; }
  char& operator[](long long index) noexcept { return m_lpszHOS[index]; }
  unsigned long strlen() const noexcept { return m_dwLen; }
  unsigned long bufsize() const noexcept { return m_dwSize; }

  // Writing.  The ...cpy forms replace the text, the ...cat forms append.
  char* strcpy(char const* text) noexcept;
  char* strcat(char const* text) noexcept;
  char* strncpy(char const* text, unsigned long n) noexcept;  // at most n characters
  char* strncat(char const* text, unsigned long n) noexcept;
  char* chrcpy(char c) noexcept;
  char* chrcat(char c) noexcept;  // chrcat(0) only makes sure a buffer exists
  char* strcpyf(char const* format, ...) noexcept ZELSTR_PRINTF_LIKE(2, 3);
  char* vstrcpyf(char const* format, va_list args) noexcept ZELSTR_PRINTF_LIKE(2, 0);
  // Formats into the free space; when the text does not fit, the buffer
  // grows by the step, then 4 times, 16 times ... the step, until it does.
  // A NULL format appends nothing; an empty one only makes sure a buffer
  // exists.
  char* strcatf(char const* format, ...) noexcept ZELSTR_PRINTF_LIKE(2, 3);
  char* vstrcatf(char const* format, va_list args) noexcept ZELSTR_PRINTF_LIKE(2, 0);
  // Inserts `text` at `pos`, which must lie between the head and the end of
  // the string (else NULL and nothing changes); `pos` moves with the buffer.
  char* insert(char const*& pos, char const* text) noexcept;
  char* insert_head(char const* text) noexcept;

  char* operator=(CGrwStr const& other) noexcept;
  char* operator=(char const* text) noexcept;
  char* operator=(char c) noexcept;
  char* operator+=(CGrwStr const& other) noexcept;
  char* operator+=(char const* text) noexcept;
  char* operator+=(char c) noexcept;
  // Removes the last `n` characters (all of them when n >= length).
  char* operator-=(unsigned long n) noexcept;
  // Removes the last character; on an empty string only makes sure a
  // buffer exists.
  char* operator--(int) noexcept;

  char* empty() noexcept;         // length 0, the buffer kept (if any)
  char* emptynonnull() noexcept;  // length 0, with a buffer
  // Sets every registered pointer to NULL, releases the list and the buffer.
  void discard() noexcept;
  char* grow(unsigned long n) noexcept;        // the buffer grows by n bytes
  char* setminsize(unsigned long n) noexcept;  // the buffer grows to n bytes
  // The string now ends at `eos` (inside the buffer): a 0 is written there.
  char* seteos(char const* eos) noexcept;
  // The string now ends at its first 0 (after the caller wrote into it).
  char* synceos() noexcept;

  // Mode 0 registers the char pointers whose addresses follow (ended by
  // NULL), mode 1 unregisters them; other modes do nothing.  1, or 0 when the
  // list cannot grow.
  int resync_ptr(int mode, ...) noexcept;

  // The object shown line by line (settings, pointers, text, registered
  // pointers as offsets into the buffer), in the calling thread's clone
  // arena.
  char const* get_dump() const noexcept;

 private:
  char* append(char const* text, unsigned long n) noexcept;
  bool reserve(unsigned long length, char const** also_moved = nullptr) noexcept;
  bool reallocate(unsigned long size, char const** also_moved) noexcept;
  char* ensure_buffer() noexcept;

  unsigned int m_dwGrowSize;
  unsigned int m_dwGrowFactor;
  char* m_lpszHOS;
  char* m_lpszEOS;
  unsigned int m_dwLen;
  unsigned int m_dwSize;
  int m_nQtyUsed;
  int m_nQtyAlloc;
  char*** m_apResync;
};

#endif  // ZELSTR_GRWSTR_H
