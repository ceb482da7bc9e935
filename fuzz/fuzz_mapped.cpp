// Fuzzes the mapped searches and replacement with any map: a definition, a
// pattern and a text from the input.  Each result must agree with the plain
// function run on copies translated through the map, and the replacement
// with a model built from those copies.
#include <fuzzer/FuzzedDataProvider.h>

#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

#include "errsvc/errsvc.h"
#include "require.h"
#include "zelstr/zelstr.h"

namespace {

std::string through(void* map, std::string s) {
  for (char& c : s) c = _zmapchrapply(map, c);
  return s;
}

long offset(char const* p, char const* base) { return p == nullptr ? -1 : p - base; }

void check(void* map, std::string const& text, std::string const& pattern, std::string const& by) {
  std::string const mt = through(map, text), mp = through(map, pattern);
  char const* const t = text.c_str();
  require(offset(_zmapstrstr(map, t, pattern.c_str()), t) ==
          offset(_zstrstr(mt.c_str(), mp.c_str()), mt.c_str()));
  require(offset(_zmapstrrstr(map, t, pattern.c_str()), t) ==
          offset(_zstrrstr(mt.c_str(), mp.c_str()), mt.c_str()));

  // Every occurrence, left to right without overlap, replaced.
  std::string expected;
  std::size_t pos = 0;
  if (!pattern.empty()) {
    for (std::size_t f; (f = mt.find(mp, pos)) != std::string::npos; pos = f + pattern.size()) {
      expected += text.substr(pos, f - pos) + by;
    }
  }
  expected += text.substr(pos);
  std::vector<char> buffer(text.size() * (by.size() + 1) + 1);
  std::memcpy(buffer.data(), t, text.size() + 1);
  char* const r = _zmapstrNreplace(map, buffer.data(), pattern.c_str(), by.c_str(),
                                   static_cast<unsigned long>(buffer.size() - 1));
  require(r == buffer.data() && expected == r);

  std::memcpy(buffer.data(), t, text.size() + 1);
  require(mt == _zmapstrapply(map, buffer.data()));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
  FuzzedDataProvider in(data, size);
  std::string const definition = in.ConsumeRandomLengthString(64);
  std::string const pattern = in.ConsumeRandomLengthString(24);
  std::string const by = in.ConsumeRandomLengthString(8);
  std::string const text = in.ConsumeRemainingBytesAsString();
  void* const map = _zmapdefine(definition.c_str());
  if (map != ZEAL_STR_BAD_MAP) {
    // Only the bytes up to the first NUL are seen by the library.
    check(map, text.c_str(), pattern.c_str(), by.c_str());
    _zmapfree(map);
  }
  errsvc::clear();
  return 0;
}
