// program.h - a wildcard pattern (MATCH or LIKE) read into a program of
// tokens, and the byte table the subject is read through.
//
// Every token but the star stands for exactly one character, so a pattern
// is a list of fixed-width segments separated by stars.  Literal bytes and
// set members are stored as their images through the table (identity,
// ASCII folding or a character map), and the subject's bytes are looked
// up through the same table, so one matcher serves the plain, the
// case-insensitive and the mapped forms.
#ifndef ZELSTR_REGEX_WILDCARD_PROGRAM_H
#define ZELSTR_REGEX_WILDCARD_PROGRAM_H

#include <cstddef>
#include <cstdint>

#include "regex/wildcard/lead_scan.h"

namespace zelstr::regex::wildcard {

using Byte = unsigned char;

enum class Op : std::uint8_t { kByte, kAny, kSet, kStar };

struct Token {
  Op op;
  Byte byte;          // kByte: the image of the literal
  std::uint16_t set;  // kSet: index into the program's sets
};

struct ByteSet {
  std::uint64_t bits[4];
  bool has(Byte c) const { return (bits[c >> 6] >> (c & 63)) & 1; }
  void add(Byte c) { bits[c >> 6] |= std::uint64_t{1} << (c & 63); }
};

enum class Syntax : std::uint8_t { kMatch, kLike };

// Which bytes share an image: none (identity), ASCII letters with their
// other case, or any the caller's map says.
enum class Images : std::uint8_t { kOwn, kAsciiFolded, kMapped };

// How a pattern was read: what a cached program is keyed by beside the
// pattern text.
struct Reading {
  Syntax syntax;
  Byte escape;        // LIKE only; 0: none
  Byte const* table;  // the images of the bytes (256 entries)
  Images images;      // what `table` is
};

// Whether a match may end at `at`: the subject's end, or with blanks
// dropped, the start of its trailing blanks.
inline bool ends_here(Byte const* at, bool drop_blanks) {
  if (drop_blanks) {
    while (*at == ' ') ++at;
  }
  return *at == '\0';
}

// The outcome of reading a pattern.
enum class ReadStatus { kOk, kEscapeAtEnd, kNoMemory };

class Program {
 public:
  Program() = default;
  ~Program();
  Program(Program const&) = delete;
  Program& operator=(Program const&) = delete;

  // Reads `pattern` (its `length` bytes); the program keeps a copy of
  // the table, so the reading's table need not outlive it.
  ReadStatus read(char const* pattern, std::size_t length, Reading const& how);

  // Whether the zero-terminated `subject` matches the whole pattern; with
  // `drop_blanks`, as LIKE reads it: the match may leave out any of the
  // subject's trailing blanks.  The subject is read no further than the
  // pattern needs.
  bool matches(Byte const* subject, bool drop_blanks) const;

  std::size_t size() const { return m_count; }
  Token const& operator[](std::size_t i) const { return m_tokens[i]; }
  ByteSet const& set(std::size_t i) const { return m_sets[i]; }
  Byte const* table() const { return m_table; }
  bool identity() const { return m_identity; }

 private:
  // No token accepts the terminator, so a segment never runs past it.
  bool test(Token const& t, Byte c) const {
    Byte const image = m_table[c];
    return t.op == Op::kByte ? image == t.byte
                             : c != 0 && (t.op == Op::kAny || m_sets[t.set].has(image));
  }
  bool segment_at(std::size_t first, std::size_t last, Byte const* at) const;
  Byte const* find_segment(std::size_t first, std::size_t last, Byte const* from) const;
  bool note_segments();

  Token* m_tokens = nullptr;
  ByteSet* m_sets = nullptr;
  std::size_t m_count = 0;
  std::size_t m_set_count = 0;
  Byte m_table[256] = {};
  bool m_identity = true;
  std::size_t m_first_star = 0;  // m_count when there is none
  std::size_t m_last_star = 0;
  // Per token that begins a segment between stars: the bytes that can
  // begin the segment.
  Leads* m_leads = nullptr;
};

}  // namespace zelstr::regex::wildcard

#endif  // ZELSTR_REGEX_WILDCARD_PROGRAM_H
