// nfa.h - a compiled program as a list of automaton instructions.
//
// The byte code is written for a backtracking walk: loops count their
// repetitions, alternatives are chained BRANCH nodes.  The linear-time
// matchers need the same expression as a graph of states instead, in
// which every state is visited at most once per subject position.  The
// translation keeps the walk's order of preference: a SPLIT lists first
// the way the walk tries first (the alternative written first, one more
// repetition of a loop), so that a search which always prefers the first
// way finds exactly the match, and the group ranges, the walk finds.
//
// Each node becomes:
//   EXACTLY "abc"     BYTE a -> BYTE b -> BYTE c -> next
//   ANY ANYOF ANYBUT  SET -> next (a set never holds the terminator)
//   STAR x            L: SPLIT(X, next); X: x -> L
//   PLUS x            X: x -> L; L: SPLIT(X, next)
//   BRANCH x          SPLIT(x, the next BRANCH), or JUMP x for the last one
//   BACK, NOTHING     JUMP next
//   OPEN n, CLOSE n   SAVE 2n, SAVE 2n+1 -> next
//   BOL, EOL          assertions on the position
//   END               MATCH
#ifndef ZELSTR_REGEX_NFA_H
#define ZELSTR_REGEX_NFA_H

#include <cstdint>
#include <memory>
#include <vector>

#include "regex/record.h"

namespace zelstr::regex {

struct Inst {
  enum Kind : std::uint8_t { kByte, kSet, kSplit, kJump, kSave, kBol, kEol, kMatch, kFail };
  Kind kind;
  std::uint8_t byte;   // kByte: the byte
  std::uint16_t arg;   // kSet: the set's index; kSave: the slot
  std::uint32_t next;  // where to go on (kSplit: the preferred way)
  std::uint32_t alt;   // kSplit: the other way
};

class Nfa {
 public:
  // The instructions of `re`'s program; NULL when the program holds a node
  // the translation does not know (the backtracking walk alone can run it).
  // Throws std::bad_alloc.
  static std::unique_ptr<Nfa> build(Tcl_RegExp_ const* re);

  std::uint32_t start() const { return m_start; }
  // The start of a search: a loop that starts the program at this
  // position first, and otherwise takes any byte and tries again at the
  // next.  Its two instructions come after all the program's.
  std::uint32_t search_start() const { return m_search_start; }
  std::uint32_t size() const { return static_cast<std::uint32_t>(m_insts.size()); }
  Inst const& operator[](std::uint32_t pc) const { return m_insts[pc]; }
  // Whether the consuming instruction `inst` takes the byte `c` (never the
  // terminator).
  bool takes(Inst const& inst, unsigned char c) const {
    return inst.kind == Inst::kByte ? inst.byte == c && c != 0 : m_sets[inst.arg].has(c);
  }
  // Slots: 2 per group, group 0 included.
  int slots() const { return m_slots; }

 private:
  std::vector<Inst> m_insts;
  std::vector<ByteSet> m_sets;
  std::uint32_t m_start = 0;
  std::uint32_t m_search_start = 0;
  int m_slots = 2;
};

}  // namespace zelstr::regex

#endif  // ZELSTR_REGEX_NFA_H
