// scanner.h - CStrScanner, a formatted reader over a zero-terminated string
// or a CGrwStr: settings files, option strings, lists of names.
//
// A scanner reads its text from left to right: blanks, words of a set
// definition (setdef.h), integers, floating-point numbers, quoted strings,
// delimited SQL names, text up to a delimiter, whole lines, and a
// scanf-like call (Scan) built on those readers.  It knows its offset
// (from 0), line and column (from 1; LF, CR LF and a lone CR each end a
// line, and a column counts bytes), can peek, and can go back to a
// position it gave.
//
// The text: a zero-terminated string is read where it lies (it is not
// copied and must outlive its reading); nothing past its terminator is
// ever read.  A CGrwStr is read through the object, by offset, so that it
// may grow (and its buffer move) between two reads; text appended is read
// in turn.  When it was shortened below the scanner's offset, or
// discarded, the scanner stands at its end.  Line and column count the
// bytes read: text changed before the offset does not change them.
//
// Blanks are space, TAB, LF, VT, FF and CR.  Unless ZEAL_SCAN_KEEP_BLANKS
// is set, the token readers (ReadWord, the numbers, ReadQuoted, ReadName,
// Expect) skip blanks first; Get, Peek, ReadUntil and ReadLine read the text
// as it stands.
//
// Results: each reader returns 1 when it read, and 0 when it did not: the
// scanner then stays where it was (blanks not skipped either), its outputs
// are left alone but a buffer, which holds "" (when its size is not 0),
// GetError() tells why (ZEAL_SCAN_*) and GetErrorPos() where, and a warning
// is filed (id -1, severity 4, unit stringscan) unless ZEAL_SCAN_QUIET is
// set:
//   "CStrScanner::%s() - Warning: %s at line %lu, column %lu: %s was returned as result."
// with the reader's name, the reason and "0" (Scan, for a byte of its own:
// "the number of conversions stored"):
//   ZEAL_SCAN_END       "the end of the text was reached"
//   ZEAL_SCAN_SYNTAX    "the text there is not what was asked for"
//   ZEAL_SCAN_OVERFLOW  "the number there is out of range"
//   ZEAL_SCAN_UNCLOSED  "the quotes or brackets opened there are not closed"
//   ZEAL_SCAN_TOO_LONG  "the text there does not fit in the buffer"
// A successful read sets GetError() back to ZEAL_SCAN_OK.
//
// Bad arguments always file a warning (id -1, severity 4), QUIET or not,
// set ZEAL_SCAN_BAD_ARGUMENT, read nothing and return the fallback named:
//   "CStrScanner::%s() - Warning: <%s> given in argument is NULL: %s was returned as result."
//   "CStrScanner::%s() - Warning: <%s> given in argument is out of range: %s was returned as result."
//   "CStrScanner::%s() - Warning: <setdef> given in argument is not a valid set definition: 0 was returned as result."
//   "CStrScanner::Scan() - Warning: <format> given in argument is not valid, or does not agree with the arguments, at its byte %d: -1 was returned as result."
// A NULL text given to a constructor or to Reset draws the NULL text
// (fallback "an empty text"), and the scanner reads "".
//
// Memory: a scanner allocates nothing (but the warning records, alloc.h).
//
// Threads: a scanner is one thread's at a time, and so is the CGrwStr it
// reads; different scanners may run on several threads at once.  The set
// definitions of ReadWord and ReadUntil are compiled into the calling
// thread's cache of set definitions (setdef.h).
#ifndef ZELSTR_SCANNER_H
#define ZELSTR_SCANNER_H

#include <cstddef>
#include <type_traits>

#include "zelstr/export.h"

class CGrwStr;

// Options (SetOptions).
#define ZEAL_SCAN_KEEP_BLANKS 0x1  // the token readers do not skip blanks first
#define ZEAL_SCAN_BACKSLASH 0x2    // in a quoted string, "\" takes the next byte as it is
#define ZEAL_SCAN_QUIET 0x4        // a failed read files no warning (bad arguments still do)

