// linear.cpp - Pike's machine over the automaton, and the remembering walk
// for group ranges (see linear.h).
#include "regex/linear.h"

#include <algorithm>
#include <vector>

#include "regex/automata.h"
#include "regex/hints.h"
#include "regex/nfa.h"
#include "regex/program.h"
#include "regex/record.h"

namespace zelstr::regex {
namespace {

// The states reached at one position, in the order of preference, each
// with the slots its way has recorded.
class StateList {
 public:
  StateList(std::uint32_t states, int slots)
      : m_slots(slots), m_index(states), m_dense(states), m_caps(std::size_t{states} * slots) {}

  bool has(std::uint32_t pc) const { return m_index[pc] < m_count && m_dense[m_index[pc]] == pc; }
  void add(std::uint32_t pc) {
    m_index[pc] = m_count;
    m_dense[m_count++] = pc;
  }
  void clear() { m_count = 0; }
  bool empty() const { return m_count == 0; }
  std::uint32_t size() const { return m_count; }
  std::uint32_t at(std::uint32_t i) const { return m_dense[i]; }
  char const** caps(std::uint32_t pc) { return &m_caps[std::size_t{pc} * m_slots]; }

 private:
  int m_slots;
  std::uint32_t m_count = 0;
  std::vector<std::uint32_t> m_index, m_dense;
  std::vector<char const*> m_caps;
};

// Pike's machine.  With two slots it only finds where the match starts and
// ends; with every group's slots it also keeps the group ranges.
class Machine {
 public:
  Machine(Nfa const& nfa, char const* subject, int slots)
      : m_nfa(nfa),
        m_subject(subject),
        m_slots(slots),
        m_lists{StateList(nfa.size(), slots), StateList(nfa.size(), slots)},
        m_work(static_cast<std::size_t>(slots)) {}

  // The match that starts at or after `from` (where the hints of `hints`
  // let one start; only at `from` when `hints` is NULL) and ends anywhere,
  // or only at `only_end`: true with its slots in `out`.
  bool run(char const* from, Tcl_RegExp_ const* hints, char const* only_end, char const** out) {
    StateList* now = &m_lists[0];
    StateList* next = &m_lists[1];
    now->clear();
    bool matched = false;
    char const* candidate = hints == nullptr ? from : next_start(hints, m_subject, from);
    for (char const* p = from; candidate != nullptr || !now->empty(); ++p) {
      if (now->empty() && !matched) p = candidate;  // nothing under way: skip to the next start
      if (now->empty() && matched) break;
      auto const c = static_cast<unsigned char>(*p);
      if (!matched && p == candidate) {
        std::fill(m_work.begin(), m_work.end(), nullptr);
        m_work[0] = p;
        add(*now, m_nfa.start(), p);
        candidate = hints == nullptr || c == 0 ? nullptr : next_start(hints, m_subject, p + 1);
      }
      next->clear();
      for (std::uint32_t i = 0; i < now->size(); ++i) {
        std::uint32_t const pc = now->at(i);
        Inst const& inst = m_nfa[pc];
        if (inst.kind == Inst::kMatch) {
          if (only_end != nullptr && p != only_end) continue;
          std::copy_n(now->caps(pc), m_slots, out);
          out[1] = p;
          matched = true;
          candidate = nullptr;
          break;  // the ways after this one would have been tried later
        }
        if ((inst.kind == Inst::kByte || inst.kind == Inst::kSet) && m_nfa.takes(inst, c)) {
          std::copy_n(now->caps(pc), m_slots, m_work.begin());
          add(*next, inst.next, p + 1);
        }
      }
      std::swap(now, next);
      if (c == 0 || (only_end != nullptr && p >= only_end)) break;
    }
    return matched;
  }

 private:
  struct Step {
    std::uint32_t pc;
    int slot;  // -1: go to pc; else put `old` back into the slot
    char const* old;
  };

