// scanner_cursor.cpp - CStrScanner: its text, its position, single bytes,
// and how a read ends (moved on, or failed and reported).
#include "grwstr/scan_report.h"
#include "grwstr/scanner_bytes.h"
#include "zelstr/grwstr.h"
#include "zelstr/scanner.h"

namespace {

using zelstr::grwstr::is_blank;
using zelstr::grwstr::scan_warn;
using zelstr::grwstr::msg::kScanNullArgumentFormat;

constexpr CStrScanner::Position kHead = {0, 1, 1};

char const* reason_text(int reason) {
  namespace msg = zelstr::grwstr::msg;
  switch (reason) {
    case ZEAL_SCAN_END:
      return msg::kScanReasonEnd;
    case ZEAL_SCAN_OVERFLOW:
      return msg::kScanReasonOverflow;
    case ZEAL_SCAN_UNCLOSED:
      return msg::kScanReasonUnclosed;
    case ZEAL_SCAN_TOO_LONG:
      return msg::kScanReasonTooLong;
    default:
      return msg::kScanReasonSyntax;
  }
}

}  // namespace

CStrScanner::CStrScanner() noexcept = default;

CStrScanner::CStrScanner(char const* text) noexcept {
  if (text == nullptr) {
    scan_warn(kScanNullArgumentFormat, "CStrScanner", "text", zelstr::grwstr::msg::kScanEmptyText);
    text = "";
  }
  Reset(text);
}

CStrScanner::CStrScanner(CGrwStr& text) noexcept { Reset(text); }

void CStrScanner::Reset(char const* text) noexcept {
  if (text == nullptr) {
    scan_warn(kScanNullArgumentFormat, "Reset", "text", zelstr::grwstr::msg::kScanEmptyText);
    text = "";
  }
  m_text = text;
  m_source = nullptr;
  m_pos = m_errorPos = kHead;
  m_error = ZEAL_SCAN_OK;
}

void CStrScanner::Reset(CGrwStr& text) noexcept {
  m_text = "";
  m_source = &text;
  m_pos = m_errorPos = kHead;
  m_error = ZEAL_SCAN_OK;
}

// The head of the text: a growing string without a buffer reads as "".
char const* CStrScanner::Head() const noexcept {
  if (m_source == nullptr) return m_text;
  char const* const head = m_source->gethos();
  return head != nullptr ? head : "";
}

// The byte at the position; the end of a growing string that was shortened
// below it.
char const* CStrScanner::Here() const noexcept {
  char const* const head = Head();
  if (m_source != nullptr && m_pos.offset > m_source->strlen()) return head + m_source->strlen();
  return head + m_pos.offset;
}

// The position of `to`, reached from the position (at `from`) by reading
// the bytes in between.  A CR ends a line, and so does a LF but after a
// CR: the rule looks back only, so a growing string whose CR was read
// before its LF was appended counts the pair once.
CStrScanner::Position CStrScanner::PosAfter(char const* from, char const* to) const noexcept {
  char const* const head = Head();
  Position pos = m_pos;
  pos.offset = static_cast<std::size_t>(to - head);
  for (char const* p = from; p < to; ++p) {
    if (*p == '\n' && p > head && p[-1] == '\r') continue;
    if (*p == '\n' || *p == '\r') {
      ++pos.line;
      pos.column = 1;
    } else {
      ++pos.column;
    }
  }
  return pos;
}

void CStrScanner::MoveTo(char const* to) noexcept { m_pos = PosAfter(Here(), to); }

// Where a token reader starts: after the blanks unless they are kept.
char const* CStrScanner::TokenStart() const noexcept {
  char const* p = Here();
  if ((m_options & ZEAL_SCAN_KEEP_BLANKS) == 0) {
    while (is_blank(*p)) ++p;
  }
  return p;
}

int CStrScanner::Succeed(char const* to) noexcept {
  MoveTo(to);
  m_error = ZEAL_SCAN_OK;
  return 1;
}

// A read that failed at `at`: the scanner stays, the reason is kept and,
// unless quiet, reported.
int CStrScanner::Fail(char const* function, int reason, char const* at,
                      char const* fallback) noexcept {
  m_error = reason;
  m_errorPos = PosAfter(Here(), at);
  if ((m_options & ZEAL_SCAN_QUIET) == 0) {
    scan_warn(zelstr::grwstr::msg::kScanFailedFormat, function, reason_text(reason),
              m_errorPos.line, m_errorPos.column, fallback);
  }
  return 0;
}

// A NULL or out-of-range argument, always reported with `text` (one of the
// argument formats).
int CStrScanner::BadArgument(char const* function, char const* text, char const* name,
                             char const* fallback) noexcept {
  m_error = ZEAL_SCAN_BAD_ARGUMENT;
  m_errorPos = m_pos;
  scan_warn(text, function, name, fallback);
  return 0;
}

int CStrScanner::SetPos(Position const& pos) noexcept {
  char const* const head = Head();
  char const* p = head;
  while (static_cast<std::size_t>(p - head) < pos.offset && *p != '\0') ++p;
  if (static_cast<std::size_t>(p - head) < pos.offset) {
    return BadArgument("SetPos", zelstr::grwstr::msg::kScanOutOfRangeFormat, "pos", "0");
  }
  m_pos = pos;
  return 1;
}

char const* CStrScanner::Rest() const noexcept { return Here(); }

int CStrScanner::AtEnd() const noexcept { return *Here() == '\0' ? 1 : 0; }

int CStrScanner::Peek(std::size_t ahead) const noexcept {
  char const* p = Here();
  for (std::size_t i = 0; i < ahead; ++i) {
    if (*p == '\0') return 0;
    ++p;
  }
  return static_cast<unsigned char>(*p);
}

int CStrScanner::Get() noexcept {
  char const* const p = Here();
  if (*p == '\0') return 0;
  MoveTo(p + 1);
  return static_cast<unsigned char>(*p);
}

std::size_t CStrScanner::SkipBlanks() noexcept {
  char const* const from = Here();
  char const* p = from;
  while (is_blank(*p)) ++p;
  MoveTo(p);
  return static_cast<std::size_t>(p - from);
}
