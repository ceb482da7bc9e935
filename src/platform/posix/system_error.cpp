// system_error.cpp - the last error code and its text, from errno and the
// system error category.
#include <boost/system/error_code.hpp>
#include <cerrno>
#include <cstring>

#include "platform/resources.h"

namespace zelstr::platform {

unsigned long last_error() { return static_cast<unsigned long>(errno); }

// The category writes into the buffer itself: a warning's text needs no
// memory of its own.
void system_error_text(unsigned long code, char* buffer, unsigned size) {
  if (buffer == nullptr || size == 0) return;
  char const* const text =
      boost::system::system_category().message(static_cast<int>(code), buffer, size);
  if (text != buffer) {
    std::size_t const length = std::strlen(text);
    std::size_t const n = length < size - 1 ? length : size - 1;
    std::memmove(buffer, text, n);
    buffer[n] = '\0';
  }
}

}  // namespace zelstr::platform
