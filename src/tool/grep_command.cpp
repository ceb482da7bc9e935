// grep_command.cpp - the grep subcommand: lines matching a regular
// expression of the library's engine, read line by line.
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

#include "tool/commands.h"
#include "zelstr/regex.h"

namespace zelstr::tool {
namespace {

struct GrepOptions {
  bool only_match = false;  // -o: the match instead of the line
  int group = 0;            // -g N: group N instead of the whole match
};

// Prints what `options` ask of each matching line of `in`; true when a line
// matched.  NUL bytes end a line for the engine.
bool grep_stream(Tcl_RegExp_* re, std::FILE* in, GrepOptions const& options) {
  bool found = false;
  std::string line;
  while (read_line(in, line)) {
    if (!line.empty() && line.back() == '\r') line.pop_back();
    if (Tcl_RegExpMatch(line.c_str(), re) != 1) continue;
    found = true;
    if (!options.only_match && options.group == 0) {
      std::printf("%s\n", line.c_str());
      continue;
    }
    char const *start, *end;
    if (Tcl_RegExpRange(re, options.group, &start, &end) == 1 && start != nullptr) {
      std::printf("%.*s\n", static_cast<int>(end - start), start);
    }
  }
  return found;
}

}  // namespace

// grep [-o] [-g N] PATTERN [FILE...]
int run_grep(std::span<char* const> args) {
  GrepOptions options;
  std::size_t i = 0;
  for (; i < args.size() && args[i][0] == '-' && args[i][1] != '\0'; ++i) {
    if (std::strcmp(args[i], "-o") == 0) {
      options.only_match = true;
    } else if (std::strcmp(args[i], "-g") == 0 && i + 1 < args.size()) {
      options.group = std::atoi(args[++i]);
    } else {
      std::fprintf(stderr, "zelstr grep: unknown option '%s'\n", args[i]);
      return kUsageError;
    }
  }
  if (i >= args.size()) {
    std::fprintf(stderr, "usage: zelstr grep [-o] [-g N] PATTERN [FILE...]\n");
    return kUsageError;
  }
  Tcl_RegExp_* const re = Tcl_RegExpCompile(args[i]);
  if (re == nullptr) {
    std::fprintf(stderr, "zelstr grep: %s\n", Tcl_GetRegError());
    return kUsageError;
  }
  if (options.group < 0 || options.group > Tcl_GetGroupsCount(re)) {
    std::fprintf(stderr, "zelstr grep: the pattern has no group %d\n", options.group);
    Tcl_DeleteInterp(re);
    return kUsageError;
  }
  bool found = false;
  int status = 0;
  if (i + 1 == args.size()) found = grep_stream(re, stdin, options);
  for (char* const name : args.subspan(i + 1)) {
    std::FILE* const f = open_input("grep", name);
    if (f == nullptr) {
      status = kUsageError;
      continue;
    }
    found = grep_stream(re, f, options) || found;
    close_input(f);
  }
  Tcl_DeleteInterp(re);
  if (status != 0) return status;
  return found ? 0 : 1;
}

}  // namespace zelstr::tool