// Why the last read failed (GetError).
#define ZEAL_SCAN_OK 0
#define ZEAL_SCAN_END 1
#define ZEAL_SCAN_SYNTAX 2
#define ZEAL_SCAN_OVERFLOW 3
#define ZEAL_SCAN_UNCLOSED 4
#define ZEAL_SCAN_TOO_LONG 5
#define ZEAL_SCAN_BAD_ARGUMENT 6

class ZELSTR_API CStrScanner {
 public:
  // A place in the text: offset from its head (0 first), line and column
  // (from 1).
  struct Position {
    std::size_t offset;
    unsigned long line;
    unsigned long column;
  };

  // A caller's buffer of `size` bytes, for Scan when it is not an array.
  struct Buffer {
    char* data;
    std::size_t size;
  };

  // One argument of Scan, as the template below makes it.
  struct ScanArg {
    enum Kind : int {
      kInt,
      kLongLong,
      kUnsigned,
      kUnsignedLongLong,
      kDouble,
      kChar,
      kBuffer,
      kText
    };
    Kind kind;
    void* target;      // where a value goes (kBuffer: the buffer)
    std::size_t size;  // kBuffer: its size
    char const* text;  // kText: a set definition
  };

  // Over "" until Reset.
  CStrScanner() noexcept;
  // Over a zero-terminated string, read where it lies.
  explicit CStrScanner(char const* text) noexcept;
  // Over a growing string, read by offset (see above).
  explicit CStrScanner(CGrwStr& text) noexcept;
  // A temporary growing string would be gone before the first read.
  explicit CStrScanner(CGrwStr&& text) = delete;

  // Starts again at the head of `text`, with the options kept.
  void Reset(char const* text) noexcept;
  void Reset(CGrwStr& text) noexcept;
  void Reset(CGrwStr&& text) = delete;

  // ZEAL_SCAN_* options, all off at construction.
  void SetOptions(int options) noexcept { m_options = options; }
  int GetOptions() const noexcept { return m_options; }

  // ---- Position --------------------------------------------------------
  Position GetPos() const noexcept { return m_pos; }
  std::size_t GetOffset() const noexcept { return m_pos.offset; }
  unsigned long GetLine() const noexcept { return m_pos.line; }
  unsigned long GetColumn() const noexcept { return m_pos.column; }
  // Goes back (or forth) to a position GetPos gave for this text: 1, or 0
  // with the out-of-range warning when its offset lies past the end of the
  // text (the scanner does not move).
  int SetPos(Position const& pos) noexcept;
  // The text from the position on (for a CGrwStr, valid until it changes).
  char const* Rest() const noexcept;
  // 1 when the position is the end of the text.
  int AtEnd() const noexcept;

  // ---- Single bytes ----------------------------------------------------
  // The byte `ahead` bytes after the position (0 there), as unsigned char,
  // without moving; 0 when that lies at or past the end of the text.
  int Peek(std::size_t ahead = 0) const noexcept;
  // The byte at the position, which is then passed; 0 at the end (the
  // scanner stays there, no warning).
  int Get() noexcept;
  // Passes the blanks at the position; their number.
  std::size_t SkipBlanks() noexcept;

