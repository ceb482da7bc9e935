// thread_pointer.h - the thread's pointer is its fiber-local value (see
// thread_key.cpp): a call, which keeps <windows.h> out of the library's
// other units.
#ifndef ZELSTR_PLATFORM_WIN32_THREAD_POINTER_H
#define ZELSTR_PLATFORM_WIN32_THREAD_POINTER_H

namespace zelstr::platform {

void* thread_pointer() noexcept;

}  // namespace zelstr::platform

#endif  // ZELSTR_PLATFORM_WIN32_THREAD_POINTER_H
