// literal_search.cpp - the search for an expression's required strings (see
// literal_search.h).
#include "regex/literal_search.h"

#include <algorithm>
#include <cstring>
#include <new>

namespace zelstr::regex {
namespace {

// The pieces the text is measured in ahead of the filter.
constexpr std::size_t kFirstPiece = 256;
constexpr std::size_t kLargestPiece = std::size_t{64} << 10;

using Byte = unsigned char;

}  // namespace

void LiteralSearch::prepare(LiteralSet const& set, bool short_texts) {
  m_kind = Kind::kNone;
  if (set.strings.empty()) return;
  for (int c = 0; c < 256; ++c) {
    bool const upper = c >= 'A' && c <= 'Z';
    m_image[c] = static_cast<Byte>(set.folded && upper ? c | 0x20 : c);
  }
  m_strings = set.strings;
  for (std::string& s : m_strings) {
    for (char& c : s) c = static_cast<char>(m_image[static_cast<Byte>(c)]);
  }
  std::sort(m_strings.begin(), m_strings.end());
  m_strings.erase(std::unique(m_strings.begin(), m_strings.end()), m_strings.end());
  std::string const& only = m_strings.front();
  if (m_strings.size() == 1 && only.size() == 1 && !set.folded) {
    m_kind = Kind::kByte;
    return;
  }
  if (m_strings.size() == 1 && only.size() > 1 && short_texts && !set.folded) {
    m_kind = Kind::kShortString;
    return;
  }
  if (m_strings.size() == 1 && only.size() > 1) {
    m_search.ignore_case = set.folded;
    if (!str::search::prepare(m_search, only.c_str(), static_cast<std::uint32_t>(only.size()))) {
      throw std::bad_alloc();
    }
    m_kind = Kind::kString;
    return;
  }
  std::vector<std::string const*> images;
  for (std::string const& s : m_strings) images.push_back(&s);
  m_tables = findmany::build_nibble_tables(images, m_image);
  if (m_tables.width == 0) return;  // too many beginnings to filter
  std::size_t i = 0;
  for (int b = 0; b < 256; ++b) {
    m_first[b] = static_cast<std::uint16_t>(i);
    while (i < m_strings.size() && static_cast<Byte>(m_strings[i][0]) == b) ++i;
  }
  m_first[256] = static_cast<std::uint16_t>(i);
  m_kind = Kind::kSet;
}

// The strings hold no zero byte, so the text's terminator ends a compare
// that runs past the measured piece.
bool LiteralSearch::begins_at(Byte const* place, std::string const& s) const {
  for (std::size_t j = 0; j < s.size(); ++j) {
    if (m_image[place[j]] != static_cast<Byte>(s[j])) return false;
  }
  return true;
}

bool LiteralSearch::some_string_at(Byte const* place) const {
  Byte const first = m_image[*place];
  for (std::uint16_t i = m_first[first]; i < m_first[first + 1]; ++i) {
    if (begins_at(place, m_strings[i])) return true;
  }
  return false;
}

char const* LiteralSearch::next_in_set(char const* p) const {
  auto const accepts = [this](Byte const* place) { return some_string_at(place); };
  for (std::size_t piece = kFirstPiece;; piece = std::min(piece * 2, kLargestPiece)) {
    std::size_t const n = strnlen(p, piece);
    auto const* const from = reinterpret_cast<Byte const*>(p);
    Byte const* const end = from + n;
    if (n < piece) {  // the text's end: every place is looked at
      Byte const* const at = findmany::next_place(m_tables, from, end, accepts);
      return at != end ? reinterpret_cast<char const*>(at) : nullptr;
    }
    // More text follows: the places the vectors leave begin the next piece.
    Byte const* rest = from;
    Byte const* const at = findmany::next_place_ahead(m_tables, from, end, &rest, accepts);
    if (at != end) return reinterpret_cast<char const*>(at);
    p = reinterpret_cast<char const*>(rest);
  }
}

char const* find_by_first_byte(char const* p, char const* s, std::size_t n, bool& first_seen) {
  first_seen = false;
  for (;; ++p) {
    p = std::strchr(p, s[0]);
    if (p == nullptr) return nullptr;
    first_seen = true;
    if (std::strncmp(p + 1, s + 1, n - 1) == 0) return p;
  }
}

char const* LiteralSearch::next(char const* p) {
  switch (m_kind) {
    case Kind::kByte:
      p = std::strchr(p, m_strings.front()[0]);
      m_first_seen = p != nullptr;
      return p;
    case Kind::kShortString:
      return find_by_first_byte(p, m_strings.front().c_str(), m_strings.front().size(),
                                m_first_seen);
    case Kind::kString:
      return str::search::find_first(p, m_strings.front().c_str(), m_search).match;
    case Kind::kSet:
      return next_in_set(p);
    case Kind::kNone:
      break;
  }
  return p;
}

}  // namespace zelstr::regex
