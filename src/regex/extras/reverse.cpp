// reverse.cpp - the expression of the reversed texts.
//
// A pattern that compiles is read as the compiler reads it: alternatives
// of branches, a branch a sequence of pieces, a piece an atom and at most
// one quantifier.  The reversed pattern keeps the alternatives in order,
// writes each branch's pieces last to first (a group's inside reversed in
// turn), keeps each atom and quantifier, and swaps "^" and "$".  It has
// exactly the pattern's length.
#include <cstring>

#include "frame/memory.h"
#include "regex/brackets.h"
#include "regex/extras/report.h"
#include "zelstr/regex.h"
#include "zelstr/regextras.h"

namespace {

namespace extras = zelstr::regex::extras;
namespace msg = zelstr::frame::msg;

class Reverser {
 public:
  explicit Reverser(bool backslashes) : m_backslashes(backslashes) {}

  // Writes the reversal of [begin, end) (alternatives) at `out`; false
  // without memory.
  bool alternatives(char const* begin, char const* end, char* out) const {
    char const* branch = begin;
    for (char const* p = begin;;) {
      if (p != end && *p != '|') {
        p = piece_end(p);
        continue;
      }
      if (!pieces(branch, p, out + (branch - begin))) return false;
      if (p == end) return true;
      out[p - begin] = '|';
      branch = ++p;
    }
  }

 private:
  // Writes the pieces of the branch [begin, end) last to first.
  bool pieces(char const* begin, char const* end, char* out) const {
    std::size_t count = 0;
    for (char const* p = begin; p < end; p = piece_end(p)) ++count;
    char const** const starts = zelstr::frame::new_array<char const*>(count + 1);
    if (starts == nullptr) return false;
    std::size_t n = 0;
    for (char const* p = begin; p < end; p = piece_end(p)) starts[n++] = p;
    starts[n] = end;
    char* at = out;
    bool ok = true;
    for (std::size_t i = n; i > 0 && ok; --i) {
      ok = piece(starts[i - 1], starts[i], at);
      at += starts[i] - starts[i - 1];
    }
    delete[] starts;
    return ok;
  }

  // One piece: its atom reversed, then its quantifier.
  bool piece(char const* begin, char const* end, char* out) const {
    char const* const atom = atom_end(begin);
    if (*begin == '(') {
      out[0] = '(';
      if (!alternatives(begin + 1, atom - 1, out + 1)) return false;
      out[atom - 1 - begin] = ')';
    } else if (*begin == '^' || *begin == '$') {
      out[0] = *begin == '^' ? '$' : '^';
    } else {
      std::memcpy(out, begin, atom - begin);
    }
    std::memcpy(out + (atom - begin), atom, end - atom);
    return true;
  }

  char const* piece_end(char const* p) const {
    char const* const end = atom_end(p);
    return *end == '*' || *end == '+' || *end == '?' ? end + 1 : end;
  }

  // The byte after the atom at `p`.
  char const* atom_end(char const* p) const {
    switch (*p) {
      case '(': {
        int depth = 0;
        for (char const* x = p;; x = *x == '[' ? bracket_end(x) : *x == '\\' ? x + 2 : x + 1) {
          if (*x == '(') ++depth;
          if (*x == ')' && --depth == 0) return x + 1;
          if (*x == '\0') return x;
        }
      }
      case '[':
        return bracket_end(p);
      case '\\':
        return p + 2;
      default:
        return p + 1;
    }
  }

  // The byte after the bracket list opening at `p`, read by the compiler's
  // own reader (the pattern compiled, so the list is closed).
  char const* bracket_end(char const* p) const {
    char const* const list = p[1] == '^' ? p + 2 : p + 1;
    char const* error = nullptr;
    return zelstr::regex::parse_bracket_list(
        list, m_backslashes, [](unsigned char) {}, &error);
  }

  bool m_backslashes;
};

// Named groups and attached texts depend on the direction.
bool has_direction(char const* pattern) {
  if (std::strchr(pattern, '@') == nullptr) return false;
  if (std::strstr(pattern, "$$$(") != nullptr || std::strstr(pattern, ")$$$") != nullptr)
    return true;
  for (char const* p = pattern; *p != '\0'; ++p) {
    bool const upper = p[1] >= 'A' && p[1] <= 'Z';
    if (p[0] == '(' && p[1] == '@' && p[2] >= 'A' && p[2] <= 'Z' && p[3] == '=') return true;
    if (p[0] == '=' && upper && p[2] == '@' && p[3] == ')') return true;
  }
  return false;
}

}  // namespace

char* _zstrregrev(char const* pattern) noexcept {
  if (pattern == nullptr) {
    extras::warn(msg::kRegrevNullPatternFormat, "_zstrregrev");
    return nullptr;
  }
  Tcl_RegExp_* const re = Tcl_RegExpCompile(pattern);
  if (re == nullptr) {
    char const* const error = Tcl_GetRegError();
    extras::warn(msg::kRegrevRefusedFormat, "_zstrregrev", pattern, error != nullptr ? error : "");
    return nullptr;
  }
  Tcl_DeleteInterp(re);
  if (has_direction(pattern)) {
    extras::warn(msg::kRegrevRefusedFormat, "_zstrregrev", pattern,
                 "a named group or an attached text");
    return nullptr;
  }
  std::size_t const length = std::strlen(pattern);
  char* const out = zelstr::frame::new_array<char>(length + 1);
  if (out == nullptr) return nullptr;
  Reverser const reverser(Tcl_GetIfBackslashesInIntervalsAreHandled() != 0);
  if (!reverser.alternatives(pattern, pattern + length, out)) {
    delete[] out;
    return nullptr;
  }
  out[length] = '\0';
  return out;
}
