// mapped_file.cpp - POSIX: mmap, private and writable, read sequentially.
#include "platform/mapped_file.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

namespace zelstr::platform {

MappedFile::~MappedFile() {
  close_view();
  if (m_handle >= 0) ::close(static_cast<int>(m_handle));
}

bool MappedFile::open(char const* path) {
  int const fd = ::open(path, O_RDONLY);
  if (fd < 0) return false;
  struct stat st {};
  // An empty file cannot be mapped: it is read another way.
  if (::fstat(fd, &st) != 0 || !S_ISREG(st.st_mode) || st.st_size == 0) {
    ::close(fd);
    return false;
  }
  m_handle = fd;
  m_size = static_cast<std::uint64_t>(st.st_size);
  m_page = static_cast<std::size_t>(::sysconf(_SC_PAGESIZE));
  m_granularity = m_page;
  return true;
}

char* MappedFile::view(std::uint64_t offset, std::size_t length) {
  close_view();
  void* const p = ::mmap(nullptr, length, PROT_READ | PROT_WRITE, MAP_PRIVATE,
                         static_cast<int>(m_handle), static_cast<off_t>(offset));
  if (p == MAP_FAILED) return nullptr;
  ::madvise(p, length, MADV_SEQUENTIAL);
  m_view = p;
  m_view_length = length;
  return static_cast<char*>(p);
}

void MappedFile::close_view() {
  if (m_view != nullptr) ::munmap(m_view, m_view_length);
  m_view = nullptr;
}

}  // namespace zelstr::platform
