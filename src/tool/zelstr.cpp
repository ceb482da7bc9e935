// zelstr.cpp - the command-line tool of the ZelStr32 library: finds the
// subcommand, parses its command line by the command table and runs it.
#include "zelstr/zelstr.h"

#include <cstdio>
#include <cstring>
#include <new>
#include <vector>

#include "platform/binary_stdio.h"
#include "tool/command.h"
#include "tool/help.h"
#include "tool/invocation.h"
#include "tool/out_of_memory.h"

namespace {

using namespace zelstr::tool;

bool is(char const* word, char const* name) { return std::strcmp(word, name) == 0; }

// The options of the tool itself (before any command); -1 when `word` is
// not one of them.
int run_tool_option(char const* word, std::vector<char*> const& rest) {
  if (is(word, "--version")) {
    // The tool's own version, then the one of the library it loaded.
    std::printf("zelstr %s (ZelStr32 %s)\n", ZELSTR_VERSION, _zversion(nullptr, nullptr, nullptr));
    return kFound;
  }
  if (is(word, "--help") || is(word, "-h") || is(word, "help")) {
    Command const* const c = rest.empty() ? nullptr : find_command(rest[0]);
    if (c != nullptr) {
      print_command_help(stdout, *c);
    } else {
      print_overview(stdout);
    }
    return kFound;
  }
  if (is(word, "--man")) {
    print_man_page(stdout);
    return kFound;
  }
  if (is(word, "--bash-completion")) {
    print_bash_completion(stdout);
    return kFound;
  }
  return -1;
}

int run(std::vector<char*> args) {
  static char warnings_option[] = "-W";
  bool warnings = false;
  while (!args.empty() && is(args.front(), "-W")) {
    warnings = true;
    args.erase(args.begin());
  }
  if (args.empty()) {
    print_overview(stderr);
    return kError;
  }
  char const* const name = args.front();
  args.erase(args.begin());
  if (int const status = run_tool_option(name, args); status >= 0) return status;
  Command const* const command = find_command(name);
  if (command == nullptr) {
    std::fprintf(stderr, "zelstr: unknown command '%s' (see zelstr --help)\n", name);
    return kError;
  }
  if (warnings) args.insert(args.begin(), warnings_option);
  Invocation invocation(*command, args);
  if (!invocation.parsed()) return kError;
  if (invocation.wants_help()) {
    print_command_help(stdout, *command);
    return kFound;
  }
  return command->run(invocation);
}

}  // namespace

// A failed allocation anywhere ends the run with the out-of-memory line and
// exit status 2, whatever the command printed or would have returned.
int main(int argc, char** argv) {
  zelstr::platform::use_binary_stdio();
  // Output goes out in large writes (a terminal still sees each line as it
  // comes: stdio keeps a terminal line-buffered).
  static char output_buffer[1 << 18];
  if (!zelstr::platform::stdout_is_terminal())
    std::setvbuf(stdout, output_buffer, _IOFBF, sizeof output_buffer);
  watch_memory();
  int status = kError;
  try {
    status = run(std::vector<char*>(argv + 1, argv + argc));
  } catch (std::bad_alloc const&) {
    note_out_of_memory();
  }
  if (std::fflush(stdout) != 0 || std::ferror(stdout)) {
    if (!memory_ran_out()) std::fprintf(stderr, "zelstr: cannot write the output\n");
    status = kError;
  }
  if (memory_ran_out()) {
    report_out_of_memory();
    status = kError;
  }
  return status;
}
