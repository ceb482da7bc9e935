// How the search and regular-expression families scale with threads: each
// benchmark runs on 1, 2, ... up to the machine's hardware threads, every
// thread with a pattern, text and compiled expression of its own.  After
// the usual table, the reporter prints each benchmark's throughput on N
// threads as a multiple of its throughput on one (N on an ideal machine).
//   search.sensitive / search.insensitive   _zstrstr / _zstristr, 4 KB text,
//                                           the thread's pattern near its end
//   regex.own        Tcl_RegExpMatch with the thread's own compiled expression
//                    over a line of SQL
//   regex.cached     Tcl_MatchRE over the same line (the thread's own cache)
#include <benchmark/benchmark.h>

#include <cstdio>
#include <map>
#include <random>
#include <string>
#include <thread>
#include <vector>

#include "zelstr/zelstr.h"

namespace {

using benchmark::State;

std::string text_for(int thread) {
  std::mt19937 rng(static_cast<unsigned>(thread) + 1);
  std::string text;
  while (text.size() < 4096) text += static_cast<char>('a' + rng() % 26);
  std::string const pattern = "needle" + std::to_string(thread);
  text.replace(4000, pattern.size(), pattern);
  return text;
}

void search_sensitive(State& state) {
  std::string const text = text_for(state.thread_index());
  std::string const pattern = "needle" + std::to_string(state.thread_index());
  for (auto _ : state) benchmark::DoNotOptimize(_zstrstr(text.c_str(), pattern.c_str()));
  state.SetItemsProcessed(state.iterations());
}

void search_insensitive(State& state) {
  std::string const text = text_for(state.thread_index());
  std::string const pattern = "NEEDLE" + std::to_string(state.thread_index());
  for (auto _ : state) benchmark::DoNotOptimize(_zstristr(text.c_str(), pattern.c_str()));
  state.SetItemsProcessed(state.iterations());
}

std::string sql_line(int thread) {
  return "SELECT c.name, o.total FROM dbo.Customers c JOIN dbo.Orders" + std::to_string(thread) +
         " o ON o.customer_id = c.id WHERE o.total > 100 ORDER BY o.total DESC";
}

void regex_own(State& state) {
  std::string const line = sql_line(state.thread_index());
  std::string const pattern =
      "JOIN +[a-z.]*Orders" + std::to_string(state.thread_index()) + " +([a-z]+)";
  Tcl_RegExp_* const re = Tcl_RegExpCompile(pattern.c_str());
  for (auto _ : state) benchmark::DoNotOptimize(Tcl_RegExpMatch(line.c_str(), re));
  Tcl_DeleteInterp(re);
  state.SetItemsProcessed(state.iterations());
}

void regex_cached(State& state) {
  std::string const line = sql_line(state.thread_index());
  std::string const pattern = "Orders" + std::to_string(state.thread_index()) + " +o +ON";
  for (auto _ : state) benchmark::DoNotOptimize(Tcl_MatchRE(line.c_str(), pattern.c_str()));
  state.SetItemsProcessed(state.iterations());
}

int hardware_threads() {
  unsigned const n = std::thread::hardware_concurrency();
  return n == 0 ? 1 : static_cast<int>(n);
}

void register_all() {
  struct Entry {
    char const* name;
    void (*run)(State&);
  };
  for (Entry const& e : {Entry{"search.sensitive", search_sensitive},
                         Entry{"search.insensitive", search_insensitive},
                         Entry{"regex.own", regex_own}, Entry{"regex.cached", regex_cached}}) {
    auto* const b = benchmark::RegisterBenchmark(e.name, e.run);
    for (int n = 1; n <= hardware_threads(); n *= 2) b->Threads(n);
    if (hardware_threads() & (hardware_threads() - 1)) b->Threads(hardware_threads());
    b->UseRealTime();
  }
}

// Prints throughput on N threads over throughput on one.
class ScalingReporter : public benchmark::ConsoleReporter {
 public:
  void ReportRuns(std::vector<Run> const& runs) override {
    ConsoleReporter::ReportRuns(runs);
    for (Run const& run : runs) {
      auto const items = run.counters.find("items_per_second");
      if (items == run.counters.end()) continue;
      m_rates[run.run_name.function_name][static_cast<int>(run.threads)] = items->second.value;
    }
  }
  void Finalize() override {
    ConsoleReporter::Finalize();
    std::printf("\nThroughput on N threads / throughput on 1 thread (%d hardware threads):\n",
                hardware_threads());
    for (auto const& [name, by_threads] : m_rates) {
      auto const one = by_threads.find(1);
      if (one == by_threads.end() || one->second <= 0) continue;
      std::printf("  %-20s", name.c_str());
      for (auto const& [threads, rate] : by_threads) {
        std::printf("  %d: %.2fx", threads, rate / one->second);
      }
      std::printf("\n");
    }
  }

 private:
  std::map<std::string, std::map<int, double>> m_rates;
};

}  // namespace

int main(int argc, char** argv) {
  benchmark::Initialize(&argc, argv);
  register_all();
  ScalingReporter reporter;
  benchmark::RunSpecifiedBenchmarks(&reporter);
  benchmark::Shutdown();
  return 0;
}
