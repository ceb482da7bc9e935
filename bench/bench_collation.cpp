// ZealStrHelper's compare beside ICU called directly, over pairs of names
// and of whole lines taken from the SQL corpus (1 MB), the root collation
// at tertiary strength:
//   compare   ZealStrHelper::compare on the code page 1252 text, beside
//             ucol_strcoll on the same text already in UTF-16 (converted
//             outside the timed part: ICU's own cost, nothing more);
//             argument: 16 for names (identifiers, 2 to 30 bytes or so),
//             256 for lines (up to 255 bytes); and beside what a caller
//             holding code page 1252 text does with ICU alone: both strings
//             converted by ICU's converter (ucnv_toUChars, into buffers on
//             the stack), then ucol_strcoll
// Each iteration compares 1024 pairs of neighbours in byte order, so that
// many share a head, as in a sorted list.
#include <unicode/ucnv.h>
#include <unicode/ucol.h>

#include <algorithm>
#include <cctype>
#include <random>
#include <string>
#include <vector>

#include "corpus.h"
#include "ratio_reporter.h"
#include "zelstr/strhelper.h"

namespace {

using benchmark::State;

constexpr std::size_t kPairs = 1024;

std::u16string utf16(UConverter* converter, std::string const& s) {
  std::u16string out(s.size() + 1, u'\0');
  UErrorCode status = U_ZERO_ERROR;
  int32_t const n = ucnv_toUChars(converter, out.data(), static_cast<int32_t>(out.size()), s.data(),
                                  static_cast<int32_t>(s.size()), &status);
  out.resize(static_cast<std::size_t>(n));
  return out;
}

struct Pairs {
  std::vector<std::string> first, second;
  std::vector<std::u16string> first16, second16;
};

// Identifiers (kind 16) or lines (kind 256) of the corpus, sorted by bytes;
// kPairs neighbours picked at random.
Pairs make_pairs(long kind) {
  std::string const& text = zelstr::bench::sql_megabyte();
  std::vector<std::string> found;
  std::string current;
  for (char c : text) {
    bool const keep = kind == 16 ? (std::isalnum(static_cast<unsigned char>(c)) != 0 || c == '_')
                                 : (c != '\n' && c != '\r');
    if (keep && current.size() < 255) {
      current += c;
    } else {
      if (current.size() >= 2) found.push_back(current);
      current.clear();
    }
  }
  std::sort(found.begin(), found.end());
  found.erase(std::unique(found.begin(), found.end()), found.end());
  UErrorCode status = U_ZERO_ERROR;
  UConverter* const converter = ucnv_open("windows-1252", &status);
  Pairs pairs;
  std::mt19937 rng(1);
  for (std::size_t i = 0; i < kPairs && found.size() > 1; ++i) {
    std::size_t const at = rng() % (found.size() - 1);
    pairs.first.push_back(found[at]);
    pairs.second.push_back(found[at + 1]);
    pairs.first16.push_back(utf16(converter, found[at]));
    pairs.second16.push_back(utf16(converter, found[at + 1]));
  }
  ucnv_close(converter);
  return pairs;
}

Pairs const& pairs(long kind) {
  static Pairs const names = make_pairs(16);
  static Pairs const lines = make_pairs(256);
  return kind == 16 ? names : lines;
}

// ICU's root collation at tertiary strength, as the helper is opened here.
UCollator* root_tertiary() {
  UErrorCode status = U_ZERO_ERROR;
  UCollator* const collator = ucol_open("", &status);
  ucol_setStrength(collator, UCOL_TERTIARY);
  return collator;
}

void register_compare() {
  for (long kind : {16L, 256L}) {
    benchmark::RegisterBenchmark(
        "compare:ZealStrHelper",
        [kind](State& state) {
          Pairs const& p = pairs(kind);
          ZealStrHelper const helper("", ZealStrHelper::tertiary);
          for (auto _ : state) {
            int sum = 0;
            for (std::size_t i = 0; i < p.first.size(); ++i) {
              sum += helper.compare(p.first[i].c_str(), p.second[i].c_str());
            }
            benchmark::DoNotOptimize(sum);
          }
          state.SetItemsProcessed(state.iterations() * static_cast<long>(p.first.size()));
        })
        ->Arg(kind)
        ->MinTime(0.2);
    benchmark::RegisterBenchmark(
        "compare:ucol_strcoll",
        [kind](State& state) {
          Pairs const& p = pairs(kind);
          UCollator* const collator = root_tertiary();
          for (auto _ : state) {
            int sum = 0;
            for (std::size_t i = 0; i < p.first16.size(); ++i) {
              std::u16string const& a = p.first16[i];
              std::u16string const& b = p.second16[i];
              sum += ucol_strcoll(collator, a.data(), static_cast<int32_t>(a.size()), b.data(),
                                  static_cast<int32_t>(b.size()));
            }
            benchmark::DoNotOptimize(sum);
          }
          state.SetItemsProcessed(state.iterations() * static_cast<long>(p.first16.size()));
          ucol_close(collator);
        })
        ->Arg(kind)
        ->MinTime(0.2);
    benchmark::RegisterBenchmark(
        "compare:ucnv+ucol_strcoll",
        [kind](State& state) {
          Pairs const& p = pairs(kind);
          UCollator* const collator = root_tertiary();
          UErrorCode status = U_ZERO_ERROR;
          UConverter* const converter = ucnv_open("windows-1252", &status);
          UChar a[512], b[512];
          for (auto _ : state) {
            int sum = 0;
            for (std::size_t i = 0; i < p.first.size(); ++i) {
              int32_t const na = ucnv_toUChars(converter, a, 512, p.first[i].c_str(), -1, &status);
              int32_t const nb = ucnv_toUChars(converter, b, 512, p.second[i].c_str(), -1, &status);
              sum += ucol_strcoll(collator, a, na, b, nb);
            }
            benchmark::DoNotOptimize(sum);
          }
          state.SetItemsProcessed(state.iterations() * static_cast<long>(p.first.size()));
          ucnv_close(converter);
          ucol_close(collator);
        })
        ->Arg(kind)
        ->MinTime(0.2);
  }
}

}  // namespace

int main(int argc, char** argv) {
  return zelstr::bench::run_on_sql_megabyte("bench_collation", argc, argv, register_compare);
}
