// many_old.cpp - CFindManyStrOld: a shift table over the shortest length
// and a hash table per string length.
//
// Every string is at least m bytes long (m: the shortest).  A window of m
// bytes slides along the text; the image of its last byte says how far it
// may move before it could hold the first m bytes of some string (the
// distance from the byte's last place among those first m bytes to their
// end), so most of the text is skipped m bytes at a time.  Where the shift
// is 0, the strings of each length are looked up by the XOR of the text's
// images over that length, and the few with the same XOR compared whole.
#include <algorithm>
#include <cstring>

#include "findmany/searcher.h"
#include "zelstr/findmany.h"

namespace zelstr::findmany {
namespace {

class OldSearcher final : public Searcher {
 public:
  OldSearcher() : Searcher(frame::Unit::findmanystrold, "CFindManyStrOld") {}

 private:
  struct Length {
    std::size_t length;
    std::vector<int> by_xor[256];  // indices, ascending
  };

  bool build(StringList const& list) override {
    m_list = &list;
    m_shortest = 0;
    for (std::string const& s : list.images) {
      if (!s.empty() && (m_shortest == 0 || s.size() < m_shortest)) m_shortest = s.size();
    }
    std::fill(std::begin(m_shift), std::end(m_shift), m_shortest);
    std::vector<std::size_t> lengths;
    for (std::string const& s : list.images) {
      if (s.empty()) continue;
      for (std::size_t j = 0; j < m_shortest; ++j) {
        auto const c = static_cast<Byte>(s[j]);
        m_shift[c] = std::min(m_shift[c], m_shortest - 1 - j);
      }
      lengths.push_back(s.size());
    }
    std::sort(lengths.begin(), lengths.end());
    lengths.erase(std::unique(lengths.begin(), lengths.end()), lengths.end());
    m_lengths.resize(lengths.size());
    for (std::size_t k = 0; k < lengths.size(); ++k) m_lengths[k].length = lengths[k];
    for (std::size_t i = 0; i < list.images.size(); ++i) {
      std::string const& s = list.images[i];
      if (s.empty()) continue;
      auto const at = std::lower_bound(lengths.begin(), lengths.end(), s.size()) - lengths.begin();
      m_lengths[static_cast<std::size_t>(at)].by_xor[xor_of(s)].push_back(static_cast<int>(i));
    }
    return true;
  }

  static Byte xor_of(std::string const& s) {
    Byte x = 0;
    for (char c : s) x ^= static_cast<Byte>(c);
    return x;
  }

  Byte const* skip(Byte const* p, Byte const* end) const override {
    if (m_shortest == 0) return end;
    Byte const* const table = m_list->table;
    while (static_cast<std::size_t>(end - p) >= m_shortest) {
      std::size_t const shift = m_shift[table[p[m_shortest - 1]]];
      if (shift == 0) return p;
      p += shift;
    }
    return end;
  }

  void each_at(Byte const* p, Byte const* end, bool (*take)(void*, Hit),
               void* context) const override {
    Byte const* const table = m_list->table;
    Byte x = 0;
    std::size_t done = 0;
    for (Length const& bucket : m_lengths) {
      if (static_cast<std::size_t>(end - p) < bucket.length) return;
      for (; done < bucket.length; ++done) x ^= table[p[done]];
      for (int index : bucket.by_xor[x]) {
        if (!same(p, m_list->images[static_cast<std::size_t>(index)])) continue;
        if (!take(context, Hit{index, bucket.length})) return;
        break;  // the others of this length are duplicates
      }
    }
  }

  bool same(Byte const* p, std::string const& image) const {
    Byte const* const table = m_list->table;
    for (std::size_t k = 0; k < image.size(); ++k) {
      if (table[p[k]] != static_cast<Byte>(image[k])) return false;
    }
    return true;
  }

  StringList const* m_list = nullptr;
  std::size_t m_shortest = 0;
  std::size_t m_shift[256] = {};
  std::vector<Length> m_lengths;
};

}  // namespace

Searcher* make_old_searcher() noexcept { return new (std::nothrow) OldSearcher; }

}  // namespace zelstr::findmany
