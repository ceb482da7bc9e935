// dfa.cpp - the forward and reverse automata, made as needed (see dfa.h).
#include "regex/dfa.h"

#include <algorithm>
#include <cstring>
#include <map>

#include "regex/hints.h"
#include "regex/literal_set.h"
#include "regex/nfa.h"
#include "regex/program.h"
#include "regex/record.h"
#include "regex/staying_state.h"

namespace zelstr::regex {

// Instructions to close over, and what holds at their position.
struct Dfa::Seeds {
  std::vector<std::uint32_t> pcs;
  bool at_start = false;  // the position is the subject's start ('^' holds)
  bool at_end = false;    // the position is the terminator ('$' holds)
};

namespace {

bool is_taking(Inst const& inst) { return inst.kind == Inst::kByte || inst.kind == Inst::kSet; }

// What one state costs in the cache, besides its list.
constexpr std::size_t kStateOverhead = 96;

// A first-byte set this large is met at almost every position: jumping to
// its next member costs more than it saves.
constexpr int kMostFirstBytes = 24;
constexpr int kShortFirstList = 16;

}  // namespace

Dfa::Dfa(Nfa const& nfa, Tcl_RegExp_ const* re, Direction direction)
    : m_nfa(nfa), m_re(re), m_direction(direction), m_mark(nfa.size(), 0) {
  LiteralSet literals;
  m_search_start = re->anchored ? nfa.start() : nfa.search_start();
  if (direction == Direction::kForward) {
    int first_count = 0;
    for (int b = 0; b < 256; ++b) {
      if (!re->first_bytes.has(static_cast<unsigned char>(b))) continue;
      ++first_count;
      if (b != 0) m_first_list += static_cast<char>(b);
    }
    // A short list without the terminator is searched for by the C library.
    if (re->first_bytes.has(0) || first_count > kShortFirstList) m_first_list.clear();
    // Beginnings are found by the jumps.  A few first bytes are found by
    // strcspn at less cost on a line than the vector filter of several
    // strings, which pays on long texts.
    literals = required_literals(re);
    if (literals.prefix && (literals.strings.size() == 1 || m_first_list.empty())) {
      m_beginnings.prepare(literals, true);
      m_first_is_literals = literals.strings.size() == 1 && !literals.folded &&
                            first_count == 1 && m_first_list.size() == 1 &&
                            m_first_list[0] == literals.strings[0][0];
    }
    m_can_skip = !re->anchored && re->first_bytes_known &&
                 (first_count <= kMostFirstBytes || m_beginnings.active());
  }
  build_classes();
  for (std::uint32_t pc = 0; pc < nfa.size(); ++pc) m_tests_start |= nfa[pc].kind == Inst::kBol;
  if (direction == Direction::kReverse) build_reverse_edges();
  flush();
  // Strings every match holds one of are looked for before the automaton
  // runs, unless the hints' literal already is, or the expression is
  // anchored and its start rules out most bytes (it fails on most subjects
  // within a few bytes, sooner than a search of the whole subject would).
  if (direction == Direction::kForward && !literals.prefix && re->must == nullptr &&
      !(re->anchored && start_rules_out_most_bytes())) {
    m_required.prepare(literals, true);
  }
}

// Whether more than half of the byte values lead nowhere from the start
// state at the subject's start.
bool Dfa::start_rules_out_most_bytes() {
  std::vector<std::uint32_t> const start = m_lists[static_cast<std::size_t>(start_state(true, false))];
  int dead = 0;
  for (int c = 1; c < 256; ++c) {
    bool const taken = std::any_of(start.begin(), start.end(), [&](std::uint32_t pc) {
      return is_taking(m_nfa[pc]) && m_nfa.takes(m_nfa[pc], static_cast<unsigned char>(c));
    });
    dead += taken ? 0 : 1;
  }
  return dead > 128;
}

// Two bytes share a class when every instruction that takes a byte takes
// both or neither; the terminator has a class of its own.
void Dfa::build_classes() {
  std::vector<int> cls(256, 1);
  cls[0] = 0;
  int count = 2;
  for (std::uint32_t pc = 0; pc < m_nfa.size(); ++pc) {
    Inst const& inst = m_nfa[pc];
    if (!is_taking(inst)) continue;
    std::map<std::pair<int, bool>, int> split;
    for (int c = 1; c < 256; ++c)
      split.emplace(std::make_pair(cls[c], m_nfa.takes(inst, static_cast<unsigned char>(c))), 0);
    int n = 1;
    for (auto& [key, id] : split) id = n++;
    for (int c = 1; c < 256; ++c)
      cls[c] = split[{cls[c], m_nfa.takes(inst, static_cast<unsigned char>(c))}];
    count = n;
  }
  for (int c = 0; c < 256; ++c) m_class[c] = static_cast<unsigned char>(cls[c]);
  m_classes = count;
}

void Dfa::build_reverse_edges() {
  m_empty_into.assign(m_nfa.size(), {});
  m_taking_into.assign(m_nfa.size(), {});
  // The search loop is not part of the expression: a match never runs back
  // through it.
  for (std::uint32_t pc = 0; pc < m_nfa.search_start(); ++pc) {
    Inst const& inst = m_nfa[pc];
    switch (inst.kind) {
      case Inst::kByte:
      case Inst::kSet:
        m_taking_into[inst.next].push_back(pc);
        break;
      case Inst::kSplit:
        m_empty_into[inst.next].push_back(pc);
        m_empty_into[inst.alt].push_back(pc);
        break;
      case Inst::kJump:
      case Inst::kSave:
      case Inst::kBol:
      case Inst::kEol:
        m_empty_into[inst.next].push_back(pc);
        break;
      case Inst::kMatch:
      case Inst::kFail:
        break;
    }
  }
}

void Dfa::flush() {
  m_ids.clear();
  m_lists.clear();
  m_flags.clear();
  m_exits.clear();
  m_next.clear();
  std::fill(std::begin(m_starts), std::end(m_starts), kUnknown);
  m_memory = 0;
  state_for({});  // kDead
  m_flags[kDead] |= kDeadEnd;
  if (m_can_skip) {
    // Made now, so that every link to it carries its flag.
    StateId const idle = start_state(false, false);
    std::uint8_t& flags = m_flags[static_cast<std::size_t>(idle)];
    flags = static_cast<std::uint8_t>((flags | kIdle) & ~kStays);
  }
}

Dfa::StateId Dfa::state_for(std::vector<std::uint32_t> const& leaves) {
  std::string key(reinterpret_cast<char const*>(leaves.data()), leaves.size() * sizeof leaves[0]);
  auto const found = m_ids.find(key);
  if (found != m_ids.end()) return found->second;
  auto const id = static_cast<StateId>(m_lists.size());
  m_memory +=
      kStateOverhead + 2 * key.size() + static_cast<std::size_t>(m_classes) * sizeof(StateId);
  m_ids.emplace(std::move(key), id);
  m_lists.push_back(leaves);
  bool const accepts = m_direction == Direction::kForward
                           ? !leaves.empty() && m_nfa[leaves.back()].kind == Inst::kMatch
                           : std::binary_search(leaves.begin(), leaves.end(), m_nfa.start());
  m_flags.push_back(accepts ? kHasMatch : 0);
  m_next.resize(m_next.size() + static_cast<std::size_t>(m_classes), -1);
  m_exits.emplace_back();
  if (m_direction == Direction::kForward && !accepts && !leaves.empty() &&
      stays(leaves, m_exits.back())) {
    m_flags.back() |= kStays;
  }
  return id;
}

// Whether a state of these instructions stays itself on every byte but a
// few (staying_state.h), the terminator's class left out.
bool Dfa::stays(std::vector<std::uint32_t> const& leaves, std::string& exits) {
  Seeds seeds;
  auto const after = [&](unsigned char b, std::vector<std::uint32_t>& next) {
    seeds.pcs.clear();
    for (std::uint32_t const pc : leaves) {
      Inst const& inst = m_nfa[pc];
      if (is_taking(inst) && m_nfa.takes(inst, b)) seeds.pcs.push_back(inst.next);
    }
    close(seeds, next);
  };
  return stays_but_on(leaves, m_class, m_classes, 1, after, exits);
}

void Dfa::close(Seeds const& seeds, std::vector<std::uint32_t>& leaves) {
  leaves.clear();
  if (++m_generation == 0) {  // the marks wrapped: start them again
    std::fill(m_mark.begin(), m_mark.end(), 0);
    m_generation = 1;
  }
  if (m_direction == Direction::kForward) {
    close_forward(seeds, leaves);
  } else {
    close_reverse(seeds, leaves);
  }
}

// In the order of preference: the first seed and everything it reaches
// before the second, the way a SPLIT prefers before its other way.  Stops
// at the first match.
void Dfa::close_forward(Seeds const& seeds, std::vector<std::uint32_t>& leaves) {
  m_stack.assign(seeds.pcs.rbegin(), seeds.pcs.rend());
  while (!m_stack.empty()) {
    std::uint32_t pc = m_stack.back();
    m_stack.pop_back();
    for (;;) {
      if (m_mark[pc] == m_generation) break;
      m_mark[pc] = m_generation;
      Inst const& inst = m_nfa[pc];
      if (inst.kind == Inst::kJump || inst.kind == Inst::kSave) {
        pc = inst.next;
      } else if (inst.kind == Inst::kSplit) {
        m_stack.push_back(inst.alt);
        pc = inst.next;
      } else if (inst.kind == Inst::kBol) {
        if (!seeds.at_start) break;
        pc = inst.next;
      } else if (inst.kind == Inst::kEol && seeds.at_end) {
        pc = inst.next;
      } else if (inst.kind == Inst::kFail) {
        break;
      } else {  // a byte to take, the match, or '$' waiting for the terminator
        leaves.push_back(pc);
        if (inst.kind == Inst::kMatch) {
          m_stack.clear();
          return;
        }
        break;
      }
    }
  }
}

// Every instruction from which the seeds are reached without taking a
// byte, kept when a byte can lead to it or it is the program's start;
// sorted.
void Dfa::close_reverse(Seeds const& seeds, std::vector<std::uint32_t>& leaves) {
  m_stack.assign(seeds.pcs.begin(), seeds.pcs.end());
  while (!m_stack.empty()) {
    std::uint32_t const pc = m_stack.back();
    m_stack.pop_back();
    if (m_mark[pc] == m_generation) continue;
    m_mark[pc] = m_generation;
    if (!m_taking_into[pc].empty() || pc == m_nfa.start()) leaves.push_back(pc);
    for (std::uint32_t const from : m_empty_into[pc]) {
      Inst const& inst = m_nfa[from];
      if (inst.kind == Inst::kBol && !seeds.at_start) continue;
      if (inst.kind == Inst::kEol && !seeds.at_end) continue;
      m_stack.push_back(from);
    }
  }
  std::sort(leaves.begin(), leaves.end());
}

Dfa::StateId Dfa::make_start_state(bool at_start, bool at_end) {
  Seeds seeds;
  seeds.at_start = at_start;
  seeds.at_end = at_end && m_direction == Direction::kReverse;
  if (m_direction == Direction::kForward) {
    seeds.pcs.push_back(m_search_start);
  } else {
    for (std::uint32_t pc = 0; pc < m_nfa.size(); ++pc) {
      if (m_nfa[pc].kind == Inst::kMatch) seeds.pcs.push_back(pc);
    }
  }
  std::vector<std::uint32_t> leaves;
  close(seeds, leaves);
  StateId const id = state_for(leaves);
  m_starts[(at_start ? 2 : 0) + (at_end ? 1 : 0)] = id;
  return id;
}

// The state after taking the byte `c` (not the terminator) into a
// position where '^' holds when `at_start`.  Forward: the ways that take
// it, in order.  Reverse: the instructions that lead, by taking it, to one
// of the state's.  Only transitions into positions other than the
// subject's start are kept in the table.  A full cache is emptied first:
// `from` is then gone, and only the state returned is valid.
Dfa::StateId Dfa::transition(StateId from, unsigned char c, bool at_start) {
  Seeds seeds;
  seeds.at_start = at_start;
  std::vector<std::uint32_t> const& list = m_lists[static_cast<std::size_t>(from)];
  if (m_direction == Direction::kForward) {
    for (std::uint32_t const pc : list) {
      Inst const& inst = m_nfa[pc];
      if (is_taking(inst) && m_nfa.takes(inst, c)) seeds.pcs.push_back(inst.next);
    }
  } else {
    for (std::uint32_t const pc : list) {
      for (std::uint32_t const before : m_taking_into[pc]) {
        if (m_nfa.takes(m_nfa[before], c)) seeds.pcs.push_back(before);
      }
    }
  }
  std::vector<std::uint32_t> leaves;
  close(seeds, leaves);
  if (m_memory > kCacheLimit) {
    flush();
    ++m_flushes;
    return state_for(leaves);
  }
  StateId const to = state_for(leaves);
  if (!at_start) {
    m_next[static_cast<std::size_t>(from) * static_cast<std::size_t>(m_classes) + m_class[c]] =
        link_to(to);
  }
  return to;
}

// Forward: whether the state matches when its position is the terminator:
// it holds the match, or a '$' that leads to it.  Known once for every
// position but the subject's start (where '^' may also hold).
bool Dfa::matches_at_end(StateId state, bool at_start) {
  std::uint8_t& flags = m_flags[static_cast<std::size_t>(state)];
  if (!at_start && (flags & kEndKnown)) return (flags & kMatchAtEnd) != 0;
  Seeds seeds;
  seeds.at_start = at_start;
  seeds.at_end = true;
  for (std::uint32_t const pc : m_lists[static_cast<std::size_t>(state)]) {
    Inst const& inst = m_nfa[pc];
    if (inst.kind == Inst::kMatch) seeds.pcs.push_back(pc);
    if (inst.kind == Inst::kEol) seeds.pcs.push_back(inst.next);
  }
  std::vector<std::uint32_t> leaves;
  close(seeds, leaves);
  bool const matches = !leaves.empty() && m_nfa[leaves.back()].kind == Inst::kMatch;
  if (!at_start) flags |= kEndKnown | (matches ? kMatchAtEnd : 0);
  return matches;
}

// Forward, from a state with nothing under way at `p`: the next position
// where a match can start, or NULL when none can.  `any_first`, when
// given, tells whether a byte a match can begin with is met at all (the
// strings of a folded set may begin where no match can).
char const* Dfa::skip(char const* subject, char const* p, bool* any_first) {
  if (m_beginnings.active()) {
    char const* const at = m_beginnings.next(p);
    if (any_first != nullptr) {
      // A string found where a match can begin settles it without a pass,
      // and so does the search for a string whose first byte is the only
      // one a match can begin with.
      bool const begins = at != nullptr && (!m_re->first_bytes_known ||
                                            m_re->first_bytes.has(static_cast<unsigned char>(*at)));
      *any_first = begins || (m_first_is_literals ? m_beginnings.first_byte_seen()
                                                  : next_start(m_re, subject, p) != nullptr);
    }
    return at;
  }
  if (!m_first_list.empty()) {
    p += std::strcspn(p, m_first_list.c_str());  // the C library's vector search
    if (*p == '\0') p = nullptr;
  } else {
    p = next_start(m_re, subject, p);
  }
  if (any_first != nullptr) *any_first = p != nullptr;
  return p;
}

// Whether a literal every match holds occurs from `p` on.
bool Dfa::holds_required(char const* p) {
  return !m_required.active() || m_required.next(p) != nullptr;
}

// The loop follows links as long as they carry no flag; a flag, a link not
// made yet or the terminator (whose class has no links) takes it to the
// slow path below.
char const* Dfa::match_end(char const* subject, char const* from, Starts& starts) {
  starts = Starts::kUnknown;
  if (!holds_required(from)) return nullptr;
  StateId const first = start_state(from == subject, false);
  Link link = link_to(first);
  char const* end = nullptr;
  char const* p = from;
  for (;;) {
    // At p, in the state `link` leads to.
    if (link & kDeadEnd) return end;
    if (link & kHasMatch) {
      end = p;
      if (m_lists[static_cast<std::size_t>(state_of(link))].size() == 1) return end;
    }
    if (link & kIdle) {
      bool any_first = false;
      bool const first_skip = p == from;
      p = skip(subject, p, first_skip ? &any_first : nullptr);
      if (first_skip) starts = any_first ? Starts::kSome : Starts::kNone;
      if (p == nullptr) return end;
    } else if (link & kStays) {  // on to the next byte that changes the state
      p += std::strcspn(p, m_exits[static_cast<std::size_t>(state_of(link))].c_str());
    }
    Link const* const table = m_next.data();
    Link next;
    for (;;) {
      next = table[(link >> kFlagShift) + m_class[static_cast<unsigned char>(*p)]];
      if ((next & kSlowLink) != 0) break;
      link = next;
      ++p;
    }
    auto const c = static_cast<unsigned char>(*p);
    if (c == 0) {
      if (matches_at_end(state_of(link), p == subject)) end = p;
      return end;
    }
    if (next < 0) next = link_to(transition(state_of(link), c, false));
    link = next;
    ++p;
  }
}

// The same loop backwards: the last position seen where the program's
// start is reached is the match's start.  The step onto the subject's
// first byte is made apart, since '^' holds there.
char const* Dfa::match_start(char const* subject, char const* from, char const* end) {
  Link link = link_to(start_state(end == subject, *end == '\0'));
  char const* const fast_end = from > subject || !m_tests_start ? from : subject + 1;
  char const* start = nullptr;
  char const* q = end;
  for (;;) {
    if (link & kDeadEnd) return start;
    if (link & kHasMatch) start = q;
    if (q == from) return start;
    Link const* const table = m_next.data();
    Link next = -1;
    while (q > fast_end) {
      next = table[(link >> kFlagShift) + m_class[static_cast<unsigned char>(q[-1])]];
      if ((next & kSlowLink) != 0) break;
      link = next;
      --q;
    }
    if (q == from) {
      if (link & kHasMatch) start = q;
      return start;
    }
    auto const c = static_cast<unsigned char>(q[-1]);
    // Onto the first byte '^' holds: only a program that tests it needs a
    // transition of its own there.
    bool const onto_first = q - 1 == subject && m_tests_start;
    if (onto_first || next < 0) {
      next = link_to(transition(state_of(link), c, onto_first));
    }
    link = next;
    --q;
  }
}

}  // namespace zelstr::regex
