// ratio_reporter.h - prints benchmark times as ratios to their peers.
//
// Benchmarks are named "OPERATION:IMPLEMENTATION/ARG".  Within each
// OPERATION/ARG group, the first implementation registered is the subject
// (the library's call) and every other one a peer; after the usual console
// table the reporter prints subject time / peer time for each peer.  With
// --benchmark_repetitions the medians are compared; adding
// --benchmark_enable_random_interleaving=true spreads the repetitions of
// every benchmark over the whole run, so that a noisy stretch of the
// machine's time does not fall on one implementation only.
#ifndef ZELSTR_BENCH_RATIO_REPORTER_H
#define ZELSTR_BENCH_RATIO_REPORTER_H

#include <benchmark/benchmark.h>

#include <cstdint>
#include <string>
#include <vector>

namespace zelstr::bench {

class RatioReporter : public benchmark::ConsoleReporter {
 public:
  void ReportRuns(std::vector<Run> const& runs) override;
  void Finalize() override;

 private:
  struct Timing {
    std::string operation;
    std::string implementation;
    std::string argument;
    double nanoseconds;
    std::int64_t family;  // the registration order
  };
  std::vector<Timing> timings_;
};

// Human-readable size: 16 B, 1 KB, 1 MB.
std::string size_label(long bytes);

}  // namespace zelstr::bench

#endif  // ZELSTR_BENCH_RATIO_REPORTER_H
