// Replacing every occurrence, in place, beside absl::StrReplaceAll (which
// builds a new string) and boost::algorithm::replace_all (in a
// std::string).  1 MB texts: the SQL corpus (sparse occurrences of real
// keywords) and synthetic words (dense: every few bytes); the replacement
// grows, shrinks or keeps the length.  Each iteration starts from a fresh
// copy of the text, made outside the timed part.  A last group runs the
// dense growing case at 64 KB, 1 MB and 16 MB: its time per byte should not
// move.
#include <absl/strings/str_replace.h>

#include <algorithm>
#include <boost/algorithm/string/replace.hpp>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <random>
#include <sstream>
#include <string>
#include <vector>

#include "corpus.h"
#include "ratio_reporter.h"
#include "zelstr/zelstr.h"

namespace {

using benchmark::State;

std::string words(std::size_t size) {
  static char const* const kWords[] = {"ab", "cd", "id", "x", "name", "sys", "to", "of"};
  std::mt19937 rng(12);
  std::string s;
  while (s.size() < size) {
    s += kWords[rng() % 8];
    s += ' ';
  }
  s.resize(size);
  return s;
}

enum class Impl { kLibrary, kLibraryIgnoringCase, kLibraryEx, kAbsl, kBoost };

void run(State& state, std::string const& text, std::string const& from, std::string const& to,
         Impl impl) {
  std::size_t const room = text.size() * std::max<std::size_t>(1, to.size()) + 1;
  std::vector<char> buffer(room);
  std::string copy;
  for (auto _ : state) {
    state.PauseTiming();
    std::memcpy(buffer.data(), text.c_str(), text.size() + 1);
    copy = text;
    state.ResumeTiming();
    switch (impl) {
      case Impl::kLibrary:
        benchmark::DoNotOptimize(_zstrNreplace(buffer.data(), from.c_str(), to.c_str(), room - 1));
        break;
      case Impl::kLibraryIgnoringCase:
        benchmark::DoNotOptimize(_zstriNreplace(buffer.data(), from.c_str(), to.c_str(), room - 1));
        break;
      case Impl::kLibraryEx:
        benchmark::DoNotOptimize(
            _zstrNreplaceEx(buffer.data(), from.c_str(), to.c_str(), room - 1, "[a-zA-Z0-9_]"));
        break;
      case Impl::kAbsl:
        benchmark::DoNotOptimize(absl::StrReplaceAll(text, {{from, to}}));
        break;
      case Impl::kBoost:
        boost::algorithm::replace_all(copy, from, to);
        benchmark::DoNotOptimize(copy.data());
        break;
    }
  }
  state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(text.size()));
}

struct Case {
  std::string name;
  std::string const* text;
  std::string from, to;
};

void add(Case const& c, bool all_impls) {
  std::pair<char const*, Impl> const impls[] = {{"_zstrNreplace", Impl::kLibrary},
                                                {"_zstriNreplace", Impl::kLibraryIgnoringCase},
                                                {"_zstrNreplaceEx", Impl::kLibraryEx},
                                                {"absl::StrReplaceAll", Impl::kAbsl},
                                                {"boost::replace_all", Impl::kBoost}};
  for (auto const& [label, impl] : impls) {
    if (!all_impls && impl != Impl::kLibrary && impl != Impl::kAbsl) continue;
    std::string const name = c.name + ":" + label;
    benchmark::RegisterBenchmark(name.c_str(),
                                 [c, impl](State& st) { run(st, *c.text, c.from, c.to, impl); })
        ->Arg(static_cast<long>(c.text->size()))
        ->MinTime(0.2)
        ->UseRealTime();
  }
}

void register_all() {
  std::string const& sql = zelstr::bench::sql_megabyte();
  static std::string const dense = words(1u << 20);
  add({"sql.grow", &sql, "SELECT", "SELECT /*+*/"}, true);
  add({"sql.same", &sql, "FROM", "from"}, true);
  add({"sql.shrink", &sql, "dbo.", ""}, true);
  add({"dense.grow", &dense, " ", "  "}, true);
  add({"dense.same", &dense, "id", "ID"}, true);
  add({"dense.shrink", &dense, "ab ", "-"}, true);
  static std::string const small = words(64u << 10), large = words(16u << 20);
  add({"scale.grow", &small, " ", "  "}, false);
  add({"scale.grow", &dense, " ", "  "}, false);
  add({"scale.grow", &large, " ", "  "}, false);
}

}  // namespace

int main(int argc, char** argv) {
  return zelstr::bench::run_on_sql_megabyte("bench_replace", argc, argv, register_all);
}
