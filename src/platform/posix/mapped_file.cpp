// mapped_file.cpp - POSIX: mmap, private and writable.  When the file ends
// on a page's end there is no zero after it in its last page, so the file
// is mapped over the front of a reserved anonymous region one page longer,
// whose last page is zeros.
#include "platform/mapped_file.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

namespace zelstr::platform {

MappedFile::~MappedFile() {
  if (m_data != nullptr) ::munmap(m_data + m_released, m_mapped - m_released);
}

void MappedFile::release(std::size_t offset) {
  std::size_t const before = offset / m_page * m_page;
  if (before <= m_released) return;
  ::munmap(m_data + m_released, before - m_released);
  m_released = before;
}

bool MappedFile::open(char const* path) {
  int const fd = ::open(path, O_RDONLY);
  if (fd < 0) return false;
  struct stat st {};
  bool const fits = ::fstat(fd, &st) == 0 && S_ISREG(st.st_mode) && st.st_size > 0 &&
                    static_cast<std::uintmax_t>(st.st_size) < SIZE_MAX / 2;
  void* view = MAP_FAILED;
  std::size_t mapped = 0;
  if (fits) {
    auto const size = static_cast<std::size_t>(st.st_size);
    m_page = static_cast<std::size_t>(::sysconf(_SC_PAGESIZE));
    mapped = size % m_page != 0 ? size : size + m_page;
    void* const region = mapped == size ? nullptr
                                        : ::mmap(nullptr, mapped, PROT_READ | PROT_WRITE,
                                                 MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (region != MAP_FAILED) {
      view = ::mmap(region, size, PROT_READ | PROT_WRITE,
                    MAP_PRIVATE | (region != nullptr ? MAP_FIXED : 0), fd, 0);
      if (view == MAP_FAILED && region != nullptr) ::munmap(region, mapped);
    }
    m_size = size;
  }
  ::close(fd);  // the mapping keeps the file
  if (view == MAP_FAILED) return false;
  m_data = static_cast<char*>(view);
  m_mapped = mapped;
  return true;
}

}  // namespace zelstr::platform
