// invocation.cpp - the common command-line parser and the messages of the
// zelstr tool.
#include "tool/invocation.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cstdarg>
#include <cstdio>
#include <cstring>
#include <mutex>
#include <string_view>

#include "errsvc/errsvc.h"
#include "platform/text_decoder.h"
#include "tool/out_of_memory.h"

namespace zelstr::tool {
namespace {

// The library's warnings reach the tool through the service's sink: the
// last one is kept for the tool's own error messages, and each is printed
// when -W asked for it.
struct WarningState {
  std::string first, last;
};

// One for the process, locked: grep -j reads inputs on several threads.
// (What the texts say is read when the command sets out, on one.)
WarningState& warning_state() {
  static WarningState state;
  return state;
}
std::mutex g_warning_lock;
std::atomic<bool> g_print_warnings{false};

void receive_warning(errsvc::Record const& r) {
  std::lock_guard<std::mutex> const hold(g_warning_lock);
  WarningState& state = warning_state();
  if (state.first.empty()) state.first = r.text;
  state.last = r.text;
  if (g_print_warnings.load(std::memory_order_relaxed)) {
    std::fprintf(stderr, "warning %d (severity %d): %s\n", r.id, r.severity, r.text.c_str());
  }
  // Each record is read here as it comes: the service need not keep it (an
  // input may draw a warning on every line).
  errsvc::clear();
}

// The command's option named `name`, or NULL.
Option const* find_option(Command const& command, std::string_view name) {
  for (Option const& o : command.options) {
    if (name == o.name) return &o;
  }
  return nullptr;
}

// "--name=value" given to a flag: CLI11 would take the value as the flag's
// count, so such a word is refused before it sees it.
Option const* flag_with_value(Command const& command, char const* word) {
  char const* const equals = std::strchr(word, '=');
  if (word[0] != '-' || word[1] != '-' || equals == nullptr) return nullptr;
  Option const* const o =
      find_option(command, std::string_view(word, static_cast<std::size_t>(equals - word)));
  return o != nullptr && o->value == nullptr ? o : nullptr;
}

// "--name=": an empty value, which CLI11 would take from the next word.
bool has_empty_value(char const* word) {
  std::size_t const length = std::strlen(word);
  return length > 3 && word[0] == '-' && word[1] == '-' &&
         std::strchr(word, '=') == word + length - 1;
}

// The words as CLI11 reads them: from the back, "--name=" as "--name" "".
std::vector<std::string> words_for_cli11(std::span<char* const> args) {
  std::vector<std::string> words;
  auto const options_end = std::find_if(
      args.begin(), args.end(), [](char const* word) { return std::strcmp(word, "--") == 0; });
  for (auto i = args.end(); i != args.begin();) {
    char const* const word = *--i;
    if (i < options_end && has_empty_value(word)) {
      words.emplace_back();
      words.emplace_back(word, std::strlen(word) - 1);
    } else {
      words.emplace_back(word);
    }
  }
  return words;
}

}  // namespace

// The command line is read by CLI11 (getopt's conventions: "-ic" is "-i
// -c", "-g1" and "-g 1" are the same, "--name=value" and "--name value" too,
// options may stand anywhere, "--" ends them), from the options of the
// command table; words it does not know are left over, and are operands or
// unknown options.  The messages are the tool's own.
Invocation::Invocation(Command const& command, std::span<char* const> args) : m_command(command) {
  for (char const* word : args) {
    if (std::strcmp(word, "--") == 0) break;
    if (Option const* o = flag_with_value(command, word)) {
      usage_error("option '%s' takes no value", o->name);
      return;
    }
  }
  CLI::App app;
  app.allow_extras();
  app.set_help_flag();
  // A command of grep's options has its own -h (no file names).
  CLI::Option* const help = app.add_flag(find_option(command, "-h") != nullptr ? "--help" : "-h,--help");
  CLI::Option* const warnings = app.add_flag("-W");
  CLI::Option* const encoding =
      app.add_option("--encoding")->allow_extra_args(false)->multi_option_policy(
          CLI::MultiOptionPolicy::TakeLast);
  std::vector<CLI::Option*> declared;
  for (Option const& o : command.options) {
    declared.push_back(o.value == nullptr
                           ? app.add_flag(o.name)
                           : app.add_option(o.name)->allow_extra_args(false)->multi_option_policy(
                                 CLI::MultiOptionPolicy::TakeAll));
  }
  std::vector<std::string> words = words_for_cli11(args);
  try {
    app.parse(words);
  } catch (CLI::ParseError const& e) {
    // CLI11 names the option first: "-g: 1 required TEXT missing".
    std::string_view const message = e.what();
    Option const* const o = find_option(command, message.substr(0, message.find(':')));
    if (o != nullptr && o->value != nullptr) {
      usage_error("option '%s' needs a value (%s)", o->name, o->value);
    } else {
      usage_error("%s", e.what());
    }
    return;
  }
  m_help = help->count() > 0;
  m_warnings = warnings->count() > 0;
  if (encoding->count() > 0) {
    m_encoding = encoding->as<std::string>();
    if (m_encoding->empty() || platform::TextDecoder::open(m_encoding->c_str()) == nullptr) {
      usage_error("unknown encoding '%s' (a converter's name, such as UTF-16LE, UTF-16BE or "
                  "windows-1252)",
                  m_encoding->c_str());
      return;
    }
  }
  take_values(declared);
  if (!take_operands(app.remaining()) || !check_conflicts()) return;
  g_print_warnings = m_warnings;
  errsvc::set_sink(receive_warning);
}

// The options given, in the command table's order, each value kept in
// m_storage (whose strings m_values points at).
void Invocation::take_values(std::vector<CLI::Option*> const& declared) {
  m_storage.reserve(declared.size());
  for (std::size_t i = 0; i < declared.size(); ++i) {
    Option const& o = m_command.options[i];
    if (o.value == nullptr) {
      if (declared[i]->count() > 0) m_values.emplace_back(o.name, "");
    } else {
      m_storage.push_back(declared[i]->results());
      for (std::string const& v : m_storage.back()) m_values.emplace_back(o.name, v.c_str());
    }
  }
}

// The words left over: operands, or unknown options before a "--".
bool Invocation::take_operands(std::vector<std::string> const& rest) {
  m_rest = rest;
  bool options_end = false;
  for (std::string const& word : m_rest) {
    if (!options_end && word == "--") {
      options_end = true;
    } else if (!options_end && word.size() > 1 && word[0] == '-') {
      usage_error("unknown option '%s'", word.c_str());
      return false;
    } else {
      m_operands.push_back(word.c_str());
    }
  }
  return true;
}

bool Invocation::check_conflicts() {
  for (Conflict const& c : m_command.conflicts) {
    if (flag(c.first) && flag(c.second)) {
      usage_error("options '%s' and '%s' cannot be used together", c.first, c.second);
      return false;
    }
  }
  return true;
}

bool Invocation::declares(char const* name) const {
  return find_option(m_command, name) != nullptr;
}

char const* Invocation::value(char const* name) const {
  char const* found = nullptr;
  for (auto const& [option, value] : m_values) {
    if (std::strcmp(option, name) == 0) found = value;
  }
  return found;
}

std::vector<char const*> Invocation::values(char const* name) const {
  std::vector<char const*> all;
  for (auto const& [option, value] : m_values) {
    if (std::strcmp(option, name) == 0) all.push_back(value);
  }
  return all;
}

void Invocation::error(char const* format, ...) {
  va_list args;
  va_start(args, format);
  print(format, args);
  va_end(args);
  m_error = true;
}

void Invocation::file_error(char const* format, ...) {
  m_error = true;
  if (flag("-s")) return;
  va_list args;
  va_start(args, format);
  print(format, args);
  va_end(args);
}

void Invocation::notice(char const* format, ...) {
  va_list args;
  va_start(args, format);
  print(format, args);
  va_end(args);
}

int Invocation::usage_error(char const* format, ...) {
  va_list args;
  va_start(args, format);
  print(format, args);
  va_end(args);
  if (!memory_ran_out()) {
    std::fprintf(stderr, "usage: zelstr %s%s%s\n(see zelstr %s --help)\n", m_command.name,
                 *m_command.synopsis != '\0' ? " " : "", m_command.synopsis, m_command.name);
  }
  m_parsed = false;
  m_error = true;
  return kError;
}

// An error that memory running out caused is told as that, once.
void Invocation::print(char const* format, va_list args) {
  if (memory_ran_out()) {
    report_out_of_memory();
    return;
  }
  std::fprintf(stderr, "zelstr %s: ", m_command.name);
  std::vfprintf(stderr, format, args);
  std::fputc('\n', stderr);
}

std::string const& Invocation::last_warning() const { return warning_state().last; }

std::string const& Invocation::first_warning() const { return warning_state().first; }

void Invocation::clear_warning() {
  warning_state().first.clear();
  warning_state().last.clear();
}

}  // namespace zelstr::tool
