// Each pair-scan kernel the build has (and this processor runs), called
// directly, against a byte-by-byte walk: every occurrence, in order, up to
// where the kernel gave up if it did, and the terminator it reports.
#include <gtest/gtest.h>

#include <cstring>
#include <random>
#include <string>
#include <vector>

#include "frame/processor.h"
#include "str/search/kernels.h"
#include "str/search/plan.h"

namespace {

namespace search = zelstr::str::search;
using zelstr::frame::Isa;

struct Seen {
  std::vector<long> starts;
  char const* text;
};

char const* record(void* context, char const* match) {
  auto* const seen = static_cast<Seen*>(context);
  seen->starts.push_back(match - seen->text);
  return match + 1;  // overlapping occurrences too
}

// Occurrences starting before `stop` and ending by `limit` (offsets).
std::vector<long> walk(std::string const& text, std::string const& pattern, long stop,
                       long limit) {
  std::vector<long> starts;
  long const n = static_cast<long>(std::strlen(text.c_str()));
  long const m = static_cast<long>(pattern.size());
  for (long i = 0; i + m <= n && i < stop && i + m <= limit; ++i) {
    if (text.compare(static_cast<std::size_t>(i), pattern.size(), pattern) == 0) {
      starts.push_back(i);
    }
  }
  return starts;
}

TEST(SearchKernels, EachKernelFindsWhatAByteWalkFinds) {
  int tried = 0;
  for (Isa isa : {Isa::kPortable, Isa::kSse2, Isa::kAvx2}) {
    search::PairScan const kernel = search::pair_scan_for(isa);
    if (kernel == nullptr || isa > zelstr::frame::processor_isa()) continue;
    ++tried;
    std::mt19937 rng(static_cast<unsigned>(isa) * 7919 + 1);
    for (int round = 0; round < 3000; ++round) {
      // A small alphabet, so that the pair's bytes and whole occurrences
      // are common; the text starts at any offset from an alignment.
      std::string const alphabet = round % 3 == 0 ? "ab" : "abcdefgh";
      std::size_t const length = rng() % 400;
      std::string buffer(rng() % 64, 'x');
      std::size_t const at = buffer.size();
      for (std::size_t i = 0; i < length; ++i) buffer += alphabet[rng() % alphabet.size()];
      buffer += '\0';
      buffer += std::string(rng() % 40, 'a');  // bytes past the terminator
      std::string const text = buffer.substr(at);
      std::size_t const m = 2 + rng() % 9;
      std::string pattern;
      if (length >= m && rng() % 2 == 0) {
        pattern = text.substr(rng() % (length - m + 1), m);
      } else {
        for (std::size_t i = 0; i < m; ++i) pattern += alphabet[rng() % alphabet.size()];
      }
      search::SearchState state;
      ASSERT_TRUE(search::prepare(state, pattern.c_str(), static_cast<std::uint32_t>(m)));
      if (!state.plan.vector) continue;
      char const* const t = buffer.c_str() + at;
      long const limit = round % 4 == 0 ? static_cast<long>(rng() % (length + 1)) : 1L << 30;
      std::uintptr_t const limit_address = limit == 1L << 30
                                               ? search::kNoLimit
                                               : reinterpret_cast<std::uintptr_t>(t) + limit;
      Seen seen{{}, t};
      search::Found const found =
          kernel(t, pattern.c_str(), state.plan, search::Visitor{record, &seen}, limit_address);
      long const stop = found.resume != nullptr ? found.resume - t : 1L << 30;
      SCOPED_TRACE("kernel " + std::to_string(static_cast<int>(isa)) + ", text '" + text.c_str() +
                   "', pattern '" + pattern + "', limit " + std::to_string(limit));
      ASSERT_EQ(seen.starts, walk(text, pattern, stop, limit));
      ASSERT_EQ(found.match, nullptr);  // the visitor never stopped it
      if (found.end != nullptr) {
        EXPECT_EQ(found.end, t + length);
        EXPECT_LT(static_cast<long>(length), limit);
      } else {
        // Without a limit, a scan that did not give up ends at the terminator.
        EXPECT_TRUE(limit_address != search::kNoLimit || found.resume != nullptr);
      }
    }
  }
  EXPECT_GE(tried, 1);
}

}  // namespace
