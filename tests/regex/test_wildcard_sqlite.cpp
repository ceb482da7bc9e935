// MATCH and LIKE against SQLite's GLOB and LIKE (sqlite3_strglob and
// sqlite3_strlike), on 60,000 seeded random pattern and subject pairs.
//
// The documented differences, kept out of the comparison:
//   - MATCH negates a set with "!" or "^", GLOB with "^" only: "[!" is
//     given to SQLite as "[^".
//   - A "[" that no "]" closes is a literal in MATCH and LIKE (as the
//     server takes it); GLOB matches nothing then: such patterns are
//     skipped.
//   - LIKE has sets ("[a-c]", "[^x]"), SQLite's LIKE has none: LIKE
//     patterns here hold no "[".
//   - LIKE ignores trailing blanks of the subject, as the server does for
//     varchar; SQLite does not: subjects here end with no blank.
//   - SQLite's LIKE ignores ASCII case: it is compared with _zstrilike.
//   - SQLite reads UTF-8 characters as units; the library reads bytes: the
//     alphabets here are ASCII.
#include <gtest/gtest.h>
#include <sqlite3.h>

#include <random>
#include <string>

#include "support/random_text.h"
#include "zelstr/zelstr.h"

namespace {

using zelstr::test::random_text;

// A subject the pattern might match: each wildcard replaced by something
// it accepts (or not, sometimes), so that matches are common.
std::string instance(std::mt19937& rng, std::string const& pattern, char any, char run) {
  std::string s;
  for (char c : pattern) {
    if (c == any) {
      s += "ab-"[rng() % 3];
    } else if (c == run) {
      s += random_text(rng, "ab]", 3);
    } else if (c != '[' && c != ']' && c != '!' && c != '^') {
      s += c;
    }
  }
  return s;
}

// Whether every "[" of a MATCH pattern is closed, read as the library
// and SQLite both read sets.
bool sets_closed(std::string const& p) {
  for (std::size_t i = 0; i < p.size(); ++i) {
    if (p[i] != '[') continue;
    std::size_t j = i + 1;
    if (j < p.size() && (p[j] == '!' || p[j] == '^')) ++j;
    if (j < p.size() && p[j] == ']') ++j;
    while (j < p.size() && p[j] != ']') ++j;
    if (j == p.size()) return false;
    i = j;
  }
  return true;
}

std::string for_glob(std::string p) {
  for (std::size_t i = 0; i + 1 < p.size(); ++i) {
    if (p[i] == '[' && p[i + 1] == '!') p[i + 1] = '^';
  }
  return p;
}

TEST(WildcardSqlite, MatchAgreesWithGlob) {
  std::mt19937 rng(1);
  int compared = 0;
  for (int i = 0; i < 30000; ++i) {
    std::string const pattern = random_text(rng, "abA*?[]!^-", 7);
    if (!sets_closed(pattern)) continue;
    std::string const subject =
        i % 2 ? instance(rng, pattern, '?', '*') : random_text(rng, "abA]-^!*?", 7);
    int const glob = sqlite3_strglob(for_glob(pattern).c_str(), subject.c_str()) == 0 ? 1 : 0;
    ASSERT_EQ(glob, _zstrmatch(subject.c_str(), pattern.c_str()))
        << "'" << subject << "' MATCH '" << pattern << "'";
    ++compared;
  }
  EXPECT_GT(compared, 20000);
}

TEST(WildcardSqlite, LikeAgreesWithSqliteLike) {
  std::mt19937 rng(2);
  for (int i = 0; i < 30000; ++i) {
    char const escape = i % 3 == 0 ? '!' : '\0';
    std::string pattern = random_text(rng, "abAB%_!-", 7);
    if (escape != '\0' && !pattern.empty() && pattern.back() == '!') pattern.pop_back();
    std::string subject = i % 2 ? instance(rng, pattern, '_', '%') : random_text(rng, "abAB%_!-", 7);
    if (escape != '\0') {  // an escaped pair in the instance stands for its second byte
      std::string unescaped;
      for (std::size_t k = 0; k < subject.size(); ++k) {
        if (subject[k] == '!' && k + 1 < subject.size()) ++k;
        unescaped += subject[k];
      }
      if (i % 2) subject = unescaped;
    }
    int const sqlite = sqlite3_strlike(pattern.c_str(), subject.c_str(),
                                       static_cast<unsigned char>(escape)) == 0
                           ? 1
                           : 0;
    ASSERT_EQ(sqlite, _zstrilike(subject.c_str(), pattern.c_str(), escape))
        << "'" << subject << "' LIKE '" << pattern << "' ESCAPE '" << escape << "'";
  }
}

}  // namespace
