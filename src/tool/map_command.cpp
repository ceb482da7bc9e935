// map_command.cpp - the map subcommand: text translated through a character
// map, a block at a time (each byte maps on its own, so blocks may end
// anywhere), or the map itself.
#include <cstdio>
#include <string>

#include "tool/input.h"
#include "tool/text_tools.h"
#include "zelstr/zelstr.h"

namespace zelstr::tool {

namespace {

// A map that translates a line feed or a carriage return would change line
// ends, which no command changes: the translated block gets them back.  A
// carriage return is a line end only before a line feed, so one at the
// end of a block is held back until the next block shows what follows.
class LineEndKeeper {
 public:
  explicit LineEndKeeper(void* map) {
    auto const* const table = static_cast<unsigned char const*>(map);
    m_needed = table[0x0A] != '\n' || table[0x0D] != '\r';  // LF, CR
  }

  // `translated` is `original` through the map.
  void restore(std::string_view original, std::string& translated) const {
    if (!m_needed) return;
    for (std::size_t i = 0; i < original.size(); ++i) {
      if (original[i] == '\n') {
        translated[i] = '\n';
        if (i > 0 && original[i - 1] == '\r') translated[i - 1] = '\r';
      }
    }
  }
  bool needed() const { return m_needed; }

 private:
  bool m_needed;
};

void write_translated(void* map, LineEndKeeper const& keeper, std::string_view original,
                      std::string& block) {
  block.assign(original);
  _zmapstrapply(map, block.data());
  keeper.restore(original, block);
  write_out(block);
}

}  // namespace

// map [--dump] DEFINITION [FILE...]
int run_map(Invocation& inv) {
  if (inv.operands().empty()) return inv.usage_error("no map definition");
  DefinedMap const map(inv, inv.operands()[0]);
  if (map.bad()) return kError;
  if (inv.flag("--dump")) {
    char const* const dump = _zmapdump2string(map.get(), 1);
    if (dump == nullptr) {  // no memory for the text
      inv.error("the map cannot be shown");
      return kError;
    }
    std::fputs(dump, stdout);
    inv.found();
    return inv.exit_status();
  }
  LineEndKeeper const keeper(map.get());
  std::string original, block;
  for_each_input(inv, inv.operands().subspan(1), [&](Input& in) {
    original.clear();
    for (std::string_view b; !(b = in.next_block()).empty();) {
      original.append(b);
      // Holds back a final carriage return (see LineEndKeeper).
      std::size_t const ready =
          keeper.needed() && original.back() == '\r' ? original.size() - 1 : original.size();
      write_translated(map.get(), keeper, std::string_view(original).substr(0, ready), block);
      original.erase(0, ready);
      inv.found();
    }
    write_translated(map.get(), keeper, original, block);
  });
  return inv.exit_status();
}

}  // namespace zelstr::tool
