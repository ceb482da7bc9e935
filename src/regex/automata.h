// automata.h - what an expression keeps for the linear matchers: its
// instructions, made when it is compiled, and the two automata made from
// them on the first match that needs them (and the automaton of matching
// lines, on the first search for lines).
#ifndef ZELSTR_REGEX_AUTOMATA_H
#define ZELSTR_REGEX_AUTOMATA_H

#include <memory>

#include "regex/dfa.h"
#include "regex/line_dfa.h"
#include "regex/linear.h"
#include "regex/nfa.h"

namespace zelstr::regex {

// The instructions are only read once made, so copies of one expression
// made for other threads share them; each copy makes its own automata.
struct Automata {
  explicit Automata(std::shared_ptr<Nfa const> instructions) : nfa(std::move(instructions)) {}

  Dfa& forward(Tcl_RegExp_ const* re) {
    if (!m_forward) m_forward = std::make_unique<Dfa>(*nfa, re, Dfa::Direction::kForward);
    return *m_forward;
  }
  Dfa& reverse(Tcl_RegExp_ const* re) {
    if (!m_reverse) m_reverse = std::make_unique<Dfa>(*nfa, re, Dfa::Direction::kReverse);
    return *m_reverse;
  }
  LineDfa& lines(Tcl_RegExp_ const* re) {
    if (!m_lines) m_lines = std::make_unique<LineDfa>(*nfa, re);
    return *m_lines;
  }

  // Drops both automata (they are made again when needed): after a
  // std::bad_alloc in the middle of adding a state, their tables no longer
  // agree.
  void forget() noexcept {
    m_forward.reset();
    m_reverse.reset();
    m_lines.reset();
  }

  std::shared_ptr<Nfa const> const nfa;
  GroupScratch scratch;

 private:
  std::unique_ptr<Dfa> m_forward, m_reverse;
  std::unique_ptr<LineDfa> m_lines;
};

}  // namespace zelstr::regex

#endif  // ZELSTR_REGEX_AUTOMATA_H
