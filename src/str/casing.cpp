// casing.cpp - _zstrupper, _zstrlower and their one-character, copying and
// ...ASCII forms.  Only bytes below 128 change, through the C library's
// islower / isupper.
#include <cctype>

#include "str/report.h"
#include "zelstr/case.h"
#include "zelstr/scratch.h"

using namespace zelstr::str;

namespace {

char upper_of(char ch) {
  auto const b = static_cast<unsigned char>(ch);
  return b < 128 && std::islower(b) ? static_cast<char>(b - 32) : ch;
}

char lower_of(char ch) {
  auto const b = static_cast<unsigned char>(ch);
  return b < 128 && std::isupper(b) ? static_cast<char>(b + 32) : ch;
}

template <char (*kConvert)(char)>
void convert_in_place(char* s) {
  for (; *s != '\0'; ++s) *s = kConvert(*s);
}

template <char (*kConvert)(char)>
char* converted_copy(char const* s) {
  if (s == nullptr) return nullptr;
  char* const copy = _zstrclone(s, 0);
  convert_in_place<kConvert>(copy);
  return copy;
}

}  // namespace

char* _zstrupper(char* s) noexcept {
  if (s == nullptr) {
    warn(msg::kUpperNullString);
    return nullptr;
  }
  convert_in_place<upper_of>(s);
  return s;
}

char* _zstrlower(char* s) noexcept {
  if (s == nullptr) {
    warn(msg::kLowerNullString);
    return nullptr;
  }
  convert_in_place<lower_of>(s);
  return s;
}

char _zstrupper(char ch) noexcept { return upper_of(ch); }
char _zstrlower(char ch) noexcept { return lower_of(ch); }
char* _zstrupperized(char const* s) noexcept { return converted_copy<upper_of>(s); }
char* _zstrlowerized(char const* s) noexcept { return converted_copy<lower_of>(s); }

// The ...ASCII names are second names of the same functions.
char* _zstrupperASCII(char* s) noexcept { return _zstrupper(s); }
char* _zstrlowerASCII(char* s) noexcept { return _zstrlower(s); }
char _zstrupperASCII(char ch) noexcept { return upper_of(ch); }
char _zstrlowerASCII(char ch) noexcept { return lower_of(ch); }
char* _zstrupperizedASCII(char const* s) noexcept { return _zstrupperized(s); }
char* _zstrlowerizedASCII(char const* s) noexcept { return _zstrlowerized(s); }
