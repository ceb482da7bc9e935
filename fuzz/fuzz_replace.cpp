// Fuzzes the replacement family with random texts, patterns, replacements,
// sizes and delimiter sets: the buffer is an exact-size heap block of
// size + 1 bytes (or the text's length + 1 when that is longer), so that
// any write past it is caught by the address sanitizer, and every result
// must fit `size` unless the call returned NULL.
#include <fuzzer/FuzzedDataProvider.h>

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <string>

#include "errsvc/errsvc.h"
#include "require.h"
#include "zelstr/zelstr.h"

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
  FuzzedDataProvider input(data, size);
  int const which = input.ConsumeIntegralInRange(0, 11);
  unsigned const room = input.ConsumeIntegralInRange<unsigned>(0, 300);
  std::string const s1 = input.ConsumeRandomLengthString(8);
  std::string const s2 = input.ConsumeRandomLengthString(8);
  std::string const set = input.ConsumeRandomLengthString(8);
  std::string const text_bytes = input.ConsumeRemainingBytesAsString();
  std::size_t const n = std::strlen(text_bytes.c_str());
  std::size_t const limit = room > n ? room : n;
  std::unique_ptr<char[]> buffer(new char[limit + 1]);
  std::memcpy(buffer.get(), text_bytes.c_str(), n + 1);
  char* const b = buffer.get();
  char const* const a1 = s1.c_str();
  char const* const a2 = s2.c_str();
  char* result = b;
  switch (which) {
    case 0:
      result = _zstrNreplace(b, a1, a2, limit);
      break;
    case 1:
      result = _zstriNreplace(b, a1, a2, limit);
      break;
    case 2:
      result = _zstrNreplaceEx(b, a1, a2, limit, set.c_str());
      break;
    case 3:
      result = _zstriNreplaceEx(b, a1, a2, limit, set.c_str());
      break;
    case 4:
      result = _zstr1replace(b, a1, a2, limit);
      break;
    case 5:
      result = _zstri1replace(b, a1, a2, limit);
      break;
    case 6:
      result = _zstrr1replace(b, a1, a2, limit);
      break;
    case 7: {
      zstr_couple couples[] = {{a1, a2}, {a2, a1}, {nullptr, nullptr}};
      result = _zstrmultireplace1(b, couples, limit, const_cast<char*>(set.c_str()));
      _zstrmultideltalen(b, couples);
      break;
    }
    case 8:
      result = _zstrNby0replace(b, const_cast<char*>(a1));
      break;
    case 9:
      result = _zstrclean(b, a1, a2, room & 1, room & 2);
      break;
    case 10:
      result = _zstrlonesomize(b, static_cast<int>(room % 4), set.c_str(), nullptr);
      break;
    default:
      result = _zstrpurge(b, const_cast<char*>(a1), const_cast<char*>(a2), room & 1);
      break;
  }
  require(result == nullptr || result == b);
  require(std::strlen(b) <= limit);
  _zstrdeltalen(b, const_cast<char*>(a1), const_cast<char*>(a2));
  errsvc::clear();
  return 0;
}
