// Trees kept in strings: a written example, random pair sets read back
// through the walk (the pairs, roots, children and parents a model
// keeps), names with the format's own marks, cycles, bad texts, a long
// chain and a tree too long to write.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <map>
#include <random>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "support/warnings.h"
#include "zelstr/zelstr.h"

namespace {

using zelstr::test::ExpectedWarning;
using Pair = std::pair<std::string, std::string>;

// Owns a heap tree text.
struct Text {
  char* p;
  explicit Text(char* text) : p(text) {}
  ~Text() { _zstrdupfree(p); }
};

// A name and a number, as "n7".
std::string named(char const* prefix, int i) {
  std::string s(prefix);
  s += std::to_string(i);
  return s;
}

std::vector<char const*> flat(std::vector<Pair> const& pairs) {
  std::vector<char const*> out;
  for (Pair const& p : pairs) {
    out.push_back(p.first.c_str());
    out.push_back(p.second.c_str());
  }
  out.push_back(nullptr);  // never read: an empty list is not NULL
  return out;
}

struct Walked {
  std::vector<std::pair<int, std::string>> lines;
};
int remember(char const* name, int depth, void* context) {
  static_cast<Walked*>(context)->lines.emplace_back(depth, name);
  return 1;
}

// The pairs a walk shows: each line under the line one level up; `order`
// gets them in the order the text first shows them.
std::set<Pair> pairs_shown(char const* tree, std::vector<std::string>* roots,
                           std::vector<Pair>* order = nullptr) {
  Walked w;
  EXPECT_GE(_zstrtreewalk(tree, remember, &w), 0);
  std::set<Pair> out;
  std::vector<std::string> path;
  for (auto const& [depth, name] : w.lines) {
    path.resize(static_cast<std::size_t>(depth));
    if (path.empty()) {
      roots->push_back(name);
    } else if (out.emplace(path.back(), name).second && order != nullptr) {
      order->emplace_back(path.back(), name);
    }
    path.push_back(name);
  }
  return out;
}

TEST(Tree, WrittenExample) {
  std::vector<Pair> const pairs = {{"main", "load"},   {"main", "report"}, {"load", "read"},
                                   {"report", "read"}, {"main", "load"},   {"read", "open"}};
  Text const t(_zstrbldtree(flat(pairs).data(), static_cast<int>(pairs.size())));
  EXPECT_STREQ("main\n  load\n    read\n      open\n  report\n    read\n      open\n", t.p);
  EXPECT_STREQ("load\nreport\n", _zstrtreechildren(t.p, "main"));
  EXPECT_STREQ("load\nreport\n", _zstrtreeparents(t.p, "read"));
  EXPECT_STREQ("", _zstrtreeparents(t.p, "main"));
  EXPECT_STREQ("", _zstrtreechildren(t.p, "open"));
  EXPECT_EQ(nullptr, _zstrtreechildren(t.p, "absent"));
  Text const added(_zstrtreeaddnode(t.p, "audit", "report"));
  EXPECT_STREQ(
      "main\n  load\n    read\n      open\n  report\n    read\n      open\naudit\n  report\n"
      "    read\n      open\n",
      added.p);
  char const* const paths[] = {"db/dbo/orders", "db//dbo/items/", "/db/sales/orders"};
  Text const by_path(_zstrbldtreepaths(paths, 3, '/'));
  EXPECT_STREQ("db\n  dbo\n    orders\n    items\n  sales\n    orders\n", by_path.p);
}

TEST(Tree, RandomPairSetsComeBackThroughTheWalk) {
  std::mt19937 rng(17);
  for (int round = 0; round < 400; ++round) {
    int const names = 2 + static_cast<int>(rng() % 8);
    std::vector<Pair> pairs;
    for (int k = static_cast<int>(rng() % 12); k > 0; --k) {
      int a = static_cast<int>(rng() % names), b = static_cast<int>(rng() % names);
      if (a == b) continue;
      if (a > b) std::swap(a, b);  // parents before children: no cycle
      pairs.emplace_back(named("n", a), named("n", b));
    }
    Text const t(_zstrbldtree(flat(pairs).data(), static_cast<int>(pairs.size())));
    ASSERT_NE(nullptr, t.p);
    std::set<Pair> const want(pairs.begin(), pairs.end());
    std::vector<std::string> roots;
    std::vector<Pair> shown;
    EXPECT_EQ(want, pairs_shown(t.p, &roots, &shown));
    // Roots: every name no pair makes a child, in the order pairs first name them.
    std::vector<std::string> want_roots;
    for (Pair const& p : pairs) {
      for (std::string const& n : {p.first, p.second}) {
        bool const child = std::any_of(pairs.begin(), pairs.end(), [&](Pair const& q) { return q.second == n; });
        if (!child && std::find(want_roots.begin(), want_roots.end(), n) == want_roots.end())
          want_roots.push_back(n);
      }
    }
    EXPECT_EQ(want_roots, roots);
    // Children in the order the pairs first give them (the text keeps
    // it), parents in the order the text first shows them.
    for (int n = 0; n < names; ++n) {
      std::string const name = named("n", n);
      std::string children, parents;
      std::set<Pair> met;
      bool present = false;
      for (Pair const& p : pairs) {
        present = present || p.first == name || p.second == name;
        if (met.insert(p).second && p.first == name) children += p.second + "\n";
      }
      for (Pair const& p : shown) {
        if (p.second == name) parents += p.first + "\n";
      }
      char const* const c = _zstrtreechildren(t.p, name.c_str());
      EXPECT_EQ(present, c != nullptr);
      if (present) {
        EXPECT_EQ(children, c);
        EXPECT_EQ(parents, _zstrtreeparents(t.p, name.c_str()));
      }
    }
    // A pair back from a child to one of its ancestors is a cycle.
    if (!pairs.empty()) {
      pairs.emplace_back(pairs[0].second, pairs[0].first);
      EXPECT_EQ(nullptr, _zstrbldtree(flat(pairs).data(), static_cast<int>(pairs.size())));
    }
  }
}

TEST(Tree, NamesWithTheFormatsMarksComeBackAsTheyWere) {
  std::mt19937 rng(3);
  for (int round = 0; round < 300; ++round) {
    std::vector<Pair> pairs;
    std::string parent = "root";
    for (int depth = 0; depth < 4; ++depth) {
      std::string name(1 + rng() % 5, 'x');
      for (char& c : name) c = " \\\n\rab"[rng() % 6];
      name += std::to_string(depth);  // never the parent's name
      pairs.emplace_back(parent, name);
      parent = name;
    }
    Text const t(_zstrbldtree(flat(pairs).data(), static_cast<int>(pairs.size())));
    std::vector<std::string> roots;
    EXPECT_EQ(std::set<Pair>(pairs.begin(), pairs.end()), pairs_shown(t.p, &roots));
    EXPECT_EQ(4, std::count(t.p, t.p + std::strlen(t.p), '\n') - 1);
  }
}

TEST(Tree, ALongChainIsWrittenAndWalked) {
  std::vector<std::string> names;
  for (int i = 0; i <= 5000; ++i) names.push_back(named("p", i));
  std::vector<char const*> chain;
  for (int i = 0; i < 5000; ++i) {
    chain.push_back(names[i].c_str());
    chain.push_back(names[i + 1].c_str());
  }
  Text const t(_zstrbldtree(chain.data(), 5000));
  ASSERT_NE(nullptr, t.p);
  EXPECT_EQ(5001, _zstrtreewalk(t.p, [](char const*, int, void*) { return 1; }, nullptr));
  EXPECT_STREQ("p4999\n", _zstrtreeparents(t.p, "p5000"));
}

class TreeWarnings : public zelstr::test::WarningsTest {};

TEST_F(TreeWarnings, BadTextsCyclesAndTooLongTrees) {
  struct Bad {
    char const* text;
    int line;
  };
  Bad const bad[] = {{"a\n   b\n", 2}, {"a\n    b\n", 2}, {"  a\n", 1},
                     {"a\n  \\q\n", 2}, {"a\n\n", 2},     {"a\n  b\\", 2}};
  std::vector<ExpectedWarning> expected;
  for (Bad const& b : bad) {
    EXPECT_EQ(nullptr, _zstrtreechildren(b.text, "a")) << b.text;
    std::string text = "_zstrtreechildren() - Warning: <tree> given in argument is not a tree text "
                       "(line ";
    text += std::to_string(b.line);
    text += "): NULL was returned as result.";
    expected.push_back({-1, text});
  }
  EXPECT_EQ(-1, _zstrtreewalk("a\n    b\n", [](char const*, int, void*) { return 1; }, nullptr));
  expected.push_back({-1, "_zstrtreewalk() - Warning: <tree> given in argument is not a tree "
                          "text (line 2): -1 was returned as result."});
  char const* const cycle[] = {"a", "b", "b", "c", "c", "b"};
  EXPECT_EQ(nullptr, _zstrbldtree(cycle, 3));
  expected.push_back({-1, "_zstrbldtree() - Warning: the pairs given in argument form a cycle "
                          "through 'b': NULL was returned as result."});
  EXPECT_EQ(nullptr, _zstrbldtree(cycle + 2, 2));  // no root at all
  expected.push_back({-1, "_zstrbldtree() - Warning: the pairs given in argument form a cycle "
                          "through 'b': NULL was returned as result."});
  EXPECT_EQ(nullptr, _zstrtreeaddnode("a\n  b\n", "b", "a"));
  expected.push_back({-1, "_zstrtreeaddnode() - Warning: the pairs given in argument form a cycle "
                          "through 'a': NULL was returned as result."});
  EXPECT_EQ(nullptr, _zstrbldtreepaths(nullptr, 1, '/'));
  expected.push_back({-1, "_zstrbldtreepaths() - Warning: <paths> given in argument is NULL: NULL "
                          "was returned as result."});
  // Diamonds: the two nodes of each level call both of the next, so the
  // text doubles at each level.
  std::vector<std::string> d;
  for (int i = 0; i < 64; ++i) d.push_back(named("d", i));
  std::vector<char const*> diamonds;
  for (int i = 0; i + 3 < 64; i += 2) {
    for (int a : {i, i + 1}) {
      for (int b : {i + 2, i + 3}) {
        diamonds.push_back(d[a].c_str());
        diamonds.push_back(d[b].c_str());
      }
    }
  }
  EXPECT_EQ(nullptr, _zstrbldtree(diamonds.data(), static_cast<int>(diamonds.size() / 2)));
  expected.push_back({-1, "_zstrbldtree() - Warning: the tree would be longer than 256 MB: NULL "
                          "was returned as result."});
  EXPECT_TRUE(zelstr::test::filed_exactly(expected));
}

}  // namespace
