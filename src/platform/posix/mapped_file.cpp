// mapped_file.cpp - POSIX: mmap of the open file, private and writable.  When the file ends
// on a page's end there is no zero after it in its last page, so the file
// is mapped over the front of a reserved anonymous region one page longer,
// whose last page is zeros.
#include "platform/mapped_file.h"

#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

namespace zelstr::platform {

MappedFile::~MappedFile() { close(); }

void MappedFile::close() {
  if (m_data != nullptr) ::munmap(m_data + m_released, m_mapped - m_released);
  m_data = nullptr;
  m_size = m_mapped = m_released = 0;
}

void MappedFile::release(std::size_t offset) {
  std::size_t const before = offset / m_page * m_page;
  if (before <= m_released) return;
  ::munmap(m_data + m_released, before - m_released);
  m_released = before;
}

bool MappedFile::open(std::FILE* file, std::size_t least) {
  int const fd = ::fileno(file);
  struct stat st {};
  if (fd < 0 || ::fstat(fd, &st) != 0 || !S_ISREG(st.st_mode) || st.st_size <= 0 ||
      static_cast<std::uintmax_t>(st.st_size) < least ||
      static_cast<std::uintmax_t>(st.st_size) >= SIZE_MAX / 2) {
    return false;
  }
  auto const size = static_cast<std::size_t>(st.st_size);
  m_page = static_cast<std::size_t>(::sysconf(_SC_PAGESIZE));
  std::size_t const mapped = size % m_page != 0 ? size : size + m_page;
  void* const region = mapped == size ? nullptr
                                      : ::mmap(nullptr, mapped, PROT_READ | PROT_WRITE,
                                               MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
  if (region == MAP_FAILED) return false;
  void* const view = ::mmap(region, size, PROT_READ | PROT_WRITE,
                            MAP_PRIVATE | (region != nullptr ? MAP_FIXED : 0), fd, 0);
  if (view == MAP_FAILED) {
    if (region != nullptr) ::munmap(region, mapped);
    return false;
  }
  m_data = static_cast<char*>(view);
  m_size = size;
  m_mapped = mapped;
  // The rest of the last page shows the file's page in the system's cache,
  // where bytes another process appends would appear: writing the
  // terminator makes the page this view's own, as it is now.
  if (mapped == size) m_data[size] = '\0';
  return true;
}

}  // namespace zelstr::platform
