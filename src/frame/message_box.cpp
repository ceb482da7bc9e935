// message_box.cpp - the replaceable message box of the scratch arenas.
#include "frame/message_box.h"

#include <atomic>

#include "platform/message_box.h"
#include "zelstr/scratch.h"

namespace zelstr {
namespace {

std::atomic<MessageBoxHandler> g_handler{nullptr};

}  // namespace

MessageBoxHandler set_message_box_handler(MessageBoxHandler h) { return g_handler.exchange(h); }

namespace frame {

int show_message_box(char const* text, char const* caption, unsigned style) {
  MessageBoxHandler const handler = g_handler.load();
  if (handler != nullptr) return handler(text, caption, style);
  return platform::system_message_box(text, caption, style);
}

}  // namespace frame
}  // namespace zelstr
