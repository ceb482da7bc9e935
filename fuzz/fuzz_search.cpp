// Fuzzes the searches: the forward, backward, delimited and counting
// searches must agree with a naive model on any text and pattern (both
// zero-terminated), and the pair scan must never read outside the text's
// page (the texts here are copied to exact-size heap blocks).
#include <fuzzer/FuzzedDataProvider.h>

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <string>

#include "errsvc/errsvc.h"
#include "require.h"
#include "zelstr/zelstr.h"

namespace {

char const* naive_first(char const* t, char const* p) {
  std::size_t const n = std::strlen(t), m = std::strlen(p);
  for (std::size_t s = 0; s + m <= n; ++s) {
    if (std::memcmp(t + s, p, m) == 0) return t + s;
  }
  return nullptr;
}

char const* naive_last(char const* t, char const* p) {
  char const* last = nullptr;
  for (char const* at = naive_first(t, p); at != nullptr && *p != '\0';
       at = naive_first(at + 1, p)) {
    last = at;
  }
  return *p == '\0' ? t + std::strlen(t) : last;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
  FuzzedDataProvider input(data, size);
  std::string const pattern_bytes = input.ConsumeRandomLengthString(64);
  std::string const text_bytes = input.ConsumeRemainingBytesAsString();
  // Exact-size copies, so that reading one byte too far is caught.
  std::size_t const n = std::strlen(text_bytes.c_str());
  std::unique_ptr<char[]> text(new char[n + 1]);
  std::memcpy(text.get(), text_bytes.c_str(), n + 1);
  char const* const t = text.get();
  char const* const p = pattern_bytes.c_str();

  require(_zstrstr(t, p) == naive_first(t, p));
  require(_zstrrstr(t, p) == naive_last(t, p));
  char const* const folded = _zstristr(t, p);
  require(folded == nullptr || _zstrnicmp(folded, p, std::strlen(p)) == 0 || std::strlen(p) == 0);
  if (*p != '\0') {
    int count = 0;
    for (char const* at = naive_first(t, p); at != nullptr;
         at = naive_first(at + std::strlen(p), p)) {
      ++count;
    }
    require(_zstrstrcnt(t, p) == count);
  }
  char const* const delimited = _zstrstr1(t, p, " ,;");
  require(delimited == nullptr || std::strncmp(delimited, p, std::strlen(p)) == 0);
  errsvc::clear();
  return 0;
}
