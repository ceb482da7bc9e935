// mapped_file.h - a regular file's bytes seen in memory, a window at a
// time, without copying them.
//
// Views are copy-on-write: a byte written into one (a terminator the
// library's functions need) changes the view only, never the file, and is
// gone with the view.  Past the file's end the last page reads as zeros.
#ifndef ZELSTR_PLATFORM_MAPPED_FILE_H
#define ZELSTR_PLATFORM_MAPPED_FILE_H

#include <cstddef>
#include <cstdint>

namespace zelstr::platform {

class MappedFile {
 public:
  MappedFile() = default;
  ~MappedFile();
  MappedFile(MappedFile const&) = delete;
  MappedFile& operator=(MappedFile const&) = delete;

  // Opens `path` when it is a regular file that can be mapped; false
  // otherwise (the caller reads it another way).
  bool open(char const* path);
  std::uint64_t size() const { return m_size; }
  // What view offsets must be multiples of.
  std::size_t granularity() const { return m_granularity; }
  // The size of a page: the bytes past the file's end up to the next
  // multiple of it are readable zeros in a view that reaches the end.
  std::size_t page() const { return m_page; }

  // Replaces the current view with one of `length` bytes from `offset` (a
  // multiple of granularity(); the view may end at the file's end); its
  // address, or NULL when the system refuses.
  char* view(std::uint64_t offset, std::size_t length);

 private:
  void close_view();

  std::intptr_t m_handle = -1;  // the system's handle of the open file
  // The handle of the mapping, on a system that has one besides the file's.
  [[maybe_unused]] std::intptr_t m_mapping = 0;
  std::uint64_t m_size = 0;
  std::size_t m_granularity = 0, m_page = 0;
  void* m_view = nullptr;
  std::size_t m_view_length = 0;
};

}  // namespace zelstr::platform

#endif  // ZELSTR_PLATFORM_MAPPED_FILE_H
