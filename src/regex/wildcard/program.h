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

namespace zelstr::regex::wildcard {

using Byte = unsigned char;

enum class Op : std::uint8_t { kByte, kAny, kSet, kStar };

struct Token {
  Op op;
  Byte byte;        // kByte: the image of the literal
  std::uint16_t set;  // kSet: index into the program's sets
};

struct ByteSet {
  std::uint64_t bits[4];
  bool has(Byte c) const { return (bits[c >> 6] >> (c & 63)) & 1; }
  void add(Byte c) { bits[c >> 6] |= std::uint64_t{1} << (c & 63); }
};

enum class Syntax : std::uint8_t { kMatch, kLike };

// How a pattern was read: what a cached program is keyed by beside the
// pattern text.
struct Reading {
  Syntax syntax;
  Byte escape;           // LIKE only; 0: none
  Byte const* table;     // the images of the bytes (256 entries)
};

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

  // Whether the `length` bytes at `subject`, less any number up to
  // `droppable` of their last bytes, match the whole pattern.
  bool matches(Byte const* subject, std::size_t length, std::size_t droppable = 0) const;

  std::size_t size() const { return m_count; }
  Token const& operator[](std::size_t i) const { return m_tokens[i]; }
  ByteSet const& set(std::size_t i) const { return m_sets[i]; }
  Byte const* table() const { return m_table; }
  bool identity() const { return m_identity; }

 private:
  bool test(Token const& t, Byte c) const {
    Byte const image = m_table[c];
    return t.op == Op::kByte ? image == t.byte : t.op == Op::kAny || m_sets[t.set].has(image);
  }
  bool segment_at(std::size_t first, std::size_t last, Byte const* at) const;
  Byte const* find_segment(std::size_t first, std::size_t last, Byte const* from,
                           Byte const* to) const;

  Token* m_tokens = nullptr;
  ByteSet* m_sets = nullptr;
  std::size_t m_count = 0;
  std::size_t m_set_count = 0;
  Byte m_table[256] = {};
  bool m_identity = true;
};

}  // namespace zelstr::regex::wildcard

#endif  // ZELSTR_REGEX_WILDCARD_PROGRAM_H
