// brackets.h - the list of a bracket expression: members, ranges, named
// classes and (with the switch on) backslash escapes.
#ifndef ZELSTR_REGEX_BRACKETS_H
#define ZELSTR_REGEX_BRACKETS_H

#include <cstddef>

#include "frame/messages.h"

namespace zelstr::regex {

// A named class: its name between "[:" and ":]" (compared ignoring case),
// and its characters as ranges of byte values.
struct NamedClass {
  char const* name;
  struct Range {
    unsigned char low, high;
  } ranges[4];
  int count;
};

// The class whose name starts at `name` and ends at the ":]" at `end`, or
// NULL when the name is unknown.
NamedClass const* find_named_class(char const* name, std::size_t length);

// Reads a bracket list from `p` (just after "[" or "[^") up to its closing
// ']', handing each member byte to `emit` (bytes may repeat).  Returns the
// position after the ']'; on an error sets `*error` to its text.
template <class Emit>
char const* parse_bracket_list(char const* p, bool backslashes, Emit emit, char const** error) {
  auto range = [&](unsigned low, unsigned high) {
    for (unsigned c = low; c <= high; ++c) emit(static_cast<unsigned char>(c));
  };
  if (*p == ']' || *p == '-') emit(static_cast<unsigned char>(*p++));  // literal when first
  while (*p != '\0' && *p != ']') {
    if (p[0] == '[' && p[1] == ':' &&
        ((p[2] >= 'a' && p[2] <= 'z') || (p[2] >= 'A' && p[2] <= 'Z'))) {
      char const* const name = p + 2;
      std::size_t length = 0;
      while (name[length] != '\0' && !(name[length] == ':' && name[length + 1] == ']')) ++length;
      NamedClass const* const named =
          name[length] != '\0' ? find_named_class(name, length) : nullptr;
      if (named != nullptr) {
        for (int i = 0; i < named->count; ++i) range(named->ranges[i].low, named->ranges[i].high);
        p = name + length + 2;
        continue;
      }
      emit('[');  // an unknown name: its characters are members one by one
      ++p;
      continue;
    }
    if (*p == '\\' && backslashes) {
      if (p[1] == '\0') break;  // unmatched
      emit(static_cast<unsigned char>(p[1]));
      p += 2;
      continue;
    }
    if (*p == '-' && p[1] != ']' && p[1] != '\0') {
      // A range from the byte before the '-' (already a member) to the one
      // after it (escaped when the switch is on).
      unsigned const low = static_cast<unsigned char>(p[-1]) + 1u;
      char const* high_at = p + 1;
      if (*high_at == '\\' && backslashes && high_at[1] != '\0') ++high_at;
      unsigned const high = static_cast<unsigned char>(*high_at);
      if (low > high + 1) {
        *error = frame::msg::kReBadRange;
        return p;
      }
      range(low, high);
      p = high_at + 1;
      continue;
    }
    emit(static_cast<unsigned char>(*p++));
  }
  if (*p != ']') {
    *error = frame::msg::kReUnmatchedBracket;
    return p;
  }
  return p + 1;
}

}  // namespace zelstr::regex

#endif  // ZELSTR_REGEX_BRACKETS_H
