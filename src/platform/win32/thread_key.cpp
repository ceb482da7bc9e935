// thread_key.cpp - a fiber-local storage index: unlike a TLS index, it
// takes a callback, which Windows calls when a thread ends (and for each
// value still set when the index is freed).
#include "platform/thread_key.h"

#include <windows.h>

namespace zelstr::platform {
namespace {

DWORD g_index = FLS_OUT_OF_INDEXES;

}  // namespace

bool create_thread_key(ThreadExitCallback at_exit) noexcept {
  g_index = FlsAlloc(reinterpret_cast<PFLS_CALLBACK_FUNCTION>(at_exit));
  return g_index != FLS_OUT_OF_INDEXES;
}

void delete_thread_key() noexcept {
  if (g_index != FLS_OUT_OF_INDEXES) FlsFree(g_index);
  g_index = FLS_OUT_OF_INDEXES;
}

bool set_thread_pointer(void* pointer) noexcept {
  return g_index != FLS_OUT_OF_INDEXES && FlsSetValue(g_index, pointer) != 0;
}

void* thread_pointer() noexcept {
  return g_index != FLS_OUT_OF_INDEXES ? FlsGetValue(g_index) : nullptr;
}

}  // namespace zelstr::platform
