// thread_texts.h - the error-handler service's text buffers, each thread's
// own.
//
// Where the compiler's thread_local is the system's own (POSIX) it serves;
// for Windows MinGW only emulates it, so there a fiber-local index holds a
// block per thread, allocated on the thread's first use and released
// by the system's callback when the thread ends.
#ifndef ZELSTR_PLATFORM_THREAD_TEXTS_H
#define ZELSTR_PLATFORM_THREAD_TEXTS_H

namespace zelstr::platform {

inline constexpr int kThreadTextSize = 2048;

// The calling thread's buffer `which` (0 or 1) of kThreadTextSize bytes;
// without memory for a thread's block, a buffer shared with the threads
// that lack one.
char* thread_text(int which) noexcept;

}  // namespace zelstr::platform

#endif  // ZELSTR_PLATFORM_THREAD_TEXTS_H
