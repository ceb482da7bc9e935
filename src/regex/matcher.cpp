// matcher.cpp - backtracking matching with an explicit stack.
//
// The program is walked node by node.  Where a node offers a choice (a
// BRANCH with further alternatives, a STAR or PLUS that can give characters
// back), a frame is pushed that says what to try next; a failure pops frames
// until one still has something to try.  Group starts and ends are written
// as they are passed, and the value each replaces is pushed too, so that
// backtracking over the group puts it back: at the end of a match each
// group holds its last pass on the path that matched, as in Spencer's
// recursive matcher.  The stack lives on the heap, so long subjects with
// loops over groups cannot exhaust the thread's stack.
#include "regex/matcher.h"

#include <atomic>
#include <cstdint>
#include <cstring>
#include <new>
#include <vector>

#include "frame/messages.h"
#include "frame/per_thread.h"
#include "regex/automata.h"
#include "regex/hints.h"
#include "regex/literal_search.h"
#include "regex/linear.h"
#include "regex/program.h"
#include "regex/record.h"
#include "regex/state.h"
#include "str/search/plan.h"

namespace zelstr::regex {
namespace {

namespace msg = frame::msg;

struct Frame {
  enum Kind : unsigned char { kAlternative, kRepeat, kUndoStart, kUndoEnd };
  Kind kind;
  unsigned char group;  // undo frames
  std::uint32_t count;  // repeat: the next count to try, plus one
  char const* node;     // alternative: the BRANCH to try; repeat: the STAR or PLUS
  char const* input;    // where it starts; undo: the value to put back
};

bool in_list(char const* list, char c) { return std::strchr(list, c) != nullptr; }

// Steps the walk may take in one match before it gives up (0: no limit);
// only the tests that compare the matchers set one.
std::atomic<long> g_walk_limit{0};

class Run {
 public:
  Run(Tcl_RegExp_* re, char const* bol, std::vector<Frame>& stack)
      : m_re(re),
        m_bol(bol),
        m_stack(stack),
        m_limit(g_walk_limit.load(std::memory_order_relaxed)) {}

  // 1 when the program matches at `at`, 0 when not, -1 on an error.
  int try_at(char const* at) {
    for (int i = 0; i < m_re->groups_plus_one; ++i) m_re->startp[i] = m_re->endp[i] = nullptr;
    m_stack.clear();
    char const* end = at;
    int const result = walk(first_node(m_re), end);
    if (result == 1) {
      m_re->startp[0] = at;
      m_re->endp[0] = end;
    }
    return result;
  }

 private:
  int error(char const* text) {
    set_error(text);
    return -1;
  }

  // How many times the simple node `node` matches from `input` on; -1 for
  // a node that cannot be repeated.
  long repeat(char const* node, char const* input) const {
    char const* p = input;
    switch (op(node)) {
      case kAny:
        return static_cast<long>(std::strlen(input));
      case kExactly:
        while (*p == *operand(node)) ++p;
        break;
      case kAnyOf:
        while (*p != '\0' && in_list(operand(node), *p)) ++p;
        break;
      case kAnyBut:
        while (*p != '\0' && !in_list(operand(node), *p)) ++p;
        break;
      default:
        return -1;
    }
    return static_cast<long>(p - input);
  }

  // What may stand after a loop's repetitions: the bytes of its follow
  // set, or any byte when the program does not tell.
  struct Follow {
    ByteSet const* bytes;
    bool allows(char c) const {
      return bytes == nullptr || bytes->has(static_cast<unsigned char>(c));
    }
  };

  Follow follow_of(char const* loop) const {
    auto const at = static_cast<std::uint32_t>(loop - m_re->program);
    for (int i = 0; i < m_re->follow_count; ++i) {
      if (m_re->follow[i].node == at) return Follow{&m_re->follow[i].bytes};
    }
    return Follow{nullptr};
  }

