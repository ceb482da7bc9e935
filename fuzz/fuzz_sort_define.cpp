// Fuzzes _zsortdefine: any definition gives an order, NULL or
// ZEAL_STR_BAD_MAP, never a crash or a leak.  A finished order gives 0 the
// weight 0 and every other byte a weight of 1 or more; the weights it hands
// out have no gap; and comparisons with ties broken are 0 only for equal
// strings.
#include <algorithm>
#include <cstdint>
#include <cstring>
#include <string>

#include "errsvc/errsvc.h"
#include "require.h"
#include "zelstr/zelstr.h"

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
  std::string const input(reinterpret_cast<char const*>(data), size);
  // The definition up to the first NUL; what follows, two strings to compare.
  char const* const definition = input.c_str();
  std::string const rest = input.substr(std::min(input.size(), std::strlen(definition) + 1));
  void* const order = _zsortdefine(definition);
  if (order != nullptr && order != ZEAL_STR_BAD_MAP) {
    auto const* const weights = static_cast<unsigned char const*>(order);
    bool used[256] = {};
    for (int c = 0; c < 256; ++c) {
      require((weights[c] == 0) == (c == 0));
      used[weights[c]] = true;
    }
    for (int w = 1; w < 256; ++w) require(used[w] || !used[w < 255 ? w + 1 : w]);
    std::size_t const half = rest.size() / 2;
    std::string const a = rest.substr(0, half), b = rest.substr(half);
    int const ab = _zsortstrcmp(order, a.c_str(), b.c_str(), 1);
    require(ab == -_zsortstrcmp(order, b.c_str(), a.c_str(), 1));
    require((ab == 0) == (std::strcmp(a.c_str(), b.c_str()) == 0));
    _zsortstrncmp(order, a.c_str(), b.c_str(), half / 2);
  }
  require(_zmapfree(order) == (order == ZEAL_STR_BAD_MAP ? 0 : 1));
  errsvc::clear();
  return 0;
}
