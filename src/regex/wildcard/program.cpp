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
  delete[] m_leads;
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
    } else if (char const* after = c == '['
                                       ? read_set(p, end, how.syntax, m_table, m_sets[m_set_count])
                                       : nullptr) {
      m_tokens[m_count++] = Token{Op::kSet, 0, static_cast<std::uint16_t>(m_set_count++)};
      p = after;
    } else {  // a literal, and a "[" no "]" closes
      m_tokens[m_count++] = Token{Op::kByte, m_table[c], 0};
      ++p;
    }
  }
  return note_segments() ? ReadStatus::kOk : ReadStatus::kNoMemory;
}

// Notes the stars, and per segment between them that opens with a
// literal, the bytes whose image that literal is, if they are four at
// most: the subject is scanned for those before a place is tested.
bool Program::note_segments() {
  m_first_star = m_count;
  m_last_star = m_count;
  for (std::size_t i = 0; i < m_count; ++i) {
    if (m_tokens[i].op != Op::kStar) continue;
    if (m_first_star == m_count) m_first_star = i;
    m_last_star = i;
  }
  if (m_first_star == m_count) return true;
  m_leads = frame::new_array<Leads>(m_count);
  if (m_leads == nullptr) return false;
  for (std::size_t i = m_first_star + 1; i < m_last_star;) {
    std::size_t j = i;
    while (m_tokens[j].op != Op::kStar) ++j;
    Leads& leads = m_leads[i];
    if (m_tokens[i].op == Op::kByte) {
      int n = 0;
      for (int c = 1; c < 256; ++c) n += m_table[c] == m_tokens[i].byte ? 1 : 0;
      if (n > 0 && n <= 4) {
        for (int c = 1; c < 256; ++c) {
          if (m_table[c] == m_tokens[i].byte) leads.add(static_cast<Byte>(c));
        }
      }
    }
    i = j + 1;
  }
  return true;
}

bool Program::segment_at(std::size_t first, std::size_t last, Byte const* at) const {
  for (std::size_t i = first; i < last; ++i, ++at) {
    if (!test(m_tokens[i], *at)) return false;
  }
  return true;
}

// The leftmost place at or after `from` where tokens [first, last) match.
Byte const* Program::find_segment(std::size_t first, std::size_t last, Byte const* from) const {
  Leads const& leads = m_leads[first];
  for (Byte const* p = from; *p != '\0'; ++p) {
    if (leads.count != 0) {
      p = find_lead(p, leads);
      if (p == nullptr) return nullptr;
    }
    if (segment_at(first, last, p)) return p;
  }
  return nullptr;
}

bool Program::matches(Byte const* subject, bool drop_blanks) const {
  if (m_first_star == m_count) {
    return segment_at(0, m_count, subject) && ends_here(subject + m_count, drop_blanks);
  }
  if (!segment_at(0, m_first_star, subject)) return false;
  // The segments between the stars, each at its leftmost place.
  Byte const* at = subject + m_first_star;
  for (std::size_t i = m_first_star + 1; i < m_last_star;) {
    std::size_t j = i;
    while (m_tokens[j].op != Op::kStar) ++j;
    at = find_segment(i, j, at);
    if (at == nullptr) return false;
    at += j - i;
    i = j + 1;
  }
  std::size_t const suffix = m_count - m_last_star - 1;
  if (suffix == 0) return true;
  // The last segment ends the match: at the end, or, with blanks dropped,
  // anywhere in the trailing blanks.
  Byte const* const end = at + std::strlen(reinterpret_cast<char const*>(at));
  Byte const* stop = end;
  if (drop_blanks) {
    while (stop > at && stop[-1] == ' ') --stop;
  }
  for (Byte const* e = end; e >= stop && e - at >= static_cast<std::ptrdiff_t>(suffix); --e) {
    if (segment_at(m_last_star + 1, m_count, e - suffix)) return true;
  }
  return false;
}

}  // namespace zelstr::regex::wildcard
