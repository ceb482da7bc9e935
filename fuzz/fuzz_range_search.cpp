// Fuzzes the range, nearest and N-th searches: any text (the range's bytes
// in a heap block of exactly their size when the range stops short of the
// text's end, so a read past the range is caught), any pattern, range,
// position and count.  Each result is checked against a plain walk.
#include <fuzzer/FuzzedDataProvider.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <memory>
#include <string>

#include "errsvc/errsvc.h"
#include "require.h"
#include "zelstr/zelstr.h"

namespace {

bool occurs_at(std::string const& t, long s, std::string const& p) {
  return s >= 0 && s + static_cast<long>(p.size()) <= static_cast<long>(t.size()) &&
         t.compare(static_cast<std::size_t>(s), p.size(), p) == 0;
}

// The first or last start in [begin, end - m], or -1.
long plain_find(std::string const& t, std::string const& p, long begin, long end, bool last) {
  long const m = static_cast<long>(p.size());
  if (m == 0) return last ? end : begin;
  long found = -1;
  for (long s = begin; s + m <= end; ++s) {
    if (!occurs_at(t, s, p)) continue;
    found = s;
    if (!last) break;
  }
  return found;
}

long offset(char const* found, char const* base) { return found ? found - base : -1; }

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
  FuzzedDataProvider in(data, size);
  int const start = in.ConsumeIntegralInRange(-300, 300);
  int const length = in.ConsumeIntegralInRange(-1, 300);
  int const position = in.ConsumeIntegralInRange(0, 300);
  int const n = in.ConsumeIntegralInRange(0, 20);
  char const c = in.ConsumeIntegral<char>();
  std::string const pattern = in.ConsumeRandomLengthString(12).c_str();
  std::string const text = in.ConsumeRemainingBytesAsString().c_str();
  long const whole = static_cast<long>(text.size());
  long const begin = start < 0 ? std::max(0L, whole + start) : std::min<long>(start, whole);
  long const end = length < 0 ? whole : std::min(whole, begin + length);

  // The whole text, terminated.
  char const* const t = text.c_str();
  require(offset(_zstrfind(t, pattern.c_str(), start, length), t) ==
          plain_find(text, pattern, begin, end, false));
  require(offset(_zstrrfind(t, pattern.c_str(), start, length), t) ==
          plain_find(text, pattern, begin, end, true));
  // A range given from a non-negative start that stops short of the end:
  // only its bytes exist.
  if (start >= 0 && length >= 0 && end < whole) {
    std::unique_ptr<char[]> const bytes(new char[static_cast<std::size_t>(end)]);
    std::memcpy(bytes.get(), t, static_cast<std::size_t>(end));
    require(offset(_zstrifind(bytes.get(), pattern.c_str(), start, length), bytes.get()) >= -1);
    require(offset(_zstrfind(bytes.get(), pattern.c_str(), start, length), bytes.get()) ==
            plain_find(text, pattern, begin, end, false));
    require(offset(_zstrrifind(bytes.get(), pattern.c_str(), start, length), bytes.get()) >= -1);
  }

  // The nearest: at no smaller distance than any other occurrence.
  char const* const near = _zstrneareststr(t, pattern.c_str(), position);
  long const at = std::min<long>(position, whole);
  long const m = static_cast<long>(pattern.size());
  auto distance = [&](long s) { return s > at ? s - at : (s + m > at ? 0 : at - (s + m - 1)); };
  if (near == nullptr) {
    require(m > 0 && plain_find(text, pattern, 0, whole, false) < 0);
  } else if (m > 0) {
    require(occurs_at(text, near - t, pattern));
    for (long s = 0; s + m <= whole; ++s) {
      if (occurs_at(text, s, pattern)) require(distance(near - t) <= distance(s));
    }
  }

  // The N-th byte: the byte, with exactly n - 1 of them before (or after).
  char const* const nth = _zstrNthchr(t, c, n);
  char const* const nthr = _zstrNthrchr(t, c, n);
  if (n >= 1 && c != '\0') {
    long const count = std::count(text.begin(), text.end(), c);
    require((nth != nullptr) == (count >= n) && (nthr != nullptr) == (count >= n));
    if (nth != nullptr) {
      require(*nth == c && std::count(t, nth, c) == n - 1);
      require(*nthr == c && std::count(nthr + 1, t + text.size(), c) == n - 1);
    }
  }
  errsvc::clear();
  return 0;
}
