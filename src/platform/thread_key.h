// thread_key.h - one pointer per thread, read in a few instructions, with a
// callback when a thread that set one ends.
//
// The library keeps what a thread's calls need between calls (search tables,
// result buffers, the regular-expression engine's caches) in a block of that
// thread's own; the pointer finds the block on every call, so reading it
// must cost next to nothing.  The system calls `at_exit` with the thread's
// pointer when the thread ends, so that the block is released then.
// Deleting the key stops those calls; it does not release anything.
#ifndef ZELSTR_PLATFORM_THREAD_KEY_H
#define ZELSTR_PLATFORM_THREAD_KEY_H

namespace zelstr::platform {

using ThreadExitCallback = void (*)(void* pointer);

// False when the system has no key left: set_thread_pointer() then fails.
bool create_thread_key(ThreadExitCallback at_exit) noexcept;
void delete_thread_key() noexcept;

// Sets the calling thread's pointer (NULL: no callback at its end); false
// when there is no key or the system has no room for the value.
bool set_thread_pointer(void* pointer) noexcept;

}  // namespace zelstr::platform

// void* zelstr::platform::thread_pointer(): the calling thread's pointer,
// NULL until set; inline where the system allows.
#include "thread_pointer.h"

#endif  // ZELSTR_PLATFORM_THREAD_KEY_H
