// growing_string.cpp - CGrwStr: growth, appending, registered pointers.
#include <cstdarg>
#include <cstdio>
#include <cstring>

#include "frame/report.h"
#include "grwstr/allocation.h"
#include "zelstr/append.h"
#include "zelstr/grwstr.h"
#include "zelstr/scratch.h"

namespace {

constexpr unsigned kDefaultStep = 2048;
constexpr unsigned kMaxStep = 33554432;

unsigned step_of(unsigned long requested, int min_size) {
  auto step = static_cast<unsigned>(requested);
  if (step == 0) return kDefaultStep;
  if (step > kMaxStep) {
    char const* const text =
        _zstrprintf(zelstr::frame::msg::kGrwStrStepTooBigFormat, step, min_size);
    zelstr::frame::report(zelstr::frame::Unit::growingstring, zelstr::frame::Message{-1, 2, text},
                          "CGrwStr::CGrwStr()");
    return kMaxStep;
  }
  return step;
}

unsigned factor_of(unsigned long requested) {
  return requested < 2 ? 0u : static_cast<unsigned>(requested);
}

}  // namespace

CGrwStr::CGrwStr(unsigned long dwGrowSize, int nMinSize, unsigned long dwGrowFactor) noexcept
    : m_dwGrowSize(kDefaultStep),
      m_dwGrowFactor(0),
      m_lpszHOS(nullptr),
      m_lpszEOS(nullptr),
      m_dwLen(0),
      m_dwSize(0),
      m_nQtyUsed(0),
      m_nQtyAlloc(0),
      m_apResync(nullptr) {
  SetGrowing(dwGrowSize, nMinSize, dwGrowFactor);
}

CGrwStr::CGrwStr(char const* init, unsigned long dwGrowSize, unsigned long nMinSize,
                 unsigned long dwGrowFactor) noexcept
    : CGrwStr(dwGrowSize, -1, dwGrowFactor) {
  std::size_t const length = init != nullptr ? std::strlen(init) : 0;
  if (setminsize(static_cast<unsigned long>(length + 1 + static_cast<unsigned>(nMinSize))) !=
      nullptr) {
    strcpy(init);
  }
}

// Without memory for the copy the object stays empty, without a buffer.
CGrwStr::CGrwStr(CGrwStr const& other) noexcept
    : CGrwStr(other.m_dwGrowSize, -1, other.m_dwGrowFactor) {
  if (other.m_lpszHOS != nullptr && setminsize(other.m_dwSize) != nullptr) strcpy(other.m_lpszHOS);
}

CGrwStr::~CGrwStr() {
  delete[] m_lpszHOS;
  delete[] m_apResync;
}

char* CGrwStr::SetGrowing(unsigned long dwGrowSize, int nMinSize,
                          unsigned long dwGrowFactor) noexcept {
  m_dwGrowSize = step_of(dwGrowSize, nMinSize);
  m_dwGrowFactor = factor_of(dwGrowFactor);
  if (nMinSize == 0) return emptynonnull();
  if (nMinSize > 0) return setminsize(static_cast<unsigned long>(nMinSize));
  return m_lpszHOS;
}

// Moves the text to a new buffer of `size` bytes, with the registered
// pointers and `also_moved` (when given); on failure discards everything.
bool CGrwStr::reallocate(unsigned long size, char const** also_moved) noexcept {
  char* const fresh = zelstr::grwstr::allocate<char>(size);
  if (fresh == nullptr) {
    discard();
    return false;
  }
  char* const old = m_lpszHOS;
  if (old != nullptr) {
    std::memcpy(fresh, old, m_dwLen + 1);
  } else {
    fresh[0] = '\0';
  }
  for (int i = 0; i < m_nQtyUsed; ++i) {
    char*& p = *m_apResync[i];
    if (p != nullptr && old != nullptr) p = fresh + (p - old);
  }
  if (also_moved != nullptr && *also_moved != nullptr && old != nullptr) {
    *also_moved = fresh + (*also_moved - old);
  }
  delete[] old;
  m_lpszHOS = fresh;
  m_lpszEOS = fresh + m_dwLen;
  m_dwSize = static_cast<unsigned>(size);
  return true;
}

// Makes room for a string of `length` characters: the size grows by one
// step, or to step + 1 + length when one step is not enough.  `also_moved`
// (when given) moves with the buffer.
bool CGrwStr::reserve(unsigned long length, char const** also_moved) noexcept {
  if (m_lpszHOS != nullptr && length < m_dwSize) return true;
  unsigned long size = static_cast<unsigned long>(m_dwSize) + m_dwGrowSize;
  if (size <= length) size = m_dwGrowSize + 1 + length;
  return reallocate(size, also_moved);
}

