// thread_texts.cpp - POSIX: the compiler's thread_local buffers.
#include "platform/thread_texts.h"

namespace zelstr::platform {
namespace {

thread_local char t_texts[2][kThreadTextSize];

}  // namespace

char* thread_text(int which) noexcept { return t_texts[which]; }

}  // namespace zelstr::platform
