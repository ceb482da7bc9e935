// separators.h - the separators of a tokenising call as a byte table.
#ifndef ZELSTR_STR_TOKENS_SEPARATORS_H
#define ZELSTR_STR_TOKENS_SEPARATORS_H

#include <cstring>

#include "chars/setdef.h"
#include "str/tokens/name_parts.h"

namespace zelstr::str::tokens {

// 1 for each separator byte: a set definition ("[...]") or a plain list.
// The terminator is never a separator.  False for a wrong set definition.
inline bool separator_table(char const* separators, unsigned char (&table)[256]) {
  if (separators[0] == '[') {
    unsigned char const* const members = chars::compile_members(separators);
    if (members == nullptr) return false;
    std::memcpy(table, members, sizeof table);
  } else {
    std::memset(table, 0, sizeof table);
    for (char const* p = separators; *p != '\0'; ++p) table[static_cast<unsigned char>(*p)] = 1;
  }
  table[0] = 0;
  return true;
}

inline bool is_separator(unsigned char const (&table)[256], char c) {
  return table[static_cast<unsigned char>(c)] != 0;
}

// The first byte of the next token from `p`, the terminator when none is
// left.
inline char const* token_start(char const* p, unsigned char const (&table)[256]) {
  while (is_separator(table, *p)) ++p;
  return p;
}

// The end of the token starting at `p`.  `closes` (NULL: no quotes) gives,
// for each byte that opens a quote, the character that closes it: a quote
// runs to its closing character (a doubled one stays inside), or to the
// end of the string, and separators inside it do not separate.
inline char const* token_end(char const* p, unsigned char const (&table)[256], char const* closes) {
  while (*p != '\0' && !is_separator(table, *p)) {
    char const close = closes != nullptr ? closes[static_cast<unsigned char>(*p)] : '\0';
    ++p;
    if (close == '\0') continue;
    p = run_end(p, close);
    if (*p != '\0') ++p;
  }
  return p;
}

}  // namespace zelstr::str::tokens

#endif  // ZELSTR_STR_TOKENS_SEPARATORS_H
