// unquote.cpp - _zstrunquoted, _zstrunencapsulated.
#include <cstring>

#include "frame/module.h"
#include "frame/per_thread.h"
#include "str/report.h"
#include "zelstr/copy.h"
#include "zelstr/quote.h"
#include "zelstr/scratch.h"

using namespace zelstr::str;

namespace {

constexpr std::size_t kUnquotedCapacity = 2051;
constexpr std::size_t kUnencapsulatedCapacity = 515;

// Reports one of the formatted warnings of _zstrunquoted: the string is
// shown through its first 127 characters.
void warn_unquoted(char const* format, char const* string, char quote, bool quote_as_text,
                   int line = __builtin_LINE()) {
  char shown[128];
  _zstrsafecpyf0(shown, string, sizeof shown);
  char const quote_text[] = {quote, '\0'};
  char const* const text = quote_as_text
                               ? _zstrprintf(format, shown, quote != '\0' ? quote_text : "\\0")
                               : _zstrprintf(format, shown, quote);
  warn(zelstr::frame::Message{-1, 4, text}, line);
}

// A thread's result buffers, valid until its next call of the same function.
struct UnquoteResults {
  char unquoted[kUnquotedCapacity + 1];
  char unencapsulated[kUnencapsulatedCapacity + 1];
};
using UnquoteSlot = zelstr::frame::PerThread<UnquoteResults, zelstr::frame::ThreadSlot::kUnquote>;

// Unload step 3: every thread's results.
ZELSTR_MODULE_HOOK zelstr::frame::UnloadHook g_release(zelstr::frame::UnloadStep::kModuleArrays,
                                                       [] { UnquoteSlot::release_every_thread(); });

}  // namespace

char* _zstrunquoted(char const* string, char quote, char* dest) noexcept {
  if (string == nullptr) {
    warn(msg::kUnquotedNullString);
    return nullptr;
  }
  std::size_t const length = std::strlen(string);
  // What the result holds: the whole string, or the part between its ends.
  char const* from = string;
  std::size_t count = length;
  if (length < 2) {
    warn_unquoted(msg::kUnquotedTooSmallFormat, string, quote, true);
  } else if (quote != '\0' && string[0] != quote) {
    warn_unquoted(msg::kUnquotedNoOpeningFormat, string, quote, false);
  } else if (quote != '\0' && string[length - 1] != quote) {
    warn_unquoted(msg::kUnquotedNoClosingFormat, string, quote, false);
  } else {
    from = string + 1;
    count = length - 2;
  }
  char* const result = dest != nullptr ? dest : UnquoteSlot::get().unquoted;
  if (dest == nullptr && count > kUnquotedCapacity) {
    warn(msg::kUnquotedTooLong);
    return _zstrsafecpyf0(result, string, 2050);
  }
  std::memmove(result, from, count);
  result[count] = '\0';
  return result;
}

char* _zstrunencapsulated(char* string, char c1, char c2) noexcept {
  if (string == nullptr) {
    warn(msg::kUnencapsulatedNullString);
    return nullptr;
  }
  std::size_t const length = std::strlen(string);
  bool const opens = c1 == '\0' || (length > 0 && string[0] == c1);
  bool const closes = c2 == '\0' || (length > 0 && string[length - 1] == c2);
  if (!opens || !closes) {
    warn(msg::kUnencapsulatedNotFramed);
    return string;
  }
  std::size_t count = length >= 2 ? length - 2 : 0;
  if (count > kUnencapsulatedCapacity) {
    count = kUnencapsulatedCapacity;
    warn(msg::kUnencapsulatedTooLong);
  }
  char* const result = UnquoteSlot::get().unencapsulated;
  std::memcpy(result, string + (length > 0 ? 1 : 0), count);
  result[count] = '\0';
  return result;
}