  // Adds `pc` at position `p` and every state reached from it without
  // taking a byte, in the order of preference; the way's slots are in
  // m_work.
  void add(StateList& list, std::uint32_t pc, char const* p) {
    m_stack.push_back(Step{pc, -1, nullptr});
    while (!m_stack.empty()) {
      Step const step = m_stack.back();
      m_stack.pop_back();
      if (step.slot >= 0) {
        m_work[static_cast<std::size_t>(step.slot)] = step.old;
        continue;
      }
      follow(list, step.pc, p);
    }
  }

  void follow(StateList& list, std::uint32_t pc, char const* p) {
    for (;;) {
      if (list.has(pc)) return;
      list.add(pc);
      Inst const& inst = m_nfa[pc];
      switch (inst.kind) {
        case Inst::kJump:
          pc = inst.next;
          break;
        case Inst::kSplit:
          m_stack.push_back(Step{inst.alt, -1, nullptr});
          pc = inst.next;
          break;
        case Inst::kSave:
          if (inst.arg < m_slots) {
            m_stack.push_back(Step{0, inst.arg, m_work[inst.arg]});
            m_work[inst.arg] = p;
          }
          pc = inst.next;
          break;
        case Inst::kBol:
          if (p != m_subject) return;
          pc = inst.next;
          break;
        case Inst::kEol:
          if (*p != '\0') return;
          pc = inst.next;
          break;
        case Inst::kFail:
          return;
        default:  // a byte to take, or the match
          std::copy(m_work.begin(), m_work.end(), list.caps(pc));
          return;
      }
    }
  }

  Nfa const& m_nfa;
  char const* m_subject;
  int m_slots;
  StateList m_lists[2];
  std::vector<char const*> m_work;
  std::vector<Step> m_stack;
};

// The walk over the automaton from `start` that must end at `end`, never
// trying a (state, position) pair twice: the first way, in the walk's
// order, that matches there.  Its slots are left in `slots`.
class RememberingWalk {
 public:
  static constexpr std::size_t kMaxBits = std::size_t{1} << 23;
  using Step = GroupScratch::Step;

  static bool fits(Nfa const& nfa, char const* start, char const* end) {
    return std::size_t{nfa.size()} * static_cast<std::size_t>(end - start + 1) <= kMaxBits;
  }

  RememberingWalk(Nfa const& nfa, char const* subject, char const* start, char const* end,
                  GroupScratch& scratch)
      : m_nfa(nfa),
        m_subject(subject),
        m_start(start),
        m_end(end),
        m_width(static_cast<std::size_t>(end - start + 1)),
        m_seen(scratch.seen),
        m_stack(scratch.stack) {
    m_seen.assign((std::size_t{nfa.size()} * m_width + 63) / 64, 0);
    m_stack.clear();
  }

  bool run(char const** slots) {
    std::fill(slots, slots + m_nfa.slots(), nullptr);
    m_stack.push_back(Step{m_nfa.start(), -1, m_start});
    while (!m_stack.empty()) {
      Step const step = m_stack.back();
      m_stack.pop_back();
      if (step.slot >= 0) {
        slots[step.slot] = step.at;
      } else if (walk(step.pc, step.at, slots)) {
        return true;
      }
    }
    return false;
  }

 private:
  bool first_visit(std::uint32_t pc, char const* p) {
    std::size_t const bit = std::size_t{pc} * m_width + static_cast<std::size_t>(p - m_start);
    std::uint64_t const mask = std::uint64_t{1} << (bit & 63);
    if (m_seen[bit >> 6] & mask) return false;
    m_seen[bit >> 6] |= mask;
    return true;
  }

