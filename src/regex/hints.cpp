// hints.cpp - the optimisation hints of a compiled expression.
#include "regex/hints.h"

#include <cstring>

#include "regex/program.h"
#include "regex/record.h"

namespace zelstr::regex {
namespace {

// Adds to `set` the bytes a match can start with from `node` on; false when
// any byte can (or the walk cannot tell).  Zero-width nodes pass on to what
// follows; `depth` bounds the walk through alternatives and loops.
bool first_bytes(char const* node, ByteSet& set, int depth) {
  for (; node != nullptr; node = next_node(node)) {
    if (depth > 64) return false;
    unsigned char const code = op(node);
    switch (code) {
      case kExactly:
        set.add(static_cast<unsigned char>(*operand(node)));
        return true;
      case kAnyOf:
        for (char const* p = operand(node); *p != '\0'; ++p)
          set.add(static_cast<unsigned char>(*p));
        return true;
      case kEol:
        set.add(0);  // matches only at the terminator
        return true;
      case kNothing:
      case kBack:
        break;
      case kBranch:
        for (char const* alt = node; alt != nullptr && op(alt) == kBranch; alt = next_node(alt)) {
          if (!first_bytes(operand(alt), set, depth + 1)) return false;
        }
        return true;
      case kStar:
      case kPlus: {
        char const* const repeated = operand(node);
        if (op(repeated) != kExactly && op(repeated) != kAnyOf) return false;
        first_bytes(repeated, set, depth + 1);
        if (code == kPlus) return true;
        break;  // none at all: what follows
      }
      default:
        if (is_open(code) || is_close(code)) break;
        return false;  // END (empty match), BOL, ANY, ANYBUT
    }
  }
  return false;
}

// The nodes lie one after the other: a header, then a string for the nodes
// that carry one.  Records the follow set of each STAR and PLUS node, while
// there is room.
void set_follow_sets(Tcl_RegExp_* re) {
  re->follow_count = 0;
  char const* const end = re->program + re->program_size;
  for (char const* p = first_node(re); p < end && re->follow_count < Tcl_RegExp_::kFollowRoom;) {
    unsigned char const code = op(p);
    if (code == kStar || code == kPlus) {
      ByteSet follow{};
      if (first_bytes(next_node(p), follow, 0)) {
        re->follow[re->follow_count++] = {static_cast<std::uint32_t>(p - re->program), follow};
      }
    }
    p += kNodeHeader;
    if (code == kExactly || code == kAnyOf || code == kAnyBut) p += std::strlen(p) + 1;
  }
}

// Whether the program is BRANCH, EXACTLY, END and nothing else.
bool is_one_literal(Tcl_RegExp_ const* re) {
  char const* const branch = first_node(re);
  if (re->groups_plus_one != 1 || op(branch) != kBranch || op(next_node(branch)) != kEnd) {
    return false;
  }
  char const* const node = operand(branch);
  char const* const after = op(node) == kExactly ? next_node(node) : nullptr;
  return after != nullptr && op(after) == kEnd;
}

}  // namespace

char const* next_start(Tcl_RegExp_ const* re, char const* subject, char const* p) {
  if (re->anchored) return p == subject ? p : nullptr;
  if (re->start_char != '\0') return std::strchr(p, re->start_char);
  if (!re->first_bytes_known) return p;
  for (;; ++p) {
    if (re->first_bytes.has(static_cast<unsigned char>(*p))) return p;
    if (*p == '\0') return nullptr;
  }
}

void set_hints(Tcl_RegExp_* re, bool starts_optional) {
  re->start_char = 0;
  re->anchored = false;
  re->must = nullptr;
  re->must_length = 0;
  char const* scan = first_node(re);  // the first BRANCH
  if (op(next_node(scan)) == kEnd) {  // one top-level alternative
    scan = operand(scan);
    if (op(scan) == kExactly) {
      re->start_char = *operand(scan);
    } else if (op(scan) == kBol) {
      re->anchored = true;
    }
    if (starts_optional) {
      for (; scan != nullptr; scan = next_node(scan)) {
        if (op(scan) != kExactly) continue;
        std::size_t const length = std::strlen(operand(scan));
        if (length >= 2 && length > re->must_length) {
          re->must = operand(scan);
          re->must_length = length;
        }
      }
    }
  }
  re->one_literal = is_one_literal(re);
  re->first_bytes = ByteSet{};
  re->first_bytes_known = first_bytes(first_node(re), re->first_bytes, 0);
  set_follow_sets(re);
}

char const* sole_literal(Tcl_RegExp_ const* re) {
  return re->one_literal ? operand(operand(first_node(re))) : nullptr;
}

}  // namespace zelstr::regex