  // ---- Readers (1 read, 0 not: see above) --------------------------------
  // `literal` exactly (an empty one always matches).  NULL: 0.
  int Expect(char const* literal) noexcept;
  // The longest run (at least one byte) of members of `setdef`, into
  // `buffer` of `size` bytes.  NULL setdef or buffer, a size of 0, or a
  // wrong definition: 0.
  int ReadWord(char const* setdef, char* buffer, std::size_t size) noexcept;
  // An integer: an optional sign ("-" only for the signed forms), then
  // "0x" or "0X" and hexadecimal digits, or decimal digits (a leading 0 is
  // not octal).  "0x" not followed by a hexadecimal digit reads as 0,
  // before the "x".  A value out of the target's range is refused
  // (ZEAL_SCAN_OVERFLOW).  NULL value: 0.
  int ReadInt(long long* value) noexcept;
  int ReadInt(int* value) noexcept;
  int ReadUInt(unsigned long long* value) noexcept;
  int ReadUInt(unsigned* value) noexcept;
  // A decimal floating-point number: an optional sign, digits with an
  // optional "." (at least one digit before or after it), an optional
  // exponent "e" or "E", sign, digits (taken only when a digit follows).
  // The point is always ".", whatever the locale; "inf" and "nan" are not
  // numbers.  Rounded to the nearest double; a value beyond the range of
  // double, or one so small that it would round to zero, is refused
  // (ZEAL_SCAN_OVERFLOW).  NULL value: 0.
  int ReadDouble(double* value) noexcept;
  // A quoted string opened by `quote` (0: by "'" or by a double quotation
  // mark), without its quotes, into `buffer`.  Inside, the quote doubled
  // stands for one; with ZEAL_SCAN_BACKSLASH a backslash takes the next
  // byte as it is instead (and the string ends at its first plain quote,
  // doubled or not).  NULL
  // buffer or a size of 0: 0.
  int ReadQuoted(char* buffer, std::size_t size, char quote = 0) noexcept;
  // A delimited SQL name, [..] with "]]" for "]", or a double-quoted one
  // with the quote doubled inside, without its delimiters, into `buffer`.
  // An empty name is refused (ZEAL_SCAN_SYNTAX).  NULL buffer or a size of
  // 0: 0.
  int ReadName(char* buffer, std::size_t size) noexcept;
  // The bytes up to the first member of `setdef` or the end of the text
  // (the delimiter is not read), into `buffer`; may be "" but at the end of
  // the text (ZEAL_SCAN_END).  Arguments as ReadWord.
  int ReadUntil(char const* setdef, char* buffer, std::size_t size) noexcept;
  // The bytes up to the end of the line, into `buffer`; the line end (LF,
  // CR LF or CR) is read and not stored.  At the end of the text:
  // ZEAL_SCAN_END.  NULL buffer or a size of 0: 0.
  int ReadLine(char* buffer, std::size_t size) noexcept;

  // ---- Formatted reading -------------------------------------------------
  // Reads what `format` describes, storing into the arguments in turn:
  //   blanks   pass any number of blanks, none included
  //   %d       a signed integer into int* or long long*
  //   %u       an unsigned integer into unsigned* or unsigned long long*
  //   %f       a floating-point number into double*
  //   %c       the next byte as it stands (never a blank skipped) into char*
  //   %w       a word: a set definition (char const*), then a buffer
  //   %q       a quoted string (either quote) into a buffer
  //   %N       a delimited SQL name into a buffer
  //   %t       text up to a member of a set definition, then a buffer
  //   %l       the rest of the line into a buffer
  //   %%       the byte "%"
  //   other    that byte, exactly
  // "%*" before a letter reads and drops: no target (but %*w and %*t still
  // take their set definition).  A buffer is a char array, whose size is
  // known, or a Buffer{pointer, size}: never a bare char*.  A set
  // definition is a char const* or a string literal.  Other types do not
  // compile.  The readers skip blanks and warn as their own calls do.
  // Returns the number of conversions stored, stopping at the first
  // failure (the scanner then stands where that item began, GetError says
  // why; a NULL char* for %c draws the NULL text); -1 with the format
  // warning, reading nothing, when the format is wrong or its conversions
  // and the arguments do not agree in number and kind; -1 with the NULL
  // text for a NULL format.
  template <class... Args>
  int Scan(char const* format, Args&&... args) noexcept {
    ScanArg const list[] = {ScanArg{}, arg(args)...};
    return ScanArgs(format, list + 1, static_cast<int>(sizeof...(Args)));
  }
  // The same on a list made by hand (`count` entries).
  int ScanArgs(char const* format, ScanArg const* args, int count) noexcept;

