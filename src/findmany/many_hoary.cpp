// many_hoary.cpp - CFindManyStrHoary: a filter of first byte pairs and a
// trie of the strings.
//
// Most places of a text begin no string.  With a few dozen strings, a
// vector filter of their first bytes' nibbles (nibble_filter.h) skips
// sixteen or thirty-two places at a time.  Then, or with more strings
// directly, a byte per image says whether a one-byte string is that image,
// a bit per pair of images (64 K bits) whether some string begins with
// that pair (or is it), and a hashed bit per triple of images (256 K bits)
// whether a longer string begins with it: a place is skipped after a few
// table look-ups, whatever the number of strings.  At a place that passes, the
// trie is walked along the text and every string that ends on the way is
// handed over, shortest first.
//
// The trie is built from the images in sorted order, so each node's
// children arrive in byte order and are searched by bisection; the root's
// children sit in a table of 256.
#include <algorithm>
#include <numeric>

#include "findmany/nibble_filter.h"
#include "findmany/searcher.h"
#include "zelstr/findmany.h"

namespace zelstr::findmany {
namespace {

class HoarySearcher final : public Searcher {
 public:
  HoarySearcher() : Searcher(frame::Unit::findmanystrhoary, "CFindManyStrHoary") {}

 private:
  // While building: each node's children in byte order.
  struct Node {
    std::vector<std::pair<Byte, int>> children;  // by byte
    int string = -1;                             // the string ending here, lowest index
  };

  bool build(StringList const& list) override {
    m_table = list.table;
    std::vector<int> order(list.images.size());
    std::iota(order.begin(), order.end(), 0);
    std::stable_sort(order.begin(), order.end(),
                     [&](int a, int b) { return list.images[a] < list.images[b]; });
    std::vector<Node> nodes(1);
    std::fill(std::begin(m_root), std::end(m_root), -1);
    for (int index : order) {
      std::string const& s = list.images[static_cast<std::size_t>(index)];
      if (s.empty()) continue;
      note_start(s);
      int node = 0;
      for (char c : s) node = child_or_new(nodes, node, static_cast<Byte>(c));
      if (nodes[static_cast<std::size_t>(node)].string < 0) {
        nodes[static_cast<std::size_t>(node)].string = index;
      }
    }
    for (auto const& [byte, child] : nodes[0].children) m_root[byte] = child;
    flatten(nodes);
    std::vector<std::string const*> images;
    for (std::string const& s : list.images) {
      if (!s.empty()) images.push_back(&s);
    }
    m_filter = build_nibble_tables(images, m_table);
    return true;
  }

  // The walk reads the trie from three arrays: per node its string and the
  // range of its edges, and the edges' bytes (and children) side by side,
  // so that a node's bytes are a few adjacent bytes in memory.
  void flatten(std::vector<Node> const& nodes) {
    m_string.clear();
    m_first_edge.clear();
    m_edge_byte.clear();
    m_edge_child.clear();
    for (Node const& n : nodes) {
      m_string.push_back(n.string);
      m_first_edge.push_back(static_cast<int>(m_edge_byte.size()));
      for (auto const& [byte, child] : n.children) {
        m_edge_byte.push_back(byte);
        m_edge_child.push_back(child);
      }
    }
    m_first_edge.push_back(static_cast<int>(m_edge_byte.size()));
  }

  static void set(std::uint64_t* bits, unsigned i) { bits[i / 64] |= std::uint64_t{1} << (i % 64); }
  static bool has(std::uint64_t const* bits, unsigned i) { return (bits[i / 64] >> (i % 64)) & 1; }
  static unsigned triple_slot(unsigned triple) {
    return (triple * 0x9E3779B1u) >> (32 - kTripleBits);
  }

  void note_start(std::string const& s) {
    auto const first = static_cast<Byte>(s[0]);
    if (s.size() == 1) {
      m_single[first] = true;
      return;
    }
    unsigned const pair = first * 256u + static_cast<Byte>(s[1]);
    set(m_pairs, pair);
    if (s.size() == 2) {
      set(m_whole_pairs, pair);
    } else {
      set(m_triples, triple_slot(pair * 256u + static_cast<Byte>(s[2])));
    }
  }

  // Sorted insertion makes a new child the last of its node's list.
  static int child_or_new(std::vector<Node>& nodes, int node, Byte byte) {
    auto& children = nodes[static_cast<std::size_t>(node)].children;
    if (!children.empty() && children.back().first == byte) return children.back().second;
    int const fresh = static_cast<int>(nodes.size());
    children.emplace_back(byte, fresh);
    nodes.emplace_back();
    return fresh;
  }

  int child(int node, Byte byte) const {
    auto const from = static_cast<std::size_t>(m_first_edge[static_cast<std::size_t>(node)]);
    auto const to = static_cast<std::size_t>(m_first_edge[static_cast<std::size_t>(node) + 1]);
    Byte const* const bytes = m_edge_byte.data();
    std::size_t i = from;
    if (to - from > 8) {
      i = static_cast<std::size_t>(std::lower_bound(bytes + from, bytes + to, byte) - bytes);
    } else {
      while (i < to && bytes[i] < byte) ++i;
    }
    return i < to && bytes[i] == byte ? m_edge_child[i] : -1;
  }

  // Whether a string may start at `p`: a one-byte string, a two-byte one,
  // or the first three bytes of a longer one (hashed: a rare false yes).
  bool starts(Byte const* p, Byte const* end) const {
    Byte const first = m_table[*p];
    if (m_single[first]) return true;
    if (end - p < 2) return false;
    unsigned const pair = first * 256u + m_table[p[1]];
    if (!has(m_pairs, pair)) return false;
    if (has(m_whole_pairs, pair)) return true;
    return end - p >= 3 && has(m_triples, triple_slot(pair * 256u + m_table[p[2]]));
  }

  Byte const* skip(Byte const* p, Byte const* end) const override {
    if (m_filter.width != 0) {
      struct Context {
        HoarySearcher const* self;
        Byte const* end;
      } const context{this, end};
      return next_place(
          m_filter, p, end,
          [](Byte const* at, void const* c) {
            auto const& x = *static_cast<Context const*>(c);
            return x.self->starts(at, x.end);
          },
          &context);
    }
    for (; p < end; ++p) {
      if (starts(p, end)) return p;
    }
    return end;
  }

  void each_at(Byte const* p, Byte const* end, bool (*take)(void*, Hit),
               void* context) const override {
    int node = m_root[m_table[*p]];
    for (std::size_t length = 1; node >= 0; ++length) {
      int const string = m_string[static_cast<std::size_t>(node)];
      if (string >= 0 && !take(context, Hit{string, length})) return;
      if (p + length >= end) return;
      node = child(node, m_table[p[length]]);
    }
  }

  Byte const* m_table = nullptr;
  std::vector<int> m_string;      // per node
  std::vector<int> m_first_edge;  // per node, and one past the last
  std::vector<Byte> m_edge_byte;
  std::vector<int> m_edge_child;
  int m_root[256] = {};
  bool m_single[256] = {};
  static constexpr unsigned kTripleBits = 18;
  std::uint64_t m_pairs[65536 / 64] = {};                  // the first two bytes of longer strings
  std::uint64_t m_whole_pairs[65536 / 64] = {};            // two-byte strings
  std::uint64_t m_triples[(1u << kTripleBits) / 64] = {};  // the first three, hashed
  NibbleTables m_filter;                                   // width 0 with too many strings
};

}  // namespace

Searcher* make_hoary_searcher() noexcept { return new (std::nothrow) HoarySearcher; }

}  // namespace zelstr::findmany
