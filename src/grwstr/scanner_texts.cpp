// scanner_texts.cpp - CStrScanner: literals, words, quoted strings, SQL
// names, text up to a delimiter and lines, stored into the caller's buffer.
//
// Every reader finds the end of what it reads first and stores only when
// the text fits, so that a failed read leaves the buffer holding "".
#include <cstring>

#include "chars/setdef.h"
#include "grwstr/scan_report.h"
#include "zelstr/scanner.h"

namespace {

namespace msg = zelstr::grwstr::msg;

// Reads the inside of a quoted string or a delimited name, from just after
// its opening byte to its `close` byte: the close doubled (or, with
// `backslash`, any byte after a backslash) stands for one byte.  Writes
// the bytes it stands for to `out` when not NULL and returns how many;
// `*end` gets the byte after the close, or NULL when there is none.
std::size_t decode(char const* p, char close, bool backslash, char* out, char const** end) {
  std::size_t n = 0;
  for (;;) {
    char c = *p;
    if (c == '\0') break;
    if (backslash && c == '\\') {
      if (p[1] == '\0') break;
      c = p[1];
      p += 2;
    } else if (c == close) {
      if (backslash || p[1] != close) {
        *end = p + 1;
        return n;
      }
      p += 2;
    } else {
      ++p;
    }
    if (out != nullptr) out[n] = c;
    ++n;
  }
  *end = nullptr;
  return n;
}

}  // namespace

// A NULL buffer or a size of 0 is a bad argument; a good buffer starts as
// "" so that it holds "" whenever the read fails.  A scan that drops what
// it reads passes no buffer.
int CStrScanner::CheckBuffer(char const* function, char* buffer, std::size_t size) noexcept {
  if (m_dropping) return 1;
  if (buffer == nullptr) return BadArgument(function, msg::kScanNullArgumentFormat, "buffer", "0");
  if (size == 0) return BadArgument(function, msg::kScanOutOfRangeFormat, "size", "0");
  buffer[0] = '\0';
  return 1;
}

// Stores [from, end) when it fits and moves to `to`; else fails at `start`.
int CStrScanner::Store(char const* function, char const* start, char const* to, char const* from,
                       char const* end, char* buffer, std::size_t size) noexcept {
  auto const n = static_cast<std::size_t>(end - from);
  if (!m_dropping) {
    if (n >= size) return Fail(function, ZEAL_SCAN_TOO_LONG, start);
    std::memcpy(buffer, from, n);
    buffer[n] = '\0';
  }
  return Succeed(to);
}

// The members table of `setdef`, or NULL after the warning of a NULL or
// wrong definition.
unsigned char const* CStrScanner::Members(char const* function, char const* setdef) noexcept {
  if (setdef == nullptr) {
    BadArgument(function, msg::kScanNullArgumentFormat, "setdef", "0");
    return nullptr;
  }
  unsigned char const* const members = zelstr::chars::compile_members(setdef);
  if (members == nullptr) {
    m_error = ZEAL_SCAN_BAD_ARGUMENT;
    m_errorPos = m_pos;
    zelstr::grwstr::scan_warn(msg::kScanBadSetdefFormat, function);
  }
  return members;
}

int CStrScanner::Expect(char const* literal) noexcept {
  if (literal == nullptr)
    return BadArgument("Expect", msg::kScanNullArgumentFormat, "literal", "0");
  char const* const start = TokenStart();
  std::size_t i = 0;
  while (literal[i] != '\0' && start[i] == literal[i]) ++i;
  if (literal[i] == '\0') return Succeed(start + i);
  return Fail("Expect", start[i] == '\0' ? ZEAL_SCAN_END : ZEAL_SCAN_SYNTAX, start);
}

int CStrScanner::ReadWord(char const* setdef, char* buffer, std::size_t size) noexcept {
  unsigned char const* const members = Members("ReadWord", setdef);
  if (members == nullptr || CheckBuffer("ReadWord", buffer, size) == 0) return 0;
  char const* const start = TokenStart();
  char const* p = start;
  while (*p != '\0' && members[static_cast<unsigned char>(*p)] != 0) ++p;
  if (p == start) return Fail("ReadWord", *p == '\0' ? ZEAL_SCAN_END : ZEAL_SCAN_SYNTAX, start);
  return Store("ReadWord", start, p, start, p, buffer, size);
}

int CStrScanner::ReadUntil(char const* setdef, char* buffer, std::size_t size) noexcept {
  unsigned char const* const members = Members("ReadUntil", setdef);
  if (members == nullptr || CheckBuffer("ReadUntil", buffer, size) == 0) return 0;
  char const* const start = Here();
  if (*start == '\0') return Fail("ReadUntil", ZEAL_SCAN_END, start);
  char const* p = start;
  while (*p != '\0' && members[static_cast<unsigned char>(*p)] == 0) ++p;
  return Store("ReadUntil", start, p, start, p, buffer, size);
}

int CStrScanner::ReadLine(char* buffer, std::size_t size) noexcept {
  if (CheckBuffer("ReadLine", buffer, size) == 0) return 0;
  char const* const start = Here();
  if (*start == '\0') return Fail("ReadLine", ZEAL_SCAN_END, start);
  char const* const end = start + std::strcspn(start, "\r\n");
  char const* to = end;
  if (*to == '\r') ++to;
  if (*to == '\n') ++to;
  return Store("ReadLine", start, to, start, end, buffer, size);
}

// The quoted string or name opened at the token start (checked by the
// caller), decoded into the buffer.
int CStrScanner::ReadDelimited(char const* function, char close, bool backslash, bool allow_empty,
                               char* buffer, std::size_t size) noexcept {
  char const* const start = TokenStart();
  char const* end = nullptr;
  std::size_t const n = decode(start + 1, close, backslash, nullptr, &end);
  if (end == nullptr) return Fail(function, ZEAL_SCAN_UNCLOSED, start);
  if (n == 0 && !allow_empty) return Fail(function, ZEAL_SCAN_SYNTAX, start);
  if (!m_dropping) {
    if (n >= size) return Fail(function, ZEAL_SCAN_TOO_LONG, start);
    decode(start + 1, close, backslash, buffer, &end);
    buffer[n] = '\0';
  }
  return Succeed(end);
}

int CStrScanner::ReadQuoted(char* buffer, std::size_t size, char quote) noexcept {
  if (CheckBuffer("ReadQuoted", buffer, size) == 0) return 0;
  char const* const start = TokenStart();
  bool const opens = quote != '\0' ? *start == quote : (*start == '\'' || *start == '"');
  if (!opens) {
    return Fail("ReadQuoted", *start == '\0' ? ZEAL_SCAN_END : ZEAL_SCAN_SYNTAX, start);
  }
  bool const backslash = (m_options & ZEAL_SCAN_BACKSLASH) != 0;
  return ReadDelimited("ReadQuoted", *start, backslash, true, buffer, size);
}

int CStrScanner::ReadName(char* buffer, std::size_t size) noexcept {
  if (CheckBuffer("ReadName", buffer, size) == 0) return 0;
  char const* const start = TokenStart();
  if (*start != '[' && *start != '"') {
    return Fail("ReadName", *start == '\0' ? ZEAL_SCAN_END : ZEAL_SCAN_SYNTAX, start);
  }
  return ReadDelimited("ReadName", *start == '[' ? ']' : '"', false, false, buffer, size);
}
