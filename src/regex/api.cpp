// api.cpp - the engine's exported calls: compile (with the attached-text
// forms), match, ranges, the interp record, the backslash switch.
#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <new>
#include <string>

#include "frame/messages.h"
#include "regex/automata.h"
#include "regex/compiler.h"
#include "regex/matcher.h"
#include "regex/program.h"
#include "regex/record.h"
#include "regex/state.h"
#include "zelstr/regex.h"

namespace msg = zelstr::frame::msg;
using namespace zelstr::regex;

namespace {

// The pattern to compile and the text attached to it, when the pattern has
// one of the two attached-text forms (it holds an '@' somewhere):
//   "pattern$$$(text)"   the pattern before "$$$(", the text up to the
//                        final ')'
//   "(text)$$$nrettap"   the text after the first '(', the pattern after
//                        ")$$$" reversed
// The pattern part goes to a static buffer, or to the heap from 4096 bytes.
class SplitPattern {
 public:
  explicit SplitPattern(char const* pattern) : m_pattern(pattern) {
    if (std::strchr(pattern, '@') == nullptr) return;
    std::size_t const length = std::strlen(pattern);
    char const* const trailing = std::strstr(pattern, "$$$(");
    if (trailing != nullptr && length > 0 && pattern[length - 1] == ')' &&
        trailing + 4 <= pattern + length - 1) {
      keep(pattern, static_cast<std::size_t>(trailing - pattern), false);
      attach(trailing + 4, pattern + length - 1);
      return;
    }
    char const* const leading = pattern[0] == '(' ? std::strstr(pattern, ")$$$") : nullptr;
    if (leading != nullptr) {
      attach(pattern + 1, leading);
      keep(leading + 4, std::strlen(leading + 4), true);
    }
  }
  ~SplitPattern() {
    if (m_heap != nullptr) std::free(m_heap);
  }
  SplitPattern(SplitPattern const&) = delete;
  SplitPattern& operator=(SplitPattern const&) = delete;

  char const* pattern() const { return m_pattern; }
  // The attached text, or NULL when the pattern has none.
  char const* attached() const { return m_has_attached ? m_attached : nullptr; }

 private:
  void keep(char const* from, std::size_t n, bool reversed) {
    char* target = m_buffer;
    if (n >= sizeof m_buffer) {
      m_heap = static_cast<char*>(std::malloc(n + 1));
      target = m_heap;
    }
    if (target == nullptr) return;  // no room: the pattern is compiled whole
    std::memcpy(target, from, n);
    target[n] = '\0';
    if (reversed) _zstrrev(target);
    m_pattern = target;
    m_has_attached = true;
  }

  // The compiled record keeps as much of the attached text as it has room
  // for: a copy of that much needs no memory of its own.
  void attach(char const* from, char const* to) {
    std::size_t const n = std::min(static_cast<std::size_t>(to - from), sizeof m_attached - 1);
    std::memcpy(m_attached, from, n);
    m_attached[n] = '\0';
  }

  char m_buffer[4096];  // the reversed pattern, when it is short (the usual case)
  char const* m_pattern;
  char m_attached[sizeof Tcl_RegExp_::attached];
  bool m_has_attached = false;
  char* m_heap = nullptr;
};

// The range of group `index` of the last match.
void group_range(Tcl_RegExp_ const* re, int index, char const** start, char const** end) {
  if (start != nullptr) *start = re->startp[index];
  if (end != nullptr) *end = re->endp[index];
}

// Puts back the byte a bounded match replaced by a terminator, however the
// match ends.
class RestoredByte {
 public:
  explicit RestoredByte(char* at) : m_at(at), m_saved(*at) { *at = '\0'; }
  ~RestoredByte() { *m_at = m_saved; }
  RestoredByte(RestoredByte const&) = delete;
  RestoredByte& operator=(RestoredByte const&) = delete;

