// map_command.cpp - the map subcommand: text translated through a character
// map, a block at a time (each byte maps on its own, so blocks may end
// anywhere), or the map itself.
#include <cstdio>
#include <string>

#include "tool/input.h"
#include "tool/text_tools.h"
#include "zelstr/zelstr.h"

namespace zelstr::tool {

// map [--dump] DEFINITION [FILE...]
int run_map(Invocation& inv) {
  if (inv.operands().empty()) return inv.usage_error("no map definition");
  DefinedMap const map(inv, null_or(inv.operands()[0]));
  if (map.bad()) return kError;
  if (inv.flag("--dump")) {
    std::fputs(_zmapdump2string(map.get(), 1), stdout);
    inv.found();
    return inv.exit_status();
  }
  std::string block;
  for_each_input(inv, inv.operands().subspan(1), [&](Input& in) {
    for (std::string_view b; !(b = in.next_block()).empty();) {
      block.assign(b);
      _zmapstrapply(map.get(), block.data());
      write_out(block);
      inv.found();
    }
  });
  return inv.exit_status();
}

}  // namespace zelstr::tool
