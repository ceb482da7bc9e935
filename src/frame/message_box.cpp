// message_box.cpp - the replaceable message box of the scratch arenas.
#include "frame/message_box.h"

#include <atomic>

#include "platform/message_box.h"
#include "zelstr/scratch.h"

namespace zelstr {
namespace {

std::atomic<MessageBoxHandler> g_handler{nullptr};

}  // namespace

MessageBoxHandler set_message_box_handler(MessageBoxHandler h) noexcept {
  return g_handler.exchange(h);
}

namespace frame {

// The handler is the program's code: what it throws stays here, and the
// message counts as answered by OK (1).
int show_message_box(char const* text, char const* caption, unsigned style) noexcept {
  MessageBoxHandler const handler = g_handler.load();
  if (handler == nullptr) return platform::system_message_box(text, caption, style);
  try {
    return handler(text, caption, style);
  } catch (...) {
    return 1;
  }
}

}  // namespace frame
}  // namespace zelstr