 private:
  char* m_at;
  char m_saved;
};

// Both compiles: the pattern checked, its attached text split off.
Tcl_RegExp_* compile_pattern(char const* pattern, bool fold_case) {
  clear_error();
  if (pattern == nullptr) {
    set_error(msg::kReNullPattern);
    return nullptr;
  }
  SplitPattern const split(pattern);
  return compile(split.pattern(), split.attached(), fold_case);
}

}  // namespace

Tcl_RegExp_* Tcl_RegExpCompile(char const* pattern) noexcept {
  return compile_pattern(pattern, false);
}

Tcl_RegExp_* Tcl_RegExpCompileNoCase(char const* pattern) noexcept {
  return compile_pattern(pattern, true);
}

Tcl_RegExp_* Tcl_RegExpCompile(Tcl_Interp*, char const* pattern) noexcept {
  return Tcl_RegExpCompile(pattern);
}

int Tcl_RegExpMatch(char const* string, Tcl_RegExp_* re) noexcept {
  return Tcl_RegExpExec(nullptr, re, string, string);
}

// Every match comes here: the arguments and the check byte are tested, the
// error text cleared or set, before the program runs.
int Tcl_RegExpExec(Tcl_Interp*, Tcl_RegExp_* re, char const* string, char const* start) noexcept {
  clear_error();
  char const* error = nullptr;
  if (string == nullptr || start == nullptr || re == nullptr) {
    error = msg::kReNullParameter;
  } else if (string < start) {
    error = msg::kReInvalidCall;
  } else if (static_cast<unsigned char>(re->program[0]) != kCheckByte) {
    error = msg::kReCorruptedProgram;
  }
  if (error != nullptr) {
    set_error(error);
    return -1;
  }
  return execute(re, start, string);
}

int Tcl_RegExpMatch(char const* string, int length, Tcl_RegExp_* re) noexcept {
  if (string == nullptr || re == nullptr) return Tcl_RegExpMatch(string, re);
  if (length < 0) {
    set_error(msg::kReInvalidCall);
    return -1;
  }
  RestoredByte const bound(const_cast<char*>(string) + length);
  return Tcl_RegExpMatch(string, re);
}

int Tcl_RegExpMatch(Tcl_Interp*, char const* string, char const*, Tcl_RegExp_* re) noexcept {
  return Tcl_RegExpMatch(string, re);
}

char const* Tcl_RegExpFindLine(Tcl_RegExp_* re, char const* string) noexcept {
  clear_error();
  if (string == nullptr || re == nullptr) {
    set_error(msg::kReNullParameter);
    return nullptr;
  }
  if (static_cast<unsigned char>(re->program[0]) != kCheckByte) {
    set_error(msg::kReCorruptedProgram);
    return nullptr;
  }
  try {
    if (re->automata != nullptr) return re->automata->lines(re).first_matching_line(string);
    // The walk alone runs this program: each line matched on a copy of it.
    std::string line;
    for (char const* p = string; *p != '\0';) {
      char const* const lf = std::strchr(p, '\n');
      std::size_t length = lf != nullptr ? static_cast<std::size_t>(lf - p) : std::strlen(p);
      if (lf != nullptr && length > 0 && p[length - 1] == '\r') --length;
      line.assign(p, length);
      int const r = Tcl_RegExpMatch(line.c_str(), re);
      if (r == 1) return p;
      if (r == -1 || lf == nullptr) return nullptr;
      p = lf + 1;
    }
    return nullptr;
  } catch (std::bad_alloc const&) {
    if (re->automata != nullptr) re->automata->forget();
    set_out_of_space();
    return nullptr;
  }
}

int Tcl_RegExpRange(Tcl_RegExp_* re, int index, char const** start, char const** end) noexcept {
  if (re == nullptr || index < 0 || index >= re->groups_plus_one) {
    if (start != nullptr) *start = nullptr;
    if (end != nullptr) *end = nullptr;
    return 0;
  }
  if (index == 0 && re->attached[0] != '\0') return Tcl_RegExpRewriteSubMatches(re, start, end);
  group_range(re, index, start, end);
  return 1;
}

