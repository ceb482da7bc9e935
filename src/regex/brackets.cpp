// brackets.cpp - the named classes of bracket expressions (ASCII only).
#include "regex/brackets.h"

#include <cctype>

namespace zelstr::regex {
namespace {

constexpr NamedClass::Range kLower{'a', 'z'}, kUpper{'A', 'Z'}, kDigits{'0', '9'};

constexpr NamedClass kClasses[] = {
    {"alpha", {kLower, kUpper}, 2},
    {"alnum", {kLower, kUpper, kDigits}, 3},
    {"blank", {{' ', ' '}, {'\t', '\t'}}, 2},
    {"d", {kDigits}, 1},
    {"digit", {kDigits}, 1},
    {"l", {kLower}, 1},
    {"lower", {kLower}, 1},
    {"s", {{'\t', '\r'}, {0x1C, ' '}}, 2},  // tab, LF, VT, FF, CR; 0x1C to the blank
    {"space", {{'\t', '\r'}, {0x1C, ' '}}, 2},
    {"u", {kUpper}, 1},
    {"upper", {kUpper}, 1},
    {"w", {kLower, kUpper, kDigits, {'_', '_'}}, 4},
    {"word", {kLower, kUpper, kDigits, {'_', '_'}}, 4},
    {"xdigit", {kDigits, {'a', 'f'}, {'A', 'F'}}, 3},
    {"L*", {kLower, kUpper}, 2},
    {"Lu", {kUpper}, 1},
    {"Ll", {kLower}, 1},
    {"N*", {kDigits}, 1},
    {"Nd", {kDigits}, 1},
    {"Zs", {{' ', ' '}}, 1},
};

bool same_name(char const* a, std::size_t length, char const* name) {
  std::size_t i = 0;
  for (; i < length && name[i] != '\0'; ++i) {
    if (std::tolower(static_cast<unsigned char>(a[i])) !=
        std::tolower(static_cast<unsigned char>(name[i]))) {
      return false;
    }
  }
  return i == length && name[i] == '\0';
}

}  // namespace

NamedClass const* find_named_class(char const* name, std::size_t length) {
  for (NamedClass const& c : kClasses) {
    if (same_name(name, length, c.name)) return &c;
  }
  return nullptr;
}

}  // namespace zelstr::regex
