// commands.h - the subcommands of the zelstr tool.
#ifndef ZELSTR_TOOL_COMMANDS_H
#define ZELSTR_TOOL_COMMANDS_H

#include <cstdio>
#include <span>
#include <string>

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

// The file `name`, or standard input for "-"; NULL, with a message naming
// `command`, when it cannot be opened.  close_input leaves standard input
// open.
std::FILE* open_input(char const* command, char const* name);
void close_input(std::FILE* in);

// The next line of `in`, without its line feed; false at the end.
bool read_line(std::FILE* in, std::string& line);

// The whole text named by `arg` ("-": standard input); false when it
// cannot be read.
bool read_text(char const* arg, std::string& text);

// Exit status for a usage error.
inline constexpr int kUsageError = 2;

}  // namespace zelstr::tool

#endif  // ZELSTR_TOOL_COMMANDS_H
