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
#include "frame/module.h"
#include "frame/per_thread.h"
#include "zelstr/scratch.h"

namespace {

constexpr std::size_t kCloneArenaSize = 655360;

// Each thread has an arena of its own, made on its first call.
struct CloneArena {
  char bytes[kCloneArenaSize];  // not cleared: every clone is written before use
  // The last clone: its offset in the arena and the size reserved for it.
  std::size_t last_offset = 0;
  std::size_t last_reserved = 0;
};
using CloneSlot = zelstr::frame::PerThread<CloneArena, zelstr::frame::ThreadSlot::kCloneArena>;

// Unload step 3: every thread's arena.
ZELSTR_MODULE_HOOK zelstr::frame::UnloadHook g_release(zelstr::frame::UnloadStep::kModuleArrays,
                                                       [] { CloneSlot::release_every_thread(); });

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
  CloneArena& arena = CloneSlot::get();
  std::size_t offset = arena.last_offset + arena.last_reserved;
  // Even an area of no size receives an empty string, so it needs one byte.
  if (offset + (size != 0 ? size : 1) > kCloneArenaSize) offset = 0;
  char* const area = arena.bytes + offset;

  if (src == nullptr) {
    area[0] = '\0';
  } else {
    // The source may itself be an earlier clone lying under the new area.
    std::size_t const copied = cut && length > kCloneArenaSize - 1 ? kCloneArenaSize - 1 : length;
    std::memmove(area, src, copied);
    area[copied] = '\0';
    if (cut) area[size - 1] = '\0';
  }
  arena.last_offset = offset;
  arena.last_reserved = size;
  return area;
}
