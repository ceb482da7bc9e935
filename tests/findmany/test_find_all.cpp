// CFindAllStr against a model of its window: each call moves the window by
// 1 + jump, reports it when the searched string is there, and the search is
// over once the window would pass the text's end.
#include <gtest/gtest.h>

#include <cctype>
#include <random>
#include <string>
#include <vector>

#include "support/warnings.h"
#include "zelstr/zelstr.h"

namespace {

using zelstr::test::filed_exactly;

// The positions reported while walking with `jumps` (one per call, cycled;
// -1 in the output: a call that found nothing; the walk stops at the end).
std::vector<long> walk(std::string const& text, std::string const& searched, bool insensitive,
                       std::vector<int> const& jumps) {
  CFindAllStr find(text.c_str(), searched.c_str(), insensitive ? 1 : 0);
  std::vector<long> out;
  for (std::size_t call = 0; call < 4 * text.size() + 4; ++call) {
    char const* const at = find.FindByXOR(jumps[call % jumps.size()]);
    out.push_back(at == nullptr ? -1 : at - text.c_str());
  }
  return out;
}

std::vector<long> model(std::string const& text, std::string const& searched, bool insensitive,
                        std::vector<int> const& jumps) {
  auto fold = [insensitive](std::string s) {
    if (insensitive) {
      for (char& c : s) c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
    }
    return s;
  };
  std::string const t = fold(text), p = fold(searched);
  std::vector<long> out;
  long window = -1;
  bool finished = false;
  for (std::size_t call = 0; call < 4 * text.size() + 4; ++call) {
    long const next = window + 1 + jumps[call % jumps.size()];
    if (finished || next + static_cast<long>(p.size()) > static_cast<long>(t.size())) {
      finished = true;
      out.push_back(-1);
      continue;
    }
    window = next;
    out.push_back(t.compare(static_cast<std::size_t>(window), p.size(), p) == 0 ? window : -1);
  }
  return out;
}

TEST(FindAll, WalksAgreeWithTheModel) {
  std::mt19937 rng(31);
  for (int round = 0; round < 600; ++round) {
    std::string text, searched;
    std::size_t const n = rng() % 40, m = 1 + rng() % 4;
    for (std::size_t i = 0; i < n; ++i) text += "abAB"[rng() % (round % 2 ? 4 : 2)];
    for (std::size_t i = 0; i < m; ++i) searched += "abAB"[rng() % (round % 2 ? 4 : 2)];
    std::vector<int> jumps{0};
    if (round % 3 == 1) jumps = {static_cast<int>(rng() % 3), 0, static_cast<int>(rng() % 5)};
    bool const insensitive = round % 4 >= 2;
    ASSERT_EQ(walk(text, searched, insensitive, jumps), model(text, searched, insensitive, jumps))
        << text << " / " << searched << " insensitive " << insensitive;
  }
}

// The occurrences the batch call reports: those of a walk with jump 0
// (overlapping), or with a jump of the length less one after each success.
std::vector<long> walked_occurrences(std::string const& text, std::string const& searched,
                                     bool insensitive, bool overlap) {
  CFindAllStr find(text.c_str(), searched.c_str(), insensitive ? 1 : 0);
  std::vector<long> out;
  int jump = 0;
  for (std::size_t call = 0; call < text.size() + 2; ++call) {
    char const* const at = find.FindByXOR(jump);
    jump = at != nullptr && !overlap ? static_cast<int>(searched.size()) - 1 : 0;
    if (at != nullptr) out.push_back(at - text.c_str());
  }
  return out;
}

TEST(FindAll, OneCallReportsTheWalksOccurrences) {
  std::mt19937 rng(37);
  for (int round = 0; round < 2000; ++round) {
    std::string text, searched;
    std::size_t const n = rng() % 80, m = 1 + rng() % 4;
    for (std::size_t i = 0; i < n; ++i) text += "abAB"[rng() % (round % 2 ? 4 : 2)];
    for (std::size_t i = 0; i < m; ++i) searched += "abAB"[rng() % (round % 2 ? 4 : 2)];
    bool const insensitive = round % 4 >= 2, overlap = round % 3 != 0;
    std::vector<long> const expected = walked_occurrences(text, searched, insensitive, overlap);
    // Into an array just large enough, and through a callback that stops
    // half-way and goes on with FindByXOR.
    CFindAllStr all(text.c_str(), searched.c_str(), insensitive ? 1 : 0);
    std::vector<char const*> positions(expected.size() + 1);
    int const stored = all.FindAll(positions.data(), static_cast<int>(positions.size()), overlap);
    ASSERT_EQ(static_cast<int>(expected.size()), stored) << text << " / " << searched;
    for (int i = 0; i < stored; ++i) EXPECT_EQ(expected[i], positions[i] - text.c_str());
    EXPECT_EQ(nullptr, all.FindByXOR(0));  // finished
    CFindAllStr half(text.c_str(), searched.c_str(), insensitive ? 1 : 0);
    struct Stop {
      std::vector<long> seen;
      char const* base;
      std::size_t after;
    } stop{{}, text.c_str(), expected.size() / 2 + 1};
    half.FindAll(
        [](char const* at, void* c) {
          auto& s = *static_cast<Stop*>(c);
          s.seen.push_back(at - s.base);
          return s.seen.size() < s.after ? 1 : 0;
        },
        &stop, overlap);
    int jump = !stop.seen.empty() && !overlap ? static_cast<int>(searched.size()) - 1 : 0;
    for (std::size_t call = 0; call < text.size() + 2; ++call) {
      char const* const at = half.FindByXOR(jump);
      jump = at != nullptr && !overlap ? static_cast<int>(searched.size()) - 1 : 0;
      if (at != nullptr) stop.seen.push_back(at - text.c_str());
    }
    ASSERT_EQ(expected, stop.seen) << text << " / " << searched;
  }
}

TEST(FindAll, WorkedExamples) {
  std::vector<long> three = walk("aaaa", "aa", false, {0});
  EXPECT_EQ(std::vector<long>(three.begin(), three.begin() + 5),
            (std::vector<long>{0, 1, 2, -1, -1}));
  // Behind each occurrence: a jump of length - 1 after a success.
  char const aaaa[] = "aaaa";
  CFindAllStr behind(aaaa, "aa", 0);
  EXPECT_EQ(behind.FindByXOR(0), aaaa);
  EXPECT_EQ(behind.FindByXOR(1), aaaa + 2);
  EXPECT_EQ(behind.FindByXOR(1), nullptr);
  EXPECT_EQ(behind.GetLastFindPos(), aaaa + 2);  // exhausted: the position stays
  CFindAllStr longer("ab", "abc", 0);
  EXPECT_EQ(longer.FindByXOR(0), nullptr);
  EXPECT_EQ(longer.FindByXOR(0), nullptr);
  char const text[] = "xxabcxx";
  CFindAllStr insensitive(text, "AbC", 1);
  char const* found = nullptr;
  for (int i = 0; i < 8 && found == nullptr; ++i) found = insensitive.FindByXOR(0);
  EXPECT_EQ(found, text + 2);
  // Same XOR and first character, other text: no report.
  CFindAllStr collision("acb", "abc", 0);
  EXPECT_EQ(collision.FindByXOR(0), nullptr);
  // The empty searched string: the text's start, once.
  CFindAllStr empty(text, "", 0);
  EXPECT_EQ(empty.FindByXOR(0), text);
  EXPECT_EQ(empty.FindByXOR(0), nullptr);
}

TEST(FindAll, TheSharedJumpAndNegativeJumps) {
  CFindAllStr::SetJumpQty(1);
  EXPECT_EQ(CFindAllStr::GetJumpQty(), 1);
  char const buffer[] = "#abababab";  // a byte before the text, to compare with
  char const* const text = buffer + 1;
  CFindAllStr odd_windows(text, "ab", 0);  // windows 1, 3, 5: always "ba"
  EXPECT_EQ(odd_windows.FindByXOR(), nullptr);
  EXPECT_EQ(odd_windows.GetLastFindPos(), text + 1);
  EXPECT_EQ(odd_windows.FindByXOR(), nullptr);
  EXPECT_EQ(odd_windows.GetLastFindPos(), text + 3);
  CFindAllStr::SetJumpQty(0);
  // Backwards: the look-ahead stays, so finds may be missed but a report is
  // always a real occurrence, and the window never leaves the text.
  std::mt19937 rng(5);
  CFindAllStr back(text, "ab", 0);
  for (int i = 0; i < 200; ++i) {
    char const* const at = back.FindByXOR(static_cast<int>(rng() % 7) - 4);
    if (at != nullptr) {
      EXPECT_EQ(std::string(at, 2), "ab");
    }
    EXPECT_GE(back.GetLastFindPos(), buffer);
  }
  CFindAllStr copy(text, "zz", 0);
  copy = back;
  EXPECT_EQ(copy.GetLastFindPos(), back.GetLastFindPos());
}

class FindAllWarnings : public zelstr::test::WarningsTest {};

TEST_F(FindAllWarnings, NullArguments) {
  CFindAllStr no_text(nullptr, nullptr, 0);
  EXPECT_EQ(no_text.FindByXOR(0), nullptr);
  CFindAllStr no_searched("abc", nullptr, 0);
  EXPECT_EQ(no_searched.FindByXOR(0), nullptr);
  char const* positions[4];
  EXPECT_EQ(0, no_text.FindAll(positions, 4));  // a bad construction: nothing, quietly
  CFindAllStr fine("abab", "ab", 0);
  EXPECT_EQ(-1, fine.FindAll(nullptr, 4));
  EXPECT_EQ(-1, fine.FindAll(nullptr, nullptr));
  EXPECT_EQ(2, fine.FindAll(positions, 4));
  auto const bad = [] {
    return zelstr::test::ExpectedWarning{-1, ErrHand_Msg_ERRSVC_BAD_ARGUMENT(), 4,
                                         "findmanystrhoary", "CFindAllStr::FindAll"};
  };
  EXPECT_TRUE(filed_exactly(
      {{75,
        "CFindAllStr::CFindAllStr() - Warning: <string1> given in argument was NULL: NULL will be "
        "returned as result of forward search.",
        4, "findmanystrhoary"},
       {76,
        "CFindAllStr::CFindAllStr() - Warning: <string2> given in argument was NULL: NULL will be "
        "returned as result of forward search.",
        4, "findmanystrhoary"},
       bad(),
       bad()}));
}

}  // namespace
