// nfa.cpp - translating the byte code into automaton instructions.
#include "regex/nfa.h"

#include <cstring>

#include "regex/program.h"

namespace zelstr::regex {
namespace {

bool carries_string(unsigned char code) {
  return code == kExactly || code == kAnyOf || code == kAnyBut;
}

// How many instructions a node becomes; 0 for a node the translation does
// not know.
std::uint32_t instruction_count(char const* node) {
  unsigned char const code = op(node);
  switch (code) {
    case kExactly: {
      std::size_t const length = std::strlen(operand(node));
      return length == 0 ? 1 : static_cast<std::uint32_t>(length);
    }
    case kStar:
    case kPlus:
      return 2;
    case kEnd:
    case kBol:
    case kEol:
    case kAny:
    case kAnyOf:
    case kAnyBut:
    case kBranch:
    case kBack:
    case kNothing:
      return 1;
    default:
      return is_open(code) || is_close(code) ? 1 : 0;
  }
}

// The bytes a one-character node takes: ANY, ANYOF, ANYBUT, or the first
// byte of EXACTLY (the operand of a loop repeats its first byte).  The
// terminator never belongs.
ByteSet taken_bytes(char const* node) {
  ByteSet set{};
  unsigned char const code = op(node);
  if (code == kExactly) {
    set.add(static_cast<unsigned char>(*operand(node)));
  } else if (code == kAnyOf) {
    for (char const* p = operand(node); *p != '\0'; ++p) set.add(static_cast<unsigned char>(*p));
  } else {  // ANY, ANYBUT
    for (int c = 1; c < 256; ++c) set.add(static_cast<unsigned char>(c));
    if (code == kAnyBut) {
      for (char const* p = operand(node); *p != '\0'; ++p) {
        auto const b = static_cast<unsigned char>(*p);
        set.bits[b >> 6] &= ~(std::uint64_t{1} << (b & 63));
      }
    }
  }
  set.bits[0] &= ~std::uint64_t{1};
  return set;
}

class Builder {
 public:
  explicit Builder(Tcl_RegExp_ const* re) : m_re(re), m_entry(re->program_size, 0) {}

  bool run(std::vector<Inst>& insts, std::vector<ByteSet>& sets) {
    if (!number_nodes()) return false;
    m_fail = m_count;
    insts.assign(m_count + 1, Inst{Inst::kFail, 0, 0, 0, 0});
    m_insts = &insts;
    m_sets = &sets;
    for (char const* p = first_node(m_re); p < end(); p = after(p)) emit(p);
    return true;
  }

  std::uint32_t entry_of(char const* node) const {
    return node == nullptr ? m_fail : m_entry[static_cast<std::size_t>(node - m_re->program)];
  }

 private:
  char const* end() const { return m_re->program + m_re->program_size; }

  static char const* after(char const* node) {
    char const* p = node + kNodeHeader;
    if (carries_string(op(node))) p += std::strlen(p) + 1;
    return p;
  }

  // The nodes lie one after the other from the first: each gets the index
  // of its first instruction.
  bool number_nodes() {
    for (char const* p = first_node(m_re); p < end(); p = after(p)) {
      std::uint32_t const n = instruction_count(p);
      if (n == 0) return false;
      m_entry[static_cast<std::size_t>(p - m_re->program)] = m_count;
      m_count += n;
    }
    return true;
  }

  std::uint16_t add_set(ByteSet const& set) {
    m_sets->push_back(set);
    return static_cast<std::uint16_t>(m_sets->size() - 1);
  }

  // The instruction that takes one byte as the one-character `node` does,
  // then goes to `next`.
  Inst taking(char const* node, std::uint32_t next) {
    if (op(node) == kExactly)
      return Inst{Inst::kByte, static_cast<std::uint8_t>(*operand(node)), 0, next, 0};
    return Inst{Inst::kSet, 0, add_set(taken_bytes(node)), next, 0};
  }

  void emit(char const* node) {
    std::vector<Inst>& insts = *m_insts;
    std::uint32_t const at = entry_of(node);
    char const* const following = next_node(node);
    std::uint32_t const next = entry_of(following);
    unsigned char const code = op(node);
    switch (code) {
      case kEnd:
        insts[at] = Inst{Inst::kMatch, 0, 0, 0, 0};
        break;
      case kBol:
        insts[at] = Inst{Inst::kBol, 0, 0, next, 0};
        break;
      case kEol:
        insts[at] = Inst{Inst::kEol, 0, 0, next, 0};
        break;
      case kAny:
      case kAnyOf:
      case kAnyBut:
        insts[at] = taking(node, next);
        break;
      case kExactly: {
        char const* const literal = operand(node);
        std::size_t const length = std::strlen(literal);
        if (length == 0) insts[at] = Inst{Inst::kJump, 0, 0, next, 0};
        for (std::size_t i = 0; i < length; ++i) {
          std::uint32_t const to = i + 1 == length ? next : at + static_cast<std::uint32_t>(i) + 1;
          insts[at + i] = Inst{Inst::kByte, static_cast<std::uint8_t>(literal[i]), 0, to, 0};
        }
        break;
      }
      case kStar:  // L: SPLIT(X, next); X: x -> L
        insts[at] = Inst{Inst::kSplit, 0, 0, at + 1, next};
        insts[at + 1] = taking(operand(node), at);
        break;
      case kPlus:  // X: x -> L; L: SPLIT(X, next)
        insts[at] = taking(operand(node), at + 1);
        insts[at + 1] = Inst{Inst::kSplit, 0, 0, at, next};
        break;
      case kBranch:
        if (following != nullptr && op(following) == kBranch) {
          insts[at] = Inst{Inst::kSplit, 0, 0, entry_of(operand(node)), next};
        } else {
          insts[at] = Inst{Inst::kJump, 0, 0, entry_of(operand(node)), 0};
        }
        break;
      case kBack:
      case kNothing:
        insts[at] = Inst{Inst::kJump, 0, 0, next, 0};
        break;
      default: {
        bool const opens = is_open(code);
        int const group = opens ? code - kOpen : code - kClose;
        insts[at] =
            Inst{Inst::kSave, 0, static_cast<std::uint16_t>(2 * group + (opens ? 0 : 1)), next, 0};
      }
    }
  }

  Tcl_RegExp_ const* m_re;
  std::vector<std::uint32_t> m_entry;  // by node offset in the program
  std::uint32_t m_count = 0;
  std::uint32_t m_fail = 0;
  std::vector<Inst>* m_insts = nullptr;
  std::vector<ByteSet>* m_sets = nullptr;
};

}  // namespace

std::unique_ptr<Nfa> Nfa::build(Tcl_RegExp_ const* re) {
  auto nfa = std::make_unique<Nfa>();
  Builder builder(re);
  if (!builder.run(nfa->m_insts, nfa->m_sets)) return nullptr;
  nfa->m_start = builder.entry_of(first_node(re));
  nfa->m_slots = 2 * re->groups_plus_one;
  ByteSet any{};
  for (int c = 1; c < 256; ++c) any.add(static_cast<unsigned char>(c));
  nfa->m_sets.push_back(any);
  auto const loop = static_cast<std::uint32_t>(nfa->m_insts.size());
  nfa->m_search_start = loop;
  nfa->m_insts.push_back(Inst{Inst::kSplit, 0, 0, nfa->m_start, loop + 1});
  nfa->m_insts.push_back(
      Inst{Inst::kSet, 0, static_cast<std::uint16_t>(nfa->m_sets.size() - 1), loop, 0});
  return nfa;
}

}  // namespace zelstr::regex
