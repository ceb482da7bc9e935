// walks.h - walks over every occurrence in a text: the last occurrence, the
// number of occurrences, and the bytes of one image.
#ifndef ZELSTR_STR_SEARCH_WALKS_H
#define ZELSTR_STR_SEARCH_WALKS_H

#include <cstddef>

#include "str/search/plan.h"

namespace zelstr::str::search {

// The last occurrence of the pattern `state` was prepared for (overlapping
// occurrences count), found in one forward pass; NULL when there is none.
char const* last_occurrence(char const* text, char const* pattern, SearchState& state);

// The occurrences of the prepared pattern from left to right, each search
// starting behind the previous occurrence (as the replacements walk them);
// at most INT_MAX.
int count_occurrences(char const* text, char const* pattern, SearchState& state);

// The same for `pattern` (not empty) compared through `map` (a 256-byte
// table; NULL: the bytes themselves), on a search state of the call's own.
// Without memory to prepare the pattern: NULL, and -1 for the count.
char const* last_occurrence(char const* text, char const* pattern, unsigned char const* map);
int count_occurrences(char const* text, char const* pattern, unsigned char const* map);

// The bytes of `text` equal to `c`, or whose images through `fold` are c's
// when `fold` is given; 0 for c = 0.
std::size_t count_bytes(char const* text, char c, unsigned char const* fold);

// The first (or, when `last`, the last) byte of `text` whose image through
// `fold` is c's; c = 0 finds the terminator (only 0 has the image 0).
char const* find_byte(char const* text, char c, unsigned char const* fold, bool last);

}  // namespace zelstr::str::search

#endif  // ZELSTR_STR_SEARCH_WALKS_H
