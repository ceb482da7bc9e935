// Fuzzes the text utilities on any bytes: reading binary digits (a number
// read is written back and read again the same), line ends (the length
// told is the length written, and the CR LF result read back to LF is the
// LF result), wrapping (no line past the
// width but a lone word), swapping (the arena copy and the in-place form
// agree), trees (any text read as one; trees built from the bytes' pieces
// read back), and the word forms.
#include <fuzzer/FuzzedDataProvider.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

#include "errsvc/errsvc.h"
#include "require.h"
#include "zelstr/zelstr.h"

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
  FuzzedDataProvider in(data, size);
  int const width = in.ConsumeIntegralInRange(-2, 70);
  int const group = in.ConsumeIntegralInRange(-2, 70);
  long const count = in.ConsumeIntegralInRange(-3, 3);
  std::string const a = in.ConsumeRandomLengthString(4).c_str();
  std::string const b = in.ConsumeRandomLengthString(4).c_str();
  std::string const text = in.ConsumeRemainingBytesAsString().c_str();

  unsigned long long value = 0;
  if (_zstrbits2ull(text.c_str(), &value) == 1) {
    char const* const bits = _zstrbits(value, width, group);
    unsigned long long again = ~value;
    require(bits == nullptr || (_zstrbits2ull(bits, &again) == 1 && again == value));
  }

  for (int style : {ZEAL_EOL_LF, ZEAL_EOL_CRLF}) {
    unsigned long const n = _zstreolcpy(nullptr, 0, text.c_str(), style);
    std::vector<char> out(n + 1, '#');
    require(_zstreolcpy(out.data(), out.size(), text.c_str(), style) == n);
    require(std::strlen(out.data()) == n);
    if (style == ZEAL_EOL_CRLF) {  // (a lone CR before a CR LF is kept: LF output may hold CR LF)
      std::vector<char> lf(n + 1);
      _zstreolcpy(lf.data(), lf.size(), out.data(), ZEAL_EOL_LF);
      require(std::strcmp(lf.data(), _zstreolized(text.c_str(), ZEAL_EOL_LF)) == 0);
    }
  }

  if (char const* const wrapped = _zstrwrapped(text.c_str(), width, 1)) {
    for (char const* line = wrapped; *line != '\0';) {
      std::size_t const n = std::strcspn(line, "\n");
      bool const one_word = std::memchr(line + 1, ' ', n > 1 ? n - 1 : 0) == nullptr;
      require(n <= static_cast<std::size_t>(width) || one_word);
      line += n + (line[n] == '\n');
    }
  }

  if (char const* const swapped = _zstrswapped(text.c_str(), a.c_str(), b.c_str())) {
    std::string const copy(swapped);
    std::vector<char> here(text.c_str(), text.c_str() + text.size() + 1);
    require(copy == _zstrswap(here.data(), a.c_str(), b.c_str()));
  }

  // Trees: the text read as a tree (any bytes), and a tree built from the
  // text's words as pairs, which reads back with as many pairs.
  if (_zstrtreewalk(text.c_str(), [](char const*, int, void*) { return 1; }, nullptr) >= 0 &&
      !a.empty() && !b.empty()) {
    char* grown = _zstrtreeaddnode(text.c_str(), a.c_str(), b.c_str());
    require(grown == nullptr || _zstrtreechildren(grown, a.c_str()) != nullptr);
    _zstrdupfree(grown);
  }
  std::vector<std::string> words;
  for (std::size_t at = 0; at < text.size() && words.size() < 40;) {
    std::size_t const n = std::min<std::size_t>(1 + static_cast<unsigned char>(text[at]) % 3, text.size() - at);
    words.emplace_back(text, at, n);
    at += n;
  }
  std::vector<char const*> pairs;
  for (std::string const& w : words) pairs.push_back(w.c_str());
  pairs.push_back(nullptr);
  char* tree = _zstrbldtree(pairs.data(), static_cast<int>(words.size() / 2));
  if (tree != nullptr) {
    require(_zstrtreewalk(tree, [](char const*, int, void*) { return 1; }, nullptr) >= 0);
    _zstrdupfree(tree);
  }
  char* paths = _zstrbldtreepaths(pairs.data(), static_cast<int>(words.size()), a.empty() ? '/' : a[0]);
  if (paths != nullptr) {
    require(_zstrtreewalk(paths, [](char const*, int, void*) { return 1; }, nullptr) >= 0);
    _zstrdupfree(paths);
  }

  char const* const noun = _zstrplural(a.c_str(), count, group & 3);
  char const* const verb = _zstrverb(b.c_str(), count, group & 1);
  require(noun != nullptr && verb != nullptr);
  errsvc::clear();
  return 0;
}
