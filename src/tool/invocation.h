// invocation.h - one run of a subcommand: its parsed command line, its
// messages and its exit status.
#ifndef ZELSTR_TOOL_INVOCATION_H
#define ZELSTR_TOOL_INVOCATION_H

#include <cstdarg>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "tool/command.h"

namespace zelstr::tool {

class Invocation {
 public:
  // Parses `args` (the words after the subcommand's name) by the options
  // `command` declares, wherever they stand.  A word "--" ends the
  // options; "--name=value" and "--name value" are the same.
  Invocation(Command const& command, std::span<char* const> args);

  // False when the command line was refused (the message is printed).
  bool parsed() const { return m_parsed; }
  bool wants_help() const { return m_help; }
  bool warnings_shown() const { return m_warnings; }

  bool flag(char const* name) const { return value(name) != nullptr; }
  // The option's value ("" for a flag given), the last one given wins;
  // nullptr when it was not given.
  char const* value(char const* name) const;
  std::span<char const* const> operands() const { return m_operands; }

  // "zelstr NAME: " + the message on standard error; an error makes the
  // exit status 2, a notice leaves it as it is.
  void error(char const* format, ...) __attribute__((format(printf, 2, 3)));
  void notice(char const* format, ...) __attribute__((format(printf, 2, 3)));
  // An error about the command line: the message, then where to find help.
  int usage_error(char const* format, ...) __attribute__((format(printf, 2, 3)));
  // The library's last warning, if one came since `clear_warning`.
  std::string const& last_warning() const;
  void clear_warning();

  void found() { m_found = true; }
  int exit_status() const { return m_error ? kError : m_found ? kFound : kNothingFound; }
  Command const& command() const { return m_command; }

 private:
  Option const* option(char const* name, std::size_t length) const;
  bool take_option(std::span<char* const> args, std::size_t& i);
  void print(char const* format, va_list args);

  Command const& m_command;
  std::vector<std::pair<char const*, char const*>> m_values;
  std::vector<char const*> m_operands;
  bool m_parsed = true, m_help = false, m_warnings = false;
  bool m_found = false, m_error = false;
};

}  // namespace zelstr::tool

#endif  // ZELSTR_TOOL_INVOCATION_H
