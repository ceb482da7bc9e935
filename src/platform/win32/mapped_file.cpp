// mapped_file.cpp - Windows: a file mapping opened for copy-on-write views.
#include "platform/mapped_file.h"

#include <windows.h>

namespace zelstr::platform {

MappedFile::~MappedFile() {
  close_view();
  if (m_mapping != 0) CloseHandle(reinterpret_cast<HANDLE>(m_mapping));
  if (m_handle != -1) CloseHandle(reinterpret_cast<HANDLE>(m_handle));
}

bool MappedFile::open(char const* path) {
  HANDLE const file = CreateFileA(path, GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                                  OPEN_EXISTING, FILE_FLAG_SEQUENTIAL_SCAN, nullptr);
  if (file == INVALID_HANDLE_VALUE) return false;
  LARGE_INTEGER size;
  if (GetFileType(file) != FILE_TYPE_DISK || !GetFileSizeEx(file, &size) || size.QuadPart == 0) {
    CloseHandle(file);  // an empty file cannot be mapped: it is read otherwise
    return false;
  }
  HANDLE const mapping = CreateFileMappingA(file, nullptr, PAGE_WRITECOPY, 0, 0, nullptr);
  if (mapping == nullptr) {
    CloseHandle(file);
    return false;
  }
  m_handle = reinterpret_cast<std::intptr_t>(file);
  m_mapping = reinterpret_cast<std::intptr_t>(mapping);
  m_size = static_cast<std::uint64_t>(size.QuadPart);
  SYSTEM_INFO info;
  GetSystemInfo(&info);
  m_granularity = info.dwAllocationGranularity;
  m_page = info.dwPageSize;
  return true;
}

char* MappedFile::view(std::uint64_t offset, std::size_t length) {
  close_view();
  // A view may not pass the mapping's end; its last page still holds the
  // zeros after the file's end.
  if (offset + length > m_size) length = static_cast<std::size_t>(m_size - offset);
  void* const p = MapViewOfFile(reinterpret_cast<HANDLE>(m_mapping), FILE_MAP_COPY,
                                static_cast<DWORD>(offset >> 32),
                                static_cast<DWORD>(offset & 0xFFFFFFFFu), length);
  if (p == nullptr) return nullptr;
  m_view = p;
  m_view_length = length;
  return static_cast<char*>(p);
}

void MappedFile::close_view() {
  if (m_view != nullptr) UnmapViewOfFile(m_view);
  m_view = nullptr;
}

}  // namespace zelstr::platform
