// line_dfa.cpp - the automaton of matching lines (see line_dfa.h).
#include "regex/line_dfa.h"

#include <algorithm>
#include <cstring>
#include <map>
#include <new>

#include "regex/literal_set.h"
#include "regex/nfa.h"
#include "regex/record.h"
#include "regex/staying_state.h"

namespace zelstr::regex {
namespace {

bool is_taking(Inst const& inst) { return inst.kind == Inst::kByte || inst.kind == Inst::kSet; }

// What one state costs in the cache, besides its list.
constexpr std::size_t kStateOverhead = 96;

// Bytes a match can start with beyond this many are met so often that
// jumping to the next costs more than it saves.
constexpr std::size_t kMostStops = 16;

}  // namespace

LineDfa::LineDfa(Nfa const& nfa, Tcl_RegExp_ const* re)
    : m_nfa(nfa),
      m_search_start(re->anchored ? nfa.start() : nfa.search_start()),
      m_mark(nfa.size(), 0) {
  m_literals.prepare(required_literals(re), false);
  if (!re->anchored && re->first_bytes_known) {
    for (int b = 1; b < 256; ++b) {
      if (re->first_bytes.has(static_cast<unsigned char>(b))) m_stops += static_cast<char>(b);
    }
    if (m_stops.size() > kMostStops) {
      m_stops.clear();
    } else {
      m_stops += "\n\r";
    }
  }
  build_classes();
  flush();
}

// Two bytes share a class when every instruction that takes a byte takes
// both or neither; the terminator, the line feed and the carriage return
// have classes of their own, which the loop hands to its slow path.
void LineDfa::build_classes() {
  std::vector<int> cls(256, kReturnClass + 1);
  cls[0] = kEndClass;
  cls['\n'] = kLineFeedClass;
  cls['\r'] = kReturnClass;
  int count = kReturnClass + 2;
  for (std::uint32_t pc = 0; pc < m_nfa.size(); ++pc) {
    Inst const& inst = m_nfa[pc];
    if (!is_taking(inst)) continue;
    std::map<std::pair<int, bool>, int> split;
    for (int c = 0; c < 256; ++c) {
      if (cls[c] > kReturnClass) {
        split.emplace(std::make_pair(cls[c], m_nfa.takes(inst, static_cast<unsigned char>(c))), 0);
      }
    }
    int n = kReturnClass + 1;
    for (auto& [key, id] : split) id = n++;
    for (int c = 0; c < 256; ++c) {
      if (cls[c] > kReturnClass) {
        cls[c] = split[{cls[c], m_nfa.takes(inst, static_cast<unsigned char>(c))}];
      }
    }
    count = n;
  }
  for (int c = 0; c < 256; ++c) m_class[c] = static_cast<unsigned char>(cls[c]);
  m_classes = count;
}

void LineDfa::flush() {
  m_ids.clear();
  m_lists.clear();
  m_flags.clear();
  m_exits.clear();
  m_next.clear();
  m_start = kUnknown;
  m_idle = kUnknown;
  m_memory = 0;
  if (!m_stops.empty()) {
    // Made now, so that the loop's check of the state it enters sees it.
    std::uint8_t& flags = m_flags[static_cast<std::size_t>(idle_state())];
    flags = static_cast<std::uint8_t>((flags | kIdle) & ~kStays);
  }
}

LineDfa::StateId LineDfa::state_for(std::vector<std::uint32_t> const& leaves) {
  std::string key(reinterpret_cast<char const*>(leaves.data()), leaves.size() * sizeof leaves[0]);
  auto const found = m_ids.find(key);
  if (found != m_ids.end()) return found->second;
  auto const id = static_cast<StateId>(m_lists.size());
  m_memory +=
      kStateOverhead + 2 * key.size() + static_cast<std::size_t>(m_classes) * sizeof(StateId);
  m_ids.emplace(std::move(key), id);
  m_lists.push_back(leaves);
  bool accepts = false;
  for (std::uint32_t const pc : leaves) accepts = accepts || m_nfa[pc].kind == Inst::kMatch;
  m_flags.push_back(
      static_cast<std::uint8_t>((accepts ? kAccepts : 0) | (leaves.empty() ? kDead : 0)));
  m_exits.push_back(accepts || leaves.empty() ? std::string() : exits_of(leaves));
  if (!m_exits.back().empty()) m_flags.back() |= kStays;
  m_next.resize(m_next.size() + static_cast<std::size_t>(m_classes), kUnknownLink);
  for (int special : {kEndClass, kLineFeedClass, kReturnClass}) {
    m_next[static_cast<std::size_t>(id) * static_cast<std::size_t>(m_classes) +
           static_cast<std::size_t>(special)] = kSlowLink;
  }
  return id;
}

// The bytes on which a state with these instructions leaves itself, line
// ends included, when it stays itself on every other byte and the others
// are few (staying_state.h); "" otherwise.  The classes of the line ends
// and the terminator, which the loop hands to its slow path, are left out.
std::string LineDfa::exits_of(std::vector<std::uint32_t> const& leaves) {
  std::vector<std::uint32_t> seeds;
  auto const after = [&](unsigned char b, std::vector<std::uint32_t>& next) {
    seeds.clear();
    for (std::uint32_t const pc : leaves) {
      Inst const& inst = m_nfa[pc];
      if (is_taking(inst) && m_nfa.takes(inst, b)) seeds.push_back(inst.next);
    }
    close(seeds, false, false, next);
  };
  std::string exits;
  if (!stays_but_on(leaves, m_class, m_classes, kReturnClass + 1, after, exits)) return {};
  return exits + "\n\r";
}

// Every instruction the seeds reach without taking a byte, under what holds
// at the position: the ones that take a byte, the match, and the '$' tests
// still waiting for the line's end.  Sorted, each once.
void LineDfa::close(std::vector<std::uint32_t>& seeds, bool at_start, bool at_end,
                    std::vector<std::uint32_t>& leaves) {
  leaves.clear();
  if (++m_generation == 0) {
    std::fill(m_mark.begin(), m_mark.end(), 0);
    m_generation = 1;
  }
  m_stack.swap(seeds);
  while (!m_stack.empty()) {
    std::uint32_t const pc = m_stack.back();
    m_stack.pop_back();
    if (m_mark[pc] == m_generation) continue;
    m_mark[pc] = m_generation;
    Inst const& inst = m_nfa[pc];
    switch (inst.kind) {
      case Inst::kJump:
      case Inst::kSave:
        m_stack.push_back(inst.next);
        break;
      case Inst::kSplit:
        m_stack.push_back(inst.alt);
        m_stack.push_back(inst.next);
        break;
      case Inst::kBol:
        if (at_start) m_stack.push_back(inst.next);
        break;
      case Inst::kEol:
        if (at_end) {
          m_stack.push_back(inst.next);
        } else {
          leaves.push_back(pc);
        }
        break;
      case Inst::kFail:
        break;
      default:  // a byte to take, or the match
        leaves.push_back(pc);
        break;
    }
  }
  std::sort(leaves.begin(), leaves.end());
}

LineDfa::StateId LineDfa::line_start_state() {
  if (m_start != kUnknown) return m_start;
  std::vector<std::uint32_t> seeds{m_search_start}, leaves;
  close(seeds, true, false, leaves);
  m_start = state_for(leaves);
  return m_start;
}

// The state inside a line with nothing under way but the search loop.
LineDfa::StateId LineDfa::idle_state() {
  if (m_idle != kUnknown) return m_idle;
  std::vector<std::uint32_t> seeds{m_search_start}, leaves;
  close(seeds, false, false, leaves);
  m_idle = state_for(leaves);
  return m_idle;
}

// The state after taking `c` inside a line ('^' no longer holds).  A full
// cache is emptied first: `from` is then gone, only the state returned is
// valid.
LineDfa::StateId LineDfa::transition(StateId from, unsigned char c) {
  std::vector<std::uint32_t> seeds, leaves;
  for (std::uint32_t const pc : m_lists[static_cast<std::size_t>(from)]) {
    Inst const& inst = m_nfa[pc];
    if (is_taking(inst) && m_nfa.takes(inst, c)) seeds.push_back(inst.next);
  }
  close(seeds, false, false, leaves);
  if (m_memory > kCacheLimit) {
    flush();
    return state_for(leaves);
  }
  StateId const to = state_for(leaves);
  if (m_class[c] > kReturnClass) {
    m_next[static_cast<std::size_t>(from) * static_cast<std::size_t>(m_classes) + m_class[c]] =
        link_to(to);
  }
  return to;
}

// Whether the state matches at the line's end: it holds the match, or a
// '$' that leads to it.
// Worked out once per state (and kind of line), then kept in its flags:
// every line that does not match ends in such a test.
bool LineDfa::matches_at_line_end(StateId state, bool at_start) {
  std::uint8_t& flags = m_flags[static_cast<std::size_t>(state)];
  std::uint8_t const known = at_start ? kEmptyEndKnown : kEndKnown;
  std::uint8_t const matches = at_start ? kEmptyEndMatches : kEndMatches;
  if ((flags & known) == 0) {
    flags |= static_cast<std::uint8_t>(known | (ends_a_match(state, at_start) ? matches : 0));
  }
  return (flags & matches) != 0;
}

bool LineDfa::ends_a_match(StateId state, bool at_start) {
  std::vector<std::uint32_t> seeds, leaves;
  for (std::uint32_t const pc : m_lists[static_cast<std::size_t>(state)]) {
    Inst const& inst = m_nfa[pc];
    if (inst.kind == Inst::kMatch) return true;
    if (inst.kind == Inst::kEol) seeds.push_back(inst.next);
  }
  if (seeds.empty()) return false;
  close(seeds, at_start, true, leaves);
  for (std::uint32_t const pc : leaves) {
    if (m_nfa[pc].kind == Inst::kMatch) return true;
  }
  return false;
}

// Reads the lines from the one that starts at `p`: the start of the first
// that matches, or NULL.  With `one_line`, only that line: `*next` then
// receives the start of the line after it (the terminator at the end).
char const* LineDfa::scan(unsigned char const* p, bool one_line, unsigned char const** next) {
  for (;;) {  // a line starts at p, unless the text ends there
    if (*p == 0) {
      if (next != nullptr) *next = p;
      return nullptr;
    }
    auto const* const line = p;
    Link link = link_to(line_start_state());
    for (;;) {
      if (link & kAccepts) return reinterpret_cast<char const*>(line);
      if (link & kIdle) {  // on to the next byte a match can start with, or line end
        p += std::strcspn(reinterpret_cast<char const*>(p), m_stops.c_str());
      } else if (link & kStays) {  // on to the next byte that changes the state
        p += std::strcspn(reinterpret_cast<char const*>(p),
                          m_exits[static_cast<std::size_t>(state_of(link))].c_str());
      }
      if (link & kDead) {  // nothing under way: on to the next line
        char const* const lf = std::strchr(reinterpret_cast<char const*>(p), '\n');
        p = lf != nullptr ? reinterpret_cast<unsigned char const*>(lf) + 1
                          : p + std::strlen(reinterpret_cast<char const*>(p));
        break;
      }
      // One load a byte: a link not made yet (negative) or one that
      // carries a flag leaves the loop.
      Link const* const table = m_next.data();
      Link next_link;
      for (;;) {
        next_link = table[(link >> kFlagBits) + m_class[*p]];
        if ((static_cast<std::uint32_t>(next_link) & kLeaveLoop) != 0) break;
        link = next_link;
        ++p;
      }
      unsigned char const c = *p;
      bool const ends = c == 0 || c == '\n' || (c == '\r' && p[1] == '\n');
      if (ends) {
        if (matches_at_line_end(state_of(link), p == line)) {
          return reinterpret_cast<char const*>(line);
        }
        p += c == 0 ? 0 : c == '\n' ? 1 : 2;
        break;
      }
      link = next_link >= 0 ? next_link : link_to(transition(state_of(link), c));
      ++p;
    }
    if (one_line) {
      *next = p;
      return nullptr;
    }
  }
}

char const* LineDfa::first_matching_line(char const* from) {
  auto const* p = reinterpret_cast<unsigned char const*>(from);
  if (!m_literals.active()) return scan(p, false, nullptr);
  // Only the lines that hold one of the strings can match: each is read alone.
  while (*p != 0) {
    auto const* const hit =
        reinterpret_cast<unsigned char const*>(m_literals.next(reinterpret_cast<char const*>(p)));
    if (hit == nullptr) return nullptr;
    unsigned char const* line = hit;
    while (line > p && line[-1] != '\n') --line;
    unsigned char const* next = nullptr;
    if (char const* const matched = scan(line, true, &next)) return matched;
    p = next;
  }
  return nullptr;
}

}  // namespace zelstr::regex
