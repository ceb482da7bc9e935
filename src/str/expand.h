// expand.h - writing a string in place of each occurrence of a byte.
#ifndef ZELSTR_STR_EXPAND_H
#define ZELSTR_STR_EXPAND_H

namespace zelstr::str {

// Writes `s` (two bytes or more) for every `c` (not 0) of `string`, in place,
// from the end backwards into the room the growth needs, so that each byte
// moves once.  The caller guarantees the room.
void expand_each(char* string, char c, char const* s);

}  // namespace zelstr::str

#endif  // ZELSTR_STR_EXPAND_H