char* CGrwStr::ensure_buffer() noexcept {
  if (m_lpszHOS == nullptr && !reallocate(m_dwGrowSize, nullptr)) return nullptr;
  return m_lpszHOS;
}

char* CGrwStr::append(char const* text, unsigned long n) noexcept {
  if (text == nullptr || n == 0) return ensure_buffer();
  if (!reserve(m_dwLen + n)) return nullptr;
  std::memcpy(m_lpszEOS, text, n);
  m_dwLen += static_cast<unsigned>(n);
  m_lpszEOS += n;
  *m_lpszEOS = '\0';
  return m_lpszHOS;
}

char* CGrwStr::strcat(char const* text) noexcept {
  return append(text, text != nullptr ? static_cast<unsigned long>(std::strlen(text)) : 0);
}

char* CGrwStr::strncat(char const* text, unsigned long n) noexcept {
  return append(text, text != nullptr ? static_cast<unsigned long>(::strnlen(text, n)) : 0);
}

char* CGrwStr::strcpy(char const* text) noexcept {
  empty();
  return strcat(text);
}

char* CGrwStr::strncpy(char const* text, unsigned long n) noexcept {
  empty();
  return strncat(text, n);
}

char* CGrwStr::chrcat(char c) noexcept {
  if (c == '\0') return ensure_buffer();
  if (m_lpszHOS != nullptr && m_dwLen + 1 < m_dwSize) {
    *m_lpszEOS++ = c;
    *m_lpszEOS = '\0';
    ++m_dwLen;
    return m_lpszHOS;
  }
  char const text[] = {c, '\0'};
  return strcat(text);
}

char* CGrwStr::chrcpy(char c) noexcept {
  empty();
  return chrcat(c);
}

char* CGrwStr::vstrcatf(char const* format, va_list args) noexcept {
  if (format == nullptr) return m_lpszHOS;
  if (ensure_buffer() == nullptr) return nullptr;
  if (*format == '\0') return m_lpszHOS;
  for (unsigned shift = 0;; shift += 2) {
    va_list copy;
    va_copy(copy, args);
    std::size_t const room = m_dwSize - m_dwLen - 1;
    int const n = std::vsnprintf(m_lpszEOS, room + 1, format, copy);
    va_end(copy);
    if (n < 0) {
      *m_lpszEOS = '\0';
      return m_lpszHOS;
    }
    if (static_cast<std::size_t>(n) <= room) {
      m_dwLen += static_cast<unsigned>(n);
      m_lpszEOS += n;
      return m_lpszHOS;
    }
    *m_lpszEOS = '\0';  // the cut text is formatted again after growing
    unsigned long const more = static_cast<unsigned long>(m_dwGrowSize) << shift;
    if (!reallocate(m_dwSize + more, nullptr)) return nullptr;
  }
}

char* CGrwStr::strcatf(char const* format, ...) noexcept {
  va_list args;
  va_start(args, format);
  char* const result = vstrcatf(format, args);
  va_end(args);
  return result;
}

char* CGrwStr::vstrcpyf(char const* format, va_list args) noexcept {
  empty();
  return vstrcatf(format, args);
}

char* CGrwStr::strcpyf(char const* format, ...) noexcept {
  va_list args;
  va_start(args, format);
  char* const result = vstrcpyf(format, args);
  va_end(args);
  return result;
}

char* CGrwStr::insert(char const*& pos, char const* text) noexcept {
  if (m_lpszHOS == nullptr || pos < m_lpszHOS || pos > m_lpszEOS) return nullptr;
  if (text == nullptr || *text == '\0') return m_lpszHOS;
  std::size_t const n = std::strlen(text);
  if (!reserve(m_dwLen + static_cast<unsigned long>(n), &pos)) return nullptr;
  _zstrins(const_cast<char*>(pos), text);
  m_dwLen += static_cast<unsigned>(n);
  m_lpszEOS += n;
  return m_lpszHOS;
}

char* CGrwStr::insert_head(char const* text) noexcept {
  char const* head = m_lpszHOS != nullptr ? m_lpszHOS : ensure_buffer();
  if (head == nullptr) return nullptr;
  return insert(head, text);
}

