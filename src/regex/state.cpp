// state.cpp - the last error text and the backslash switch, each thread's
// own.
#include "regex/state.h"

#include <cstdio>

#include "frame/memory.h"
#include "frame/messages.h"
#include "frame/per_thread.h"

namespace zelstr::regex {
namespace {

struct EngineState {
  char const* error = nullptr;
  char name_errors[2][128] = {};
  int backslashes = 0;
};
using StateSlot = frame::PerThread<EngineState, frame::ThreadSlot::kRegexState>;

}  // namespace

char const* error_text() { return StateSlot::get().error; }
void set_error(char const* text) { StateSlot::get().error = text; }

void set_out_of_space() {
  frame::note_allocation_failure();
  set_error(frame::msg::kReOutOfSpace);
}

void set_name_error(int buffer, char const* format, char letter, int group) {
  EngineState& state = StateSlot::get();
  std::snprintf(state.name_errors[buffer], sizeof state.name_errors[buffer], format, '@', letter,
                group);
  state.error = state.name_errors[buffer];
}

int backslashes_in_intervals() { return StateSlot::get().backslashes; }
void set_backslashes_in_intervals(int handled) { StateSlot::get().backslashes = handled; }

}  // namespace zelstr::regex
