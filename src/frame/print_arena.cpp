// print_arena.cpp - _zstrprintf, _zstrvprintf and their rotating arenas.
//
// Each result starts one past the previous result's terminator.  Once that
// position lies past the wrap threshold (512 KB), results start again at the
// arena's beginning, so every result stays valid until about 512 KB of later
// results have been written.  The last-but-two and last-but-one bytes of an
// arena are guards: formatting may run into the first guard but never past
// it, and a guard found non-zero after formatting means the text did not fit.
#include <cstdarg>
#include <cstdio>
#include <cstring>

#include "frame/message_box.h"
#include "frame/messages.h"
#include "frame/module.h"
#include "frame/per_thread.h"
#include "zelstr/scratch.h"

namespace {

constexpr std::size_t kPrintArenaSize = 655360;
constexpr std::size_t kWrapThreshold = 524288;
constexpr std::size_t kFirstGuard = kPrintArenaSize - 3;
constexpr std::size_t kSecondGuard = kPrintArenaSize - 2;

// Each thread has one arena for each function, made on its first call.
struct PrintArena {
  char bytes[kPrintArenaSize];  // not cleared: the first result starts at bytes
  char* last = nullptr;         // the previous result, or NULL
};
using PrintSlot = zelstr::frame::PerThread<PrintArena, zelstr::frame::ThreadSlot::kPrintArena>;
using VprintSlot = zelstr::frame::PerThread<PrintArena, zelstr::frame::ThreadSlot::kVprintArena>;

// Unload step 3: every thread's two arenas.
ZELSTR_MODULE_HOOK zelstr::frame::UnloadHook g_release(zelstr::frame::UnloadStep::kModuleArrays, [] {
  PrintSlot::release_every_thread();
  VprintSlot::release_every_thread();
});

char* next_position(PrintArena& arena) {
  if (arena.last == nullptr) return arena.bytes;
  char* const next = arena.last + std::strlen(arena.last) + 1;
  return next > arena.bytes + kWrapThreshold ? arena.bytes : next;
}

// Formats at `position`; true when the text fitted before the guards.
bool format_at(PrintArena& arena, char* position, char const* format, va_list args) {
  arena.bytes[kFirstGuard] = '\0';
  arena.bytes[kSecondGuard] = '\0';
  va_list copy;
  va_copy(copy, args);
  // The limit lets the text reach the first guard but leaves the second one
  // for the terminator.
  int const n = std::vsnprintf(position, arena.bytes + kSecondGuard + 1 - position, format, copy);
  va_end(copy);
  if (n < 0) *position = '\0';
  return arena.bytes[kFirstGuard] == '\0' && arena.bytes[kSecondGuard] == '\0';
}

void warn_result_truncated() {
  char text[64];
  std::snprintf(text, sizeof text, zelstr::frame::msg::kPrintTruncatedFormat,
                static_cast<int>(kFirstGuard / 1024));
  zelstr::frame::show_message_box(text, zelstr::frame::msg::kPrintTruncatedCaption,
                                  zelstr::frame::kWarningBoxStyle);
}

char* format_in(PrintArena& arena, char const* format, va_list args) {
  char* position = next_position(arena);
  *position = '\0';
  arena.last = position;
  if (format == nullptr || *format == '\0') return position;
  if (format_at(arena, position, format, args)) return position;
  if (position != arena.bytes) {
    position = arena.bytes;
    arena.last = position;
    if (format_at(arena, position, format, args)) return position;
  }
  warn_result_truncated();
  arena.bytes[kSecondGuard] = '\0';
  return position;
}

}  // namespace

char* _zstrprintf(char const* format, ...) noexcept {
  va_list args;
  va_start(args, format);
  char* const result = format_in(PrintSlot::get(), format, args);
  va_end(args);
  return result;
}

char* _zstrvprintf(char const* format, va_list args) noexcept {
  return format_in(VprintSlot::get(), format, args);
}
