// report.cpp - building warning records and handing them to the service.
#include "frame/report.h"

#include <atomic>
#include <cstdio>
#include <new>

#include "errsvc/errsvc.h"
#include "frame/memory.h"
#include "frame/module.h"
#include "platform/resources.h"

namespace zelstr::frame {
namespace {

// Written and read without a lock on purpose: two threads reporting at once
// may swap ids, and reporting is best effort.  The atomic only keeps the
// access itself well defined.
std::atomic<int> g_current_message_id{0};

// The text of string-table message `id`, in the service's load-string buffer.
// When the table has no such entry the buffer gets "<Bad resource ID=...>"
// with the system's text for the error that the load left behind.
char const* load_message_text(int id) noexcept {
  char* const text = ErrHand_BufferForLoadString();
  if (id >= 0 && platform::load_string(module_instance(), static_cast<unsigned>(id), text,
                                       kLoadStringBufferSize) != 0) {
    return text;
  }
  // Taken before any other call can overwrite it.
  unsigned long const error = platform::last_error();
  char* const system_text = ErrHand_BufferForFormatMessage();
  platform::system_error_text(error, system_text, kFormatMessageBufferSize);
  std::snprintf(text, kLoadStringBufferSize, msg::kBadResourceFormat, id, system_text);
  return text;
}

// Builds the record in `memory` (from the service's allocator, may be NULL)
// and files it.  A record that could not be allocated, or whose texts could
// not be copied into it, is filed as NULL: the service counts it, and the
// caller goes on to its fallback as usual.
void file_record(void* memory, int line, Unit unit, char const* function, int id, char const* text,
                 int severity) noexcept {
  CErrorDescription* record = nullptr;
  if (memory != nullptr) {
    record = ::new (memory)
        CErrorDescription(line, unit_short_name(unit), function, id, text, severity, 0);
    if (!record->IsComplete()) {
      delete record;
      record = nullptr;
    }
  }
  if (record == nullptr) note_allocation_failure();
  ErrHandDLL_AddError(record);
}

}  // namespace

void report(Unit unit, Message const& message, char const* function, int line) noexcept {
  if (message.id < 0) {
    void* const memory = CErrorDescription::operator new(sizeof(CErrorDescription));
    file_record(memory, line, unit, function, -1, message.text, message.severity);
    return;
  }
  g_current_message_id.store(message.id, std::memory_order_relaxed);
  void* const memory = CErrorDescription::operator new(sizeof(CErrorDescription));
  char const* const text = load_message_text(message.id);
  file_record(memory, line, unit, function, current_message_id(), text, message.severity);
}

int current_message_id() noexcept { return g_current_message_id.load(std::memory_order_relaxed); }

void report_formatted(Unit unit, int line, char const* format, std::va_list args) noexcept {
  char text[2048];
  std::vsnprintf(text, sizeof text, format, args);
  report(unit, Message{-1, 4, text}, kUnknownFunction, line);
}

}  // namespace zelstr::frame
