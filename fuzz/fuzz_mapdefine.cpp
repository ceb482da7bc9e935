// Fuzzes _zmapdefine: any definition gives a map, NULL or ZEAL_STR_BAD_MAP,
// never a crash or a leak; a map keeps byte 0 and survives a clone, a dump
// and its release.
#include <fuzzer/FuzzedDataProvider.h>

#include <cstdint>
#include <cstring>
#include <string>

#include "errsvc/errsvc.h"
#include "require.h"
#include "zelstr/zelstr.h"

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
  std::string const definition(reinterpret_cast<char const*>(data), size);
  void* const map = _zmapdefine(definition.c_str());
  require(std::strlen(definition.c_str()) == std::strlen(std::string(definition).c_str()));
  if (map != nullptr && map != ZEAL_STR_BAD_MAP) {
    require(_zmapchrapply(map, '\0') == '\0');
    void* const copy = _zmapclone(map);
    require(copy != nullptr && std::memcmp(copy, map, 256) == 0);
    _zmapdump2string(map, 1);
    _zmapisinsensitive(map);
    require(_zmapfree(copy) == 1);
  }
  require(_zmapfree(map) == (map == ZEAL_STR_BAD_MAP ? 0 : 1));
  errsvc::clear();
  return 0;
}
