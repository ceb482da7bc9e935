// lead_scan.h - finding the next byte that can begin a segment of a
// wildcard pattern, sixteen bytes at a time.
//
// A segment between stars is looked for at every place of the subject; the
// places worth testing are those holding a byte whose image is the
// segment's first literal (at most four bytes have it: the byte and its
// other case, or the sources of a map).  The subject is zero-terminated
// with no length known, so it is read in aligned blocks of sixteen bytes
// with the compiler's generic vectors: an aligned block never crosses a
// page, so reading past the terminator inside the block is safe.  Those
// reads are deliberate and the address sanitizer does not watch them.
#ifndef ZELSTR_REGEX_WILDCARD_LEAD_SCAN_H
#define ZELSTR_REGEX_WILDCARD_LEAD_SCAN_H

#include <cstdint>
#include <cstring>

namespace zelstr::regex::wildcard {

typedef unsigned char LeadBlock __attribute__((vector_size(16)));

// Up to four bytes (never the terminator) that can begin a segment, each
// repeated over a vector.
struct Leads {
  LeadBlock want[4] = {};
  int count = 0;  // 0: no byte is singled out, every place is tested

  void add(unsigned char c) {
    // Unused slots repeat the last lead, so they add no false hits.
    for (int i = count; i < 4; ++i) want[i] = LeadBlock{} + c;
    ++count;
  }
};

// The lanes of `v` that hold a lead or the terminator, as two halves whose
// stop lanes are all ones, in memory order (every target this library
// builds for is little-endian).
inline void stop_lanes(LeadBlock v, Leads const& leads, std::uint64_t (&halves)[2]) {
  auto const stop = (v == leads.want[0]) | (v == leads.want[1]) | (v == leads.want[2]) |
                    (v == leads.want[3]) | (v == LeadBlock{});
  std::memcpy(halves, &stop, sizeof halves);
}

// The first byte at or after `p` that is one of `leads` (count 1 to 4), or
// NULL when the terminator comes first.  The first block is the aligned
// one that holds `p`; its lanes before `p` are dropped.
__attribute__((no_sanitize_address)) inline unsigned char const* find_lead(unsigned char const* p,
                                                                           Leads const& leads) {
  auto const offset = static_cast<unsigned>(reinterpret_cast<std::uintptr_t>(p) % 16);
  // Read through a type that may alias the bytes: a plain aligned load,
  // which the sanitizer leaves alone in this function.
  typedef unsigned char AlignedBlock __attribute__((vector_size(16), may_alias, aligned(16)));
  auto const* block = reinterpret_cast<AlignedBlock const*>(p - offset);
  std::uint64_t halves[2];
  stop_lanes(*block, leads, halves);
  if (offset < 8) {
    halves[0] &= ~std::uint64_t{0} << (8 * offset);
  } else {
    halves[0] = 0;
    halves[1] &= ~std::uint64_t{0} << (8 * (offset - 8));
  }
  while ((halves[0] | halves[1]) == 0) stop_lanes(*++block, leads, halves);
  unsigned const lane =
      halves[0] != 0 ? __builtin_ctzll(halves[0]) / 8 : 8 + __builtin_ctzll(halves[1]) / 8;
  auto const* const at = reinterpret_cast<unsigned char const*>(block) + lane;
  return *at == 0 ? nullptr : at;
}

}  // namespace zelstr::regex::wildcard

#endif  // ZELSTR_REGEX_WILDCARD_LEAD_SCAN_H
