// Fuzzes the zelstr tool's streams: any code, written in pieces of any
// sizes to a T-SQL case stream with any piece limit, must come out exactly
// as one _zmaptsqlapply call on the whole code makes it; and the
// all-occurrences stream must report exactly the occurrences of a plain
// overlapping scan, whatever its window.
#include <fuzzer/FuzzedDataProvider.h>

#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

#include "require.h"
#include "tool/findall_stream.h"
#include "tool/tsql_case_stream.h"
#include "zelstr/zelstr.h"

namespace {

using zelstr::tool::FindAllStream;
using zelstr::tool::TsqlCaseStream;

void* casing_map(bool lower) {
  static void* const maps[2] = {_zmapdefine("A-Z=a-z"), _zmapdefine("a-z=A-Z")};
  return maps[lower ? 1 : 0];
}

template <class Write>
void write_in_pieces(FuzzedDataProvider& data, std::string const& text, Write write) {
  for (std::size_t at = 0; at < text.size();) {
    std::size_t const n = std::min(text.size() - at, data.ConsumeIntegralInRange<std::size_t>(1, 64));
    write(std::string_view(text).substr(at, n));
    at += n;
  }
}

void check_case_stream(FuzzedDataProvider& data, std::string const& code) {
  void* const map = casing_map(data.ConsumeBool());
  bool const quoted_id = data.ConsumeBool();
  std::string expected = code;
  _zmaptsqlapply(map, expected.data(), quoted_id ? 1 : 0);
  std::string out;
  TsqlCaseStream stream(map, quoted_id, data.ConsumeIntegralInRange<std::size_t>(1, 100),
                        [&out](std::string_view s) { out += s; });
  write_in_pieces(data, code, [&stream](std::string_view s) { stream.write(s); });
  std::uint64_t line = 0;
  stream.finish(line);
  require(out == expected);
}

void check_findall_stream(FuzzedDataProvider& data, std::string const& text) {
  std::string const pattern = data.ConsumeRandomLengthString(8) + "x";
  if (pattern.find('\0') != std::string::npos) return;
  std::vector<std::uint64_t> expected;
  for (std::size_t at = 0; at + pattern.size() <= text.size(); ++at) {
    if (text.compare(at, pattern.size(), pattern) == 0) expected.push_back(at);
  }
  std::vector<std::uint64_t> found;
  FindAllStream stream(pattern, false, true, data.ConsumeIntegralInRange<std::size_t>(1, 100),
                       [&found](std::uint64_t at) { found.push_back(at); });
  write_in_pieces(data, text, [&stream](std::string_view s) { stream.write(s); });
  stream.finish();
  require(found == expected);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* bytes, std::size_t size) {
  FuzzedDataProvider data(bytes, size);
  std::string text = data.ConsumeRandomLengthString(2000);
  text.erase(std::strlen(text.c_str()));  // the streams take text without zero bytes
  if (data.ConsumeBool()) {
    check_case_stream(data, text);
  } else {
    check_findall_stream(data, text);
  }
  return 0;
}
