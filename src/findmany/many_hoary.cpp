// many_hoary.cpp - CFindManyStrHoary: a filter of first byte pairs and a
// trie of the strings.
//
// Most places of a text begin no string.  A bit per pair of images (64 K
// bits) says whether some string begins with that pair, and a byte per
// image whether a one-byte string is that image: a place that passes
// neither is skipped after two table look-ups, whatever the number of
// strings.  At a place that passes, the trie is walked along the text and
// every string that ends on the way is handed over, shortest first.
//
// The trie is built from the images in sorted order, so each node's
// children arrive in byte order and are searched by bisection; the root's
// children sit in a table of 256.
#include <algorithm>
#include <numeric>

#include "findmany/searcher.h"
#include "zelstr/findmany.h"

namespace zelstr::findmany {
namespace {

class HoarySearcher final : public Searcher {
 public:
  HoarySearcher() : Searcher(frame::Unit::findmanystrhoary, "CFindManyStrHoary") {}

 private:
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
    m_nodes.assign(1, Node{});
    std::fill(std::begin(m_root), std::end(m_root), -1);
    for (int index : order) {
      std::string const& s = list.images[static_cast<std::size_t>(index)];
      if (s.empty()) continue;
      note_start(s);
      int node = 0;
      for (char c : s) node = child_or_new(node, static_cast<Byte>(c));
      if (m_nodes[static_cast<std::size_t>(node)].string < 0) {
        m_nodes[static_cast<std::size_t>(node)].string = index;
      }
    }
    for (auto const& [byte, child] : m_nodes[0].children) m_root[byte] = child;
    return true;
  }

  void note_start(std::string const& s) {
    auto const first = static_cast<Byte>(s[0]);
    if (s.size() == 1) {
      m_single[first] = true;
    } else {
      unsigned const pair = first * 256u + static_cast<Byte>(s[1]);
      m_pairs[pair / 64] |= std::uint64_t{1} << (pair % 64);
    }
  }

  // Sorted insertion makes a new child the last of its node's list.
  int child_or_new(int node, Byte byte) {
    auto& children = m_nodes[static_cast<std::size_t>(node)].children;
    if (!children.empty() && children.back().first == byte) return children.back().second;
    int const fresh = static_cast<int>(m_nodes.size());
    children.emplace_back(byte, fresh);
    m_nodes.emplace_back();
    return fresh;
  }

  int child(int node, Byte byte) const {
    auto const& children = m_nodes[static_cast<std::size_t>(node)].children;
    auto const at = std::lower_bound(children.begin(), children.end(), byte,
                                     [](std::pair<Byte, int> const& e, Byte b) { return e.first < b; });
    return at != children.end() && at->first == byte ? at->second : -1;
  }

  bool starts(Byte const* p, Byte const* end) const {
    Byte const first = m_table[*p];
    if (m_single[first]) return true;
    if (end - p < 2) return false;
    unsigned const pair = first * 256u + m_table[p[1]];
    return (m_pairs[pair / 64] >> (pair % 64)) & 1;
  }

  Byte const* skip(Byte const* p, Byte const* end) const override {
    for (; p < end; ++p) {
      if (starts(p, end)) return p;
    }
    return end;
  }

  void each_at(Byte const* p, Byte const* end, bool (*take)(void*, Hit),
               void* context) const override {
    int node = m_root[m_table[*p]];
    for (std::size_t length = 1; node >= 0; ++length) {
      int const string = m_nodes[static_cast<std::size_t>(node)].string;
      if (string >= 0 && !take(context, Hit{string, length})) return;
      if (p + length >= end) return;
      node = child(node, m_table[p[length]]);
    }
  }

  Byte const* m_table = nullptr;
  std::vector<Node> m_nodes;
  int m_root[256] = {};
  bool m_single[256] = {};
  std::uint64_t m_pairs[65536 / 64] = {};
};

}  // namespace

Searcher* make_hoary_searcher() noexcept { return new (std::nothrow) HoarySearcher; }

}  // namespace zelstr::findmany
