// trim.cpp - _zstr[l|r|b]trim, their ex forms, _zstrrtrimlines.
#include "zelstr/trim.h"

#include <cstring>

#include "str/report.h"

using namespace zelstr::str;

namespace {

// Each text is measured once: the tail is cut by its length, and the head
// is moved by what is left.

// Whether `c` (not the terminator) is in `list`; a list of one byte, as
// the plain trims use, is compared directly.
bool listed(char c, char const* list) {
  return list[0] != '\0' && list[1] == '\0' ? c == list[0] : std::strchr(list, c) != nullptr;
}

// The length of the `n` bytes at `s` without their trailing run of bytes
// found in `list` (a plain list of bytes).
std::size_t without_tail(char const* s, std::size_t n, char const* list) {
  while (n > 0 && listed(s[n - 1], list)) --n;
  return n;
}

// Keeps the `n` bytes of `s` after its leading run of bytes of `list`,
// moved to the front and terminated.
void keep_after_head(char* s, std::size_t n, char const* list) {
  s[n] = '\0';
  std::size_t head = 0;
  while (head < n && listed(s[head], list)) ++head;
  if (head != 0) std::memmove(s, s + head, n - head + 1);
}

bool is_blank(char c) { return c == ' ' || c == '\t'; }

// Copies `source` to `dest` (which may be the same buffer) without the runs
// of spaces and tabs that end a line or the text: a run is written as it
// comes and taken back when a CR, LF or the end follows it.
char* trim_lines(char* dest, char const* source) {
  char* write = dest;
  char* run = nullptr;  // where the current run of blanks began in `dest`
  for (char const* read = source;; ++read) {
    char const c = *read;
    if (c == '\r' || c == '\n' || c == '\0') {
      if (run != nullptr) write = run;
      run = nullptr;
    } else if (is_blank(c)) {
      if (run == nullptr) run = write;
    } else {
      run = nullptr;
    }
    *write++ = c;
    if (c == '\0') return dest;
  }
}

}  // namespace

char* _zstrltrim(char* string) noexcept {
  if (string == nullptr) {
    warn(msg::kLtrimNullString);
    return nullptr;
  }
  keep_after_head(string, std::strlen(string), " ");
  return string;
}

char* _zstrrtrim(char* string) noexcept {
  if (string == nullptr) {
    warn(msg::kRtrimNullString);
    return nullptr;
  }
  string[without_tail(string, std::strlen(string), " ")] = '\0';
  return string;
}

char* _zstrbtrim(char* string) noexcept {
  if (string == nullptr) {
    warn(msg::kBtrimNullString);
    return nullptr;
  }
  keep_after_head(string, without_tail(string, std::strlen(string), " "), " ");
  return string;
}

char* _zstrltrimex(char* string1, char const* string2) noexcept {
  if (string1 == nullptr || string2 == nullptr) {
    warn(string1 == nullptr ? msg::kLtrimexNullString1 : msg::kLtrimexNullString2);
    return nullptr;
  }
  keep_after_head(string1, std::strlen(string1), string2);
  return string1;
}

char* _zstrrtrimex(char* string1, char const* string2) noexcept {
  if (string1 == nullptr || string2 == nullptr) {
    warn(string1 == nullptr ? msg::kRtrimexNullString1 : msg::kRtrimexNullString2);
    return nullptr;
  }
  string1[without_tail(string1, std::strlen(string1), string2)] = '\0';
  return string1;
}

char* _zstrbtrimex(char* string1, char const* string2) noexcept {
  if (string1 == nullptr || string2 == nullptr) {
    warn(string1 == nullptr ? msg::kBtrimexNullString1 : msg::kBtrimexNullString2);
    return nullptr;
  }
  keep_after_head(string1, without_tail(string1, std::strlen(string1), string2), string2);
  return string1;
}

char* _zstrrtrimlines(char* o_DestinationBuffer, char const* i_SourceText) noexcept {
  if (o_DestinationBuffer == nullptr) {
    warn(msg::kRtrimlinesNullDest);
    return nullptr;
  }
  if (i_SourceText == nullptr) {
    warn(msg::kRtrimlinesNullSource);
    o_DestinationBuffer[0] = '\0';
    return o_DestinationBuffer;
  }
  return trim_lines(o_DestinationBuffer, i_SourceText);
}

char* _zstrrtrimlines(char* io_SourceText) noexcept {
  if (io_SourceText == nullptr) {
    warn(msg::kRtrimlinesNullText);
    return nullptr;
  }
  return trim_lines(io_SourceText, io_SourceText);
}
