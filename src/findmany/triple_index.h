// triple_index.h - the trie's nodes at depth three, found by the first
// three images of a place.
//
// A search that has already looked at a place's first three bytes (to
// filter it) starts its walk of the trie three levels down: one probe of
// an open-addressed table instead of three child look-ups, which near the
// root of a large trie are bisections among dozens of children.
#ifndef ZELSTR_FINDMANY_TRIPLE_INDEX_H
#define ZELSTR_FINDMANY_TRIPLE_INDEX_H

#include <cstddef>
#include <cstdint>
#include <vector>

namespace zelstr::findmany {

class TripleIndex {
 public:
  // The three bytes as one number: first << 16 | second << 8 | third.
  static std::uint32_t key(unsigned first, unsigned second, unsigned third) {
    return first << 16 | second << 8 | third;
  }

  // Records the node of each triple (distinct triples; throws
  // std::bad_alloc).
  void build(std::vector<std::pair<std::uint32_t, int>> const& nodes) {
    std::size_t size = 16;
    while (size < 2 * nodes.size()) size *= 2;
    m_mask = size - 1;
    m_slots.assign(size, Slot{kEmpty, -1});
    for (auto const& [triple, node] : nodes) {
      std::size_t i = slot_of(triple);
      while (m_slots[i].triple != kEmpty) i = (i + 1) & m_mask;
      m_slots[i] = Slot{triple, node};
    }
  }

  // The node of `triple`, or -1 (only after build).
  int find(std::uint32_t triple) const {
    for (std::size_t i = slot_of(triple);; i = (i + 1) & m_mask) {
      Slot const& s = m_slots[i];
      if (s.triple == triple) return s.node;
      if (s.triple == kEmpty) return -1;
    }
  }

 private:
  static constexpr std::uint32_t kEmpty = 0xFFFFFFFFu;  // no triple has the top byte set
  struct Slot {
    std::uint32_t triple;
    int node;
  };

  std::size_t slot_of(std::uint32_t triple) const {
    return static_cast<std::size_t>((triple * 0x9E3779B1u) >> 8) & m_mask;
  }

  std::vector<Slot> m_slots;  // empty until built: making the searcher allocates nothing
  std::size_t m_mask = 0;
};

}  // namespace zelstr::findmany

#endif  // ZELSTR_FINDMANY_TRIPLE_INDEX_H
