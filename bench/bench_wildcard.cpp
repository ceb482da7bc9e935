// MATCH and LIKE over every line of the SQL corpus, beside SQLite's
// sqlite3_strglob and sqlite3_strlike and the C library's fnmatch, each
// counting the lines that match one typical pattern:
//   like.PATTERN    _zstrilike beside sqlite3_strlike (which ignores ASCII
//                   case as _zstrilike does); where SQLite's LIKE has no
//                   sets, the pattern given to it says the same with an
//                   escape ("usp!_%") or the comparison is with GLOB (which
//                   counts no line whose digit is followed by blanks)
//   match.PATTERN   _zstrmatch beside sqlite3_strglob and fnmatch
//   contains        _zstrlike with "%lit%" beside _zstrstr finding "lit"
// The set-up checks that every implementation counts the same lines and
// refuses to run otherwise.  Argument: the corpus's bytes.
#include <fnmatch.h>
#include <sqlite3.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <string>
#include <vector>

#include "corpus.h"
#include "ratio_reporter.h"
#include "zelstr/zelstr.h"

namespace {

using benchmark::State;

// Every line of the corpus, zero-terminated in one buffer.
struct Lines {
  std::string buffer;
  std::vector<char const*> lines;

  Lines() : buffer(zelstr::bench::sql_corpus()) {
    std::size_t start = 0;
    std::vector<std::size_t> starts;
    for (std::size_t i = 0; i < buffer.size(); ++i) {
      if (buffer[i] != '\n') continue;
      buffer[i] = '\0';
      starts.push_back(start);
      start = i + 1;
    }
    for (std::size_t s : starts) lines.push_back(buffer.data() + s);
  }
};

Lines const& corpus_lines() {
  static Lines const lines;
  return lines;
}

using Test = std::function<bool(char const*)>;

long count(Test const& test) {
  long n = 0;
  for (char const* line : corpus_lines().lines) n += test(line) ? 1 : 0;
  return n;
}

void register_test(std::string const& name, Test test) {
  benchmark::RegisterBenchmark(name.c_str(),
                               [test](State& state) {
                                 long n = 0;
                                 for (auto _ : state) benchmark::DoNotOptimize(n = count(test));
                                 state.counters["lines"] = static_cast<double>(n);
                                 state.SetBytesProcessed(
                                     state.iterations() *
                                     static_cast<long>(corpus_lines().buffer.size()));
                               })
      ->Arg(static_cast<long>(corpus_lines().buffer.size()))
      ->MinTime(0.2);
}

// Registers `tests` (the library's first) as one operation, after checking
// that they all count the same lines (but `blank_tails` more for the
// library, the lines LIKE takes without their trailing blanks).
void register_group(std::string const& operation,
                    std::vector<std::pair<char const*, Test>> const& tests, long blank_tails = 0) {
  long const expected = count(tests.front().second);
  for (auto const& [name, test] : tests) {
    long const got = count(test) + (name == tests.front().first ? 0 : blank_tails);
    if (got != expected) {
      std::fprintf(stderr, "bench_wildcard: %s: %s counts %ld lines, %s %ld\n", operation.c_str(),
                   name, got, tests.front().first, expected);
      std::exit(1);
    }
  }
  for (auto const& [name, test] : tests) register_test(operation + ":" + name, test);
}

Test library_like(char const* pattern, char escape = 0) {
  return [=](char const* s) { return _zstrilike(s, pattern, escape) == 1; };
}
Test sqlite_like(char const* pattern, char escape = 0) {
  return [=](char const* s) {
    return sqlite3_strlike(pattern, s, static_cast<unsigned char>(escape)) == 0;
  };
}
Test library_match(char const* pattern) {
  return [=](char const* s) { return _zstrmatch(s, pattern) == 1; };
}
Test sqlite_glob(char const* pattern) {
  return [=](char const* s) { return sqlite3_strglob(pattern, s) == 0; };
}
Test c_fnmatch(char const* pattern) {
  return [=](char const* s) { return fnmatch(pattern, s, 0) == 0; };
}

void register_all() {
  // LIKE, ignoring case as SQLite's LIKE does.
  register_group("like.%lit%", {{"_zstrilike", library_like("%customer%")},
                                {"sqlite3_strlike", sqlite_like("%customer%")}});
  register_group("like.lit%", {{"_zstrilike", library_like("select%")},
                               {"sqlite3_strlike", sqlite_like("select%")}});
  register_group("like.usp[_]%", {{"_zstrilike", library_like("usp[_]%")},
                                  {"sqlite3_strlike", sqlite_like("usp!_%", '!')}});
  register_group("like.%[0-9]",
                 {{"_zstrilike", library_like("%[0-9]")},
                  {"sqlite3_strglob", sqlite_glob("*[0-9]")}},
                 count([](char const* s) {  // a digit, then blanks only
                   std::size_t n = std::strlen(s);
                   std::size_t const all = n;
                   while (n > 0 && s[n - 1] == ' ') --n;
                   return n < all && n > 0 && s[n - 1] >= '0' && s[n - 1] <= '9';
                 }));
  register_group("like._a%b%", {{"_zstrilike", library_like("_a%b%")},
                                {"sqlite3_strlike", sqlite_like("_a%b%")}});
  register_group("like.lit", {{"_zstrilike", library_like("end;")},
                              {"sqlite3_strlike", sqlite_like("end;")}});
  // MATCH, case kept.
  for (char const* pattern : {"*customer*", "SELECT*", "usp_*", "*[0-9]", "?a*b*", "END;"}) {
    register_group(std::string("match.") + pattern,
                   {{"_zstrmatch", library_match(pattern)},
                    {"sqlite3_strglob", sqlite_glob(pattern)},
                    {"fnmatch", c_fnmatch(pattern)}});
  }
  register_group("contains", {{"_zstrlike", [](char const* s) {
                                 return _zstrlike(s, "%customer%") == 1;
                               }},
                              {"_zstrstr", [](char const* s) {
                                 return _zstrstr(s, "customer") != nullptr;
                               }}});
}

}  // namespace

int main(int argc, char** argv) {
  if (corpus_lines().lines.empty()) {
    std::fprintf(stderr, "bench_wildcard: the corpus was not found under %s\n",
                 zelstr::bench::corpus_dir());
    return 1;
  }
  return zelstr::bench::run_with_ratios(argc, argv, register_all);
}
