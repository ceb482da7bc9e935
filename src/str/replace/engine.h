// engine.h - the replacement runs shared by the replacement family.
//
// A run finds the occurrences of `s1` left to right without overlap in one
// pass of the forward search, decides which it replaces, and rebuilds the
// buffer once.  The result equals, byte for byte up to size + 1, what
// replacing the occurrences one after the other (shifting the tail at each)
// leaves: when the string shrinks, the bytes left behind its new terminator
// are those the successive left shifts leave there.
#ifndef ZELSTR_STR_REPLACE_ENGINE_H
#define ZELSTR_STR_REPLACE_ENGINE_H

#include <cstddef>
#include <cstdint>
#include <cstring>

namespace zelstr::str::replace {

struct Run {
  char* string;
  std::size_t length;  // of `string`
  char const* s1;
  std::size_t len1;  // 1 or more
  char const* s2;
  std::size_t len2;
  std::uint64_t size;  // greatest result length (no terminator)
  bool ignore_case;
  // Ex variants: members of the delimiter set, or NULL for no test.
  unsigned char const* delimiters;
  // The deletion path: the occurrences are cut out in one compacting pass,
  // which leaves the original bytes behind the new end (instead of what
  // shifting the tail at each occurrence leaves).
  bool compact = false;
  // Occurrences found through this character map (a 256-byte table) instead
  // of exactly or ignoring case; NULL for none.
  unsigned char const* map = nullptr;
};

// Replaces every accepted occurrence; NULL when a growing replacement would
// pass `size` (the earlier ones stay replaced), and NULL with nothing
// changed when memory is short for the run.
char* replace_all(Run const& run);

// Replaces the one occurrence at `at` (a position in `run.string`): the size
// is tested before anything changes.
char* replace_one(Run const& run, char* at);

// A string of `length` characters lost `count` pieces, the k-th of
// `shift(k)` bytes (k from 1, in the order they were cut), and its text now
// ends at length - (sum of the shifts).  Cutting each piece by moving the
// tail down leaves, behind each new end, the last shift(k) bytes (the last
// characters and the terminator) of the string it moved; those are the
// original string's last bytes, and the first such block is still in place.
// This writes the others where the successive moves leave them, lowest
// first, so that no source is overwritten before it is read.
template <class Shift>
void leave_shift_residue(char* string, std::size_t length, std::size_t count, Shift shift) {
  std::size_t total = 0;
  for (std::size_t k = 1; k <= count; ++k) total += shift(k);
  for (std::size_t k = count; k >= 2; --k) {
    std::size_t const s = shift(k);
    std::memmove(string + length + 1 - total, string + length + 1 - s, s);
    total -= s;
  }
}

// The table a byte replacement compares through: toupper when
// `ignore_case`, else none (NULL: the bytes themselves).
unsigned char const* byte_fold(bool ignore_case);

// Overwrites every byte equal to `from` (their images through `fold`, when
// given) with `to`.
void replace_bytes(char* string, char from, char to, unsigned char const* fold);

// Removes every byte equal to `c` (their images through `fold`, when given)
// in one compacting pass.
void remove_bytes(char* string, char c, unsigned char const* fold);

}  // namespace zelstr::str::replace

#endif  // ZELSTR_STR_REPLACE_ENGINE_H
