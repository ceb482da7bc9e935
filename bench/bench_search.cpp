// The forward searches beside their peers: glibc strstr / strcasestr,
// memmem, std::boyer_moore_horspool_searcher and a textbook bad-character
// Boyer-Moore.
//
// Texts: (a) the SQL scripts of the shared corpus, joined; (b) 1 MB of
// English-like words; (c) adversarial texts (a run of one byte; a period of
// 31 'a' and one 'b' against 32 'a'; random a/b text).  Each operation is
// named TEXT.CASE and its argument is the pattern length.
//   absent  a pattern that does not occur (a real substring with its last
//           byte changed): the scan runs to the end of the text
//   early   a real substring from 1% into the text: an early find
// Last, _zstrspnex over "[a-z]" beside strspn over the 26 letters, on runs
// of 16 B, 1 KB and 64 KB.
// Every call is timed whole, preparation included: the std searcher is
// built and the textbook table filled inside the loop.  memmem and the std
// searcher are given the text's length, measured outside the
// loop; _zstrstr, strstr, strcasestr and the textbook Boyer-Moore (which,
// like them, takes a zero-terminated text) measure the text themselves.
#include <strings.h>

#include <algorithm>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <functional>
#include <random>
#include <sstream>
#include <string>
#include <vector>

#include "corpus.h"
#include "ratio_reporter.h"
#include "zelstr/zelstr.h"

namespace {

using benchmark::State;

std::string english_text() {
  static char const* const kWords[] = {
      "the",   "of",       "and",   "to",      "in",     "a",       "is",      "that",
      "for",   "it",       "as",    "was",     "with",   "be",      "by",      "on",
      "not",   "he",       "this",  "are",     "or",     "his",     "from",    "at",
      "which", "but",      "have",  "an",      "had",    "they",    "you",     "were",
      "their", "one",      "all",   "we",      "can",    "her",     "has",     "there",
      "been",  "if",       "more",  "when",    "will",   "would",   "who",     "so",
      "no",    "customer", "order", "between", "during", "without", "thought", "people"};
  std::mt19937 rng(2026);
  std::string s;
  while (s.size() < (1u << 20)) {
    s += kWords[std::min<std::size_t>(rng() % 56, rng() % 56)];
    s += rng() % 12 == 0 ? ". " : " ";
  }
  s.resize(1u << 20);
  return s;
}

// A real substring of `text` at `at`, its last byte changed until the
// pattern no longer occurs.
std::string absent_pattern(std::string const& text, std::size_t at, std::size_t m) {
  std::string p = text.substr(at, m);
  for (char c : std::string("qzXQ#~")) {
    p.back() = c;
    if (text.find(p) == std::string::npos) return p;
  }
  return p + "\x01";
}

// A word-aligned start in the text (an identifier or keyword, not a gap).
std::size_t word_start(std::string const& text, std::size_t from) {
  while (from < text.size() && !std::isalpha(static_cast<unsigned char>(text[from]))) ++from;
  return from;
}

// The textbook search of a zero-terminated text: measure it, fill the
// bad-character table, then walk.
char const* textbook_boyer_moore(char const* t, std::size_t, char const* p, std::size_t m) {
  std::size_t const n = std::strlen(t);
  std::size_t skip[256];
  for (auto& s : skip) s = m;
  for (std::size_t i = 0; i + 1 < m; ++i) skip[static_cast<unsigned char>(p[i])] = m - 1 - i;
  for (std::size_t i = 0; i + m <= n; i += skip[static_cast<unsigned char>(t[i + m - 1])]) {
    if (std::memcmp(t + i, p, m) == 0) return t + i;
  }
  return nullptr;
}

struct Case {
  std::string name;
  std::string const* text;
  std::string pattern;
};

void add_case_sensitive(Case const& c) {
  std::size_t const m = c.pattern.size();
  auto add = [&c, m](
                 char const* impl,
                 std::function<char const*(char const*, std::size_t, char const*, std::size_t)> f) {
    std::string const name = c.name + ":" + impl;
    benchmark::RegisterBenchmark(
        name.c_str(),
        [c, f](State& state) {
          char const* const t = c.text->c_str();
          std::size_t const n = c.text->size();
          for (auto _ : state) {
            benchmark::DoNotOptimize(f(t, n, c.pattern.c_str(), c.pattern.size()));
          }
          state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(n));
        })
        ->Arg(static_cast<long>(m))
        ->MinTime(0.1);
  };
  add("_zstrstr",
      [](char const* t, std::size_t, char const* p, std::size_t) { return _zstrstr(t, p); });
  add("strstr",
      [](char const* t, std::size_t, char const* p, std::size_t) { return std::strstr(t, p); });
  add("memmem", [](char const* t, std::size_t n, char const* p, std::size_t m) {
    return static_cast<char const*>(::memmem(t, n, p, m));
  });
  add("std::bmh_searcher", [](char const* t, std::size_t n, char const* p, std::size_t m) {
    auto const r = std::search(t, t + n, std::boyer_moore_horspool_searcher(p, p + m));
    return r == t + n ? nullptr : r;
  });
  add("textbook_bm", textbook_boyer_moore);
}

