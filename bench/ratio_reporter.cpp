// ratio_reporter.cpp - benchmark times as ratios to their peers.
#include "ratio_reporter.h"

#include <algorithm>
#include <cstdio>

namespace zelstr::bench {

void RatioReporter::ReportRuns(std::vector<Run> const& runs) {
  ConsoleReporter::ReportRuns(runs);
  for (Run const& run : runs) {
    // With repetitions, the median stands for the benchmark; without, the run.
    bool const usable =
        run.run_type == Run::RT_Aggregate ? run.aggregate_name == "median" : run.repetitions <= 1;
    if (!usable || run.error_occurred) continue;
    std::string const name = run.run_name.str();
    std::size_t const colon = name.find(':');
    std::size_t const slash = name.find('/', colon);
    if (colon == std::string::npos || slash == std::string::npos) continue;
    double const ns = run.GetAdjustedRealTime() *
                      benchmark::GetTimeUnitMultiplier(benchmark::kNanosecond) /
                      benchmark::GetTimeUnitMultiplier(run.time_unit);
    timings_.push_back({name.substr(0, colon), name.substr(colon + 1, slash - colon - 1),
                        name.substr(slash + 1), ns, run.family_index});
  }
}

void RatioReporter::Finalize() {
  ConsoleReporter::Finalize();
  // Interleaved runs come in any order: the subject is the one registered
  // first.
  std::stable_sort(timings_.begin(), timings_.end(),
                   [](Timing const& a, Timing const& b) { return a.family < b.family; });
  std::printf("\n%-14s %-8s %-26s %12s %12s %8s\n", "operation", "size", "peer", "subject ns",
              "peer ns", "ratio");
  for (std::size_t i = 0; i < timings_.size(); ++i) {
    Timing const& subject = timings_[i];
    auto same_group = [&subject](Timing const& t) {
      return t.operation == subject.operation && t.argument == subject.argument;
    };
    bool first_of_group = true;
    for (std::size_t k = 0; k < i; ++k) first_of_group = first_of_group && !same_group(timings_[k]);
    if (!first_of_group) continue;
    for (std::size_t j = i + 1; j < timings_.size(); ++j) {
      Timing const& peer = timings_[j];
      if (!same_group(peer)) continue;
      std::printf("%-14s %-8s %-26s %12.1f %12.1f %8.3f\n", subject.operation.c_str(),
                  size_label(std::stol(subject.argument)).c_str(), peer.implementation.c_str(),
                  subject.nanoseconds, peer.nanoseconds, subject.nanoseconds / peer.nanoseconds);
    }
  }
  std::fflush(stdout);
}

std::string size_label(long bytes) {
  if (bytes >= (1 << 20) && bytes % (1 << 20) == 0) return std::to_string(bytes >> 20) + " MB";
  if (bytes >= 1024 && bytes % 1024 == 0) return std::to_string(bytes >> 10) + " KB";
  return std::to_string(bytes) + " B";
}

}  // namespace zelstr::bench
