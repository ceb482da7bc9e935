// scanner_format.cpp - CStrScanner::Scan: the format language over the
// readers.
//
// The format is checked against the arguments, whole, before anything is
// read: a conversion's letter names the kinds of arguments it takes, and a
// scan whose format and arguments disagree reads nothing.
#include <cstring>

#include "grwstr/scan_report.h"
#include "grwstr/scanner_bytes.h"
#include "zelstr/scanner.h"

namespace {

namespace msg = zelstr::grwstr::msg;
using Arg = CStrScanner::ScanArg;
using zelstr::grwstr::is_blank;

constexpr char kStored[] = "the number of conversions stored";

bool is_kind(Arg const* args, int count, int i, Arg::Kind a, Arg::Kind b) {
  return i < count && (args[i].kind == a || args[i].kind == b);
}

// Checks the arguments conversion `letter` takes from args[*next] on, and
// passes them; false for an unknown letter or arguments that disagree.
bool take_arguments(char letter, bool drop, Arg const* args, int count, int* next) {
  int& i = *next;
  switch (letter) {
    case 'w':
    case 't':
      if (!is_kind(args, count, i, Arg::kText, Arg::kText)) return false;
      ++i;
      return drop || (is_kind(args, count, i, Arg::kBuffer, Arg::kBuffer) && ++i > 0);
    case 'q':
    case 'N':
    case 'l':
      return drop || (is_kind(args, count, i, Arg::kBuffer, Arg::kBuffer) && ++i > 0);
    case 'd':
      return drop || (is_kind(args, count, i, Arg::kInt, Arg::kLongLong) && ++i > 0);
    case 'u':
      return drop || (is_kind(args, count, i, Arg::kUnsigned, Arg::kUnsignedLongLong) && ++i > 0);
    case 'f':
      return drop || (is_kind(args, count, i, Arg::kDouble, Arg::kDouble) && ++i > 0);
    case 'c':
      return drop || (is_kind(args, count, i, Arg::kChar, Arg::kChar) && ++i > 0);
    default:
      return false;
  }
}

// The offset of the first fault of `format` against the arguments, or -1
// when they agree.
int format_fault(char const* format, Arg const* args, int count) {
  int next = 0;
  for (char const* f = format; *f != '\0'; ++f) {
    if (*f != '%') continue;
    char const* const percent = f;
    if (f[1] == '%') {
      ++f;
      continue;
    }
    bool const drop = f[1] == '*';
    f += drop ? 2 : 1;
    if (!take_arguments(*f, drop, args, count, &next)) return static_cast<int>(percent - format);
  }
  if (next != count) return static_cast<int>(std::strlen(format));
  return -1;
}

}  // namespace

int CStrScanner::ScanArgs(char const* format, ScanArg const* args, int count) noexcept {
  if (format == nullptr) {
    BadArgument("Scan", msg::kScanNullArgumentFormat, "format", "-1");
    return -1;
  }
  int const fault =
      count < 0 || (count > 0 && args == nullptr) ? 0 : format_fault(format, args, count);
  if (fault >= 0) {
    m_error = ZEAL_SCAN_BAD_ARGUMENT;
    m_errorPos = m_pos;
    zelstr::grwstr::scan_warn(msg::kScanBadFormatFormat, fault);
    return -1;
  }
  int stored = 0;
  int next = 0;
  for (char const* f = format; *f != '\0'; ++f) {
    if (is_blank(*f)) {
      while (is_blank(f[1])) ++f;
      SkipBlanks();
    } else if (*f != '%' || f[1] == '%') {
      f += *f == '%';
      char const* const here = Here();
      if (*here != *f) {
        Fail("Scan", *here == '\0' ? ZEAL_SCAN_END : ZEAL_SCAN_SYNTAX, here, kStored);
        return stored;
      }
      Succeed(here + 1);
    } else {
      bool const drop = f[1] == '*';
      f += drop ? 2 : 1;
      if (ScanOne(*f, drop, args, next) == 0) return stored;
      stored += drop ? 0 : 1;
    }
  }
  return stored;
}

// Reads one conversion, storing into args[next] on (passed) unless `drop`.
int CStrScanner::ScanOne(char conversion, bool drop, ScanArg const* args, int& next) noexcept {
  if (conversion == 'w' || conversion == 't') {
    char const* const setdef = args[next++].text;
    m_dropping = drop;
    ScanArg const buffer = drop ? ScanArg{} : args[next++];
    int const read = conversion == 'w'
                         ? ReadWord(setdef, static_cast<char*>(buffer.target), buffer.size)
                         : ReadUntil(setdef, static_cast<char*>(buffer.target), buffer.size);
    m_dropping = false;
    return read;
  }
  ScanArg const target = drop ? ScanArg{} : args[next++];
  switch (conversion) {
    case 'q':
    case 'N':
    case 'l': {
      m_dropping = drop;
      auto* const buffer = static_cast<char*>(target.target);
      int const read = conversion == 'q'   ? ReadQuoted(buffer, target.size)
                       : conversion == 'N' ? ReadName(buffer, target.size)
                                           : ReadLine(buffer, target.size);
      m_dropping = false;
      return read;
    }
    case 'd':
      return ScanSigned(drop, target);
    case 'u':
      return ScanUnsigned(drop, target);
    case 'f': {
      double dropped = 0;
      return ReadDouble(drop ? &dropped : static_cast<double*>(target.target));
    }
    default:
      return ScanChar(drop, target);
  }
}

int CStrScanner::ScanSigned(bool drop, ScanArg const& target) noexcept {
  long long dropped = 0;
  if (drop) return ReadInt(&dropped);
  if (target.kind == ScanArg::kInt) return ReadInt(static_cast<int*>(target.target));
  return ReadInt(static_cast<long long*>(target.target));
}

int CStrScanner::ScanUnsigned(bool drop, ScanArg const& target) noexcept {
  unsigned long long dropped = 0;
  if (drop) return ReadUInt(&dropped);
  if (target.kind == ScanArg::kUnsigned) return ReadUInt(static_cast<unsigned*>(target.target));
  return ReadUInt(static_cast<unsigned long long*>(target.target));
}

// %c: the byte at the position, blanks included.
int CStrScanner::ScanChar(bool drop, ScanArg const& target) noexcept {
  if (!drop && target.target == nullptr) {
    return BadArgument("Scan", msg::kScanNullArgumentFormat, "target", kStored);
  }
  char const* const here = Here();
  if (*here == '\0') return Fail("Scan", ZEAL_SCAN_END, here, kStored);
  if (!drop) *static_cast<char*>(target.target) = *here;
  return Succeed(here + 1);
}
