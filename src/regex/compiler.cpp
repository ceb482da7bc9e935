// compiler.cpp - the recursive-descent compiler: expression, branch, piece,
// atom, each emitting its nodes into the compile work buffer as it parses.
//
// The program is built in one pass.  A quantifier is seen only after its
// operand was emitted, so STAR, PLUS and the BRANCH of a loop are inserted
// in front of the operand, moving it up.  Once the program reaches its size
// limit nothing more is written (the bytes are still counted), so a pattern
// too big for the limit is refused after the pass instead of overrunning
// the buffer.
#include "regex/compiler.h"

#include <algorithm>
#include <cctype>
#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <iterator>
#include <new>

#include "frame/memory.h"
#include "frame/messages.h"
#include "frame/per_thread.h"
#include "regex/automata.h"
#include "regex/brackets.h"
#include "regex/hints.h"
#include "regex/program.h"
#include "regex/record.h"
#include "regex/state.h"

namespace zelstr::regex {
namespace {

namespace msg = frame::msg;

// The work buffer: room for a program at its limit, slack for the last
// insertions, and a guard word that must still be all ones after the pass.
constexpr std::size_t kWorkBufferSize = 67795;
constexpr std::size_t kGuardSize = 4;

// Each thread's work buffer, allocated on its first compile.
struct WorkBuffer {
  unsigned char* bytes = nullptr;
  WorkBuffer() noexcept = default;
  WorkBuffer(WorkBuffer const&) = delete;
  WorkBuffer& operator=(WorkBuffer const&) = delete;
  ~WorkBuffer() { std::free(bytes); }
};
using WorkSlot = frame::PerThread<WorkBuffer, frame::ThreadSlot::kRegexWork>;

// What a parsed piece can do, as the quantifiers and hints need to know.
enum Flags : int {
  kWorst = 0,     // nothing known
  kHasWidth = 1,  // never matches the empty string
  kSimple = 2,    // one simple node: STAR and PLUS can take it as operand
  kSpStart = 4,   // starts with a * or ? piece
};

constexpr std::size_t kFail = static_cast<std::size_t>(-1);

bool is_quantifier(char c) { return c == '*' || c == '+' || c == '?'; }

class Compiler {
 public:
  Compiler(char const* pattern, unsigned char* buffer, bool backslashes, bool fold_case)
      : m_parse(pattern), m_code(buffer), m_backslashes(backslashes), m_fold_case(fold_case) {
    std::memset(m_names, 0, sizeof m_names);
  }

  // Parses the whole pattern; false with the error text set.
  bool run(int* flags) {
    emit(kCheckByte);
    return expression(false, flags) != kFail;
  }

  std::size_t size() const { return m_size; }
  int groups() const { return m_groups; }
  unsigned char const* names() const { return m_names; }

 private:
  // ---- emission -------------------------------------------------------------
  bool writable(std::size_t at) const { return at < kProgramLimit; }

  void emit(unsigned char b) {
    if (writable(m_size)) m_code[m_size] = b;
    ++m_size;
  }

  std::size_t node(unsigned char code) {
    std::size_t const at = m_size;
    emit(code);
    emit(0);
    emit(0);
    return at;
  }

  // Puts a node of `code` in front of the operand at `at`.
  void insert(unsigned char code, std::size_t at) {
    if (writable(m_size)) std::memmove(m_code + at + kNodeHeader, m_code + at, m_size - at);
    m_size += kNodeHeader;
    if (writable(at + kNodeHeader)) {
      m_code[at] = code;
      m_code[at + 1] = m_code[at + 2] = 0;
    }
  }

  // The last node of the chain that starts at `at`.
  std::size_t last_of(std::size_t at) const {
    for (;;) {
      char const* const p = reinterpret_cast<char const*>(m_code + at);
      char const* const next = next_node(p);
      if (next == nullptr) return at;
      at = static_cast<std::size_t>(next - reinterpret_cast<char const*>(m_code));
    }
  }

  // Links the last node of the chain at `at` to `target`.
  void tail(std::size_t at, std::size_t target) {
    if (!writable(m_size)) return;  // a program past its limit is refused anyway
    std::size_t const last = last_of(at);
    std::size_t const offset = m_code[last] == kBack ? last - target : target - last;
    m_code[last + 1] = static_cast<unsigned char>(offset >> 8);
    m_code[last + 2] = static_cast<unsigned char>(offset);
  }

