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

constexpr Command kCommands[] = {
    {"cmp", "[-i] [-n COUNT] A B",
     "compare A and B (-i: ignoring case, -n: at most COUNT bytes); prints -1, 0 or 1", run_cmp},
    {"len", "S", "print the length of S", run_len},
    {"demo", "", "run the built-in example: a tour of the calls with their results", run_demo},
};

}  // namespace

std::span<Command const> commands() { return kCommands; }

char const* argument(char const* text) { return std::strcmp(text, "(null)") == 0 ? nullptr : text; }

void print_warnings_to_stderr() { errsvc::set_sink(print_record); }

}  // namespace zelstr::tool
