// hide_code_parts.cpp - HideCodeParts: the parts that are not code set
// aside behind numbered placeholders, and put back.
//
// Hiding walks the text twice with the code scanner: once to count the
// parts to set aside, once to note where each lies; then the code with
// placeholders and the parts' texts are each written in one allocation.
// The marker byte of the placeholders is chosen among bytes the text does
// not hold, so a placeholder can only come from hiding; restoring checks
// every marker it meets and refuses the text when one does not open a
// whole placeholder of a known part.
#include <cstdio>
#include <cstring>

#include "errsvc/errsvc.h"
#include "frame/memory.h"
#include "frame/report.h"
#include "sql/code_scan.h"
#include "sql/hidden_span.h"
#include "zelstr/alloc.h"
#include "zelstr/codehide.h"

struct HideCodeParts::Part {
  int kind;
  std::size_t text;  // offset of its text in m_texts
};

namespace {

namespace code = zelstr::sql::code;
using code::Byte;
using code::Kind;
using zelstr::frame::Unit;

using code::kHideFlags;

void warn(char const* text, char const* function, int line = __builtin_LINE()) {
  zelstr::frame::report(Unit::connfortsqlstrfncs, zelstr::frame::Message{-1, 4, text}, function,
                        line);
}

// A part set aside: its bytes in the original text.
struct Range {
  Kind kind;
  std::size_t begin;
  std::size_t end;
};

// Notes the ranges `flags` sets aside; counts them when `ranges` is NULL.
class RangeCollector {
 public:
  RangeCollector(int flags, Byte const* text, Range* ranges)
      : m_flags(flags), m_text(text), m_ranges(ranges) {}

  void code(Byte const*, Byte const*) {}
  void lone(Byte const*) {}
  void part(code::Part const& part) {
    Byte const* from = nullptr;
    Byte const* to = nullptr;
    if (!code::hidden_span(part, m_flags, &from, &to)) return;
    if (m_ranges != nullptr) {
      m_ranges[m_count] = Range{part.kind, static_cast<std::size_t>(from - m_text),
                                static_cast<std::size_t>(to - m_text)};
    }
    ++m_count;
    m_bytes += static_cast<std::size_t>(to - from);
  }

  std::size_t count() const { return m_count; }
  std::size_t bytes() const { return m_bytes; }

 private:
  int m_flags;
  Byte const* m_text;
  Range* m_ranges;
  std::size_t m_count = 0;
  std::size_t m_bytes = 0;
};

// The first byte the text does not hold among those a placeholder may use:
// control bytes but TAB, LF and CR, then 0x7F and above.  0 when none.
char choose_marker(Byte const* text, std::size_t length) {
  bool held[256] = {};
  for (std::size_t i = 0; i < length; ++i) held[text[i]] = true;
  for (int c = 1; c < 256; ++c) {
    if (c == '\t' || c == '\n' || c == '\r' || (c > 0x1F && c < 0x7F)) continue;
    if (!held[c]) return static_cast<char>(c);
  }
  return 0;
}

std::size_t digits_of(std::size_t n) {
  std::size_t d = 1;
  for (; n >= 10; n /= 10) ++d;
  return d;
}

// Writes marker, `n` in decimal and marker at `out`; returns the end.
char* write_placeholder(char* out, char marker, std::size_t n) {
  *out++ = marker;
  std::size_t const d = digits_of(n);
  for (std::size_t i = d; i > 0; --i, n /= 10) out[i - 1] = static_cast<char>('0' + n % 10);
  out += d;
  *out++ = marker;
  return out;
}

// Reads the placeholder whose first marker is at `p`: its number into
// `*n` and the byte after it; NULL when it is not whole.
char const* read_placeholder(char const* p, char marker, std::size_t* n) {
  char const* x = p + 1;
  std::size_t value = 0;
  for (; *x >= '0' && *x <= '9'; ++x) {
    if (x - p > 10) return nullptr;
    value = value * 10 + static_cast<std::size_t>(*x - '0');
  }
  if (x == p + 1 || *x != marker) return nullptr;
  *n = value;
  return x + 1;
}

}  // namespace

void* HideCodeParts::operator new(std::size_t size) noexcept {
  void* const p = ::operator new(size, std::nothrow);
  if (p == nullptr) zelstr::frame::note_allocation_failure();
  return p;
}

void HideCodeParts::operator delete(void* p) noexcept { ::operator delete(p); }

HideCodeParts::HideCodeParts() noexcept = default;

HideCodeParts::~HideCodeParts() { Clear(); }

void HideCodeParts::Clear() noexcept {
  delete[] m_parts;
  delete[] m_texts;
  delete[] m_hidden;
  m_parts = nullptr;
  m_texts = nullptr;
  m_hidden = nullptr;
  m_count = 0;
  m_marker = 0;
}

char const* HideCodeParts::HideTSql(void const* const connection, char const* code,
                                     int flags) noexcept {
  return Hide(true, connection, code, flags);
}

char const* HideCodeParts::HidePlSql(char const* code, int flags) noexcept {
  return Hide(false, nullptr, code, flags);
}

