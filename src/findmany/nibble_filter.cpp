// nibble_filter.cpp - building the filter's tables, and choosing its scan.
#include "findmany/nibble_filter.h"

#include <algorithm>

#include "frame/processor.h"

namespace zelstr::findmany {

NibbleTables build_nibble_tables(std::vector<std::string const*> const& images, Byte const* table) {
  NibbleTables t;
  if (images.empty()) return t;
  std::size_t shortest = images.front()->size();
  for (std::string const* s : images) shortest = std::min(shortest, s->size());
  std::size_t const width = std::min<std::size_t>(3, shortest);
  // Only the first bytes count: strings that share them are one entry.
  std::vector<std::string> prefixes;
  for (std::string const* s : images) prefixes.push_back(s->substr(0, width));
  std::sort(prefixes.begin(), prefixes.end());
  prefixes.erase(std::unique(prefixes.begin(), prefixes.end()), prefixes.end());
  if (prefixes.size() > kNibbleFilterMostPrefixes) return t;
  t.width = static_cast<int>(width);
  // Neighbours in byte order share their first bytes, and so their nibbles:
  // each bucket takes a run of them.
  std::size_t const per_bucket = (prefixes.size() + 7) / 8;
  for (std::size_t i = 0; i < prefixes.size(); ++i) {
    auto const bucket = static_cast<Byte>(1u << (i / per_bucket));
    for (std::size_t j = 0; j < width; ++j) {
      auto const image = static_cast<Byte>(prefixes[i][j]);
      for (int c = 0; c < 256; ++c) {
        if (table[c] != image) continue;
        t.low[j][c & 15] |= bucket;
        t.high[j][c >> 4] |= bucket;
      }
    }
  }
  return t;
}

namespace {

// The byte shuffle the scan needs has no form in the compiler's generic
// vectors that every compiler takes, so it is written for each instruction
// set that has one (SSSE3, AVX2, Advanced SIMD); other processors, and the
// narrower x86-64 sets, read the tables byte by byte.
NibbleScan choose_scan() {
  switch (frame::kernel_isa()) {
#if ZELSTR_X86_KERNELS
    case frame::Isa::kAvx2:
      return nibble_scan_avx2();
    case frame::Isa::kSsse3:
      return nibble_scan_ssse3();
#endif
#if ZELSTR_NEON_KERNELS
    case frame::Isa::kNeon:
      return nibble_scan_neon();
#endif
    default:
      return nullptr;  // the tables are read byte by byte
  }
}

}  // namespace

NibbleScan nibble_vector_scan() {
  static NibbleScan const scan = choose_scan();
  return scan;
}

}  // namespace zelstr::findmany
