// The range, nearest and N-th searches beside the searches they build on,
// over the first megabyte of the SQL corpus.  Each OPERATION names what is
// searched; its first row is the new function, the second the existing
// search doing the same scan:
//   find.whole / rfind.whole  a range that is the whole text, an absent
//                             pattern (the scan runs to the end)
//   find.inner / rfind.inner  the whole text but its first and last bytes:
//                             the range stops short of the terminator, and
//                             the scan at its limit
//   ifind.inner               the same, ignoring case
//   nearest                   a cursor in the middle, one occurrence only
//                             at the text's end (the walk runs to it)
//   nthchr / nthrchr          the last ';' counted from the start, and the
//                             first counted from the end
// The argument is the pattern's length.
#include <cstring>
#include <string>

#include "corpus.h"
#include "ratio_reporter.h"
#include "zelstr/zelstr.h"

namespace {

using benchmark::State;

std::string const& sql() { return zelstr::bench::sql_megabyte(); }

// A pattern of `m` bytes absent from the text.
std::string absent(std::size_t m) {
  std::string p = sql().substr(sql().size() / 2, m);
  for (char c : std::string("#~qzXQ")) {
    p.back() = c;
    if (sql().find(p) == std::string::npos) return p;
  }
  return p + "\x01";
}

template <class F>
void add(std::string const& operation, char const* implementation, long m, F f) {
  std::string const name = operation + ":" + implementation;
  benchmark::RegisterBenchmark(name.c_str(),
                               [f](State& state) {
                                 for (auto _ : state) benchmark::DoNotOptimize(f());
                                 state.SetBytesProcessed(state.iterations() *
                                                         static_cast<long>(sql().size()));
                               })
      ->Arg(m)
      ->MinTime(0.2);
}

void register_all() {
  char const* const t = sql().c_str();
  int const n = static_cast<int>(sql().size());
  for (long m : {4L, 16L}) {
    static std::string patterns[2];
    std::string const& p = patterns[m == 16] = absent(static_cast<std::size_t>(m));
    char const* const q = p.c_str();
    add("find.whole", "_zstrfind", m, [=] { return _zstrfind(t, q, 0, -1); });
    add("find.whole", "_zstrstr", m, [=] { return _zstrstr(t, q); });
    add("find.inner", "_zstrfind", m, [=] { return _zstrfind(t, q, 1, n - 2); });
    add("find.inner", "_zstrstr", m, [=] { return _zstrstr(t, q); });
    add("ifind.inner", "_zstrifind", m, [=] { return _zstrifind(t, q, 1, n - 2); });
    add("ifind.inner", "_zstristr", m, [=] { return _zstristr(t, q); });
    add("rfind.whole", "_zstrrfind", m, [=] { return _zstrrfind(t, q, 0, -1); });
    add("rfind.whole", "_zstrrstr", m, [=] { return _zstrrstr(t, q); });
    add("rfind.inner", "_zstrrfind", m, [=] { return _zstrrfind(t, q, 1, n - 2); });
    add("rfind.inner", "_zstrrstr", m, [=] { return _zstrrstr(t, q); });
  }
  // The text's last 8 bytes occur once, at its end.
  static std::string const tail = sql().substr(sql().size() - 8);
  char const* const e = tail.c_str();
  if (_zstrstr(t, e) == t + n - 8) {
    add("nearest", "_zstrneareststr", 8, [=] { return _zstrneareststr(t, e, n / 2); });
    add("nearest", "_zstrstr", 8, [=] { return _zstrstr(t, e); });
  }
  int const semicolons = _zstrccnt(t, ';');
  add("nthchr", "_zstrNthchr", 1, [=] { return _zstrNthchr(t, ';', semicolons); });
  add("nthchr", "strchr loop", 1, [=] {
    char const* p = t;
    for (int k = 1; k < semicolons; ++k) p = std::strchr(p, ';') + 1;
    return std::strchr(p, ';');
  });
  add("nthrchr", "_zstrNthrchr", 1, [=] { return _zstrNthrchr(t, ';', semicolons); });
  add("nthrchr", "strchr loop", 1, [=] {
    char const* p = t;
    for (int k = 1; k < semicolons; ++k) p = std::strchr(p, ';') + 1;
    return std::strchr(p, ';');
  });
}

}  // namespace

int main(int argc, char** argv) {
  return zelstr::bench::run_on_sql_megabyte("bench_range_search", argc, argv, register_all);
}
