// Fuzzes the tokenisers and the qualified-name splitter on any string,
// separators, quotes and delimiters.  Inputs sit in heap blocks of their
// exact size, so a read past a terminator is caught.  Promises checked:
// _zstrgetNth gives the tokens _zstrcrack gives (without quotes), and NULL
// past the last; the two forms of _zstrsplitqname agree.
#include <fuzzer/FuzzedDataProvider.h>

#include <cstdint>
#include <cstring>
#include <memory>
#include <string>
#include <vector>

#include "errsvc/errsvc.h"
#include "require.h"
#include "zelstr/zelstr.h"

namespace {

std::unique_ptr<char[]> block(std::string const& text) {
  std::unique_ptr<char[]> data(new char[text.size() + 1]);
  std::memcpy(data.get(), text.c_str(), text.size() + 1);
  return data;
}

bool has_zero(std::string const& s) { return std::memchr(s.data(), '\0', s.size()) != nullptr; }

void tokens(char const* text, char const* separators, char const* quotes) {
  char const* const* found = nullptr;
  int const n = _zstrcrack(text, separators, quotes, &found);
  if (n == 0) return;
  require(found != nullptr && found[n] == nullptr);
  if (quotes != nullptr) return;
  std::vector<std::string> const copies(found, found + n);
  for (int k = 1; k <= n; ++k) {
    char const* const nth = _zstrgetNth(text, k, separators);
    require(nth != nullptr && copies[k - 1].compare(0, 2047, nth) == 0);
  }
  require(_zstrgetNth(text, n + 1, separators) == nullptr);
}

void qualified(char const* name, char const* delimiters) {
  char** parts = nullptr;
  int const n = _zstrsplitqname(name, delimiters, &parts);
  std::vector<std::string> buffers(8, std::string(64, '\0'));
  char* into[8];
  for (int i = 0; i < 8; ++i) into[i] = buffers[i].data();
  int const m = _zstrsplitqname(name, delimiters, into, 8, 64);
  if (n > 0 && n <= 8) {
    require(m == n);
    for (int i = 0; i < n; ++i) require(std::string(parts[i]).compare(0, 63, into[i]) == 0);
  } else {
    require(m == 0);
  }
  CHSQL::DeleteComponents(&parts, nullptr);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
  FuzzedDataProvider in(data, size);
  std::string const separators = in.ConsumeRandomLengthString(8);
  std::string const quotes = in.ConsumeRandomLengthString(6);
  std::string const delimiters = in.ConsumeRandomLengthString(2);
  bool const with_quotes = in.ConsumeBool();
  std::string const text = in.ConsumeRemainingBytesAsString();
  if (has_zero(separators) || has_zero(quotes) || has_zero(delimiters) || has_zero(text)) return 0;
  auto const t = block(text), s = block(separators), q = block(quotes), d = block(delimiters);
  tokens(t.get(), s.get(), with_quotes ? q.get() : nullptr);
  qualified(t.get(), d.get());
  qualified(t.get(), nullptr);
  errsvc::clear();
  return 0;
}
