// state.cpp - the last error text and the backslash switch.
#include "regex/state.h"

#include <cstdio>

#include "frame/memory.h"
#include "frame/messages.h"

namespace zelstr::regex {
namespace {

char const* g_error = nullptr;
char g_name_errors[2][128];
int g_backslashes = 0;

}  // namespace

char const* error_text() { return g_error; }
void set_error(char const* text) { g_error = text; }

void set_out_of_space() {
  frame::note_allocation_failure();
  g_error = frame::msg::kReOutOfSpace;
}

void set_name_error(int buffer, char const* format, char letter, int group) {
  std::snprintf(g_name_errors[buffer], sizeof g_name_errors[buffer], format, '@', letter, group);
  g_error = g_name_errors[buffer];
}

int backslashes_in_intervals() { return g_backslashes; }
void set_backslashes_in_intervals(int handled) { g_backslashes = handled; }

}  // namespace zelstr::regex
