// program.cpp - reading wildcard patterns, and matching a subject.
//
// Matching needs no backtracking over stars: the segment before the first
// star must sit at the subject's start, the one after the last star at its
// end, and each segment between them is best placed at its leftmost
// occurrence after the one before (a later place leaves less room to the
// rest and gains nothing).  So a subject is read at most once per token of
// the pattern, whatever the number of stars.
#include "regex/wildcard/program.h"

#include <cstring>

#include "frame/memory.h"

namespace zelstr::regex::wildcard {
namespace {

// Reads the set whose "[" is at `p` (before `end`) into `set` through
// `table`; returns the byte after its "]", or NULL when none closes it.
// MATCH negates with "!" or "^", LIKE with "^"; a "]" first is a member,
// "x-y" a range of byte values (empty when y is below x).
char const* read_set(char const* p, char const* end, Syntax syntax, Byte const* table,
                     ByteSet& set) {
  char const* x = p + 1;
  bool negated = false;
  if (x < end && (*x == '^' || (syntax == Syntax::kMatch && *x == '!'))) {
    negated = true;
    ++x;
  }
  ByteSet members{};
  bool first = true;
  for (;; first = false) {
    if (x == end) return nullptr;
    auto const c = static_cast<Byte>(*x);
    if (c == ']' && !first) break;
    if (x + 2 < end && x[1] == '-' && x[2] != ']') {
      auto const last = static_cast<Byte>(x[2]);
      for (unsigned v = c; v <= last; ++v) members.add(table[v]);
      x += 3;
    } else {
      members.add(table[c]);
      ++x;
    }
  }
  for (int i = 0; i < 4; ++i) set.bits[i] = negated ? ~members.bits[i] : members.bits[i];
  return x + 1;
}

}  // namespace

Program::~Program() {
  delete[] m_tokens;
  delete[] m_sets;
}

ReadStatus Program::read(char const* pattern, std::size_t length, Reading const& how) {
  std::memcpy(m_table, how.table, sizeof m_table);
  m_identity = true;
  for (int c = 0; c < 256; ++c) m_identity = m_identity && m_table[c] == c;
  m_tokens = frame::new_array<Token>(length + 1);
  m_sets = frame::new_array<ByteSet>(length / 3 + 1);
  if (m_tokens == nullptr || m_sets == nullptr) return ReadStatus::kNoMemory;

  bool const like = how.syntax == Syntax::kLike;
  char const* const end = pattern + length;
  for (char const* p = pattern; p < end;) {
    auto const c = static_cast<Byte>(*p);
    if (like && how.escape != 0 && c == how.escape) {
      if (p + 1 == end) return ReadStatus::kEscapeAtEnd;
      m_tokens[m_count++] = Token{Op::kByte, m_table[static_cast<Byte>(p[1])], 0};
      p += 2;
    } else if (c == (like ? '%' : '*')) {
      if (m_count == 0 || m_tokens[m_count - 1].op != Op::kStar) {
        m_tokens[m_count++] = Token{Op::kStar, 0, 0};
      }
      ++p;
    } else if (c == (like ? '_' : '?')) {
      m_tokens[m_count++] = Token{Op::kAny, 0, 0};
      ++p;
    } else if (char const* after = c == '[' ? read_set(p, end, how.syntax, m_table,
                                                       m_sets[m_set_count])
                                            : nullptr) {
      m_tokens[m_count++] = Token{Op::kSet, 0, static_cast<std::uint16_t>(m_set_count++)};
      p = after;
    } else {  // a literal, and a "[" no "]" closes
      m_tokens[m_count++] = Token{Op::kByte, m_table[c], 0};
      ++p;
    }
  }
  return ReadStatus::kOk;
}

bool Program::segment_at(std::size_t first, std::size_t last, Byte const* at) const {
  for (std::size_t i = first; i < last; ++i, ++at) {
    if (!test(m_tokens[i], *at)) return false;
  }
  return true;
}

// The leftmost place in [from, to) where tokens [first, last) match.
Byte const* Program::find_segment(std::size_t first, std::size_t last, Byte const* from,
                                  Byte const* to) const {
  std::size_t const width = last - first;
  if (static_cast<std::size_t>(to - from) < width) return nullptr;
  Byte const* const final_start = to - width;
  Token const& lead = m_tokens[first];
  for (Byte const* p = from; p <= final_start; ++p) {
    if (m_identity && lead.op == Op::kByte) {
      // The C library finds the first byte much faster than a loop.
      p = static_cast<Byte const*>(std::memchr(p, lead.byte, final_start - p + 1));
      if (p == nullptr) return nullptr;
    }
    if (segment_at(first, last, p)) return p;
  }
  return nullptr;
}

bool Program::matches(Byte const* subject, std::size_t length, std::size_t droppable) const {
  std::size_t first_star = m_count;
  std::size_t last_star = m_count;
  for (std::size_t i = 0; i < m_count; ++i) {
    if (m_tokens[i].op != Op::kStar) continue;
    if (first_star == m_count) first_star = i;
    last_star = i;
  }
  std::size_t const shortest = length - droppable;  // the fewest bytes a match may cover
  if (first_star == m_count) {
    return m_count >= shortest && m_count <= length && segment_at(0, m_count, subject);
  }
  std::size_t const suffix = m_count - last_star - 1;
  if (length < first_star + suffix || !segment_at(0, first_star, subject)) return false;
  // The segments between the stars, each at its leftmost place.
  Byte const* at = subject + first_star;
  Byte const* const room_end = subject + length - suffix;
  for (std::size_t i = first_star + 1; i < last_star;) {
    std::size_t j = i;
    while (m_tokens[j].op != Op::kStar) ++j;
    at = find_segment(i, j, at, room_end);
    if (at == nullptr) return false;
    at += j - i;
    i = j + 1;
  }
  // The last segment ends the match: at the end, or where a dropped tail
  // begins.
  std::size_t const least = static_cast<std::size_t>(at - subject) + suffix;
  for (std::size_t end = length; end + 1 > shortest && end >= least; --end) {
    if (segment_at(last_star + 1, m_count, subject + end - suffix)) return true;
    if (end == 0) break;
  }
  return false;
}

}  // namespace zelstr::regex::wildcard
