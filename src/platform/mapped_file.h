// mapped_file.h - a regular file's bytes seen in memory at once, without
// copying them.
//
// The view is copy-on-write: a byte written into it (a terminator the
// library's functions need) changes the view only, never the file.  At
// least one zero byte follows the file's last byte in the view, so that
// the whole file is a zero-terminated string when it holds no zero itself.
//
// A file made shorter by someone else while it is seen this way takes its
// pages away from under the view; the tool maps only files named to it,
// as the fastest peers do, and reads everything else.  What is appended
// meanwhile is not seen: the view ends where the file did.
//
// Where the system cannot give a view's pages back piecemeal (Windows),
// open() declines and files are read: a view of a large file would
// otherwise stay resident to its end.
#ifndef ZELSTR_PLATFORM_MAPPED_FILE_H
#define ZELSTR_PLATFORM_MAPPED_FILE_H

#include <cstddef>
#include <cstdint>
#include <cstdio>

namespace zelstr::platform {

class MappedFile {
 public:
  MappedFile() = default;
  ~MappedFile();
  MappedFile(MappedFile const&) = delete;
  MappedFile& operator=(MappedFile const&) = delete;

  // Sees `file` whole when it is a regular file of at least `least` bytes
  // (and one at least) the system can map with a zero after it, from its
  // first byte whatever has been read from it; false otherwise (the caller
  // goes on reading it).  The view outlives the file's closing.
  bool open(std::FILE* file, std::size_t least = 1);
  char* data() const { return m_data; }
  std::size_t size() const { return m_size; }
  // Gives back the pages of the view that lie wholly before data() +
  // `offset`: they are no longer to be read, and no longer resident.
  void release(std::size_t offset);
  // Ends the view (the file is then read from its first byte, untouched).
  void close();

 private:
  char* m_data = nullptr;
  std::size_t m_size = 0;
  std::size_t m_mapped = 0;    // the length of the system's mapping
  std::size_t m_released = 0;  // its first bytes, given back
  std::size_t m_page = 0;
};

}  // namespace zelstr::platform

#endif  // ZELSTR_PLATFORM_MAPPED_FILE_H
