// Character maps beside their unmapped peers, all through the map made from
// "A-Z=a-z" (every letter to upper case: the mapped comparisons ignore case):
//   apply     _zmapstrapply beside a bare table-translate loop over the same
//             zero-terminated bytes (the practical limit), in place
//   search    _zmapstrstr beside _zstristr and glibc strcasestr on the SQL
//             corpus (1 MB): a pattern that does not occur (the scan runs
//             to the end) and one found 1% into the text; argument: the
//             pattern length
//   replace   _zmapstrNreplace beside _zstriNreplace on the corpus at 64 KB,
//             256 KB and 1 MB (its time per byte should not move), a keyword
//             replaced by a longer one; each iteration starts from a fresh
//             copy made outside the timed part
//   sortcmp   _zsortstrcmp through the code page 1252 case- and
//             accent-insensitive order (with and without breaking ties)
//             beside _zmapstricmp through the map, over the corpus's lines
//             each paired with its upper-cased copy (so every comparison
//             walks the whole line); argument: the number of pairs
#include <strings.h>

#include <algorithm>
#include <cstring>
#include <string>
#include <vector>

#include "corpus.h"
#include "ratio_reporter.h"
#include "zelstr/zelstr.h"

namespace {

using benchmark::State;

void* upper_map() {
  static void* const map = _zmapdefine("A-Z=a-z");
  return map;
}

std::string const& sql() { return zelstr::bench::sql_megabyte(); }

// The practical limit of a map application: one table load and one store
// per byte, up to the terminator.
void translate(unsigned char const* table, char* s) {
  for (auto* p = reinterpret_cast<unsigned char*>(s); *p != 0; ++p) *p = table[*p];
}

void register_apply() {
  auto const* const table = static_cast<unsigned char const*>(upper_map());
  for (long n : {16L, 1024L, 1L << 20}) {
    for (int impl = 0; impl < 2; ++impl) {
      std::string const name = std::string("apply:") + (impl == 0 ? "_zmapstrapply" : "bare_loop");
      benchmark::RegisterBenchmark(name.c_str(),
                                   [n, impl, table](State& state) {
                                     std::string text =
                                         sql().substr(0, static_cast<std::size_t>(n));
                                     for (auto _ : state) {
                                       if (impl == 0) {
                                         _zmapstrapply(upper_map(), text.data());
                                       } else {
                                         translate(table, text.data());
                                       }
                                       benchmark::ClobberMemory();
                                     }
                                     state.SetBytesProcessed(state.iterations() * n);
                                   })
          ->Arg(n)
          ->MinTime(0.1);
    }
  }
}

// A real substring of the text, its last byte changed until it no longer
// occurs, whatever the case.
std::string absent_pattern(std::string const& text, std::size_t at, std::size_t m) {
  std::string p = text.substr(at, m);
  for (char c : std::string("qzjQ#~")) {
    p.back() = c;
    if (::strcasestr(text.c_str(), p.c_str()) == nullptr) return p;
  }
  return p + "\x01";
}

std::size_t word_start(std::string const& text, std::size_t from) {
  while (from < text.size() && !std::isalpha(static_cast<unsigned char>(text[from]))) ++from;
  return from;
}

void register_search() {
  std::string const& text = sql();
  for (std::size_t m : {4, 8, 16, 32}) {
    std::string const absent = absent_pattern(text, word_start(text, text.size() / 2), m);
    std::string early = text.substr(word_start(text, text.size() / 100), m);
    std::transform(early.begin(), early.end(), early.begin(), ::toupper);  // found ignoring case
    for (auto const& [label, pattern] :
         {std::pair{"search.absent", absent}, {"search.early", early}}) {
      char const* const kImpls[] = {"_zmapstrstr", "_zstristr", "strcasestr"};
      for (int impl = 0; impl < 3; ++impl) {
        std::string const name = std::string(label) + ":" + kImpls[impl];
        benchmark::RegisterBenchmark(
            name.c_str(),
            [impl, pattern](State& state) {
              char const* const t = sql().c_str();
              char const* const p = pattern.c_str();
              for (auto _ : state) {
                char const* r = impl == 0   ? _zmapstrstr(upper_map(), t, p)
                                : impl == 1 ? _zstristr(t, p)
                                            : ::strcasestr(t, p);
                benchmark::DoNotOptimize(r);
              }
              state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(sql().size()));
            })
            ->Arg(static_cast<long>(m))
            ->MinTime(0.1);
      }
    }
  }
}

