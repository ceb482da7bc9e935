// random_text.h - seeded random texts over a small alphabet, for the
// tests that compare the library with a model or an outside oracle.
#ifndef ZELSTR_TESTS_SUPPORT_RANDOM_TEXT_H
#define ZELSTR_TESTS_SUPPORT_RANDOM_TEXT_H

#include <random>
#include <string>

namespace zelstr::test {

// Up to `most` bytes drawn from `alphabet`.
inline std::string random_text(std::mt19937& rng, char const* alphabet, int most) {
  std::string s;
  std::size_t const n = std::char_traits<char>::length(alphabet);
  for (int i = static_cast<int>(rng() % static_cast<unsigned>(most + 1)); i > 0; --i) {
    s += alphabet[rng() % n];
  }
  return s;
}

}  // namespace zelstr::test

#endif  // ZELSTR_TESTS_SUPPORT_RANDOM_TEXT_H
