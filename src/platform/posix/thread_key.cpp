// thread_key.cpp - a POSIX thread-specific key carries the pointer to the
// callback at a thread's end; a TLS variable holds the same pointer for
// reading.
#include "platform/thread_key.h"

#include <pthread.h>

namespace zelstr::platform {

__thread void* t_thread_pointer __attribute__((tls_model("initial-exec"))) = nullptr;

namespace {

pthread_key_t g_key;
bool g_created = false;
ThreadExitCallback g_at_exit = nullptr;

// Runs on the ending thread, after its C++ thread_local objects are gone.
void on_thread_exit(void* pointer) {
  t_thread_pointer = nullptr;
  g_at_exit(pointer);
}

}  // namespace

bool create_thread_key(ThreadExitCallback at_exit) noexcept {
  g_at_exit = at_exit;
  g_created = pthread_key_create(&g_key, on_thread_exit) == 0;
  return g_created;
}

void delete_thread_key() noexcept {
  if (g_created) pthread_key_delete(g_key);
  g_created = false;
  t_thread_pointer = nullptr;
}

bool set_thread_pointer(void* pointer) noexcept {
  if (!g_created || pthread_setspecific(g_key, pointer) != 0) return false;
  t_thread_pointer = pointer;
  return true;
}

}  // namespace zelstr::platform
