// literal_set.cpp - reading the required strings off a program (see
// literal_set.h for the rules; program.h for the shapes walked).
#include "regex/literal_set.h"

#include <algorithm>
#include <cstring>

#include "regex/program.h"
#include "regex/record.h"

namespace zelstr::regex {
namespace {

using Strings = std::vector<std::string>;

// A bracket list longer than this multiplies a run too fast to be worth it.
constexpr std::size_t kMostListed = 8;
// Groups nested deeper than this are not looked into.
constexpr int kDeepest = 48;

void sort_unique(Strings& s) {
  std::sort(s.begin(), s.end());
  s.erase(std::unique(s.begin(), s.end()), s.end());
}

// How well a set would filter: more first bytes to look at (the vector
// filter reads up to three) before fewer strings; one string of its own
// case goes to the library's pair search, the fastest.  Negative for a set
// that filters nothing (no strings, or an empty one).
long score(LiteralSet const& c) {
  if (c.strings.empty()) return -1;
  std::size_t shortest = c.strings.front().size();
  for (std::string const& s : c.strings) shortest = std::min(shortest, s.size());
  if (shortest == 0) return -1;
  long value = static_cast<long>(std::min<std::size_t>(shortest, 3)) * 1000 -
               static_cast<long>(c.strings.size()) * 8 +
               static_cast<long>(std::min<std::size_t>(shortest, 16));
  if (c.strings.size() == 1 && !c.folded) value += 500;
  return value;
}

// The walk of one chain of nodes up to `stop` (exclusive).
struct Walk {
  bool exact = true;  // every match of the chain is one of `run`'s strings
  Strings run{""};    // the run of exact pieces under way
  bool run_folded = false;
  bool run_at_start = true;  // the run began with the chain
  LiteralSet best;

  bool nothing_yet() const { return run_at_start && run.size() == 1 && run[0].empty(); }

  void offer(Strings const& strings, bool folded, bool prefix) {
    LiteralSet c{strings, folded, prefix};
    if (score(c) > score(best)) best = std::move(c);
  }
  void offer(LiteralSet const& c, bool prefix) { offer(c.strings, c.folded, prefix && c.prefix); }

  // A piece that matches exactly `strings` joins the run; a run that would
  // grow past the bounds is offered and a new one begins with the piece.
  void extend(Strings const& strings, bool folded) {
    bool const trivial = run.size() == 1 && run[0].empty();
    Strings product;
    bool fits = trivial || run.size() * strings.size() <= kMostLiterals;
    for (std::size_t i = 0; fits && i < run.size(); ++i) {
      for (std::string const& s : strings) {
        if (!trivial && run[i].size() + s.size() > kLongestRun) fits = false;
        product.push_back(run[i] + s);
      }
    }
    if (fits) {
      sort_unique(product);
      run = std::move(product);
      run_folded = run_folded || folded;
      return;
    }
    offer(run, run_folded, run_at_start);
    exact = false;
    run = strings;
    run_folded = folded;
    run_at_start = false;
  }

  // A piece that matches strings not known ends the run.
  void end_run() {
    offer(run, run_folded, run_at_start);
    exact = false;
    run = {""};
    run_folded = false;
    run_at_start = false;
  }
};

bool is_letter(unsigned char c) { return (c | 0x20) >= 'a' && (c | 0x20) <= 'z'; }

// The strings a simple node (EXACTLY, ANYOF) matches: false for others and
// for lists too long.  A list of a letter's two cases is the letter, folded.
bool simple_strings(char const* node, Strings& strings, bool& folded) {
  strings.clear();
  folded = false;
  if (op(node) == kExactly) {
    strings.emplace_back(operand(node));
    return true;
  }
  if (op(node) != kAnyOf) return false;
  char const* const list = operand(node);
  std::size_t const n = std::strlen(list);
  auto const a = static_cast<unsigned char>(list[0]);
  auto const b = static_cast<unsigned char>(list[1]);
  if (n == 2 && is_letter(a) && (a ^ b) == 0x20) {
    strings.emplace_back(1, static_cast<char>(a | 0x20));
    folded = true;
    return true;
  }
  if (n == 0 || n > kMostListed) return false;
  for (std::size_t i = 0; i < n; ++i) strings.emplace_back(1, list[i]);
  return true;
}

Walk walk_chain(char const* node, char const* stop, int depth);

// The alternatives of the BRANCH nodes from `branch` on, as one piece of
// `w`; returns the node they all lead to.
char const* walk_alternatives(char const* branch, int depth, Walk& w) {
  char const* join = branch;
  while (join != nullptr && op(join) == kBranch) join = next_node(join);
  Strings all;       // of the exact alternatives
  Strings required;  // of the alternatives' required sets
  bool exact = true, each_requires = true, folded = false, prefix = true;
  for (char const* alt = branch; alt != join; alt = next_node(alt)) {
    Walk const inner = walk_chain(operand(alt), join, depth + 1);
    exact = exact && inner.exact;
    if (exact) all.insert(all.end(), inner.run.begin(), inner.run.end());
    LiteralSet const& mine =
        inner.exact ? LiteralSet{inner.run, inner.run_folded, true} : inner.best;
    each_requires = each_requires && score(mine) >= 0;
    if (each_requires) required.insert(required.end(), mine.strings.begin(), mine.strings.end());
    folded = folded || (inner.exact ? inner.run_folded : inner.best.folded);
    prefix = prefix && mine.prefix;
  }
  sort_unique(all);
  sort_unique(required);
  if (exact && all.size() <= kMostLiterals) {
    w.extend(all, folded);
    return join;
  }
  bool const at_start = w.nothing_yet();
  w.end_run();
  if (each_requires && required.size() <= kMostLiterals) w.offer(required, folded, prefix && at_start);
  return join;
}

Walk walk_chain(char const* node, char const* stop, int depth) {
  Walk w;
  Strings strings;
  bool folded = false;
  while (node != nullptr && node != stop) {
    unsigned char const code = op(node);
    if (code == kEnd || code == kBack || depth > kDeepest) {
      if (code != kEnd) w.end_run();  // a loop's body, or too deep to tell
      break;
    }
    if (code == kBranch) {
      node = walk_alternatives(node, depth, w);
      continue;
    }
    if (simple_strings(node, strings, folded)) {
      w.extend(strings, folded);
    } else if (code == kPlus && simple_strings(operand(node), strings, folded)) {
      w.extend(strings, folded);  // x+ is x, then x*
      w.end_run();
    } else if (code == kBol || code == kEol || code == kNothing || is_open(code) ||
               is_close(code)) {
      // zero width: the run goes on
    } else {
      w.end_run();
    }
    node = next_node(node);
  }
  w.offer(w.run, w.run_folded, w.run_at_start);
  return w;
}

}  // namespace

LiteralSet required_literals(Tcl_RegExp_ const* re) {
  LiteralSet set = walk_chain(first_node(re), nullptr, 0).best;
  if (score(set) < 0) return {};
  if (set.folded) {
    for (std::string& s : set.strings) {
      for (char& c : s) {
        if (c >= 'A' && c <= 'Z') c = static_cast<char>(c | 0x20);
      }
    }
    sort_unique(set.strings);
  }
  return set;
}

}  // namespace zelstr::regex
