// upper_fold.h - the C library's toupper as a byte table.
#ifndef ZELSTR_CHARS_UPPER_FOLD_H
#define ZELSTR_CHARS_UPPER_FOLD_H

namespace zelstr::chars {

// toupper of every byte in the current locale, and for each byte the other
// bytes that share its upper case.
struct UpperFold {
  unsigned char upper[256];  // toupper(b); upper[0] is 0
  unsigned char other[256];  // another byte with the same toupper, or b itself
  bool crowded[256];         // more than two bytes share b's toupper
};

// The table of the calling thread's locale.  Each thread has its own,
// rebuilt only when the locale's mapping changed since its last call.
UpperFold const& upper_fold();

}  // namespace zelstr::chars

#endif  // ZELSTR_CHARS_UPPER_FOLD_H
