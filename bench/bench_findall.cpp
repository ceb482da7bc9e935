// CFindAllStr reporting every occurrence (overlapping ones included) of a
// string in the SQL corpus (1 MB), beside repeated memmem from one byte
// after each occurrence:
//   batch:    FindAll, every occurrence in one call (to a callback)
//   findall:  the walk of FindByXOR, one window per call, by design
// Argument: the searched string's length.
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

#include "corpus.h"
#include "ratio_reporter.h"
#include "zelstr/findall.h"

namespace {

using benchmark::State;

std::string const& sql() { return zelstr::bench::sql_megabyte(); }

long walk_find_all(char const* text, char const* searched) {
  CFindAllStr find(text, searched, 0);
  long found = 0;
  char const* last = nullptr;
  for (;;) {
    char const* const at = find.FindByXOR(0);
    if (at != nullptr) {
      ++found;
    } else if (find.GetLastFindPos() == last) {
      return found;
    }
    last = find.GetLastFindPos();
  }
}

long batch_find_all(char const* text, char const* searched) {
  CFindAllStr find(text, searched, 0);
  long found = 0;
  find.FindAll(
      [](char const*, void* count) {
        ++*static_cast<long*>(count);
        return 1;
      },
      &found);
  return found;
}

long walk_memmem(std::string const& text, std::string const& searched) {
  long found = 0;
  char const* const end = text.data() + text.size();
  for (char const* p = text.data();; ++p) {
    p = static_cast<char const*>(
        ::memmem(p, static_cast<std::size_t>(end - p), searched.data(), searched.size()));
    if (p == nullptr) return found;
    ++found;
  }
}

void register_all() {
  for (char const* searched : {"NULL", "customer_id", "sp_addextendedproperty"}) {
    long const m = static_cast<long>(std::strlen(searched));
    if (batch_find_all(sql().c_str(), searched) != walk_memmem(sql(), searched)) {
      std::fprintf(stderr, "bench_findall: FindAll and memmem disagree on %s\n", searched);
      std::exit(1);
    }
    benchmark::RegisterBenchmark(
        "batch:CFindAllStr",
        [searched](State& state) {
          for (auto _ : state) {
            benchmark::DoNotOptimize(batch_find_all(sql().c_str(), searched));
          }
          state.SetBytesProcessed(state.iterations() * static_cast<long>(sql().size()));
        })
        ->Arg(m)
        ->MinTime(0.2);
    benchmark::RegisterBenchmark(
        "batch:memmem",
        [searched](State& state) {
          for (auto _ : state) {
            benchmark::DoNotOptimize(walk_memmem(sql(), searched));
          }
          state.SetBytesProcessed(state.iterations() * static_cast<long>(sql().size()));
        })
        ->Arg(m)
        ->MinTime(0.2);
    benchmark::RegisterBenchmark(
        "findall:CFindAllStr",
        [searched](State& state) {
          for (auto _ : state) {
            benchmark::DoNotOptimize(walk_find_all(sql().c_str(), searched));
          }
          state.SetBytesProcessed(state.iterations() * static_cast<long>(sql().size()));
        })
        ->Arg(m)
        ->MinTime(0.2);
    benchmark::RegisterBenchmark(
        "findall:memmem",
        [searched](State& state) {
          for (auto _ : state) {
            benchmark::DoNotOptimize(walk_memmem(sql(), searched));
          }
          state.SetBytesProcessed(state.iterations() * static_cast<long>(sql().size()));
        })
        ->Arg(m)
        ->MinTime(0.2);
  }
}

}  // namespace

int main(int argc, char** argv) {
  return zelstr::bench::run_on_sql_megabyte("bench_findall", argc, argv, register_all);
}
