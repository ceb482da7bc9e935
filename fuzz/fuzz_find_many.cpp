// Fuzzes the two many-strings searches: any strings, any text (in a heap
// block of exactly its bytes, so a read past its length is caught), any
// flags and a map or none.  Both report the same occurrences; each is a
// string that is there, and they come in order.  CFindAllStr's one call
// reports what its walk of windows reports, for the first string.
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

struct Found {
  long at;
  int index;
};

template <class Search>
std::vector<Found> all_found(Search& search, char const* text, long length) {
  std::vector<Found> out;
  int index = -1;
  for (char const* at = search.Find(text, &index, length); at; at = search.FindNext(&index)) {
    out.push_back(Found{static_cast<long>(at - text), index});
    if (out.size() > static_cast<std::size_t>(length) + 1) break;  // never more than one per place
  }
  return out;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
  static void* const lower = _zmapdefine("a-z=A-Z");
  FuzzedDataProvider in(data, size);
  int const flags = in.ConsumeIntegralInRange(0, 15);
  bool const mapped = in.ConsumeBool();
  std::vector<std::string> strings;
  for (int n = in.ConsumeIntegralInRange(0, 12); n > 0; --n) {
    strings.push_back(in.ConsumeRandomLengthString(8));
  }
  std::string const text = in.ConsumeRemainingBytesAsString();
  std::vector<char const*> list;
  for (std::string const& s : strings) list.push_back(s.c_str());
  list.push_back(nullptr);
  void* const map = mapped ? lower : nullptr;
  CFindManyStrOld old(list.data(), flags, map);
  CFindManyStrHoary hoary(list.data(), flags, map);

  std::unique_ptr<char[]> const block(new char[text.size() ? text.size() : 1]);
  std::memcpy(block.get(), text.data(), text.size());
  auto const length = static_cast<long>(text.size());
  std::vector<Found> const a = all_found(old, block.get(), length);
  std::vector<Found> const b = all_found(hoary, block.get(), length);
  require(a.size() == b.size());
  for (std::size_t i = 0; i < a.size(); ++i) {
    require(a[i].at == b[i].at && a[i].index == b[i].index);
    require(i == 0 || a[i].at > a[i - 1].at);
    std::string const& s = strings[static_cast<std::size_t>(a[i].index)];
    require(!s.empty() && a[i].at + static_cast<long>(std::strlen(s.c_str())) <= length);
  }
  if (!strings.empty()) {
    std::string const zero_terminated(block.get(), text.size());  // cut at its first zero
    char const* const t = zero_terminated.c_str();
    int const insensitive = flags & 1;
    CFindAllStr walk(t, strings[0].c_str(), insensitive);
    std::vector<char const*> walked;
    for (std::size_t i = 0; i <= zero_terminated.size() + 1; ++i) {
      if (char const* const at = walk.FindByXOR(0)) walked.push_back(at);
    }
    CFindAllStr batch(t, strings[0].c_str(), insensitive);
    std::vector<char const*> found(walked.size() + 1);
    int const n = batch.FindAll(found.data(), static_cast<int>(found.size()));
    require(n == static_cast<int>(walked.size()));
    for (int i = 0; i < n; ++i)
      require(found[static_cast<std::size_t>(i)] == walked[static_cast<std::size_t>(i)]);
  }
  errsvc::clear();
  return 0;
}
