// literal_search.h - finding the next place where one of an expression's
// required strings (literal_set.h) begins, in a zero-terminated text.
//
// One string of its own case goes to the library's forward search (a vector
// scan for a pair of its rarer bytes; strchr for one byte), or, for short
// texts such as single lines, where that scan's setup would cost more than
// it saves, to strchr for its first byte and a compare of the rest.  A set, or a
// string compared without regard to case, goes to the many-strings vector
// filter (findmany/nibble_filter.h), and each place it passes is compared
// with the strings that begin with its byte.  That filter reads a text of
// known length: the text is measured ahead of the scan in pieces that
// double from 256 bytes, so a string found early costs little measuring of the
// rest, and a long text is measured once.
#ifndef ZELSTR_REGEX_LITERAL_SEARCH_H
#define ZELSTR_REGEX_LITERAL_SEARCH_H

#include <cstdint>
#include <string>
#include <vector>

#include "findmany/nibble_filter.h"
#include "regex/literal_set.h"
#include "str/search/plan.h"

namespace zelstr::regex {

// The first occurrence of `s` (`n` >= 1 bytes) at or after `p`, found by
// strchr for its first byte and a compare: on a short text, cheaper than
// any search with a setup.  `first_seen` tells whether that byte occurs
// from `p` on at all.
char const* find_by_first_byte(char const* p, char const* s, std::size_t n, bool& first_seen);

class LiteralSearch {
 public:
  LiteralSearch() = default;
  LiteralSearch(LiteralSearch const&) = delete;
  LiteralSearch& operator=(LiteralSearch const&) = delete;

  // Prepares for `set`, for texts mostly short (`short_texts`) or long;
  // afterwards active() tells whether there is anything to search for.
  // Throws std::bad_alloc.
  void prepare(LiteralSet const& set, bool short_texts);
  bool active() const { return m_kind != Kind::kNone; }

  // The first place at or after `p` where one of the strings begins, or
  // NULL when none does before the terminator.
  char const* next(char const* p);

  // Whether the last next() met the first byte of a single string (of its
  // own case) at all, found or not: a matcher whose matches all begin
  // with that byte learns from it whether any can begin.
  bool first_byte_seen() const { return m_first_seen; }

 private:
  enum class Kind { kNone, kByte, kShortString, kString, kSet };
  bool some_string_at(unsigned char const* place) const;
  bool begins_at(unsigned char const* place, std::string const& s) const;
  char const* next_in_set(char const* p) const;

  Kind m_kind = Kind::kNone;
  bool m_first_seen = false;
  std::vector<std::string> m_strings;  // sorted, as images
  unsigned char m_image[256] = {};     // each byte as compared (lower case when folded)
  std::uint16_t m_first[257] = {};     // m_strings[m_first[b], m_first[b + 1]) begin with b
  findmany::NibbleTables m_tables;
  str::search::SearchState m_search;
};

}  // namespace zelstr::regex

#endif  // ZELSTR_REGEX_LITERAL_SEARCH_H
