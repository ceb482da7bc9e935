// command.h - what a subcommand of the zelstr tool declares, and what it
// gets when it runs.
//
// Every subcommand is a row of the command table (commands.cpp): its name,
// its options, its help text and an example.  The help, the manual page and
// the shell completion are all printed from that table, and the common
// parser (invocation.cpp) reads the command line by it, so a subcommand's
// own code only sees options already checked.
#ifndef ZELSTR_TOOL_COMMAND_H
#define ZELSTR_TOOL_COMMAND_H

#include <span>

namespace zelstr::tool {

class Invocation;

// Exit status, as grep has it.
inline constexpr int kFound = 0;
inline constexpr int kNothingFound = 1;
inline constexpr int kError = 2;

struct Option {
  char const* name;   // "-i" or "--first"
  char const* value;  // the value's name ("COUNT"), or nullptr for a flag
  char const* help;
};

// Two options of a command that cannot be used together.
struct Conflict {
  char const* first;
  char const* second;
};

// An example for the help: a shell command line and what it prints.
struct Example {
  char const* command;
  char const* output;
};

struct Command {
  char const* name;
  char const* synopsis;     // the arguments after the name
  char const* summary;      // one line for the list of commands
  char const* description;  // the help's paragraph, lines ending in \n
  std::span<Option const> options;
  Example example;
  char const* exit_status;  // what 0 and 1 mean for this command
  int (*run)(Invocation& invocation);
  std::span<Conflict const> conflicts = {};
};

std::span<Command const> commands();
Command const* find_command(char const* name);

// Options every subcommand takes.
inline constexpr Option kCommonOptions[] = {
    {"-W", nullptr, "print the library's warnings on standard error"},
    {"--encoding", "NAME",
     "read the inputs in the encoding NAME (UTF-16LE, windows-1252...), not by their byte-order "
     "mark"},
    {"--help", nullptr, "print this help (also -h, where the command has no -h of its own)"},
};

// The tool's own options, before any command.
inline constexpr Option kToolOptions[] = {
    {"-W", nullptr, "print the library's warnings on standard error"},
    {"--help", nullptr, "print the list of commands, or a command's help (also -h)"},
    {"--version", nullptr, "print the versions of the tool and of the library it runs"},
    {"--man", nullptr, "print the manual page (roff)"},
    {"--bash-completion", nullptr, "print the bash completion script"},
};

}  // namespace zelstr::tool

#endif  // ZELSTR_TOOL_COMMAND_H