  // The largest count from `count` down to `least` after which what
  // follows the loop can start, or -1.
  static long fitting_count(char const* input, long count, long least, Follow follow) {
    for (; count >= least; --count) {
      if (follow.allows(input[count])) return count;
    }
    return -1;
  }

  // Resumes the latest choice that has something left to try; false when
  // none has.
  bool backtrack(char const*& node, char const*& input) {
    while (!m_stack.empty()) {
      Frame& f = m_stack.back();
      switch (f.kind) {
        case Frame::kUndoStart:
          m_re->startp[f.group] = f.input;
          m_stack.pop_back();
          break;
        case Frame::kUndoEnd:
          m_re->endp[f.group] = f.input;
          m_stack.pop_back();
          break;
        case Frame::kAlternative: {
          char const* const alternative = f.node;
          input = f.input;
          char const* const after = next_node(alternative);
          if (after != nullptr && op(after) == kBranch) {
            f.node = after;
          } else {
            m_stack.pop_back();  // the last alternative
          }
          node = operand(alternative);
          return true;
        }
        case Frame::kRepeat: {
          long const least = op(f.node) == kPlus ? 1 : 0;
          char const* const next = next_node(f.node);
          long const count =
              fitting_count(f.input, static_cast<long>(f.count) - 1, least, follow_of(f.node));
          if (count < 0) {
            m_stack.pop_back();
            break;
          }
          f.count = static_cast<std::uint32_t>(count);
          input = f.input + count;
          node = next;
          return true;
        }
      }
    }
    return false;
  }

  // Runs the program from `node` at `input`; on a match `input` is left at
  // the match's end.
  int walk(char const* node, char const*& input) {
    for (;;) {
      if (m_limit > 0 && ++m_steps > m_limit) return kWalkGaveUp;
      bool ok = true;
      if (node == nullptr) return error(msg::kRePointersCorrupted);
      unsigned char const code = op(node);
      char const* next = next_node(node);
      switch (code) {
        case kEnd:
          return 1;
        case kBol:
          ok = input == m_bol;
          break;
        case kEol:
          ok = *input == '\0';
          break;
        case kAny:
          ok = *input != '\0';
          input += ok;
          break;
        case kExactly: {
          char const* const literal = operand(node);
          std::size_t const length = std::strlen(literal);
          ok = *input == *literal && std::strncmp(input, literal, length) == 0;
          if (ok) input += length;
          break;
        }
        case kAnyOf:
          ok = *input != '\0' && in_list(operand(node), *input);
          input += ok;
          break;
        case kAnyBut:
          ok = *input != '\0' && !in_list(operand(node), *input);
          input += ok;
          break;
        case kNothing:
        case kBack:
          break;
        case kBranch:
          if (next != nullptr && op(next) == kBranch) {
            m_stack.push_back(Frame{Frame::kAlternative, 0, 0, next, input});
          }
          next = operand(node);
          break;
        case kStar:
        case kPlus: {
          long const most = repeat(operand(node), input);
          if (most < 0) return error(msg::kReMemoryCorrupted);
          long const count = fitting_count(input, most, code == kPlus ? 1 : 0, follow_of(node));
          ok = count >= 0;
          if (ok) {
            if (count > (code == kPlus ? 1 : 0)) {
              m_stack.push_back(
                  Frame{Frame::kRepeat, 0, static_cast<std::uint32_t>(count), node, input});
            }
            input += count;
          }
          break;
        }
        default:
          if (is_open(code)) {
            int const n = code - kOpen;
            m_stack.push_back(Frame{Frame::kUndoStart, static_cast<unsigned char>(n), 0, nullptr,
                                    m_re->startp[n]});
            m_re->startp[n] = input;
          } else if (is_close(code)) {
            int const n = code - kClose;
            m_stack.push_back(
                Frame{Frame::kUndoEnd, static_cast<unsigned char>(n), 0, nullptr, m_re->endp[n]});
            m_re->endp[n] = input;
          } else {
            return error(msg::kReMemoryCorrupted);
          }
      }
      if (ok) {
        node = next;
      } else if (!backtrack(node, input)) {
        return 0;
      }
    }
  }