char* CGrwStr::operator=(CGrwStr const& other) noexcept {
  if (&other == this) return m_lpszHOS;
  return strcpy(other.m_lpszHOS);
}
char* CGrwStr::operator=(char const* text) noexcept { return strcpy(text); }
char* CGrwStr::operator=(char c) noexcept { return chrcpy(c); }
char* CGrwStr::operator+=(CGrwStr const& other) noexcept {
  if (&other == this) {
    CGrwStr const copy(other);
    return strcat(copy.m_lpszHOS);
  }
  return strcat(other.m_lpszHOS);
}
char* CGrwStr::operator+=(char const* text) noexcept { return strcat(text); }
char* CGrwStr::operator+=(char c) noexcept { return chrcat(c); }

char* CGrwStr::operator-=(unsigned long n) noexcept {
  if (m_lpszHOS == nullptr) return nullptr;
  unsigned const cut = n >= m_dwLen ? m_dwLen : static_cast<unsigned>(n);
  m_dwLen -= cut;
  m_lpszEOS -= cut;
  *m_lpszEOS = '\0';
  return m_lpszHOS;
}

char* CGrwStr::operator--(int) noexcept {
  if (m_lpszHOS == nullptr || m_dwLen == 0) return ensure_buffer();
  return *this -= 1;
}

char* CGrwStr::empty() noexcept {
  if (m_lpszHOS != nullptr) {
    m_dwLen = 0;
    m_lpszEOS = m_lpszHOS;
    *m_lpszEOS = '\0';
  }
  return m_lpszHOS;
}

char* CGrwStr::emptynonnull() noexcept {
  if (ensure_buffer() == nullptr) return nullptr;
  return empty();
}

void CGrwStr::discard() noexcept {
  for (int i = 0; i < m_nQtyUsed; ++i) *m_apResync[i] = nullptr;
  delete[] m_apResync;
  delete[] m_lpszHOS;
  m_apResync = nullptr;
  m_nQtyUsed = m_nQtyAlloc = 0;
  m_lpszHOS = m_lpszEOS = nullptr;
  m_dwLen = m_dwSize = 0;
}

char* CGrwStr::grow(unsigned long n) noexcept {
  if (n == 0) return m_lpszHOS;
  if (!reallocate(static_cast<unsigned long>(m_dwSize) + n, nullptr)) return nullptr;
  return m_lpszHOS;
}

char* CGrwStr::setminsize(unsigned long n) noexcept {
  if (m_lpszHOS != nullptr && n <= m_dwSize) return m_lpszHOS;
  return grow(n - m_dwSize);
}

char* CGrwStr::seteos(char const* eos) noexcept {
  if (m_lpszHOS == nullptr || eos < m_lpszHOS || eos >= m_lpszHOS + m_dwSize) return nullptr;
  m_lpszEOS = const_cast<char*>(eos);
  *m_lpszEOS = '\0';
  m_dwLen = static_cast<unsigned>(m_lpszEOS - m_lpszHOS);
  return m_lpszHOS;
}

char* CGrwStr::synceos() noexcept {
  if (m_lpszHOS == nullptr) return nullptr;
  m_dwLen = static_cast<unsigned>(::strnlen(m_lpszHOS, m_dwSize - 1));
  m_lpszEOS = m_lpszHOS + m_dwLen;
  *m_lpszEOS = '\0';
  return m_lpszHOS;
}

int CGrwStr::resync_ptr(int mode, ...) noexcept {
  va_list args;
  va_start(args, mode);
  if (mode == 0) {
    va_list counting;
    va_copy(counting, args);
    int count = 0;
    while (va_arg(counting, char**) != nullptr) ++count;
    va_end(counting);
    if (m_nQtyAlloc - m_nQtyUsed < count) {
      int const alloc = m_nQtyUsed + 5 + count;
      char*** const list = zelstr::grwstr::allocate<char**>(static_cast<std::size_t>(alloc));
      if (list == nullptr) {
        va_end(args);
        return 0;
      }
      for (int i = 0; i < alloc; ++i) list[i] = i < m_nQtyUsed ? m_apResync[i] : nullptr;
      delete[] m_apResync;
      m_apResync = list;
      m_nQtyAlloc = alloc;
    }
  }
  for (char** address = va_arg(args, char**); address != nullptr; address = va_arg(args, char**)) {
    if (mode == 0) {
      m_apResync[m_nQtyUsed++] = address;
    } else if (mode == 1) {
      for (int i = 0; i < m_nQtyUsed; ++i) {
        if (m_apResync[i] == address) {
          m_apResync[i] = m_apResync[--m_nQtyUsed];
          m_apResync[m_nQtyUsed] = nullptr;
          break;
        }
      }
    }
  }
  va_end(args);
  return 1;
}
