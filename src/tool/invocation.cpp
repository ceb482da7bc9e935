// invocation.cpp - the common command-line parser and the messages of the
// zelstr tool.
#include "tool/invocation.h"

#include <cstdarg>
#include <cstdio>
#include <cstring>

#include "errsvc/errsvc.h"

namespace zelstr::tool {
namespace {

// The library's warnings reach the tool through the service's sink: the
// last one is kept for the tool's own error messages, and each is printed
// when -W asked for it.
struct WarningState {
  std::string last;
  bool print = false;
};

WarningState& warning_state() {
  static WarningState state;
  return state;
}

void receive_warning(errsvc::Record const& r) {
  WarningState& state = warning_state();
  state.last = r.text;
  if (state.print) {
    std::fprintf(stderr, "warning %d (severity %d): %s\n", r.id, r.severity, r.text.c_str());
  }
}

bool is_option_word(char const* word) { return word[0] == '-' && word[1] != '\0'; }

}  // namespace

Invocation::Invocation(Command const& command, std::span<char* const> args) : m_command(command) {
  // Options may come before, between or after the operands, as with the
  // GNU tools; after "--" every word is an operand.
  for (std::size_t i = 0; i < args.size(); ++i) {
    char const* const word = args[i];
    if (!is_option_word(word)) {
      m_operands.push_back(word);
    } else if (std::strcmp(word, "--") == 0) {
      m_operands.insert(m_operands.end(), args.begin() + static_cast<std::ptrdiff_t>(i) + 1,
                        args.end());
      break;
    } else if (!take_option(args, i)) {
      return;
    }
  }
  warning_state().print = m_warnings;
  errsvc::set_sink(receive_warning);
}

// The option `args[i]` (and its value, which may be the next word):
// false, with a usage message, when it is refused.
bool Invocation::take_option(std::span<char* const> args, std::size_t& i) {
  char const* const word = args[i];
  if (std::strcmp(word, "--help") == 0 || std::strcmp(word, "-h") == 0) {
    m_help = true;
    return true;
  }
  if (std::strcmp(word, "-W") == 0) {
    m_warnings = true;
    return true;
  }
  char const* const equals = word[1] == '-' ? std::strchr(word, '=') : nullptr;
  std::size_t const length =
      equals != nullptr ? static_cast<std::size_t>(equals - word) : std::strlen(word);
  Option const* const o = option(word, length);
  if (o == nullptr) {
    usage_error("unknown option '%.*s'", static_cast<int>(length), word);
    return false;
  }
  if (o->value == nullptr) {
    if (equals != nullptr) {
      usage_error("option '%s' takes no value", o->name);
      return false;
    }
    m_values.emplace_back(o->name, "");
  } else if (equals != nullptr) {
    m_values.emplace_back(o->name, equals + 1);
  } else if (i + 1 < args.size()) {
    m_values.emplace_back(o->name, args[++i]);
  } else {
    usage_error("option '%s' needs a value (%s)", o->name, o->value);
    return false;
  }
  return true;
}

Option const* Invocation::option(char const* name, std::size_t length) const {
  for (Option const& o : m_command.options) {
    if (std::strlen(o.name) == length && std::strncmp(o.name, name, length) == 0) return &o;
  }
  return nullptr;
}

char const* Invocation::value(char const* name) const {
  char const* found = nullptr;
  for (auto const& [option, value] : m_values) {
    if (std::strcmp(option, name) == 0) found = value;
  }
  return found;
}

void Invocation::error(char const* format, ...) {
  va_list args;
  va_start(args, format);
  print(format, args);
  va_end(args);
  m_error = true;
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
  std::fprintf(stderr, "usage: zelstr %s %s\n(see zelstr %s --help)\n", m_command.name,
               m_command.synopsis, m_command.name);
  m_parsed = false;
  m_error = true;
  return kError;
}

void Invocation::print(char const* format, va_list args) {
  std::fprintf(stderr, "zelstr %s: ", m_command.name);
  std::vfprintf(stderr, format, args);
  std::fputc('\n', stderr);
}

std::string const& Invocation::last_warning() const { return warning_state().last; }

void Invocation::clear_warning() { warning_state().last.clear(); }

}  // namespace zelstr::tool
