// writer.h - results written once to count them and once to keep them.
//
// The text utilities make their results in one pass that a Writer either
// only counts (no buffer) or writes, cut to its buffer; into_arena runs a
// producer both ways to size an area of the clone arena exactly.
#ifndef ZELSTR_STR_TEXT_WRITER_H
#define ZELSTR_STR_TEXT_WRITER_H

#include <algorithm>
#include <cstddef>
#include <cstring>

#include "zelstr/scratch.h"

namespace zelstr::str::text {

class Writer {
 public:
  // Writes at most capacity - 1 bytes into `dest` (nothing when NULL); the
  // length counts every byte put.
  Writer(char* dest, std::size_t capacity) : m_dest(dest), m_capacity(dest ? capacity : 0) {}

  void put(char c) {
    if (m_length + 1 < m_capacity) m_dest[m_length] = c;
    ++m_length;
  }
  void put(char const* s, std::size_t n) {
    if (m_length + 1 < m_capacity) {
      // memmove: an in-place writer writes behind what it reads.
      std::memmove(m_dest + m_length, s, std::min(n, m_capacity - 1 - m_length));
    }
    m_length += n;
  }
  void put_blanks(std::size_t n) {
    for (; n > 0; --n) put(' ');
  }
  // Terminates what was written (when there is a buffer).
  void finish() {
    if (m_capacity > 0) m_dest[std::min(m_length, m_capacity - 1)] = '\0';
  }
  std::size_t length() const { return m_length; }

 private:
  char* m_dest;
  std::size_t m_capacity;
  std::size_t m_length = 0;
};

// The result `produce(Writer&)` writes, in an area of the clone arena made
// for its length (an area the arena cuts, after its message box, holds the
// result's start).
template <class Produce>
char* into_arena(Produce const& produce) {
  Writer counter(nullptr, 0);
  produce(counter);
  constexpr std::size_t kLargestArea = 655360;
  std::size_t const length = counter.length();
  // With no source, the clone arena reserves exactly `extra` bytes.
  char* const area = _zstrclone(nullptr, static_cast<unsigned long>(length + 1));
  Writer writer(area, std::min(length + 1, kLargestArea));
  produce(writer);
  writer.finish();
  return area;
}

}  // namespace zelstr::str::text

#endif  // ZELSTR_STR_TEXT_WRITER_H