  // tail() on the operand of a BRANCH; nothing for other nodes.
  void operand_tail(std::size_t at, std::size_t target) {
    if (!writable(m_size) || m_code[at] != kBranch) return;
    tail(at + kNodeHeader, target);
  }

  std::size_t fail(char const* text) {
    set_error(text);
    return kFail;
  }

  // ---- parsing --------------------------------------------------------------
  // A "@X=(" after a group's '(': the letter names the group.
  bool names_prefix() const {
    return m_parse[0] == '@' && m_parse[1] >= 'A' && m_parse[1] <= 'Z' && m_parse[2] == '=' &&
           m_parse[3] == '(';
  }
  // A "=X@)" after a group's ')': the letter names the group before it.
  bool names_suffix() const {
    return m_parse[0] == '=' && m_parse[1] >= 'A' && m_parse[1] <= 'Z' && m_parse[2] == '@' &&
           m_parse[3] == ')';
  }

  bool bind_name(char letter, int group, int buffer, char const* format) {
    unsigned char& bound = m_names[letter - 'A'];
    if (bound != 0) {
      set_name_error(buffer, format, letter, bound);
      return false;
    }
    bound = static_cast<unsigned char>(group);
    return true;
  }

  // The body of a group (paren) or the whole expression: branches separated
  // by '|'.
  std::size_t expression(bool paren, int* flags) {
    *flags = kHasWidth;
    std::size_t start = kFail;
    int number = 0;
    if (paren) {
      if (m_groups >= kMaxGroups) return fail(msg::kReTooManyGroups);
      number = ++m_groups;
      start = node(static_cast<unsigned char>(kOpen + number));
      if (names_prefix()) {
        if (!bind_name(m_parse[1], number, 0, msg::kReNamePrefixTakenFormat)) return kFail;
        m_parse += 3;  // the body goes on at the inner '('
      }
    }
    for (;;) {
      int branch_flags;
      std::size_t const br = branch(&branch_flags);
      if (br == kFail) return kFail;
      if (start == kFail) {
        start = br;
      } else {
        tail(start, br);
      }
      if (!(branch_flags & kHasWidth)) *flags &= ~kHasWidth;
      *flags |= branch_flags & kSpStart;
      if (*m_parse != '|') break;
      ++m_parse;
    }
    std::size_t const ender = node(static_cast<unsigned char>(paren ? kClose + number : kEnd + 0));
    tail(start, ender);
    // Each alternative's last node leads to the group's end.
    if (writable(m_size)) {
      for (std::size_t br = start;;) {
        operand_tail(br, ender);
        char const* const next = next_node(reinterpret_cast<char const*>(m_code + br));
        if (next == nullptr) break;
        br = static_cast<std::size_t>(next - reinterpret_cast<char const*>(m_code));
      }
    }
    if (paren) {
      if (*m_parse != ')') return fail(msg::kReUnmatchedOpen);
      ++m_parse;
      if (names_suffix()) {
        if (!bind_name(m_parse[1], number - 1, 1, msg::kReNameSuffixTakenFormat)) return kFail;
        m_parse += 3;  // the final ')' closes the named group
      }
    } else if (*m_parse != '\0') {
      return fail(*m_parse == ')' ? msg::kReUnexpectedCloseAtEnd : msg::kReJunkAtEnd);
    }
    return start;
  }

  // One alternative: a BRANCH node and the pieces of its operand.
  std::size_t branch(int* flags) {
    *flags = kWorst;
    std::size_t const start = node(kBranch);
    std::size_t chain = kFail;
    while (*m_parse != '\0' && *m_parse != '|' && *m_parse != ')') {
      int piece_flags;
      std::size_t const latest = piece(&piece_flags);
      if (latest == kFail) return kFail;
      *flags |= piece_flags & kHasWidth;
      if (chain == kFail) {
        *flags |= piece_flags & kSpStart;
      } else {
        tail(chain, latest);
      }
      chain = latest;
    }
    if (chain == kFail) node(kNothing);  // an empty alternative
    return start;
  }

