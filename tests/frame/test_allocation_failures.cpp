// Every allocation the library makes during a workload that reaches each
// family of the interface is failed in turn, alone and then with every later
// one, each time in a child process.  For each fault point the child must
// not crash or let an exception out of the library; the call that met the
// failure must give its clean result or its fallback, with the warning that
// goes with the fallback (or the NULL record when even that could not be
// allocated); and a clean run in the same process must then give the clean
// results and leave the library holding as many blocks as a clean run does.
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstring>
#include <string>
#include <vector>

#include "errsvc/errsvc.h"
#include "frame/allocation_workload.h"
#include "support/failing_allocator.h"

namespace {

namespace alloc = zelstr::test::alloc;
using zelstr::test::Outcome;
using zelstr::test::Step;

// ---- one run of the workload ----------------------------------------------

std::vector<Outcome> run(std::vector<Step> const& steps) {
  std::vector<Outcome> outcomes;
  outcomes.reserve(steps.size());
  for (Step const& step : steps) {
    errsvc::clear();
    std::size_t const failed_before = alloc::failed();
    Outcome o;
    try {
      o.result = step.run();
    } catch (...) {
      o.result = "!an exception left the library";
    }
    o.failed = alloc::failed() - failed_before;
    o.counted_to = alloc::counted();
    for (errsvc::Record const& r : errsvc::records()) {
      o.warnings.push_back(std::to_string(r.id) + "/" + std::to_string(r.severity) + " " +
                           r.function + ": " + r.text);
    }
    o.null_records = errsvc::null_record_count();
    outcomes.push_back(std::move(o));
  }
  zelstr::test::end_run();
  return outcomes;
}

std::string transcript(std::vector<Step> const& steps, std::vector<Outcome> const& outcomes) {
  std::string text;
  for (std::size_t i = 0; i < steps.size(); ++i) {
    text += std::string(steps[i].family) + "/" + steps[i].name + ": " + outcomes[i].result + "\n";
    for (std::string const& w : outcomes[i].warnings) text += "  warning " + w + "\n";
    if (outcomes[i].null_records != 0) {
      text += "  null records " + std::to_string(outcomes[i].null_records) + "\n";
    }
  }
  return text;
}

// ---- what a child checks --------------------------------------------------

struct Reference {
  std::vector<Outcome> outcomes;
  std::string transcript;
  std::size_t allocations = 0;  // counted during a run from a fresh process
  std::size_t live_blocks = 0;  // held by the library after a clean run
};

// One of the records holds one of the texts `alternatives` lists, separated
// by '|'.
bool contains(std::vector<std::string> const& list, std::string const& alternatives) {
  for (std::size_t from = 0; from <= alternatives.size();) {
    std::size_t const to = std::min(alternatives.find('|', from), alternatives.size());
    std::string const text = alternatives.substr(from, to - from);
    for (std::string const& s : list) {
      if (s.find(text) != std::string::npos) return true;
    }
    from = to + 1;
  }
  return false;
}

// `got` is the record `clean`, or the same with "<null>" where memory was
// short for a copy it quotes.
bool same_record(std::string const& got, std::string const& clean) {
  std::size_t const at = got.find("<null>");
  if (at == std::string::npos || got == clean) return got == clean;
  std::string const after = got.substr(at + 6);
  return clean.compare(0, at, got, 0, at) == 0 && clean.size() >= at + after.size() &&
         clean.compare(clean.size() - after.size(), after.size(), after) == 0;
}

// The records of `got` are those of `clean`, in order, except the ones
// that became NULL records.
bool same_warnings_or_null(Outcome const& got, Outcome const& clean) {
  std::size_t j = 0;
  for (std::string const& w : got.warnings) {
    while (j < clean.warnings.size() && !same_record(w, clean.warnings[j])) ++j;
    if (j++ == clean.warnings.size()) return false;
  }
  return got.warnings.size() + got.null_records == clean.warnings.size() + clean.null_records;
}

// The step that met the first failure: its clean result with its clean
// warnings, or its fallback with the warning the fallback names.
std::string check_failed_step(Step const& step, Outcome const& got, Outcome const& clean) {
  bool const named =
      step.named != nullptr && (contains(got.warnings, step.named) || got.null_records != 0);
  if (got.result == clean.result) {
    if (same_warnings_or_null(got, clean)) return "";
    if (named) return "";
    std::string shown = "clean result but other warnings:";
    for (std::string const& w : got.warnings) shown += "\n  got   " + w;
    for (std::string const& w : clean.warnings) shown += "\n  clean " + w;
    return shown + "\n  NULL records " + std::to_string(got.null_records);
  }
  if (step.fallback == nullptr) return "";  // a series of calls: its invariants are checked
  if (got.result != step.fallback) {
    return "result '" + got.result + "' is neither the clean one nor the fallback";
  }
  if (step.named != nullptr && !named) {
    return std::string("fallback without the warning '") + step.named + "'";
  }
  return "";
}

std::string check_fault(std::vector<Step> const& steps, std::vector<Outcome> const& faulted,
                        Reference const& ref) {
  bool first = true;
  for (std::size_t i = 0; i < steps.size(); ++i) {
    std::string const where = std::string(steps[i].family) + "/" + steps[i].name + ": ";
    if (faulted[i].result.find('!') != std::string::npos) return where + faulted[i].result;
    if (faulted[i].failed == 0 || !first) continue;
    first = false;
    std::string const problem = check_failed_step(steps[i], faulted[i], ref.outcomes[i]);
    if (!problem.empty()) return where + problem;
  }
  return "";
}

// The first line where `got` differs from `expected`, both shown.
std::string first_difference(std::string const& got, std::string const& expected) {
  std::size_t at = 0;
  while (at < got.size() && at < expected.size() && got[at] == expected[at]) ++at;
  std::size_t const line = got.rfind('\n', at) == std::string::npos ? 0 : got.rfind('\n', at) + 1;
  auto line_of = [line](std::string const& s) { return s.substr(line, s.find('\n', line) - line); };
  return "got '" + line_of(got) + "', expected '" + line_of(expected) + "'";
}

// Runs the workload with the N-th allocation failed, then cleanly; an empty
// text when everything held.
std::string faulted_then_clean(std::vector<Step> const& steps, Reference const& ref, std::size_t n,
                               alloc::Failing how) {
  alloc::arm(n, how);
  std::vector<Outcome> const faulted = run(steps);
  alloc::arm(0, alloc::Failing::kNothing);
  if (std::string const problem = check_fault(steps, faulted, ref); !problem.empty()) {
    return problem;
  }
  // The caches are left as the failure left them: what they kept must serve.
  std::string const clean = transcript(steps, run(steps));
  zelstr::test::release_caches();
  if (clean != ref.transcript) {
    return "a clean run after the failure differs: " + first_difference(clean, ref.transcript);
  }
  if (alloc::live_blocks() != ref.live_blocks) {
    return "the library holds " + std::to_string(alloc::live_blocks()) +
           " blocks after a clean run, " + std::to_string(ref.live_blocks) + " expected";
  }
  return "";
}

// ---- children -------------------------------------------------------------

// Runs `body` in a child process and returns what it wrote, or why it died.
template <class Body>
std::string in_child(Body body) {
  int fds[2];
  if (pipe(fds) != 0) return "no pipe";
  pid_t const pid = fork();
  if (pid == 0) {
    close(fds[0]);
    alarm(60);
    std::string text;
    try {
      text = body();
    } catch (...) {
      text = "!an exception left the workload";
    }
    std::size_t done = 0;
    while (done < text.size()) {
      ssize_t const n = write(fds[1], text.data() + done, text.size() - done);
      if (n <= 0) break;
      done += static_cast<std::size_t>(n);
    }
    _exit(0);
  }
  close(fds[1]);
  std::string text;
  char buffer[4096];
  for (ssize_t n; (n = read(fds[0], buffer, sizeof buffer)) > 0;) {
    text.append(buffer, static_cast<std::size_t>(n));
  }
  close(fds[0]);
  int status = 0;
  waitpid(pid, &status, 0);
  if (WIFSIGNALED(status)) return "!killed by signal " + std::to_string(WTERMSIG(status));
  if (!WIFEXITED(status) || WEXITSTATUS(status) != 0) {
    return "!exited with " + std::to_string(WEXITSTATUS(status));
  }
  return text;
}

// Strings written one after the other, each after its length.
void put(std::string& out, std::string const& s) { out += std::to_string(s.size()) + "\n" + s; }
std::string take(std::string const& in, std::size_t& at) {
  std::size_t const end = in.find('\n', at);
  std::size_t const n = std::stoul(in.substr(at, end - at));
  at = end + 1 + n;
  return in.substr(end + 1, n);
}

// Two clean runs from a fresh process: the first one counts the
// allocations, and both must agree (results and blocks held).
Reference reference(std::vector<Step> const& steps) {
  std::string const text = in_child([&] {
    alloc::arm(0, alloc::Failing::kNothing);
    std::vector<Outcome> const first = run(steps);
    std::string const again = transcript(steps, run(steps));
    zelstr::test::release_caches();
    std::size_t const live = alloc::live_blocks();
    run(steps);
    run(steps);
    zelstr::test::release_caches();
    std::string out;
    put(out, transcript(steps, first));
    put(out, again);
    put(out, std::to_string(live) + " " + std::to_string(alloc::live_blocks()));
    for (Outcome const& o : first) {
      put(out, o.result);
      put(out, std::to_string(o.counted_to) + " " + std::to_string(o.null_records));
      put(out, std::to_string(o.warnings.size()));
      for (std::string const& w : o.warnings) put(out, w);
    }
    return out;
  });
  Reference ref;
  if (text.empty() || text[0] == '!') {
    ADD_FAILURE() << "the clean run failed: " << text;
    return ref;
  }
  std::size_t at = 0;
  ref.transcript = take(text, at);
  EXPECT_EQ(take(text, at), ref.transcript) << "two clean runs differ";
  std::size_t live_first = 0, live_second = 0;
  std::sscanf(take(text, at).c_str(), "%zu %zu", &live_first, &live_second);
  EXPECT_EQ(live_first, live_second) << "a clean run leaves the library holding more blocks";
  ref.live_blocks = live_first;
  for (std::size_t i = 0; i < steps.size(); ++i) {
    Outcome o;
    o.result = take(text, at);
    std::sscanf(take(text, at).c_str(), "%zu %zu", &o.counted_to, &o.null_records);
    for (std::size_t k = std::stoul(take(text, at)); k > 0; --k) {
      o.warnings.push_back(take(text, at));
    }
    ref.outcomes.push_back(o);
  }
  ref.allocations = ref.outcomes.empty() ? 0 : ref.outcomes.back().counted_to;
  return ref;
}

class AllocationFailures : public ::testing::TestWithParam<char const*> {};

TEST_P(AllocationFailures, EveryAllocationFailsOnceAndFromThenOn) {
  std::vector<Step> const steps = zelstr::test::workload(GetParam());
  ASSERT_FALSE(steps.empty());
  Reference const ref = reference(steps);
  ASSERT_GT(ref.allocations, 0u) << "the family allocates nothing: its steps test nothing here";
  auto const started = std::chrono::steady_clock::now();

  std::vector<std::string> problems;
  for (std::size_t n = 1; n <= ref.allocations; ++n) {
    for (alloc::Failing how : {alloc::Failing::kOnce, alloc::Failing::kFromThenOn}) {
      std::string const problem = in_child([&] { return faulted_then_clean(steps, ref, n, how); });
      if (!problem.empty()) {
        problems.push_back("allocation " + std::to_string(n) + " failed " +
                           (how == alloc::Failing::kOnce ? "once" : "from then on") + ": " +
                           problem);
      }
    }
  }

  auto const seconds =
      std::chrono::duration<double>(std::chrono::steady_clock::now() - started).count();
  std::printf("%s: %zu fault points, each failed once and from then on (%.1f s)\n", GetParam(),
              ref.allocations, seconds);
  for (std::size_t i = 0; i < problems.size() && i < 20; ++i) ADD_FAILURE() << problems[i];
  EXPECT_EQ(problems.size(), 0u);
}

INSTANTIATE_TEST_SUITE_P(Families, AllocationFailures,
                         ::testing::ValuesIn(zelstr::test::families()),
                         [](auto const& info) { return std::string(info.param); });

}  // namespace
