// Searching the corpus (repeated to 16 MB) for many identifiers at once:
//   many.N   N identifiers taken from the corpus and N absent ones (N = 8,
//            64, 1000, 10000): CFindManyStrHoary, CFindManyStrOld, Hyperscan
//            (literal mode, every string's matches reported to a callback
//            that counts them), and for 8 and 64 a loop of one memmem per
//            string over the text
// The library's classes report non-overlapping leftmost-longest
// occurrences, Hyperscan every match and the memmem loop every occurrence
// of each string: the work differs slightly, the scanning is the same.
// The set-up checks that the two classes agree.  Argument: the text's
// bytes.
#include <hs/hs.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <random>
#include <set>
#include <string>
#include <vector>

#include "corpus.h"
#include "ratio_reporter.h"
#include "zelstr/zelstr.h"

namespace {

using benchmark::State;

std::string const& text() {
  static std::string const t = [] {
    std::string const corpus = zelstr::bench::sql_corpus();
    std::string out;
    while (!corpus.empty() && out.size() < (16u << 20)) out += corpus;
    return out;
  }();
  return t;
}

std::vector<std::string> identifiers(std::size_t n) {
  std::set<std::string> seen;
  std::string const& t = text();
  for (std::size_t i = 0; i < t.size() && seen.size() < 200000;) {
    auto word = [](char c) { return std::isalnum(static_cast<unsigned char>(c)) || c == '_'; };
    if (!word(t[i]) || std::isdigit(static_cast<unsigned char>(t[i]))) {
      ++i;
      continue;
    }
    std::size_t j = i;
    while (j < t.size() && word(t[j])) ++j;
    if (j - i >= 3) seen.insert(t.substr(i, j - i));
    i = j;
  }
  std::vector<std::string> all(seen.begin(), seen.end());
  std::mt19937 rng(2026);
  std::shuffle(all.begin(), all.end(), rng);
  all.resize(std::min(n, all.size()));
  std::size_t const present = all.size();
  for (std::size_t i = 0; i < present; ++i) all.push_back(all[i] + "_zq9");  // absent
  return all;
}

template <class Search>
long count_all(Search& search) {
  long n = 0;
  int index = -1;
  std::string const& t = text();
  for (char const* at = search.Find(t.c_str(), &index, static_cast<long>(t.size())); at;
       at = search.FindNext(&index)) {
    ++n;
  }
  return n;
}

template <class Search>
void register_class(std::string const& name, std::vector<std::string> const& words) {
  benchmark::RegisterBenchmark(name.c_str(), [words](State& state) {
    std::vector<char const*> list;
    for (std::string const& w : words) list.push_back(w.c_str());
    list.push_back(nullptr);
    Search search(list.data(), 0);
    long n = 0;
    for (auto _ : state) benchmark::DoNotOptimize(n = count_all(search));
    state.counters["found"] = static_cast<double>(n);
    state.SetBytesProcessed(state.iterations() * static_cast<long>(text().size()));
  })->Arg(static_cast<long>(text().size()))->MinTime(0.5);
}

void register_hyperscan(std::string const& name, std::vector<std::string> const& words) {
  benchmark::RegisterBenchmark(name.c_str(), [words](State& state) {
    std::vector<char const*> list;
    std::vector<unsigned> flags(words.size(), 0);
    std::vector<unsigned> ids;
    std::vector<std::size_t> lengths;
    for (std::size_t i = 0; i < words.size(); ++i) {
      list.push_back(words[i].c_str());
      ids.push_back(static_cast<unsigned>(i));
      lengths.push_back(words[i].size());
    }
    hs_database_t* db = nullptr;
    hs_compile_error_t* error = nullptr;
    if (hs_compile_lit_multi(list.data(), flags.data(), ids.data(), lengths.data(),
                             static_cast<unsigned>(list.size()), HS_MODE_BLOCK, nullptr, &db,
                             &error) != HS_SUCCESS) {
      state.SkipWithError("hyperscan did not compile the strings");
      return;
    }
    hs_scratch_t* scratch = nullptr;
    hs_alloc_scratch(db, &scratch);
    long n = 0;
    auto const on_match = [](unsigned, unsigned long long, unsigned long long, unsigned,
                             void* context) -> int {
      ++*static_cast<long*>(context);
      return 0;
    };
    std::string const& t = text();
    for (auto _ : state) {
      n = 0;
      hs_scan(db, t.data(), static_cast<unsigned>(t.size()), 0, scratch, on_match, &n);
      benchmark::DoNotOptimize(n);
    }
    state.counters["found"] = static_cast<double>(n);
    state.SetBytesProcessed(state.iterations() * static_cast<long>(t.size()));
    hs_free_scratch(scratch);
    hs_free_database(db);
  })->Arg(static_cast<long>(text().size()))->MinTime(0.5);
}

void register_memmem(std::string const& name, std::vector<std::string> const& words) {
  benchmark::RegisterBenchmark(name.c_str(), [words](State& state) {
    std::string const& t = text();
    long n = 0;
    for (auto _ : state) {
      n = 0;
      for (std::string const& w : words) {
        for (char const* p = t.data(); p != nullptr;) {
          auto const* const at = static_cast<char const*>(
              memmem(p, static_cast<std::size_t>(t.data() + t.size() - p), w.data(), w.size()));
          if (at == nullptr) break;
          ++n;
          p = at + 1;
        }
      }
      benchmark::DoNotOptimize(n);
    }
    state.counters["found"] = static_cast<double>(n);
    state.SetBytesProcessed(state.iterations() * static_cast<long>(t.size()));
  })->Arg(static_cast<long>(text().size()))->MinTime(0.5);
}

void register_all() {
  for (std::size_t n : {8u, 64u, 1000u, 10000u}) {
    std::vector<std::string> const words = identifiers(n);
    std::vector<char const*> list;
    for (std::string const& w : words) list.push_back(w.c_str());
    list.push_back(nullptr);
    CFindManyStrHoary hoary(list.data(), 0);
    CFindManyStrOld old(list.data(), 0);
    if (count_all(hoary) != count_all(old)) {
      std::fprintf(stderr, "bench_findmany: the two classes disagree for %zu strings\n", n);
      std::exit(1);
    }
    std::string const op = "many." + std::to_string(n);
    register_class<CFindManyStrHoary>(op + ":CFindManyStrHoary", words);
    register_class<CFindManyStrOld>(op + ":CFindManyStrOld", words);
    register_hyperscan(op + ":hyperscan", words);
    if (n <= 64) register_memmem(op + ":memmem_loop", words);
  }
}

}  // namespace

int main(int argc, char** argv) {
  if (text().empty()) {
    std::fprintf(stderr, "bench_findmany: the corpus was not found under %s\n",
                 zelstr::bench::corpus_dir());
    return 1;
  }
  return zelstr::bench::run_with_ratios(argc, argv, register_all);
}
