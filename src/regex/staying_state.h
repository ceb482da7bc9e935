// staying_state.h - the states a search loop may jump through: those that
// stay themselves on every byte but a few.
//
// Inside a quoted text (`'[^']*'`) an automaton's state is the same after
// every byte but the quote.  Rather than look each byte up, the search
// loop jumps with the C library's strcspn to the next byte that changes
// the state.  Whether a state is such is worked out when it is made, a
// closure for each class of bytes, so only for programs of few classes.
// Both the forward automaton and the automaton of matching lines use it.
#ifndef ZELSTR_REGEX_STAYING_STATE_H
#define ZELSTR_REGEX_STAYING_STATE_H

#include <cstdint>
#include <string>
#include <vector>

namespace zelstr::regex {

// More bytes that change a state than this are not worth a jump.
inline constexpr std::size_t kMostExits = 3;
inline constexpr int kMostClassesToStay = 16;

// Whether the state of the instructions `leaves` stays itself on every
// byte of the classes from `first_class` on (`classes` in all, `cls` the
// class of each byte) but at most kMostExits bytes, which are appended to
// `exits`.  `after(b, list)` puts in `list` the instructions the state
// reaches on the byte `b`.
template <class After>
bool stays_but_on(std::vector<std::uint32_t> const& leaves, unsigned char const* cls, int classes,
                  int first_class, After after, std::string& exits) {
  if (classes > kMostClassesToStay) return false;
  unsigned char representative[256] = {};
  for (int c = 255; c >= 0; --c) representative[cls[c]] = static_cast<unsigned char>(c);
  std::vector<std::uint32_t> next;
  for (int k = first_class; k < classes; ++k) {
    after(representative[k], next);
    if (next == leaves) continue;
    for (int c = 1; c < 256; ++c) {
      if (cls[c] == k) exits += static_cast<char>(c);
    }
    if (exits.size() > kMostExits) return false;
  }
  return true;
}

}  // namespace zelstr::regex

#endif  // ZELSTR_REGEX_STAYING_STATE_H
