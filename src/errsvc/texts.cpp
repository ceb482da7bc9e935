// texts.cpp - per-thread text buffers and the service's standard texts.
#include "errsvc/errsvc.h"
#include "platform/thread_texts.h"

// Each thread formats its messages in its own buffers, so two threads that
// report at once do not overwrite each other's text.
char* ErrHand_BufferForLoadString() noexcept { return zelstr::platform::thread_text(0); }
char* ErrHand_BufferForFormatMessage() noexcept { return zelstr::platform::thread_text(1); }
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