  // An atom and its quantifier, if any.
  std::size_t piece(int* flags) {
    int atom_flags;
    std::size_t const start = atom(&atom_flags);
    if (start == kFail) return kFail;
    char const q = *m_parse;
    if (!is_quantifier(q)) {
      *flags = atom_flags;
      return start;
    }
    if (!(atom_flags & kHasWidth) && q != '?') {
      return fail(q == '*' ? msg::kReStarOnEmpty : msg::kRePlusOnEmpty);
    }
    *flags = q != '+' ? (kWorst | kSpStart) : (kWorst | kHasWidth);
    if (q == '*' && (atom_flags & kSimple)) {
      insert(kStar, start);
    } else if (q == '*') {  // x* as (x&|): & loops back to the BRANCH
      insert(kBranch, start);
      operand_tail(start, node(kBack));
      operand_tail(start, start);
      tail(start, node(kBranch));
      tail(start, node(kNothing));
    } else if (q == '+' && (atom_flags & kSimple)) {
      insert(kPlus, start);
    } else if (q == '+') {  // x+ as x(&|): & loops back to x
      std::size_t const next = node(kBranch);
      tail(start, next);
      tail(node(kBack), start);
      tail(next, node(kBranch));
      tail(start, node(kNothing));
    } else {  // x? as (x|)
      insert(kBranch, start);
      tail(start, node(kBranch));
      std::size_t const nothing = node(kNothing);
      tail(start, nothing);
      operand_tail(start, nothing);
    }
    ++m_parse;
    if (is_quantifier(*m_parse)) return fail(msg::kReNestedQuantifier);
    return start;
  }

  std::size_t atom(int* flags) {
    *flags = kWorst;
    char const c = *m_parse++;
    switch (c) {
      case '^':
        return node(kBol);
      case '$':
        return node(kEol);
      case '.':
        *flags |= kHasWidth | kSimple;
        return node(kAny);
      case '[':
        *flags |= kHasWidth | kSimple;
        return bracket();
      case '(': {
        int group_flags;
        std::size_t const start = expression(true, &group_flags);
        if (start == kFail) return kFail;
        *flags |= group_flags & (kHasWidth | kSpStart);
        return start;
      }
      case '\0':
        --m_parse;
        return fail(msg::kReUnexpectedEnd);
      case '|':
        return fail(msg::kReUnexpectedBar);
      case ')':
        return fail(msg::kReUnexpectedClose);
      case '?':
        return fail(msg::kReQuestionFollowsNothing);
      case '+':
        return fail(msg::kRePlusFollowsNothing);
      case '*':
        return fail(msg::kReStarFollowsNothing);
      case '\\': {
        if (*m_parse == '\0') return fail(msg::kReTrailingBackslash);
        *flags |= kHasWidth | kSimple;
        if (folds(*m_parse)) return letter_either_case();
        std::size_t const start = node(kExactly);
        emit(static_cast<unsigned char>(*m_parse++));
        emit(0);
        return start;
      }
      default:
        if (folds(c)) {
          *flags |= kHasWidth | kSimple;
          --m_parse;
          return letter_either_case();
        }
        return literal_run(flags);
    }
  }

  // A run of plain characters as one EXACTLY node; its last character stays
  // apart when a quantifier follows it, so that the quantifier takes only it.
  std::size_t literal_run(int* flags) {
    --m_parse;
    std::size_t length = std::strcspn(m_parse, "^$.[()|?+*\\");
    if (m_fold_case) length = std::min(length, letterless_prefix(m_parse));
    if (length > 1 && is_quantifier(m_parse[length])) --length;
    *flags |= kHasWidth | (length == 1 ? kSimple : 0);
    std::size_t const start = node(kExactly);
    for (std::size_t i = 0; i < length; ++i) emit(static_cast<unsigned char>(*m_parse++));
    emit(0);
    return start;
  }

