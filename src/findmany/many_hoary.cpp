// many_hoary.cpp - CFindManyStrHoary: a filter of first byte pairs and a
// trie of the strings.
//
// Most places of a text begin no string.  With a few dozen strings, a
// vector filter of their first bytes' nibbles (nibble_filter.h) skips
// sixteen or thirty-two places at a time.  Then, or with more strings
// directly, a bit per pair of images (64 K bits, set for every pair whose
// first byte is a one-byte string too) says whether some string may begin
// there: the loop over the text is one look-up a byte, whatever the number
// of strings.  A place that passes is confirmed by a byte per image
// (one-byte strings), a bit per pair (two-byte strings) and a hashed bit per
// triple of images (256 K bits: the first three bytes of longer strings).
// At a place that is confirmed, the trie is walked along the text and every
// string that ends on the way is handed over, shortest first.
//
// The trie is built from the images in sorted order, so each node's
// children arrive in byte order and are searched by bisection; the root's
// children sit in a table of 256.  Strings that share a long stem (names
// such as CustomerName and CustomerNumber) make chains of nodes with one
// child and no string: the walk compares such a chain with the text in one
// step (one memcmp when no map or folding is involved).
#include <algorithm>
#include <cstring>
#include <numeric>

#include "findmany/nibble_filter.h"
#include "findmany/searcher.h"
#include "findmany/triple_index.h"
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
    std::vector<std::pair<std::uint32_t, int>> triples;  // the nodes at depth three
    std::fill(std::begin(m_root), std::end(m_root), -1);
    m_short = false;
    for (int index : order) {
      std::string const& s = list.images[static_cast<std::size_t>(index)];
      if (s.empty()) continue;
      note_start(s);
      m_short = m_short || s.size() < kRootDepth;
      int node = 0;
      for (std::size_t i = 0; i < s.size(); ++i) {
        std::size_t const before = nodes.size();
        node = child_or_new(nodes, node, static_cast<Byte>(s[i]));
        if (i + 1 == kRootDepth && nodes.size() != before) {
          triples.emplace_back(TripleIndex::key(static_cast<Byte>(s[0]), static_cast<Byte>(s[1]),
                                                static_cast<Byte>(s[2])),
                               node);
        }
      }
      if (nodes[static_cast<std::size_t>(node)].string < 0) {
        nodes[static_cast<std::size_t>(node)].string = index;
      }
    }
    m_depth_three.build(triples);
    for (auto const& [byte, child] : nodes[0].children) m_root[byte] = child;
    flatten(nodes);
    make_chains(nodes);
    m_identity = true;
    for (int c = 0; c < 256; ++c) m_identity = m_identity && m_table[c] == c;
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

  // The chain of each node the walk lands on: while a node has one child
  // and the child ends no string, the walk needs no choice, so the bytes
  // of the edges are kept in a row and compared at once.  The walk lands
  // on the root's children, the nodes at depth three (where it may start),
  // a chain's last node, and the children of a node with several; each
  // node is looked at once.
  void make_chains(std::vector<Node> const& nodes) {
    m_chain_start.assign(nodes.size(), 0);
    m_chain_length.assign(nodes.size(), 0);
    m_chain_to.assign(nodes.size(), -1);
    m_chain_bytes.clear();
    std::vector<std::pair<int, std::size_t>> landings;  // node and depth
    for (auto const& edge : nodes[0].children) landings.emplace_back(edge.second, 1);
    while (!landings.empty()) {
      auto [to, depth] = landings.back();
      landings.pop_back();
      int const from = to;
      auto const start = m_chain_bytes.size();
      while (nodes[static_cast<std::size_t>(to)].children.size() == 1) {
        auto const [byte, child] = nodes[static_cast<std::size_t>(to)].children.front();
        m_chain_bytes.push_back(byte);
        to = child;
        ++depth;
        if (nodes[static_cast<std::size_t>(to)].string >= 0 || depth == kRootDepth) break;
      }
      auto const n = static_cast<std::size_t>(from);
      m_chain_start[n] = start;
      m_chain_length[n] = m_chain_bytes.size() - start;
      m_chain_to[n] = to;
      if (to != from && nodes[static_cast<std::size_t>(to)].children.size() == 1) {
        landings.emplace_back(to, depth);  // a chain goes on from there
      } else {
        for (auto const& edge : nodes[static_cast<std::size_t>(to)].children) {
          landings.emplace_back(edge.second, depth + 1);
        }
      }
    }
  }

  // Whether the `n` bytes of the text at `text` have the images `chain`.
  bool same_images(Byte const* text, Byte const* chain, std::size_t n) const {
    if (m_identity) return std::memcmp(text, chain, n) == 0;
    for (std::size_t i = 0; i < n; ++i) {
      if (m_table[text[i]] != chain[i]) return false;
    }
    return true;
  }

  static void set(std::uint64_t* bits, unsigned i) { bits[i / 64] |= std::uint64_t{1} << (i % 64); }
  static bool has(std::uint64_t const* bits, unsigned i) { return (bits[i / 64] >> (i % 64)) & 1; }
  // The slot of the three bytes in the low 24 bits of `triple` (the top
  // byte is shifted out).
  static unsigned triple_slot(unsigned triple) {
    return ((triple << 8) * 0x9E3779B1u) >> (32 - kTripleBits);
  }

  void note_start(std::string const& s) {
    auto const first = static_cast<Byte>(s[0]);
    if (s.size() == 1) {
      m_single[first] = true;
      for (unsigned next = 0; next < 256; ++next) set(m_may_start, first * 256u + next);
      return;
    }
    unsigned const pair = first * 256u + static_cast<Byte>(s[1]);
    set(m_pairs, pair);
    set(m_may_start, pair);
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

  // Without the filter (with it, next_hit below never calls skip).
  Byte const* skip(Byte const* p, Byte const* end) const override {
    return m_short ? skip_by_pairs(p, end) : skip_by_triples(p, end);
  }

  // With the filter, the string at a place is chosen inside its loop, so
  // that a place that begins no string (a name that only shares a stem
  // with one of the strings) does not end the scan.
  Byte const* next_hit(Byte const* p, Byte const* end, Hit* hit) const override {
    if (m_filter.width == 0) return Searcher::next_hit(p, end, hit);
    if (m_short) {
      return next_place(m_filter, p, end,
                        [&](Byte const* at) { return starts(at, end) && choose_at(at, hit); });
    }
    // The filter passed three bytes: the hashed triples alone decide.
    return next_place(m_filter, p, end, [&](Byte const* at) {
      unsigned const triple = TripleIndex::key(m_table[at[0]], m_table[at[1]], m_table[at[2]]);
      return has(m_triples, triple_slot(triple)) && choose_at(at, hit);
    });
  }

  // With every string three bytes or longer: one look-up a place in the
  // hashed bits of the triples the strings begin with.  Without a map or
  // folding the text's bytes are their own images.
  Byte const* skip_by_triples(Byte const* p, Byte const* end) const {
    return m_identity ? skip_by_triples<true>(p, end) : skip_by_triples<false>(p, end);
  }

  template <bool kIdentity>
  Byte const* skip_by_triples(Byte const* p, Byte const* end) const {
    if (end - p < 3) return end;
    Byte const* const image = m_table;
    auto const image_of = [image](Byte b) -> unsigned { return kIdentity ? b : image[b]; };
    // The last three images in the low bytes; the shift in triple_slot
    // drops the fourth.
    unsigned window = image_of(p[0]) << 8 | image_of(p[1]);
    for (Byte const* const last = end - 2; p < last; ++p) {
      window = window << 8 | image_of(p[2]);
      if (has(m_triples, triple_slot(window))) return p;
    }
    return end;
  }

  // One look-up a place in the table of pairs a string may begin with;
  // each image is looked up once, as the second byte of a pair and then
  // as the first.
  Byte const* skip_by_pairs(Byte const* p, Byte const* end) const {
    if (p >= end) return end;
    Byte const* const image = m_table;
    unsigned first = image[*p];
    for (; end - p >= 2; ++p) {
      unsigned const second = image[p[1]];
      if (has(m_may_start, first << 8 | second) && starts(p, end)) return p;
      first = second;
    }
    return m_single[first] ? p : end;
  }

  void each_at(Byte const* p, Byte const* end, bool (*take)(void*, Hit),
               void* context) const override {
    int node = m_root[m_table[*p]];
    std::size_t length = 1;
    if (!m_short) {  // no string ends above depth three
      if (end - p < 3) return;
      node = m_depth_three.find(TripleIndex::key(m_table[p[0]], m_table[p[1]], m_table[p[2]]));
      length = 3;
    }
    while (node >= 0) {
      auto const n = static_cast<std::size_t>(node);
      int const string = m_string[n];
      if (string >= 0 && !take(context, Hit{string, length})) return;
      if (std::size_t const chain = m_chain_length[n]; chain != 0) {
        if (static_cast<std::size_t>(end - p) - length < chain ||
            !same_images(p + length, m_chain_bytes.data() + m_chain_start[n], chain)) {
          return;
        }
        length += chain;
        node = m_chain_to[n];
        continue;
      }
      if (p + length >= end) return;
      node = child(node, m_table[p[length]]);
      ++length;
    }
  }

  Byte const* m_table = nullptr;
  std::vector<int> m_string;      // per node
  std::vector<int> m_first_edge;  // per node, and one past the last
  std::vector<Byte> m_edge_byte;
  std::vector<int> m_edge_child;
  std::vector<std::size_t> m_chain_start;   // per node: its chain in m_chain_bytes
  std::vector<std::size_t> m_chain_length;  // 0: the node has no chain
  std::vector<int> m_chain_to;              // the node at the chain's end
  std::vector<Byte> m_chain_bytes;
  bool m_identity = false;                      // every byte its own image
  static constexpr std::size_t kRootDepth = 3;  // where a walk may start
  bool m_short = false;                         // some string is shorter than kRootDepth
  TripleIndex m_depth_three;                    // the nodes at kRootDepth
  int m_root[256] = {};
  bool m_single[256] = {};
  static constexpr unsigned kTripleBits = 18;
  std::uint64_t m_may_start[65536 / 64] = {};              // a string may begin with the pair
  std::uint64_t m_pairs[65536 / 64] = {};                  // the first two bytes of longer strings
  std::uint64_t m_whole_pairs[65536 / 64] = {};            // two-byte strings
  std::uint64_t m_triples[(1u << kTripleBits) / 64] = {};  // the first three, hashed
  NibbleTables m_filter;                                   // width 0 with too many strings
};

}  // namespace

Searcher* make_hoary_searcher() noexcept { return new (std::nothrow) HoarySearcher; }

}  // namespace zelstr::findmany
