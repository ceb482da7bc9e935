// program.h - the byte code of a compiled regular expression.
//
// A program is a check byte followed by a chain of nodes.  Each node is an
// opcode byte, a 16-bit offset to the next node (high byte first; 0 for
// none; counted backwards for BACK), and, for some opcodes, an operand:
// a NUL-terminated string for EXACTLY, ANYOF and ANYBUT, or a whole
// sub-program for BRANCH, STAR and PLUS (the node right after them).
//
// The shapes the compiler builds, after Henry Spencer's design:
//   x|y       BRANCH(x) -> BRANCH(y) -> ...; each alternative's last node
//             leads to what follows the alternation
//   x* x+     STAR / PLUS with x as operand, when x is one simple node
//   x* (else) BRANCH(x -> BACK to the BRANCH) -> BRANCH(NOTHING)
//   x+ (else) x -> BRANCH(BACK to x) -> BRANCH(NOTHING)
//   x?        BRANCH(x) -> BRANCH(NOTHING)
//   ( x )     OPEN n -> x -> CLOSE n
#ifndef ZELSTR_REGEX_PROGRAM_H
#define ZELSTR_REGEX_PROGRAM_H

#include <cstddef>

namespace zelstr::regex {

enum Opcode : unsigned char {
  kEnd = 0,      // end of the program: a match
  kBol = 1,      // the start of the subject
  kEol = 2,      // the end of the subject
  kAny = 3,      // any one character
  kAnyOf = 4,    // one character of the operand's list
  kAnyBut = 5,   // one character not in the list (not the end)
  kBranch = 6,   // try this alternative, else the next BRANCH
  kBack = 7,     // loop back: the offset is counted backwards
  kExactly = 8,  // the operand's literal string
  kNothing = 9,  // the empty string
  kStar = 10,    // the simple operand node, 0 or more times
  kPlus = 11,    // the simple operand node, 1 or more times
  kOpen = 14,    // + n: the start of group n (1..120)
  kClose = 134,  // + n: the end of group n
};

inline constexpr int kMaxGroups = 120;
inline constexpr unsigned char kCheckByte = 156;
// A program, check byte included, stays below this size.
inline constexpr std::size_t kProgramLimit = 65536;
// Opcode and offset.
inline constexpr std::size_t kNodeHeader = 3;

inline unsigned char op(char const* node) { return static_cast<unsigned char>(node[0]); }

inline unsigned offset_of(char const* node) {
  return static_cast<unsigned>(static_cast<unsigned char>(node[1])) << 8 |
         static_cast<unsigned char>(node[2]);
}

inline char const* operand(char const* node) { return node + kNodeHeader; }

// The node after `node`, or NULL at the end of its chain.
inline char const* next_node(char const* node) {
  unsigned const offset = offset_of(node);
  if (offset == 0) return nullptr;
  return op(node) == kBack ? node - offset : node + offset;
}

inline bool is_open(unsigned char code) { return code > kOpen && code <= kOpen + kMaxGroups; }
inline bool is_close(unsigned char code) { return code > kClose && code <= kClose + kMaxGroups; }

}  // namespace zelstr::regex

#endif  // ZELSTR_REGEX_PROGRAM_H
