// quote.cpp - _zstrenquote, _zstrencapsulate, _zstrquoted,
// _zstrencapsulated, _zstrdoubleq.
#include "zelstr/quote.h"

#include <cstring>

#include "str/expand.h"
#include "str/report.h"
#include "zelstr/append.h"
#include "zelstr/scratch.h"

using namespace zelstr::str;

namespace {

// Frames `string` in place: shifted right by one with `front` in the freed
// byte, `back` and a new terminator written at the end.
char* frame_in_place(char* string, char front, char back) {
  std::size_t const length = std::strlen(string);
  _zstrshift(string, 1, front, 0);
  string[length + 1] = back;
  string[length + 2] = '\0';
  return string;
}

// `front` + at most `capacity` characters of `string` + `back` into
// `buffer`; true when the string had to be cut.
bool frame_copy(char* buffer, std::size_t capacity, char const* string, char front, char back) {
  std::size_t length = std::strlen(string);
  bool const cut = length > capacity;
  if (cut) length = capacity;
  buffer[0] = front;
  std::memcpy(buffer + 1, string, length);
  buffer[length + 1] = back;
  buffer[length + 2] = '\0';
  return cut;
}

constexpr std::size_t kQuotedCapacity = 2047;
constexpr std::size_t kEncapsulatedCapacity = 511;

}  // namespace

char* _zstrenquote(char* string, char quote) noexcept {
  if (string == nullptr) {
    warn(msg::kEnquoteNullString);
    return nullptr;
  }
  return frame_in_place(string, quote, quote);
}

char* _zstrencapsulate(char* string, char c1, char c2) noexcept {
  if (string == nullptr) {
    warn(msg::kEncapsulateNullString);
    return nullptr;
  }
  return frame_in_place(string, c1, c2);
}

char* _zstrquoted(char const* string, char quote) noexcept {
  static char s_result[kQuotedCapacity + 3];
  static char s_empty[3];
  if (string == nullptr) warn(msg::kQuotedNullString);
  if (string == nullptr || *string == '\0') {
    frame_copy(s_empty, 0, "", quote, quote);
    return s_empty;
  }
  if (frame_copy(s_result, kQuotedCapacity, string, quote, quote)) warn(msg::kQuotedTooLong);
  return s_result;
}

char* _zstrencapsulated(char const* string, char c1, char c2) noexcept {
  static char s_result[kEncapsulatedCapacity + 3];
  static char s_empty[3];
  if (string == nullptr) warn(msg::kEncapsulatedNullString);
  if (string == nullptr || *string == '\0') {
    frame_copy(s_empty, 0, "", c1, c2);
    return s_empty;
  }
  if (frame_copy(s_result, kEncapsulatedCapacity, string, c1, c2)) {
    warn(msg::kEncapsulatedTooLong);
  }
  return s_result;
}

void _zstrdoubleq(char* string, char quote) noexcept {
  if (string == nullptr || quote == '\0') return;
  char const doubled[] = {quote, quote, '\0'};
  expand_each(string, quote, doubled);
}

char* _zstrdoubleq(char const* string, char quote) noexcept {
  if (string == nullptr) return nullptr;
  if (*string == '\0' || quote == '\0') return _zstrclone(string, 0);
  unsigned long count = 0;
  for (char const* p = string; *p != '\0'; ++p) count += *p == quote;
  char* const copy = _zstrclone(string, count);
  _zstrdoubleq(copy, quote);
  return copy;
}
