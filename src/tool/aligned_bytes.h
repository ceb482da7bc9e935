// aligned_bytes.h - a growable piece of memory that starts on a 64-byte
// boundary, for the bytes an input reads.
//
// The system copies a read at full speed only into an aligned destination:
// reads of 256 KiB from the page cache into an address 16 bytes past a
// 64-byte boundary were measured four times slower than into the boundary
// itself, which is where a plain allocation puts a large block.
#ifndef ZELSTR_TOOL_ALIGNED_BYTES_H
#define ZELSTR_TOOL_ALIGNED_BYTES_H

#include <cstddef>

namespace zelstr::tool {

class AlignedBytes {
 public:
  static constexpr std::size_t kAlignment = 64;

  AlignedBytes() = default;
  ~AlignedBytes();
  AlignedBytes(AlignedBytes const&) = delete;
  AlignedBytes& operator=(AlignedBytes const&) = delete;

  char* data() const { return m_data; }
  std::size_t capacity() const { return m_capacity; }

  // Makes the capacity at least `wanted` bytes (doubling, so that a line
  // that keeps growing is copied a bounded number of times), keeping the
  // first `kept` bytes.  Throws std::bad_alloc without memory.
  void reserve(std::size_t wanted, std::size_t kept);

 private:
  char* m_data = nullptr;
  std::size_t m_capacity = 0;
};

// Where `length` bytes must start so that they end on a boundary: the next
// byte, the first a read fills, is then aligned.
constexpr std::size_t aligned_start(std::size_t length) {
  std::size_t const a = AlignedBytes::kAlignment;
  return (length + a - 1) / a * a - length;
}

}  // namespace zelstr::tool

#endif  // ZELSTR_TOOL_ALIGNED_BYTES_H