  Tcl_RegExp_* m_re;
  char const* m_bol;
  std::vector<Frame>& m_stack;
  long const m_limit;
  long m_steps = 0;
};

// The backtracking stack, kept by each thread from one match to the next so
// that a match on a short line allocates nothing.  A stack grown past a
// megabyte by a long subject is given back.
struct ThreadStack {
  std::vector<Frame> frames;
};
using StackSlot = frame::PerThread<ThreadStack, frame::ThreadSlot::kRegexStack>;

class KeptStack {
 public:
  KeptStack() : m_frames(StackSlot::get().frames) {}
  ~KeptStack() {
    if (m_frames.capacity() > kKeep) std::vector<Frame>().swap(m_frames);
  }
  KeptStack(KeptStack const&) = delete;
  KeptStack& operator=(KeptStack const&) = delete;
  std::vector<Frame>& get() { return m_frames; }

 private:
  static constexpr std::size_t kKeep = (1u << 20) / sizeof(Frame);
  std::vector<Frame>& m_frames;
};

// The required literal (an EXACTLY operand of the program, so terminated)
// occurs in the subject: one run of the library's forward search.
bool contains_required(Tcl_RegExp_ const* re, char const* subject) {
  str::search::SearchState state;
  str::search::prepare(state, re->must, static_cast<std::uint32_t>(re->must_length));
  return str::search::find_first(subject, re->must, state).match != nullptr;
}

// The backtracking walk over every start position from `from` on.
// Kept out of line: the common path through execute() stays short.
[[gnu::noinline]] int walk_from(Tcl_RegExp_* re, char const* subject, char const* from) {
  KeptStack stack;
  Run run(re, subject, stack.get());
  for (char const* s = next_start(re, subject, from); s != nullptr;
       s = *s == '\0' ? nullptr : next_start(re, subject, s + 1)) {
    int const r = run.try_at(s);
    if (r != 0) return r;
  }
  return 0;
}

// An expression that is one literal: its first occurrence, as the walk,
// trying each place its first byte stands at, would find it; the ranges
// after a failure as the walk leaves them (cleared when it tried a place).
int literal_match(Tcl_RegExp_* re, char const* literal, char const* from) {
  std::size_t const length = std::strlen(literal);
  bool tried = false;
  char const* const at = find_by_first_byte(from, literal, length, tried);
  if (at != nullptr) {
    re->startp[0] = at;
    re->endp[0] = at + length;
    return 1;
  }
  if (tried) re->startp[0] = re->endp[0] = nullptr;
  return 0;
}

// Set by the tests that compare the matchers, before they start threads.
std::atomic<Strategy> g_strategy{Strategy::kAuto};

}  // namespace

void set_strategy(Strategy strategy) { g_strategy.store(strategy, std::memory_order_relaxed); }
void set_walk_limit(long steps) { g_walk_limit.store(steps, std::memory_order_relaxed); }

int execute(Tcl_RegExp_* re, char const* subject, char const* from) {
  try {
    if (re->must != nullptr && !contains_required(re, from)) return 0;
    Automata* const automata = re->automata;
    Strategy const strategy = g_strategy.load(std::memory_order_relaxed);
    if (automata == nullptr || strategy == Strategy::kWalk) return walk_from(re, subject, from);
    if (strategy == Strategy::kPike) return linear_match(re, *automata->nfa, subject, from);
    if (char const* const literal = sole_literal(re); literal != nullptr) {
      return literal_match(re, literal, from);
    }
    return automata_match(re, *automata, subject, from);
  } catch (std::bad_alloc const&) {
    if (re->automata != nullptr) re->automata->forget();
    set_out_of_space();
    return -1;
  }
}

}  // namespace zelstr::regex
