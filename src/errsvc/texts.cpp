// texts.cpp - per-thread text buffers and the service's standard texts.
#include "errsvc/errsvc.h"

namespace {

// Each thread formats its messages in its own buffers, so two threads that
// report at once do not overwrite each other's text.
constexpr int kBufferSize = 2048;
thread_local char t_load_string[kBufferSize];
thread_local char t_format_message[kBufferSize];

}  // namespace

char* ErrHand_BufferForLoadString() noexcept { return t_load_string; }
char* ErrHand_BufferForFormatMessage() noexcept { return t_format_message; }
char const* ErrHandDLL_GetTopMarkerText() noexcept { return ""; }

char const* ErrHand_Msg_ERRSVC_BAD_ARGUMENT() noexcept {
  return "A bad argument was given to the function.";
}
char const* ErrHand_Msg_ERRSVC_INCOHERENT_FLAG() noexcept {
  return "An incoherent flag was given to the function.";
}
char const* ErrHand_Msg_ERRSVC_INTERNAL_ERROR() noexcept {
  return "An internal error occurred in the function.";
}
