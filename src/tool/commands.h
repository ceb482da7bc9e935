// commands.h - the subcommands of the zelstr tool.
#ifndef ZELSTR_TOOL_COMMANDS_H
#define ZELSTR_TOOL_COMMANDS_H

#include <span>

namespace zelstr::tool {

struct Command {
  char const* name;
  char const* usage;    // arguments after the name
  char const* summary;  // one line for --help
  // Runs with the arguments after the name; returns the exit status.
  int (*run)(std::span<char* const> args);
};

std::span<Command const> commands();

// An argument spelled "(null)" stands for a NULL pointer.
char const* argument(char const* text);

// Prints a warning record, as the tool shows them, on standard error.
void print_warnings_to_stderr();

// Exit status for a usage error.
inline constexpr int kUsageError = 2;

}  // namespace zelstr::tool

#endif  // ZELSTR_TOOL_COMMANDS_H
