// map_commands.cpp - the subcommands that work through a character map:
// map (translate a text, or show the map) and mapfind (the lines holding a
// pattern, compared through the map).
#include <cstdio>
#include <cstring>
#include <string>

#include "tool/commands.h"
#include "zelstr/zelstr.h"

namespace zelstr::tool {
namespace {

// A map made from a definition, released on the way out.
class DefinedMap {
 public:
  explicit DefinedMap(char const* definition) : m_map(_zmapdefine(definition)) {}
  ~DefinedMap() {
    if (!bad()) _zmapfree(m_map);
  }
  DefinedMap(DefinedMap const&) = delete;
  DefinedMap& operator=(DefinedMap const&) = delete;

  void* get() const { return m_map; }
  bool bad() const { return m_map == ZEAL_STR_BAD_MAP; }

 private:
  void* m_map;
};

// Translates the input a block at a time (each byte maps on its own, so a
// block boundary changes nothing); NUL bytes are passed through.
void translate_stream(void* map, std::FILE* in) {
  char block[65536 + 1];
  for (std::size_t n; (n = std::fread(block, 1, sizeof block - 1, in)) > 0;) {
    block[n] = '\0';
    for (std::size_t at = 0; at < n; at += std::strlen(block + at) + 1) {
      _zmapstrapply(map, block + at);
    }
    std::fwrite(block, 1, n, stdout);
  }
}

}  // namespace

// map DEFINITION [--dump] [FILE|-]
int run_map(std::span<char* const> args) {
  bool const dump = args.size() >= 2 && std::strcmp(args[1], "--dump") == 0;
  std::size_t const rest = dump ? 2 : 1;
  if (args.empty() || args.size() > rest + 1) {
    std::fprintf(stderr, "usage: zelstr map DEFINITION [--dump] [FILE|-]\n");
    return kUsageError;
  }
  DefinedMap const map(argument(args[0]));
  if (map.bad()) {
    std::fprintf(stderr, "zelstr map: the definition is not a valid map\n");
    return kUsageError;
  }
  if (dump) {
    std::fputs(_zmapdump2string(map.get(), 1), stdout);
    return 0;
  }
  std::FILE* const in = open_input("map", args.size() > rest ? args[rest] : "-");
  if (in == nullptr) return kUsageError;
  translate_stream(map.get(), in);
  close_input(in);
  return 0;
}

// mapfind DEFINITION PATTERN [FILE|-]: each line holding PATTERN through the
// map, as "LINE:COLUMN:text" (both from 1).
int run_mapfind(std::span<char* const> args) {
  if (args.size() < 2 || args.size() > 3) {
    std::fprintf(stderr, "usage: zelstr mapfind DEFINITION PATTERN [FILE|-]\n");
    return kUsageError;
  }
  DefinedMap const map(argument(args[0]));
  if (map.bad()) {
    std::fprintf(stderr, "zelstr mapfind: the definition is not a valid map\n");
    return kUsageError;
  }
  std::FILE* const in = open_input("mapfind", args.size() == 3 ? args[2] : "-");
  if (in == nullptr) return kUsageError;
  char const* const pattern = argument(args[1]);
  std::string line;
  long number = 0;
  bool found = false;
  while (read_line(in, line)) {
    ++number;
    char const* const at = _zmapstrstr(map.get(), line.c_str(), pattern);
    if (at == nullptr) continue;
    found = true;
    std::printf("%ld:%ld:%s\n", number, static_cast<long>(at - line.c_str()) + 1, line.c_str());
  }
  close_input(in);
  return found ? 0 : 1;
}

}  // namespace zelstr::tool
