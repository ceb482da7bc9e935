// thread_texts.cpp - Windows: a block per thread behind a fiber-local index,
// freed by the index's callback when the thread ends.
#include "platform/thread_texts.h"

#include <windows.h>

namespace zelstr::platform {
namespace {

using Block = char[2][kThreadTextSize];

void WINAPI release(void* block) {
  if (block != nullptr) HeapFree(GetProcessHeap(), 0, block);
}

DWORD texts_index() {
  static DWORD const index = FlsAlloc(release);
  return index;
}

Block g_shared;  // for a thread without memory for its own block

}  // namespace

char* thread_text(int which) noexcept {
  DWORD const index = texts_index();
  if (index == FLS_OUT_OF_INDEXES) return g_shared[which];
  auto* block = static_cast<Block*>(FlsGetValue(index));
  if (block == nullptr) {
    block = static_cast<Block*>(HeapAlloc(GetProcessHeap(), 0, sizeof(Block)));
    if (block == nullptr || FlsSetValue(index, block) == 0) {
      release(block);
      return g_shared[which];
    }
  }
  return (*block)[which];
}

}  // namespace zelstr::platform
