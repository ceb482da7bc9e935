// findall_command.cpp - the findall subcommand: the offset of every
// occurrence of a string, overlapping ones included, through CFindAllStr.
#include <cstdio>

#include "tool/findall_stream.h"
#include "tool/input.h"

namespace zelstr::tool {

// findall [-i] [--no-overlap] PATTERN [FILE...]: one offset a line, after
// "FILE:" when there are several files.
int run_findall(Invocation& inv) {
  if (inv.operands().empty()) return inv.usage_error("no pattern");
  char const* const pattern = inv.operands()[0];
  if (*pattern == '\0') return inv.usage_error("the pattern is empty");
  auto const names = inv.operands().subspan(1);
  for_each_input(inv, names, [&](Input& in) {
    FindAllStream stream(pattern, inv.flag("-i"), !inv.flag("--no-overlap"), 1 << 20,
                         [&](std::uint64_t offset) {
                           if (names.size() > 1) std::printf("%s:", in.name());
                           std::printf("%llu\n", static_cast<unsigned long long>(offset));
                           inv.found();
                         });
    for (std::string_view b; !(b = in.next_block()).empty();) stream.write(b);
    stream.finish();
  });
  return inv.exit_status();
}

}  // namespace zelstr::tool
