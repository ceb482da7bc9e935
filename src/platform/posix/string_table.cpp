// string_table.cpp - the module's string table, compiled in.
//
// Windows keeps the messages in the module's STRINGTABLE resource; here the
// same entries are compiled into an array indexed by id, and load_string
// follows LoadStringA: an absent id loads nothing and sets the last error.
#include <cerrno>
#include <cstring>

#include "frame/messages.h"
#include "platform/resources.h"

namespace zelstr::platform {
namespace {

struct StringTable {
  char const* texts[frame::kMaxMessageId + 1] = {};
  constexpr StringTable() {
#define ZELSTR_TABLE(id, name, text) texts[id] = text;
#include "frame/messages.def"
  }
};

constexpr StringTable kStringTable;

}  // namespace

int load_string(void* /*module*/, unsigned id, char* buffer, int size) {
  if (buffer == nullptr || size <= 0) return 0;
  char const* text =
      id <= static_cast<unsigned>(frame::kMaxMessageId) ? kStringTable.texts[id] : nullptr;
  if (text == nullptr) {
    buffer[0] = '\0';
    errno = ENOMSG;
    return 0;
  }
  std::size_t n = std::strlen(text);
  if (n > static_cast<std::size_t>(size - 1)) n = static_cast<std::size_t>(size - 1);
  std::memcpy(buffer, text, n);
  buffer[n] = '\0';
  return static_cast<int>(n);
}

}  // namespace zelstr::platform