void register_replace() {
  for (long n : {64L << 10, 256L << 10, 1L << 20}) {
    for (int impl = 0; impl < 2; ++impl) {
      std::string const name =
          std::string("replace:") + (impl == 0 ? "_zmapstrNreplace" : "_zstriNreplace");
      benchmark::RegisterBenchmark(
          name.c_str(),
          [n, impl](State& state) {
            std::string const text = sql().substr(0, static_cast<std::size_t>(n));
            std::vector<char> buffer(text.size() * 2 + 1);
            unsigned long const size = static_cast<unsigned long>(buffer.size() - 1);
            for (auto _ : state) {
              state.PauseTiming();
              std::memcpy(buffer.data(), text.c_str(), text.size() + 1);
              state.ResumeTiming();
              char* r = impl == 0
                            ? _zmapstrNreplace(upper_map(), buffer.data(), "begin", "BEGIN_", size)
                            : _zstriNreplace(buffer.data(), "begin", "BEGIN_", size);
              benchmark::DoNotOptimize(r);
            }
            state.SetBytesProcessed(state.iterations() * n);
          })
          ->Arg(n)
          ->MinTime(0.1);
    }
  }
}

// The corpus's lines, and each one upper-cased.
std::vector<std::pair<std::string, std::string>> line_pairs(std::size_t count) {
  std::vector<std::pair<std::string, std::string>> pairs;
  std::string const& text = sql();
  for (std::size_t at = 0; at < text.size() && pairs.size() < count;) {
    std::size_t const end = std::min(text.find('\n', at), text.size());
    std::string line = text.substr(at, end - at);
    std::string upper = line;
    std::transform(upper.begin(), upper.end(), upper.begin(), ::toupper);
    pairs.emplace_back(std::move(line), std::move(upper));
    at = end + 1;
  }
  return pairs;
}

void register_sort() {
  static void* const order = _zsortdefine(_zsortreadydef(ZEAL_SORT_CP1252_CI_AI));
  long const n = 4096;
  char const* const kImpls[] = {"_zsortstrcmp", "_zsortstrcmp_ties", "_zmapstricmp"};
  for (int impl = 0; impl < 3; ++impl) {
    std::string const name = std::string("sortcmp:") + kImpls[impl];
    benchmark::RegisterBenchmark(name.c_str(),
                                 [impl](State& state) {
                                   auto const pairs = line_pairs(n);
                                   std::int64_t bytes = 0;
                                   for (auto const& p : pairs) bytes += p.first.size();
                                   for (auto _ : state) {
                                     int sum = 0;
                                     for (auto const& [a, b] : pairs) {
                                       sum += impl == 2 ? _zmapstricmp(upper_map(), a.c_str(),
                                                                       b.c_str())
                                                        : _zsortstrcmp(order, a.c_str(),
                                                                       b.c_str(), impl);
                                     }
                                     benchmark::DoNotOptimize(sum);
                                   }
                                   state.SetBytesProcessed(state.iterations() * bytes);
                                 })
        ->Arg(n)
        ->MinTime(0.2);
  }
}

void register_all() {
  register_apply();
  register_search();
  register_replace();
  register_sort();
}

}  // namespace

int main(int argc, char** argv) {
  return zelstr::bench::run_on_sql_megabyte("bench_map", argc, argv, register_all);
}
