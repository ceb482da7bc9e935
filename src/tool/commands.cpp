// commands.cpp - the subcommands that run single library calls.
#include "tool/commands.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

#include "errsvc/errsvc.h"
#include "zelstr/zelstr.h"

namespace zelstr::tool {

int run_demo(std::span<char* const> args);

namespace {

void print_record(errsvc::Record const& r) {
  std::fprintf(stderr, "warning %d (severity %d): %s\n", r.id, r.severity, r.text.c_str());
}

// cmp [-i] [-n COUNT] A B: the -1/0/+1 comparison of two strings.
int run_cmp(std::span<char* const> args) {
  bool insensitive = false;
  char const* count = nullptr;
  std::size_t i = 0;
  for (; i < args.size() && args[i][0] == '-' && args[i][1] != '\0'; ++i) {
    if (std::strcmp(args[i], "-i") == 0) {
      insensitive = true;
    } else if (std::strcmp(args[i], "-n") == 0 && i + 1 < args.size()) {
      count = args[++i];
    } else {
      std::fprintf(stderr, "zelstr cmp: unknown option '%s'\n", args[i]);
      return kUsageError;
    }
  }
  if (args.size() - i != 2) {
    std::fprintf(stderr, "usage: zelstr cmp [-i] [-n COUNT] A B\n");
    return kUsageError;
  }
  char const* a = argument(args[i]);
  char const* b = argument(args[i + 1]);
  int result;
  if (count != nullptr) {
    unsigned long const n = std::strtoul(count, nullptr, 10);
    result = insensitive ? _zstrnicmp(a, b, n) : _zstrncmp(a, b, n);
  } else {
    result = insensitive ? _zstricmp(a, b) : _zstrcmp(a, b);
  }
  std::printf("%d\n", result);
  return 0;
}

// len S: the length of a string.
int run_len(std::span<char* const> args) {
  if (args.size() != 1) {
    std::fprintf(stderr, "usage: zelstr len S\n");
    return kUsageError;
  }
  std::printf("%u\n", _zstrlen(argument(args[0])));
  return 0;
}

// The whole of standard input.
std::string read_stdin() {
  std::string text;
  char buffer[65536];
  for (std::size_t n; (n = std::fread(buffer, 1, sizeof buffer, stdin)) > 0;)
    text.append(buffer, n);
  return text;
}

// find [-i] PATTERN TEXT: the first occurrence ("-" reads the text from
// standard input).
int run_find(std::span<char* const> args) {
  bool const insensitive = !args.empty() && std::strcmp(args[0], "-i") == 0;
  if (args.size() != (insensitive ? 3u : 2u)) {
    std::fprintf(stderr, "usage: zelstr find [-i] PATTERN TEXT|-\n");
    return kUsageError;
  }
  char const* const pattern = argument(args[args.size() - 2]);
  char const* text = argument(args.back());
  std::string input;
  if (text != nullptr && std::strcmp(text, "-") == 0) {
    input = read_stdin();
    text = input.c_str();
  }
  char const* const at = insensitive ? _zstristr(text, pattern) : _zstrstr(text, pattern);
  if (at == nullptr) {
    std::printf("not found\n");
    return 1;
  }
  std::printf("found at %ld: %.40s\n", static_cast<long>(at - text), at);
  return 0;
}

// span SETDEF [LINE...]: the initial run of each line (or of each line of
// standard input) made of members of the set.
int run_span(std::span<char* const> args) {
  if (args.empty()) {
    std::fprintf(stderr, "usage: zelstr span SETDEF [LINE...]\n");
    return kUsageError;
  }
  char const* const setdef = argument(args[0]);
  auto show = [setdef](char const* line) {
    unsigned const n = _zstrspnex(line, setdef);
    std::printf("%u\t%.*s\n", n, static_cast<int>(n), line != nullptr ? line : "");
  };
  if (args.size() > 1) {
    for (char* const line : args.subspan(1)) show(argument(line));
    return 0;
  }
  std::string const input = read_stdin();
  for (std::size_t start = 0; start < input.size();) {
    std::size_t end = input.find('\n', start);
    if (end == std::string::npos) end = input.size();
    std::string line = input.substr(start, end - start);
    if (!line.empty() && line.back() == '\r') line.pop_back();
    show(line.c_str());
    start = end + 1;
  }
  return 0;
}

constexpr Command kCommands[] = {
    {"cmp", "[-i] [-n COUNT] A B",
     "compare A and B (-i: ignoring case, -n: at most COUNT bytes); prints -1, 0 or 1", run_cmp},
    {"len", "S", "print the length of S", run_len},
    {"find", "[-i] PATTERN TEXT|-",
     "the first occurrence of PATTERN in TEXT (-: standard input; -i: ignoring case)", run_find},
    {"span", "SETDEF [LINE...]",
     "the initial run of each line (default: lines of standard input) made of members of the "
     "set SETDEF, such as [a-zA-Z_]",
     run_span},
    {"demo", "", "run the built-in example: a tour of the calls with their results", run_demo},
};

}  // namespace

std::span<Command const> commands() { return kCommands; }

char const* argument(char const* text) { return std::strcmp(text, "(null)") == 0 ? nullptr : text; }

void print_warnings_to_stderr() { errsvc::set_sink(print_record); }

}  // namespace zelstr::tool