  // ---- Failures ----------------------------------------------------------
  // ZEAL_SCAN_OK after a read that succeeded, else why the last one failed.
  int GetError() const noexcept { return m_error; }
  // Where the last failure was met (the position after the blanks skipped).
  Position GetErrorPos() const noexcept { return m_errorPos; }

 private:
  // The ScanArg of one argument of Scan; a type Scan does not take stops
  // the compilation.
  template <class T>
  static ScanArg arg(T&& a) noexcept {
    using U = std::remove_cv_t<std::remove_reference_t<T>>;
    if constexpr (std::is_array_v<U>) {
      using E = std::remove_extent_t<std::remove_reference_t<T>>;
      static_assert(std::is_same_v<std::remove_cv_t<E>, char>, "Scan: a char array only");
      if constexpr (std::is_const_v<E>) {
        return {ScanArg::kText, nullptr, 0, a};
      } else {
        return {ScanArg::kBuffer, a, sizeof a, nullptr};
      }
    } else if constexpr (std::is_same_v<U, Buffer>) {
      return {ScanArg::kBuffer, a.data, a.size, nullptr};
    } else if constexpr (std::is_same_v<U, char const*>) {
      return {ScanArg::kText, nullptr, 0, a};
    } else {
      static_assert(std::is_same_v<U, int*> || std::is_same_v<U, long long*> ||
                        std::is_same_v<U, unsigned*> || std::is_same_v<U, unsigned long long*> ||
                        std::is_same_v<U, double*> || std::is_same_v<U, char*>,
                    "Scan: a target is int*, long long*, unsigned*, unsigned long long*, "
                    "double*, char* (for %c), a char array or a Buffer");
      ScanArg::Kind const kind = std::is_same_v<U, int*>         ? ScanArg::kInt
                                 : std::is_same_v<U, long long*> ? ScanArg::kLongLong
                                 : std::is_same_v<U, unsigned*>  ? ScanArg::kUnsigned
                                 : std::is_same_v<U, double*>    ? ScanArg::kDouble
                                 : std::is_same_v<U, char*>      ? ScanArg::kChar
                                                                 : ScanArg::kUnsignedLongLong;
      return {kind, a, 0, nullptr};
    }
  }

  char const* Head() const noexcept;
  char const* Here() const noexcept;
  Position PosAfter(char const* from, char const* to) const noexcept;
  void MoveTo(char const* to) noexcept;
  char const* TokenStart() const noexcept;
  int Fail(char const* function, int reason, char const* at, char const* fallback = "0") noexcept;
  int BadArgument(char const* function, char const* text, char const* name,
                  char const* fallback) noexcept;
  int Succeed(char const* to) noexcept;
  int CheckBuffer(char const* function, char* buffer, std::size_t size) noexcept;
  int Store(char const* function, char const* start, char const* to, char const* from,
            char const* end, char* buffer, std::size_t size) noexcept;
  int ReadSigned(char const* function, long long low, long long high, long long* value) noexcept;
  int ReadUnsigned(char const* function, unsigned long long high,
                   unsigned long long* value) noexcept;
  int ReadDelimited(char const* function, char close, bool backslash, bool allow_empty,
                    char* buffer, std::size_t size) noexcept;
  unsigned char const* Members(char const* function, char const* setdef) noexcept;
  int ScanOne(char conversion, bool drop, ScanArg const* args, int& next) noexcept;
  int ScanSigned(bool drop, ScanArg const& target) noexcept;
  int ScanUnsigned(bool drop, ScanArg const& target) noexcept;
  int ScanChar(bool drop, ScanArg const& target) noexcept;

  char const* m_text = "";
  CGrwStr* m_source = nullptr;
  Position m_pos = {0, 1, 1};
  int m_options = 0;
  int m_error = ZEAL_SCAN_OK;
  bool m_dropping = false;  // a scan's "%*": the readers store nothing
  Position m_errorPos = {0, 1, 1};
};

#endif  // ZELSTR_SCANNER_H
