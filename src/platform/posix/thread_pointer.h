// thread_pointer.h - the thread's pointer in the initial-exec TLS model: one
// load relative to the thread register, no call, and no allocation when a
// thread first reads it (the library's TLS is eight bytes, which the loader
// reserves in every thread's static block, even for a library opened with
// dlopen).
#ifndef ZELSTR_PLATFORM_POSIX_THREAD_POINTER_H
#define ZELSTR_PLATFORM_POSIX_THREAD_POINTER_H

namespace zelstr::platform {

extern __thread void* t_thread_pointer __attribute__((tls_model("initial-exec")));

inline void* thread_pointer() noexcept { return t_thread_pointer; }

}  // namespace zelstr::platform

#endif  // ZELSTR_PLATFORM_POSIX_THREAD_POINTER_H