  // Ignoring case, a letter is the list of its two cases, and a run of
  // plain characters stops before a letter; a bracket list takes each
  // letter member's other case too (so that [^a] refuses 'A' as well).
  bool folds(char c) const {
    return m_fold_case && ((c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'));
  }
  static unsigned char other_case(unsigned char c) { return c ^ 0x20; }
  static std::size_t letterless_prefix(char const* s) {
    return std::strcspn(s, "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ");
  }
  std::size_t letter_either_case() {
    auto const c = static_cast<unsigned char>(*m_parse++);
    std::size_t const start = node(kAnyOf);
    emit(c);
    emit(other_case(c));
    emit(0);
    return start;
  }

  // A bracket expression, after its '['.
  std::size_t bracket() {
    bool const negated = *m_parse == '^';
    if (negated) ++m_parse;
    std::size_t const start = node(negated ? kAnyBut : kAnyOf);
    char const* error = nullptr;
    m_parse = parse_bracket_list(
        m_parse, m_backslashes,
        [this](unsigned char b) {
          emit(b);
          if (folds(static_cast<char>(b))) emit(other_case(b));
        },
        &error);
    if (error != nullptr) return fail(error);
    emit(0);
    return start;
  }

  char const* m_parse;
  unsigned char* m_code;
  bool m_backslashes;
  bool m_fold_case;
  std::size_t m_size = 0;
  int m_groups = 0;
  unsigned char m_names[26];
};

unsigned char* work_buffer() {
  WorkBuffer& work = WorkSlot::get();
  if (work.bytes == nullptr) work.bytes = static_cast<unsigned char*>(std::malloc(kWorkBufferSize));
  return work.bytes;
}

bool guard_intact(unsigned char const* buffer) {
  for (std::size_t i = kWorkBufferSize - kGuardSize; i < kWorkBufferSize; ++i) {
    if (buffer[i] != 0xFF) return false;
  }
  return true;
}

}  // namespace

Tcl_RegExp_* compile(char const* pattern, char const* attached, bool fold_case) {
  unsigned char* const buffer = work_buffer();
  if (buffer == nullptr) {
    set_out_of_space();
    return nullptr;
  }
  std::memset(buffer + kWorkBufferSize - kGuardSize, 0xFF, kGuardSize);
  Compiler compiler(pattern, buffer, backslashes_in_intervals() != 0, fold_case);
  int flags;
  bool const parsed = compiler.run(&flags);
  if (!guard_intact(buffer)) {
    set_error(msg::kReGuardDamaged);
    return nullptr;
  }
  if (!parsed) return nullptr;
  if (compiler.size() >= kProgramLimit) {
    set_error(msg::kReTooBig);
    return nullptr;
  }
  std::size_t const bytes = offsetof(Tcl_RegExp_, program) + compiler.size();
  auto* const re = static_cast<Tcl_RegExp_*>(std::malloc(bytes));
  if (re == nullptr) {
    set_out_of_space();
    return nullptr;
  }
  std::memset(re, 0, offsetof(Tcl_RegExp_, program));
  std::memcpy(re->program, buffer, compiler.size());
  re->program_size = compiler.size();
  re->groups_plus_one = compiler.groups() + 1;
  std::memcpy(re->names, compiler.names(), sizeof re->names);
  if (attached != nullptr) {
    std::strncpy(re->attached, attached, sizeof re->attached - 1);
  }
  set_hints(re, (flags & kSpStart) != 0);
  try {
    std::unique_ptr<Nfa> nfa = Nfa::build(re);
    re->automata = nfa != nullptr ? new Automata(std::move(nfa)) : nullptr;
  } catch (std::bad_alloc const&) {
    std::free(re);
    set_out_of_space();
    return nullptr;
  }
  return re;
}

Tcl_RegExp_* copy(Tcl_RegExp_ const* re) {
  std::size_t const bytes = offsetof(Tcl_RegExp_, program) + re->program_size;
  auto* const twin = static_cast<Tcl_RegExp_*>(std::malloc(bytes));
  if (twin == nullptr) {
    frame::note_allocation_failure();
    return nullptr;
  }
  std::memcpy(twin, re, bytes);
  std::fill(std::begin(twin->startp), std::end(twin->startp), nullptr);
  std::fill(std::begin(twin->endp), std::end(twin->endp), nullptr);
  if (re->must != nullptr) twin->must = twin->program + (re->must - re->program);
  twin->automata = nullptr;
  if (re->automata != nullptr) {
    twin->automata = new (std::nothrow) Automata(re->automata->nfa);
    if (twin->automata == nullptr) {
      frame::note_allocation_failure();
      std::free(twin);
      return nullptr;
    }
  }
  return twin;
}

void release_work_buffers() {
  WorkSlot::for_each([](WorkBuffer& work) {
    std::free(work.bytes);
    work.bytes = nullptr;
  });
}

}  // namespace zelstr::regex