int Tcl_RegExpRewriteSubMatches(Tcl_RegExp_* re, char const** start, char const** end) noexcept {
  if (re == nullptr) return 0;
  char const* const text = re->attached;
  int group = 0;
  if (text[0] >= 'A' && text[0] <= 'Z' && text[1] == '\0') {
    group = re->names[text[0] - 'A'];
  } else if (text[0] != '\0' && std::strspn(text, "0123456789") == std::strlen(text)) {
    long const n = std::strtol(text, nullptr, 10);
    group = n < re->groups_plus_one ? static_cast<int>(n) : 0;
  }
  if (group != 0 && re->startp[group] == nullptr) group = 0;
  group_range(re, group, start, end);
  return 1;
}

int Tcl_GetGroupsCount(Tcl_RegExp_* re) noexcept {
  return re == nullptr ? 0 : re->groups_plus_one - 1;
}

Tcl_Interp* Tcl_CreateInterp() noexcept {
  auto* const interp = static_cast<Tcl_Interp*>(std::calloc(1, sizeof(Tcl_Interp)));
  if (interp != nullptr) interp->result = interp->buffer;
  return interp;
}

void Tcl_DeleteInterp(Tcl_RegExp_* re) noexcept {
  if (re == nullptr) return;
  delete re->automata;
  std::free(re);
}

void Tcl_DeleteInterp(Tcl_Interp* interp, Tcl_RegExp_* re) noexcept {
  if (interp == nullptr) {
    Tcl_DeleteInterp(re);
    return;
  }
  if (interp->flags & 1) return;
  interp->flags |= 1;
  Tcl_DeleteInterp(re);
  std::free(interp);
}

char const* Tcl_GetRegError() noexcept { return error_text(); }

int Tcl_IsValidRegularExpression(char const* pattern) noexcept {
  Tcl_RegExp_* const re = Tcl_RegExpCompile(pattern);
  Tcl_DeleteInterp(re);
  return re != nullptr ? 1 : 0;
}

void Tcl_SetWhetherBackslashesInIntervalsAreHandled(int handled, int& previous) noexcept {
  previous = backslashes_in_intervals();
  set_backslashes_in_intervals(handled);
}

int Tcl_GetIfBackslashesInIntervalsAreHandled() noexcept { return backslashes_in_intervals(); }

Tcl_TemporarilyDefineWhetherBackslashesInIntervalsAreHandled::
    Tcl_TemporarilyDefineWhetherBackslashesInIntervalsAreHandled(int handled) noexcept {
  Tcl_SetWhetherBackslashesInIntervalsAreHandled(handled, m_previous);
}

Tcl_TemporarilyDefineWhetherBackslashesInIntervalsAreHandled::
    ~Tcl_TemporarilyDefineWhetherBackslashesInIntervalsAreHandled() {
  set_backslashes_in_intervals(m_previous);
}

char* TCL_DigNextPointer(char* node) noexcept {
  return node == nullptr ? nullptr : const_cast<char*>(next_node(node));
}

char* Tcl_ReplaceRegExpEscapedChars(char* pattern) noexcept {
  if (pattern == nullptr) return nullptr;
  char* write = pattern;
  for (char const* read = pattern; *read != '\0'; ++read) {
    char const* const named = read[0] == '\\' ? std::strchr("tnrfv", read[1]) : nullptr;
    if (named != nullptr && read[1] != '\0') {
      *write++ = "\t\n\r\f\v"[named - "tnrfv"];
      ++read;
    } else {
      *write++ = *read;
      if (read[0] == '\\' && read[1] != '\0') *write++ = *++read;  // kept for the engine
    }
  }
  *write = '\0';
  return pattern;
}

char* _zstrrev(char* string) noexcept {
  if (string == nullptr) return nullptr;
  std::size_t const n = std::strlen(string);
  for (std::size_t i = 0; i < n / 2; ++i) {
    char const c = string[i];
    string[i] = string[n - 1 - i];
    string[n - 1 - i] = c;
  }
  return string;
}
