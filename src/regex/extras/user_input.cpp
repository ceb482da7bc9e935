// user_input.cpp - the expression that finds a user's text literally.
#include <cstring>

#include "frame/memory.h"
#include "regex/extras/report.h"
#include "zelstr/regextras.h"

namespace {

namespace extras = zelstr::regex::extras;
namespace msg = zelstr::frame::msg;

// The engine's longest expression.
constexpr std::size_t kLongest = 65535;

bool is_operator(char c) { return c != '\0' && std::strchr("\\^$.[]|()*+?", c) != nullptr; }

// Writes the expression of `text` at `out` (when not NULL); its length.
std::size_t convert(char const* text, bool wildcards, char* out) {
  std::size_t n = 0;
  auto put = [&](char c) {
    if (out != nullptr) out[n] = c;
    ++n;
  };
  for (char const* p = text; *p != '\0'; ++p) {
    if (wildcards && *p == '*') {
      put('.');
      put('*');
      while (p[1] == '*') ++p;  // ".*.*" would not compile
    } else if (wildcards && *p == '?') {
      put('.');
    } else {
      if (is_operator(*p)) put('\\');
      put(*p);
    }
  }
  return n;
}

}  // namespace

char* _zstr2regex(char const* text, int wildcards) noexcept {
  if (text == nullptr) {
    extras::warn(msg::kToRegexNullTextFormat, "_zstr2regex");
    return nullptr;
  }
  std::size_t const length = convert(text, wildcards != 0, nullptr);
  if (length > kLongest) {
    extras::warn(msg::kToRegexTooLongFormat, "_zstr2regex", static_cast<unsigned long>(length));
    return nullptr;
  }
  char* const out = zelstr::frame::new_array<char>(length + 1);
  if (out == nullptr) return nullptr;
  convert(text, wildcards != 0, out);
  out[length] = '\0';
  return out;
}