void add_case_insensitive(Case const& c) {
  for (int impl = 0; impl < 2; ++impl) {
    std::string const name = c.name + ".i:" + (impl == 0 ? "_zstristr" : "strcasestr");
    benchmark::RegisterBenchmark(
        name.c_str(),
        [c, impl](State& state) {
          char const* const t = c.text->c_str();
          for (auto _ : state) {
            benchmark::DoNotOptimize(impl == 0 ? _zstristr(t, c.pattern.c_str())
                                               : ::strcasestr(t, c.pattern.c_str()));
          }
          state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(c.text->size()));
        })
        ->Arg(static_cast<long>(c.pattern.size()))
        ->MinTime(0.1);
  }
}

std::string const& sql() {
  static std::string const text = zelstr::bench::sql_corpus();
  return text;
}
std::string const& english() {
  static std::string const text = english_text();
  return text;
}
std::string const& one_byte_run() {
  static std::string const text(1u << 20, 'a');
  return text;
}
std::string const& periodic() {
  static std::string const text = [] {
    std::string s;
    while (s.size() < (1u << 20)) s += std::string(31, 'a') + 'b';
    return s;
  }();
  return text;
}
std::string const& binary() {
  static std::string const text = [] {
    std::mt19937 rng(9);
    std::string s(1u << 20, 'a');
    for (char& c : s) c = rng() % 2 ? 'a' : 'b';
    return s;
  }();
  return text;
}

void register_all() {
  std::size_t const lengths[] = {2, 4, 8, 16, 32};
  for (std::string const* text : {&sql(), &english()}) {
    std::string const label = text == &sql() ? "sql" : "english";
    for (std::size_t m : lengths) {
      std::size_t const middle = word_start(*text, text->size() / 2);
      std::size_t const early = word_start(*text, text->size() / 100);
      Case const absent{label + ".absent", text, absent_pattern(*text, middle, m)};
      Case const found{label + ".early", text, text->substr(early, m)};
      add_case_sensitive(absent);
      add_case_insensitive(absent);
      add_case_sensitive(found);
    }
  }
  std::mt19937 rng(4);
  for (std::size_t m : {4, 8, 16, 32}) {
    add_case_sensitive({"run.absent", &one_byte_run(), std::string(m - 1, 'a') + 'b'});
    std::string random_ab(m, 'a');
    for (char& c : random_ab) c = rng() % 2 ? 'a' : 'b';
    add_case_sensitive({"binary.absent", &binary(), absent_pattern(binary(), 1000, m)});
  }
  add_case_sensitive({"periodic.absent", &periodic(), std::string(32, 'a')});

  // A span over a set definition (its compiled table cached) beside strspn
  // with the same set written out.
  for (long n : {16L, 1024L, 65536L}) {
    auto span = [n](State& state, bool library) {
      std::string text(static_cast<std::size_t>(n), ' ');
      for (std::size_t i = 0; i < text.size(); ++i) text[i] = static_cast<char>('a' + i % 26);
      text += '!';
      for (auto _ : state) {
        benchmark::DoNotOptimize(library ? _zstrspnex(text.c_str(), "[a-z]")
                                         : std::strspn(text.c_str(), "abcdefghijklmnopqrstuvwxyz"));
      }
      state.SetBytesProcessed(state.iterations() * n);
    };
    benchmark::RegisterBenchmark("span:_zstrspnex", [span](State& st) { span(st, true); })
        ->Arg(n)
        ->MinTime(0.1);
    benchmark::RegisterBenchmark("span:strspn", [span](State& st) { span(st, false); })
        ->Arg(n)
        ->MinTime(0.1);
  }
}

}  // namespace

int main(int argc, char** argv) {
  if (sql().size() < 1000) {
    std::fprintf(stderr, "bench_search: the SQL corpus was not found under %s\n",
                 zelstr::bench::corpus_dir());
    return 1;
  }
  return zelstr::bench::run_with_ratios(argc, argv, register_all);
}
