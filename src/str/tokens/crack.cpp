// crack.cpp - _zstrcrack: every token of a string, in buffers kept by each
// thread between calls.
#include <cstdlib>
#include <cstring>

#include "frame/memory.h"
#include "frame/module.h"
#include "frame/per_thread.h"
#include "str/report.h"
#include "str/tokens/separators.h"
#include "zelstr/tokens.h"

namespace {

using namespace zelstr::str;

// A copy of the string, cut into tokens by terminators, and the array of
// pointers to them; both grown as needed.
struct CrackBuffers {
  char* text = nullptr;
  std::size_t text_room = 0;
  char const** tokens = nullptr;
  std::size_t token_room = 0;

  CrackBuffers() noexcept = default;
  CrackBuffers(CrackBuffers const&) = delete;
  CrackBuffers& operator=(CrackBuffers const&) = delete;
  ~CrackBuffers() { release(); }

  void release() {
    std::free(text);
    std::free(tokens);
    text = nullptr;
    tokens = nullptr;
    text_room = token_room = 0;
  }

  // Room for a copy of `length` bytes and `count` tokens plus the NULL.
  bool reserve(std::size_t length, std::size_t count) {
    return grow(text, text_room, length + 1) && grow(tokens, token_room, count + 1);
  }

 private:
  template <class T>
  static bool grow(T*& block, std::size_t& room, std::size_t needed) {
    if (needed <= room) return true;
    void* const bigger = std::realloc(block, needed * sizeof(T));
    if (bigger == nullptr) {
      zelstr::frame::note_allocation_failure();
      return false;
    }
    block = static_cast<T*>(bigger);
    room = needed;
    return true;
  }
};
using CrackSlot = zelstr::frame::PerThread<CrackBuffers, zelstr::frame::ThreadSlot::kCrack>;

// For each byte, the closing quote it opens (0: it opens none).
void quote_table(char const* quotes, char (&closes)[256]) {
  std::memset(closes, 0, sizeof closes);
  if (quotes == nullptr) return;
  for (; quotes[0] != '\0' && quotes[1] != '\0'; quotes += 2) {
    closes[static_cast<unsigned char>(quotes[0])] = quotes[1];
  }
}

// The unload step: the all-zero call for the unloading thread, then every
// other thread's buffers.
void release_all_threads() {
  _zstrcrack(nullptr, nullptr, nullptr, nullptr);
  CrackSlot::for_each([](CrackBuffers& buffers) { buffers.release(); });
}
ZELSTR_MODULE_HOOK zelstr::frame::UnloadHook g_release(zelstr::frame::UnloadStep::kCrackBuffers,
                                                       release_all_threads);

}  // namespace

int _zstrcrack(char const* string, char const* separators, char const* quotes,
               char const* const** tokens) noexcept {
  if (string == nullptr && separators == nullptr && quotes == nullptr && tokens == nullptr) {
    CrackSlot::get().release();
    return 0;
  }
  if (tokens != nullptr) *tokens = nullptr;
  unsigned char table[256];
  if (string == nullptr || separators == nullptr || tokens == nullptr ||
      !tokens::separator_table(separators, table)) {
    warn(msg::kCrackBadArgument);
    return 0;
  }
  char closes[256];
  quote_table(quotes, closes);
  std::size_t const length = std::strlen(string);
  CrackBuffers& buffers = CrackSlot::get();
  // A string of n bytes holds at most (n + 1) / 2 tokens.
  if (!buffers.reserve(length, (length + 1) / 2)) {
    warn(msg::kCrackNoMemory);
    return 0;
  }
  std::memcpy(buffers.text, string, length + 1);
  std::size_t count = 0;
  for (char* p = buffers.text;;) {
    p += tokens::token_start(p, table) - p;
    if (*p == '\0') break;
    buffers.tokens[count++] = p;
    p += tokens::token_end(p, table, closes) - p;
    if (*p == '\0') break;
    *p++ = '\0';
  }
  buffers.tokens[count] = nullptr;
  *tokens = buffers.tokens;
  return static_cast<int>(count);
}
