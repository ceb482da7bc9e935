// mapped_file.cpp - Windows: a view cannot give its pages back piecemeal,
// so files are read instead of seen whole.
#include "platform/mapped_file.h"

namespace zelstr::platform {

MappedFile::~MappedFile() = default;

bool MappedFile::open(std::FILE*, std::size_t) { return false; }

void MappedFile::release(std::size_t) {}

void MappedFile::close() {}

}  // namespace zelstr::platform
