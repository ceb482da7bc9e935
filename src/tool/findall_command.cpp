// findall_command.cpp - the findall subcommand: the offset of every
// occurrence of a string, overlapping ones included, through CFindAllStr;
// with --code-only, in the input's code (read whole, its comments and
// literals hidden).
#include <cstdio>
#include <string>

#include "tool/findall_stream.h"
#include "tool/input.h"
#include "tool/sql_code.h"
#include "zelstr/codehide.h"

namespace zelstr::tool {

// findall [-i] [--no-overlap] [--code-only [--tsql|--oracle] [--quoted-id]]
// PATTERN [FILE...]: one offset a line, after "FILE:" when there are several
// files.
int run_findall(Invocation& inv) {
  if (inv.operands().empty()) return inv.usage_error("no pattern");
  char const* const pattern = inv.operands()[0];
  if (*pattern == '\0') return inv.usage_error("the pattern is empty");
  CodeReading reading;
  if (!read_dialect(inv, reading, "--code-only")) return kError;
  reading.flags = ZEAL_HIDE_DEFAULT;
  bool const code_only = inv.flag("--code-only");
  auto const names = inv.operands().subspan(1);
  std::string text, hidden;
  for_each_input(inv, names, [&](Input& in) {
    FindAllStream stream(pattern, inv.flag("-i"), !inv.flag("--no-overlap"), 1 << 20,
                         [&](std::uint64_t offset) {
                           if (names.size() > 1) std::printf("%s:", in.name());
                           std::printf("%llu\n", static_cast<unsigned long long>(offset));
                           inv.found();
                         });
    if (!code_only) {
      for (std::string_view b; !(b = in.next_block()).empty();) stream.write(b);
    } else if (read_code(inv, in, reading, false, text, hidden)) {
      stream.write(hidden);
    }
    stream.finish();
  });
  return inv.exit_status();
}

}  // namespace zelstr::tool
