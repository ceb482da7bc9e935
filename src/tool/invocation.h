// invocation.h - one run of a subcommand: its parsed command line, its
// messages and its exit status.
#ifndef ZELSTR_TOOL_INVOCATION_H
#define ZELSTR_TOOL_INVOCATION_H

#include <atomic>
#include <cstdarg>
#include <optional>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "tool/command.h"

namespace CLI {
class Option;
}

namespace zelstr::tool {

class Invocation {
 public:
  // Parses `args` (the words after the subcommand's name) by the options
  // `command` declares, wherever they stand, as getopt_long would: "-ic" is
  // "-i -c", "-g1" is "-g 1", "--name=value" is "--name value", and a word
  // "--" ends the options.  Options the command declares as conflicting
  // are refused together.
  Invocation(Command const& command, std::span<char* const> args);

  // False when the command line was refused (the message is printed).
  bool parsed() const { return m_parsed; }
  bool wants_help() const { return m_help; }
  bool warnings_shown() const { return m_warnings; }
  // The encoding --encoding names for the inputs, or NULL.
  char const* encoding() const { return m_encoding ? m_encoding->c_str() : nullptr; }

  bool flag(char const* name) const { return value(name) != nullptr; }
  // Whether the command has the option at all.
  bool declares(char const* name) const;
  // The option's value ("" for a flag given), the last one given wins;
  // nullptr when it was not given.
  char const* value(char const* name) const;
  // Every value given to the option, in the order given.
  std::vector<char const*> values(char const* name) const;
  Invocation(Invocation const&) = delete;
  Invocation& operator=(Invocation const&) = delete;
  std::span<char const* const> operands() const { return m_operands; }

  // "zelstr NAME: " + the message on standard error; an error makes the
  // exit status 2, a notice leaves it as it is.
  void error(char const* format, ...) __attribute__((format(printf, 2, 3)));
  void notice(char const* format, ...) __attribute__((format(printf, 2, 3)));
  // An error about the command line: the message, then where to find help.
  int usage_error(char const* format, ...) __attribute__((format(printf, 2, 3)));
  // The library's last warning, if one came since `clear_warning`.
  std::string const& last_warning() const;
  // The first one (a definition's fault, before the notice that shows it).
  std::string const& first_warning() const;
  void clear_warning();

  // A file that cannot be opened or read: an error, whose message -s
  // keeps quiet when the command declares it.
  void file_error(char const* format, ...) __attribute__((format(printf, 2, 3)));

  void found() { m_found = true; }
  // Found, and nothing more is wanted (-q): no further input is read, and
  // the exit status is 0 even after an error.
  void found_enough() { m_found = m_enough = true; }
  bool enough() const { return m_enough; }
  int exit_status() const {
    return m_enough ? kFound : m_error ? kError : m_found ? kFound : kNothingFound;
  }
  Command const& command() const { return m_command; }

 private:
  void take_values(std::vector<CLI::Option*> const& declared);
  bool take_operands(std::vector<std::string> const& rest);
  bool check_conflicts();
  void print(char const* format, va_list args);

  Command const& m_command;
  std::vector<std::vector<std::string>> m_storage;  // the values given, per option
  std::vector<std::string> m_rest;                  // the words that were not options
  std::vector<std::pair<char const*, char const*>> m_values;
  std::vector<char const*> m_operands;
  std::optional<std::string> m_encoding;
  bool m_parsed = true, m_help = false, m_warnings = false;
  // Set by the threads that read inputs (grep -j).
  std::atomic<bool> m_found{false}, m_error{false}, m_enough{false};
};

}  // namespace zelstr::tool

#endif  // ZELSTR_TOOL_INVOCATION_H
