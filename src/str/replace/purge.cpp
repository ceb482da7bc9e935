// purge.cpp - _zstrpurge: removes nested spans, working in a buffer of its
// own that lives between calls.
#include <cstring>

#include "frame/memory.h"
#include "frame/module.h"
#include "frame/per_thread.h"
#include "str/report.h"
#include "zelstr/replace.h"

using namespace zelstr::str;

namespace {

// A thread's work buffer, grown as needed and kept for its next call; the
// call with every argument NULL releases it (every thread's at unload).
struct PurgeBuffer {
  char* bytes = nullptr;
  std::size_t capacity = 0;

  PurgeBuffer() noexcept = default;
  PurgeBuffer(PurgeBuffer const&) = delete;
  PurgeBuffer& operator=(PurgeBuffer const&) = delete;
  ~PurgeBuffer() { release(); }

  bool reserve(std::size_t size) {
    if (size <= capacity) return true;
    char* const bigger = zelstr::frame::new_array<char>(size);
    if (bigger == nullptr) return false;
    delete[] bytes;
    bytes = bigger;
    capacity = size;
    return true;
  }

  void release() {
    delete[] bytes;
    bytes = nullptr;
    capacity = 0;
  }
};
using PurgeSlot = zelstr::frame::PerThread<PurgeBuffer, zelstr::frame::ThreadSlot::kReplace>;

bool at(char const* p, char const* s, std::size_t n) { return std::strncmp(p, s, n) == 0; }

// Copies `string` into the buffer without its spans: an `s1` opens a span
// (a deeper one inside a span), an `s2` closes the innermost; text inside
// spans is dropped, and so are the delimiters of the outermost span unless
// `keep` is set.  A span never closed keeps its text.  Returns the length.
std::size_t purge_into(char* out, char const* string, char const* s1, char const* s2, bool keep) {
  std::size_t const len1 = std::strlen(s1), len2 = std::strlen(s2);
  std::size_t written = 0;
  std::size_t depth = 0;
  std::size_t span_start = 0;         // where the outermost open span began in `out`
  char const* span_source = nullptr;  // and in `string`
  for (char const* p = string; *p != '\0';) {
    if (at(p, s1, len1)) {
      if (depth++ == 0) {
        span_start = written;
        span_source = p;
        if (keep) {
          std::memcpy(out + written, s1, len1);
          written += len1;
        }
      }
      p += len1;
    } else if (depth > 0 && at(p, s2, len2)) {
      if (--depth == 0 && keep) {
        std::memcpy(out + written, s2, len2);
        written += len2;
      }
      p += len2;
    } else {
      if (depth == 0) out[written++] = *p;
      ++p;
    }
  }
  if (depth > 0) {
    std::size_t const rest = std::strlen(span_source);
    std::memcpy(out + span_start, span_source, rest);
    written = span_start + rest;
  }
  return written;
}

void release_at_unload() {
  PurgeSlot::for_each([](PurgeBuffer& buffer) { buffer.release(); });
}

ZELSTR_MODULE_HOOK zelstr::frame::UnloadHook g_release(zelstr::frame::UnloadStep::kPurgeBuffers,
                                                       release_at_unload);

}  // namespace

char* _zstrpurge(char* string, char* s1, char* s2, int flag) noexcept {
  if (string == nullptr && s1 == nullptr && s2 == nullptr && flag == 0) {
    PurgeSlot::get().release();
    return nullptr;
  }
  if (string == nullptr || s1 == nullptr || s2 == nullptr || *s1 == '\0' || *s2 == '\0') {
    return string;
  }
  std::size_t const length = std::strlen(string);
  PurgeBuffer& buffer = PurgeSlot::get();
  if (!buffer.reserve(length + 1)) {
    warn(msg::kPurgeNoMemory);
    return nullptr;
  }
  std::size_t const n = purge_into(buffer.bytes, string, s1, s2, flag != 0);
  std::memcpy(string, buffer.bytes, n);
  string[n] = '\0';
  return string;
}
