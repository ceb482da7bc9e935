// zelstr.cpp - the command-line tool of the ZelStr32 library: runs library
// calls on the command line's arguments and prints their results and any
// warnings they report.
#include "zelstr/zelstr.h"

#include <cstdio>
#include <cstring>
#include <span>

#include "tool/commands.h"

namespace {

using zelstr::tool::Command;

void print_help(std::FILE* out) {
  std::fprintf(out,
               "usage: zelstr COMMAND [ARGS...]\n"
               "       zelstr --version | --help\n\n"
               "Runs ZelStr32 string calls on the arguments and prints their results;\n"
               "warnings the library reports go to standard error.  An argument\n"
               "written (null) is passed as a NULL pointer.\n\ncommands:\n");
  for (Command const& c : zelstr::tool::commands()) {
    std::fprintf(out, "  %s %s\n      %s\n", c.name, c.usage, c.summary);
  }
}

}  // namespace

int main(int argc, char** argv) {
  if (argc < 2) {
    print_help(stderr);
    return zelstr::tool::kUsageError;
  }
  char const* const name = argv[1];
  if (std::strcmp(name, "--version") == 0) {
    std::printf("zelstr %s (ZelStr32)\n", ZELSTR_VERSION);
    return 0;
  }
  if (std::strcmp(name, "--help") == 0 || std::strcmp(name, "-h") == 0) {
    print_help(stdout);
    return 0;
  }
  for (Command const& c : zelstr::tool::commands()) {
    if (std::strcmp(name, c.name) == 0) {
      zelstr::tool::print_warnings_to_stderr();
      return c.run(std::span<char* const>(argv + 2, static_cast<std::size_t>(argc - 2)));
    }
  }
  std::fprintf(stderr, "zelstr: unknown command '%s' (see zelstr --help)\n", name);
  return zelstr::tool::kUsageError;
}