char const* HideCodeParts::Hide(bool tsql, void const* connection, char const* code,
                                 int flags) noexcept {
  char const* const function = tsql ? "HideCodeParts::HideTSql" : "HideCodeParts::HidePlSql";
  bool const commands = (flags & ZEAL_HIDE_COMMANDS) != 0;
  code::Grammar const grammar =
      tsql ? code::tsql_grammar(connection, commands) : code::plsql_grammar(commands);
  Clear();
  if (code == nullptr) {
    zelstr::frame::report(Unit::connfortsqlstrfncs, zelstr::frame::msg::kIllegalNullCode, function);
    return nullptr;
  }
  if ((flags & ~kHideFlags) != 0) {
    warn(ErrHand_Msg_ERRSVC_INCOHERENT_FLAG(), function);
    return nullptr;
  }
  std::size_t const length = std::strlen(code);
  auto const* const text = reinterpret_cast<Byte const*>(code);
  char const marker = choose_marker(text, length);
  if (marker == 0) return nullptr;

  RangeCollector counter(flags, text, nullptr);
  code::scan(grammar, code, length, counter);
  std::size_t const count = counter.count();
  std::size_t placeholders = 0;
  for (std::size_t i = 0; i < count; ++i) placeholders += 2 + digits_of(i);

  Range* const ranges = zelstr::frame::new_array<Range>(count + 1);
  m_parts = zelstr::frame::new_array<Part>(count + 1);
  m_texts = zelstr::frame::new_array<char>(counter.bytes() + count + 1);
  m_hidden = zelstr::frame::new_array<char>(length - counter.bytes() + placeholders + 1);
  if (ranges == nullptr || m_parts == nullptr || m_texts == nullptr || m_hidden == nullptr) {
    delete[] ranges;
    Clear();
    return nullptr;
  }
  RangeCollector collector(flags, text, ranges);
  code::scan(grammar, code, length, collector);

  char* out = m_hidden;
  char* texts = m_texts;
  std::size_t from = 0;
  for (std::size_t i = 0; i < count; ++i) {
    Range const& r = ranges[i];
    std::memcpy(out, code + from, r.begin - from);
    out = write_placeholder(out + (r.begin - from), marker, i);
    m_parts[i] = Part{static_cast<int>(r.kind), static_cast<std::size_t>(texts - m_texts)};
    std::memcpy(texts, code + r.begin, r.end - r.begin);
    texts += r.end - r.begin;
    *texts++ = '\0';
    from = r.end;
  }
  std::memcpy(out, code + from, length - from + 1);
  delete[] ranges;
  m_count = static_cast<int>(count);
  m_marker = marker;
  return m_hidden;
}

char* HideCodeParts::Restore(char const* code) const noexcept {
  char const* const function = "HideCodeParts::Restore";
  if (code == nullptr) {
    zelstr::frame::report(Unit::connfortsqlstrfncs, zelstr::frame::msg::kIllegalNullCode, function);
    return nullptr;
  }
  // First pass: check every placeholder and measure the result.
  std::size_t size = 0;
  for (char const* p = code; *p != '\0';) {
    std::size_t n = 0;
    char const* const after =
        m_marker != 0 && *p == m_marker ? read_placeholder(p, m_marker, &n) : nullptr;
    if (m_marker != 0 && *p == m_marker && (after == nullptr || n >= static_cast<std::size_t>(m_count))) {
      zelstr::frame::report(Unit::connfortsqlstrfncs, zelstr::frame::msg::kHideRestoreDamaged,
                            function);
      return nullptr;
    }
    if (after != nullptr) {
      size += std::strlen(m_texts + m_parts[n].text);
      p = after;
    } else {
      ++size;
      ++p;
    }
  }
  char* const result = zelstr::frame::new_array<char>(size + 1);
  if (result == nullptr) return nullptr;
  char* out = result;
  for (char const* p = code; *p != '\0';) {
    std::size_t n = 0;
    char const* const after = m_marker != 0 && *p == m_marker ? read_placeholder(p, m_marker, &n) : nullptr;
    if (after == nullptr) {
      *out++ = *p++;
      continue;
    }
    char const* const part = m_texts + m_parts[n].text;
    std::size_t const part_length = std::strlen(part);
    std::memcpy(out, part, part_length);
    out += part_length;
    p = after;
  }
  *out = '\0';
  return result;
}

int HideCodeParts::GetCount() const noexcept { return m_count; }

char HideCodeParts::GetMarker() const noexcept { return m_marker; }

char const* HideCodeParts::GetPart(int index) const noexcept {
  if (index < 0 || index >= m_count) {
    warn(ErrHand_Msg_ERRSVC_BAD_ARGUMENT(), "HideCodeParts::GetPart");
    return nullptr;
  }
  return m_texts + m_parts[index].text;
}

int HideCodeParts::GetPartKind(int index) const noexcept {
  if (index < 0 || index >= m_count) {
    warn(ErrHand_Msg_ERRSVC_BAD_ARGUMENT(), "HideCodeParts::GetPartKind");
    return 0;
  }
  return m_parts[index].kind;
}
