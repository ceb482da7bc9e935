// deltalen.h - the length change of a replacement, with or without a map.
#ifndef ZELSTR_STR_REPLACE_DELTALEN_H
#define ZELSTR_STR_REPLACE_DELTALEN_H

#include "zelstr/replace.h"

namespace zelstr::str::replace {

// The bodies of _zstrdeltalen and _zstrmultideltalen (their warnings
// included), counting the occurrences of `s1` through `map` when it is not
// NULL, as the mapped replacement finds them.
long delta_length(char const* string, char const* s1, char const* s2, unsigned char const* map);
long multi_delta_length(char const* string, zstr_couple const* couples, unsigned char const* map);

}  // namespace zelstr::str::replace

#endif  // ZELSTR_STR_REPLACE_DELTALEN_H
