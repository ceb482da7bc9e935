// findall_command.cpp - the findall subcommand: every occurrence of a
// string, overlapping ones included, through CFindAllStr.
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

#include "tool/commands.h"
#include "zelstr/findall.h"

namespace zelstr::tool {

// findall [-i] [--no-overlap] PATTERN [FILE|-]: the byte offset of each
// occurrence, one a line.
int run_findall(std::span<char* const> args) {
  bool insensitive = false, overlap = true;
  std::size_t i = 0;
  for (; i < args.size() && args[i][0] == '-' && args[i][1] != '\0'; ++i) {
    if (std::strcmp(args[i], "-i") == 0) {
      insensitive = true;
    } else if (std::strcmp(args[i], "--no-overlap") == 0) {
      overlap = false;
    } else {
      std::fprintf(stderr, "zelstr findall: unknown option '%s'\n", args[i]);
      return kUsageError;
    }
  }
  if (args.size() - i < 1 || args.size() - i > 2) {
    std::fprintf(stderr, "usage: zelstr findall [-i] [--no-overlap] PATTERN [FILE|-]\n");
    return kUsageError;
  }
  char const* const pattern = argument(args[i]);
  char const* const name = args.size() - i == 2 ? args[i + 1] : "-";
  std::string text;
  if (!read_text(name, text)) {
    std::fprintf(stderr, "zelstr findall: cannot read '%s'\n", name);
    return kUsageError;
  }

  CFindAllStr find(text.c_str(), pattern, insensitive ? 1 : 0);
  int const skip = overlap || pattern == nullptr ? 0 : static_cast<int>(std::strlen(pattern)) - 1;
  bool found = false;
  char const* last = nullptr;
  int jump = 0;
  for (;;) {
    char const* const at = find.FindByXOR(jump);
    if (at == nullptr && find.GetLastFindPos() == last) break;  // exhausted
    last = find.GetLastFindPos();
    jump = at != nullptr && skip > 0 ? skip : 0;
    if (at == nullptr) continue;
    found = true;
    std::printf("%ld\n", static_cast<long>(at - text.c_str()));
    if (*pattern == '\0') break;  // the empty string is found once
  }
  return found ? 0 : 1;
}

}  // namespace zelstr::tool
