// get_nth.cpp - _zstrgetNth: one token of a string.
#include <cstring>

#include "frame/module.h"
#include "frame/per_thread.h"
#include "str/report.h"
#include "str/tokens/separators.h"
#include "zelstr/tokens.h"

namespace {

using namespace zelstr::str;

// A thread's result buffer, valid until its next call.
struct NthToken {
  char text[2048];
};
using NthSlot = zelstr::frame::PerThread<NthToken, zelstr::frame::ThreadSlot::kNthToken>;

// Unload step 8, before the cracking buffers: every thread's result.
ZELSTR_MODULE_HOOK zelstr::frame::UnloadHook g_release(zelstr::frame::UnloadStep::kModuleBuffer,
                                                       [] { NthSlot::release_every_thread(); });

}  // namespace

char* _zstrgetNth(char const* string, int n, char const* separators, char* dest,
                  unsigned int size) noexcept {
  if (string == nullptr || separators == nullptr) {
    warn(msg::kGetNthNullArgument);
    return nullptr;
  }
  if (n < 1) {
    warn(msg::kGetNthBadNumber);
    return nullptr;
  }
  unsigned char table[256];
  if (!tokens::separator_table(separators, table)) {
    warn(msg::kGetNthBadSeparators);
    return nullptr;
  }
  char const* p = string;
  for (int k = 1;; ++k) {
    char const* const start = tokens::token_start(p, table);
    if (*start == '\0') return nullptr;
    p = tokens::token_end(start, table, nullptr);
    if (k < n) continue;
    if (dest == nullptr) {
      dest = NthSlot::get().text;
      size = sizeof NthToken::text;
    }
    if (size == 0) return dest;  // no room, not even for the terminator
    std::size_t length = static_cast<std::size_t>(p - start);
    if (length > size - 1) length = size - 1;
    std::memcpy(dest, start, length);
    dest[length] = '\0';
    return dest;
  }
}
