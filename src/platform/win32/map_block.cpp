// map_block.cpp - map blocks from the global heap: a movable, zero-filled
// block of 264 bytes, locked once; its handle in the first 8 bytes.
#include "platform/map_block.h"

#include <windows.h>

namespace zelstr::platform {
namespace {

constexpr SIZE_T kOwnerWord = 8;
constexpr SIZE_T kBlockSize = kOwnerWord + 256;

}  // namespace

unsigned char* allocate_map_block() {
  HGLOBAL const handle = GlobalAlloc(GMEM_MOVEABLE | GMEM_ZEROINIT, kBlockSize);
  if (handle == nullptr) return nullptr;
  auto* const block = static_cast<unsigned char*>(GlobalLock(handle));
  if (block == nullptr) {
    GlobalFree(handle);
    return nullptr;
  }
  *reinterpret_cast<HGLOBAL*>(block) = handle;
  return block + kOwnerWord;
}

MapRelease release_map_block(unsigned char* table) {
  HGLOBAL const handle = *reinterpret_cast<HGLOBAL*>(table - kOwnerWord);
  SetLastError(0);
  BOOL const still_locked = GlobalUnlock(handle);
  bool const unlocked = still_locked == 0 && GetLastError() == 0;
  bool const freed = GlobalFree(handle) == nullptr;
  return MapRelease{unlocked, freed};
}

}  // namespace zelstr::platform
