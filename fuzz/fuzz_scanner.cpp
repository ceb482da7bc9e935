// Fuzzes CStrScanner on any bytes, format and input both: a Scan whose
// arguments' kinds, buffer sizes and set definitions come from the data,
// then a series of single reads, over a plain string or a CGrwStr that
// grows between reads.  After every call: the position never passes the
// terminator, its line and column are those of its offset, a read that
// failed did not move, a Scan refused for its format moved nothing, and
// every buffer holds a terminator within its size (each buffer is its own
// allocation, so a byte written past it stops the run).
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

using Arg = CStrScanner::ScanArg;

char const* const kSetdefs[] = {"[a-z]", "[ ]", "[,;]", "[0-9a-fA-Fx]", "[a-", "", "[]]"};

// The line and column of `offset` in `text`, counted as the scanner counts.
void line_and_column(char const* text, std::size_t offset, unsigned long* line,
                     unsigned long* column) {
  *line = 1;
  *column = 1;
  for (std::size_t i = 0; i < offset; ++i) {
    if (text[i] == '\n' && i > 0 && text[i - 1] == '\r') continue;
    if (text[i] == '\n' || text[i] == '\r') {
      ++*line;
      *column = 1;
    } else {
      ++*column;
    }
  }
}

void check_position(CStrScanner const& sc, char const* text) {
  std::size_t const offset = sc.GetOffset();
  require(offset <= std::strlen(text));
  require(sc.Rest() == text + offset);
  unsigned long line = 0, column = 0;
  line_and_column(text, offset, &line, &column);
  require(sc.GetLine() == line && sc.GetColumn() == column);
}

// The buffers of one run, each in an allocation of exactly its size.
struct Buffers {
  std::vector<std::unique_ptr<char[]>> data;
  std::vector<std::size_t> sizes;

  char* add(std::size_t size) {
    data.emplace_back(new char[size]);
    std::memset(data.back().get(), '#', size);
    sizes.push_back(size);
    return data.back().get();
  }
  void check() const {
    for (std::size_t i = 0; i < data.size(); ++i) {
      require(sizes[i] == 0 || std::memchr(data[i].get(), '\0', sizes[i]) != nullptr ||
              data[i][0] == '#');
    }
  }
};

void fuzz_scan(CStrScanner& sc, FuzzedDataProvider& in, std::string const& format,
               char const* text) {
  long long wide = 0;
  int narrow = 0;
  unsigned u = 0;
  unsigned long long uwide = 0;
  double d = 0;
  char c = 0;
  Buffers buffers;
  std::vector<Arg> args;
  for (int n = in.ConsumeIntegralInRange(0, 8); n > 0; --n) {
    switch (in.ConsumeIntegralInRange(0, 8)) {
      case 0:
        args.push_back({Arg::kInt, &narrow, 0, nullptr});
        break;
      case 1:
        args.push_back({Arg::kLongLong, &wide, 0, nullptr});
        break;
      case 2:
        args.push_back({Arg::kUnsigned, &u, 0, nullptr});
        break;
      case 3:
        args.push_back({Arg::kUnsignedLongLong, &uwide, 0, nullptr});
        break;
      case 4:
        args.push_back({Arg::kDouble, &d, 0, nullptr});
        break;
      case 5:
        args.push_back({Arg::kChar, &c, 0, nullptr});
        break;
      case 6:
        args.push_back({Arg::kText, nullptr, 0, kSetdefs[in.ConsumeIntegralInRange(0, 6)]});
        break;
      default: {
        std::size_t const size = in.ConsumeIntegralInRange(1, 12);
        args.push_back({Arg::kBuffer, buffers.add(size), size, nullptr});
      }
    }
  }
  CStrScanner::Position const before = sc.GetPos();
  int const stored = sc.ScanArgs(format.c_str(), args.data(), static_cast<int>(args.size()));
  require(stored >= -1 && stored <= static_cast<int>(args.size()));
  if (stored == -1) {
    require(sc.GetOffset() == before.offset && sc.GetError() == ZEAL_SCAN_BAD_ARGUMENT);
  }
  require(sc.GetOffset() >= before.offset);
  check_position(sc, text);
  buffers.check();
}

// One single read chosen by the data; a read that fails does not move.
void fuzz_read(CStrScanner& sc, FuzzedDataProvider& in, char const* text) {
  char buffer[8];
  std::size_t const size = in.ConsumeIntegralInRange<std::size_t>(1, sizeof buffer);
  char const* const setdef = kSetdefs[in.ConsumeIntegralInRange(0, 6)];
  std::size_t const before = sc.GetOffset();
  long long wide = 0;
  unsigned long long uwide = 0;
  double d = 0;
  int read = 1;
  switch (in.ConsumeIntegralInRange(0, 11)) {
    case 0:
      read = sc.ReadInt(&wide);
      break;
    case 1:
      read = sc.ReadUInt(&uwide);
      break;
    case 2:
      read = sc.ReadDouble(&d);
      break;
    case 3:
      read = sc.ReadWord(setdef, buffer, size);
      break;
    case 4:
      read = sc.ReadQuoted(buffer, size, in.ConsumeBool() ? '\'' : '\0');
      break;
    case 5:
      read = sc.ReadName(buffer, size);
      break;
    case 6:
      read = sc.ReadUntil(setdef, buffer, size);
      break;
    case 7:
      read = sc.ReadLine(buffer, size);
      break;
    case 8:
      read = sc.Expect(setdef);
      break;
    case 9:
      sc.SkipBlanks();
      break;
    case 10:
      sc.Get();
      break;
    default: {
      CStrScanner::Position const pos = sc.GetPos();
      sc.Peek(in.ConsumeIntegralInRange<std::size_t>(0, 20));
      read = sc.SetPos(pos);
      require(read == 1);
    }
  }
  if (read == 0) require(sc.GetOffset() == before && sc.GetError() != ZEAL_SCAN_OK);
  check_position(sc, text);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
  FuzzedDataProvider in(data, size);
  int const options = in.ConsumeIntegralInRange(0, 7);
  bool const growing = in.ConsumeBool();
  std::string const format = in.ConsumeRandomLengthString(24);
  std::string const input = in.ConsumeRandomLengthString(200).c_str();
  std::string const more = in.ConsumeRandomLengthString(40).c_str();

  CGrwStr grown(8);
  grown = input.c_str();
  CStrScanner sc;
  if (growing) {
    sc.Reset(grown);
  } else {
    sc.Reset(input.c_str());
  }
  sc.SetOptions(options);
  auto text = [&] { return growing ? grown.gethos() : input.c_str(); };

  fuzz_scan(sc, in, format, text());
  for (int step = 0; step < 16 && in.remaining_bytes() > 0; ++step) {
    if (growing && in.ConsumeBool()) grown += more.c_str();  // the buffer may move
    fuzz_read(sc, in, text());
  }
  errsvc::clear();
  return 0;
}
