// quote.cpp - _zstrenquote, _zstrencapsulate, _zstrquoted,
// _zstrencapsulated, _zstrdoubleq.
#include "zelstr/quote.h"

#include <cstring>

#include "frame/module.h"
#include "frame/per_thread.h"
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
  std::memmove(string + 1, string, length);
  string[0] = front;
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

namespace {

// A thread's result buffers, valid until its next call of the same function.
struct QuoteResults {
  char quoted[kQuotedCapacity + 3];
  char quoted_empty[3];
  char encapsulated[kEncapsulatedCapacity + 3];
  char encapsulated_empty[3];
};
using QuoteSlot = zelstr::frame::PerThread<QuoteResults, zelstr::frame::ThreadSlot::kQuote>;

// Unload step 3: every thread's results.
ZELSTR_MODULE_HOOK zelstr::frame::UnloadHook g_release(zelstr::frame::UnloadStep::kModuleArrays,
                                                       [] { QuoteSlot::release_every_thread(); });

}  // namespace

char* _zstrquoted(char const* string, char quote) noexcept {
  QuoteResults& r = QuoteSlot::get();
  if (string == nullptr) warn(msg::kQuotedNullString);
  if (string == nullptr || *string == '\0') {
    frame_copy(r.quoted_empty, 0, "", quote, quote);
    return r.quoted_empty;
  }
  if (frame_copy(r.quoted, kQuotedCapacity, string, quote, quote)) warn(msg::kQuotedTooLong);
  return r.quoted;
}

char* _zstrencapsulated(char const* string, char c1, char c2) noexcept {
  QuoteResults& r = QuoteSlot::get();
  if (string == nullptr) warn(msg::kEncapsulatedNullString);
  if (string == nullptr || *string == '\0') {
    frame_copy(r.encapsulated_empty, 0, "", c1, c2);
    return r.encapsulated_empty;
  }
  if (frame_copy(r.encapsulated, kEncapsulatedCapacity, string, c1, c2)) {
    warn(msg::kEncapsulatedTooLong);
  }
  return r.encapsulated;
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