  bool walk(std::uint32_t pc, char const* p, char const** slots) {
    for (;;) {
      if (!first_visit(pc, p)) return false;
      Inst const& inst = m_nfa[pc];
      switch (inst.kind) {
        case Inst::kByte:
        case Inst::kSet:
          if (p == m_end || !m_nfa.takes(inst, static_cast<unsigned char>(*p))) return false;
          ++p;
          pc = inst.next;
          break;
        case Inst::kJump:
          pc = inst.next;
          break;
        case Inst::kSplit:
          m_stack.push_back(Step{inst.alt, -1, p});
          pc = inst.next;
          break;
        case Inst::kSave:
          m_stack.push_back(Step{0, inst.arg, slots[inst.arg]});
          slots[inst.arg] = p;
          pc = inst.next;
          break;
        case Inst::kBol:
          if (p != m_subject) return false;
          pc = inst.next;
          break;
        case Inst::kEol:
          if (*p != '\0') return false;
          pc = inst.next;
          break;
        case Inst::kMatch:
          return p == m_end;
        case Inst::kFail:
          return false;
      }
    }
  }

  Nfa const& m_nfa;
  char const* m_subject;
  char const* m_start;
  char const* m_end;
  std::size_t m_width;
  std::vector<std::uint64_t>& m_seen;
  std::vector<Step>& m_stack;
};

// The group ranges of the match [start, end), written to the record.
[[gnu::noinline]] void find_groups(Tcl_RegExp_* re, Nfa const& nfa, char const* subject,
                                   char const* start, char const* end, GroupScratch& scratch) {
  std::vector<char const*>& slots = scratch.slots;
  slots.assign(static_cast<std::size_t>(nfa.slots()), nullptr);
  if (RememberingWalk::fits(nfa, start, end)) {
    RememberingWalk(nfa, subject, start, end, scratch).run(slots.data());
  } else {
    Machine(nfa, subject, nfa.slots()).run(start, nullptr, end, slots.data());
  }
  for (int g = 1; g < re->groups_plus_one; ++g) {
    re->startp[g] = slots[static_cast<std::size_t>(2 * g)];
    re->endp[g] = slots[static_cast<std::size_t>(2 * g + 1)];
  }
}

void clear_ranges(Tcl_RegExp_* re) {
  re->startp[0] = re->endp[0] = nullptr;
  if (re->groups_plus_one == 1) return;  // the common case, without a call to memset
  std::fill_n(re->startp + 1, re->groups_plus_one - 1, nullptr);
  std::fill_n(re->endp + 1, re->groups_plus_one - 1, nullptr);
}

// The ranges after a failed match are those the walk leaves: every one
// cleared when it tried at least one position (each try clears them and a
// failed one puts back what it changed), untouched when it tried none.
int no_match(Tcl_RegExp_* re, char const* subject, char const* from,
             Dfa::Starts known = Dfa::Starts::kUnknown) {
  bool const tried = known == Dfa::Starts::kUnknown ? next_start(re, subject, from) != nullptr
                                                    : known == Dfa::Starts::kSome;
  if (tried) clear_ranges(re);
  return 0;
}

}  // namespace

int automata_match(Tcl_RegExp_* re, Automata& automata, char const* subject, char const* from) {
  Dfa::Starts starts;
  char const* const end = automata.forward(re).match_end(subject, from, starts);
  if (end == nullptr) return no_match(re, subject, from, starts);
  char const* const start = automata.reverse(re).match_start(subject, from, end);
  re->startp[0] = start;
  re->endp[0] = end;
  if (re->groups_plus_one > 1)
    find_groups(re, *automata.nfa, subject, start, end, automata.scratch);
  return 1;
}

int linear_match(Tcl_RegExp_* re, Nfa const& nfa, char const* subject, char const* from) {
  char const* where[2] = {nullptr, nullptr};
  if (!Machine(nfa, subject, 2).run(from, re, nullptr, where)) {
    return no_match(re, subject, from);
  }
  re->startp[0] = where[0];
  re->endp[0] = where[1];
  if (re->groups_plus_one > 1) {
    GroupScratch scratch;
    find_groups(re, nfa, subject, where[0], where[1], scratch);
  }
  return 1;
}

}  // namespace zelstr::regex
