// system_error.cpp - the last error code and its text, from errno and the
// system error category.
#include <boost/system/error_code.hpp>
#include <cerrno>
#include <cstring>
#include <string>

#include "platform/resources.h"

namespace zelstr::platform {

unsigned long last_error() { return static_cast<unsigned long>(errno); }

void system_error_text(unsigned long code, char* buffer, unsigned size) {
  if (buffer == nullptr || size == 0) return;
  std::string const text = boost::system::system_category().message(static_cast<int>(code));
  std::size_t const n = text.size() < size - 1 ? text.size() : size - 1;
  std::memcpy(buffer, text.data(), n);
  buffer[n] = '\0';
}

}  // namespace zelstr::platform
