// clone_arena.cpp - _zstrclone and its rotating arena.
//
// Clones are laid one after the other: each area starts where the previous
// one's reserved size ended, so a caller may write up to `extra` bytes past
// the copy's terminator without disturbing the next clone.  An area that
// would pass the end of the arena starts again at the beginning; earlier
// clones stay intact until a later one overwrites them.
#include <cstdint>
#include <cstdio>
#include <cstring>

#include "frame/message_box.h"
#include "frame/messages.h"
#include "zelstr/scratch.h"

namespace {

constexpr std::size_t kCloneArenaSize = 655360;

char g_clone_arena[kCloneArenaSize];
// The last clone: its offset in the arena and the size reserved for it.
std::size_t g_last_offset = 0;
std::size_t g_last_reserved = 0;

void warn_clone_truncated() {
  char text[64];
  std::snprintf(text, sizeof text, zelstr::frame::msg::kCloneTruncatedFormat,
                static_cast<int>(kCloneArenaSize / 1024));
  zelstr::frame::show_message_box(text, zelstr::frame::msg::kCloneTruncatedCaption,
                                  zelstr::frame::kWarningBoxStyle);
}

}  // namespace

char* _zstrclone(char const* src, unsigned long extra) noexcept {
  std::size_t const reserve = static_cast<std::uint32_t>(extra);
  std::size_t const length = src != nullptr ? std::strlen(src) : 0;
  std::size_t size = src != nullptr ? length + 1 + reserve : reserve;
  bool const cut = size > kCloneArenaSize;
  if (cut) {
    size = kCloneArenaSize;
    warn_clone_truncated();
  }
  std::size_t offset = g_last_offset + g_last_reserved;
  // Even an area of no size receives an empty string, so it needs one byte.
  if (offset + (size != 0 ? size : 1) > kCloneArenaSize) offset = 0;
  char* const area = g_clone_arena + offset;

  if (src == nullptr) {
    area[0] = '\0';
  } else {
    // The source may itself be an earlier clone lying under the new area.
    std::size_t const copied = cut && length > kCloneArenaSize - 1 ? kCloneArenaSize - 1 : length;
    std::memmove(area, src, copied);
    area[copied] = '\0';
    if (cut) area[size - 1] = '\0';
  }
  g_last_offset = offset;
  g_last_reserved = size;
  return area;
}
