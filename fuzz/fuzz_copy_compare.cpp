// Fuzzes the copy, append and comparison calls, NULL arguments included.
// Each input is cut into two strings, a count and a mask of NULL arguments;
// the calls must never read or write outside their buffers (the sanitizers
// watch), and their results must agree with each other and with the C
// library's.
#include <fuzzer/FuzzedDataProvider.h>

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

#include "errsvc/errsvc.h"
#include "require.h"
#include "zelstr/zelstr.h"

namespace {

int sign(int r) { return (r > 0) - (r < 0); }

void fuzz_comparisons(char const* a, char const* b, unsigned long n) {
  int const cmp = _zstrcmp(a, b);
  require(cmp >= -1 && cmp <= 1);
  require(_zstrcmp(b, a) == -cmp);
  require(_zstrnullisablecmp(a, b) == cmp);
  int const icmp = _zstricmp(a, b);
  require(icmp >= -1 && icmp <= 1 && _zstricmp(b, a) == -icmp);
  int const ncmp = _zstrncmp(a, b, n);
  require(ncmp >= -1 && ncmp <= 1);
  require(_zstrnicmp(a, b, n) >= -1 && _zstrnicmp(a, b, n) <= 1);
  if (a != nullptr && b != nullptr) {
    require(cmp == sign(std::strcmp(a, b)));
    require(ncmp == sign(std::strncmp(a, b, static_cast<std::uint32_t>(n))));
    require((_zstrdiffpoint(a, b, 1) == nullptr) == (cmp == 0));
    require((_zstrdiffpoint(a, b, 0) == nullptr) == (icmp == 0));
  }
  _zstrneq(const_cast<char*>(a), const_cast<char*>(b));
}

void fuzz_copies(std::string const& a, char const* src, unsigned count, std::uint8_t nulls) {
  // Room for every copy: the source, the count and an insertion.
  std::vector<char> buffer(2 * a.size() + count + 16, '#');
  char* const dest = nulls & 4 ? nullptr : buffer.data();
  std::strcpy(buffer.data(), "head");
  _zstrncpy(dest, src, count);
  _zstrncpyf0(dest, src, count);
  _zstrsafecpyf0(dest, src, count);
  _zstrcpybefore(dest, src, ",");
  _zstrncpybefore(dest, src, ';', count);
  _zstrcpyuntil(dest, src, src ? src + std::strlen(src) / 2 : nullptr);
  _zstrcpy(dest, src);
  if (dest != nullptr) {
    // An overlapping copy inside the buffer, in both directions.
    unsigned const span = static_cast<unsigned>(buffer.size() / 2);
    unsigned const shift = count % (span / 2 + 1);
    buffer[span - 1] = '\0';
    _zsamestrncpy(dest + shift, dest, span - shift - 1);
    _zsamestrncpy(dest, dest + shift, span - shift - 1);
    _zmemcpy(dest + shift, dest, span - shift);
    buffer.back() = '\0';
  }
  std::vector<char> room(a.size() * 3 + 8, '\0');
  char* const base = nulls & 4 ? nullptr : room.data();
  _zstrcat(base, const_cast<char*>(src));
  _zstrncat(base, src, count);
  if (base != nullptr) room[a.size()] = '\0';
  _zstrins(base, src);
  _zstrshift(base, static_cast<int>(count % 4), '.', static_cast<int>(nulls & 8));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
  FuzzedDataProvider input(data, size);
  std::uint8_t const nulls = input.ConsumeIntegral<std::uint8_t>();
  unsigned const count = input.ConsumeIntegralInRange<unsigned>(0, 512);
  std::string const a = input.ConsumeRandomLengthString(256);
  std::string const b = input.ConsumeRemainingBytesAsString();
  char const* const pa = nulls & 1 ? nullptr : a.c_str();
  char const* const pb = nulls & 2 ? nullptr : b.c_str();

  fuzz_comparisons(pa, pb, count);
  fuzz_copies(a, pa, count, nulls);
  require(_zstrlen(pa) == (pa ? std::strlen(pa) : 0));
  char* copy = _zstrdupalloc(pa, count % 8);
  require(copy == nullptr ? pa == nullptr : std::strcmp(copy, pa) == 0);
  _zstrdupfree(copy);
  _zstrprintf("%s|%s", pa ? pa : "", pb ? pb : "");
  _zstrclone(pb, count);
  errsvc::clear();
  return 0;
}
