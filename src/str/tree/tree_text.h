// tree_text.h - a tree text read into the (parent, child) pairs it shows,
// and pairs written back as a tree text.
//
// The graph knows each node by a key (its name, or its path for the path
// builder) and keeps, in the order they were first met, its nodes, each
// node's children and each node's parents.  Writing walks it depth first
// with an explicit stack, so a long chain of calls cannot exhaust the
// machine's stack, and a node met again on its own path is a cycle.
#ifndef ZELSTR_STR_TREE_TREE_TEXT_H
#define ZELSTR_STR_TREE_TREE_TEXT_H

#include <cstddef>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace zelstr::str::tree {

// Longest tree text written.
inline constexpr std::size_t kLongestText = std::size_t{1} << 28;

struct Line {
  int depth;
  std::string name;  // unescaped
};

// The lines of `text`; false with `*bad_line` (from 1) when a line is not
// one of a tree text: an odd indent, a level skipped, an empty name, an
// unknown escape.
bool read_lines(char const* text, std::vector<Line>& lines, int* bad_line);

// `name` escaped, appended to `out`.
void append_escaped(std::string& out, std::string const& name);

class Graph {
 public:
  // The node of `key` (made, with `name`, when new).
  int node(std::string const& key, std::string const& name);
  int node(std::string const& name) { return node(name, name); }
  // The node of `key`, or -1.
  int find(std::string const& key) const;
  // Adds the pair once.
  void add_pair(int parent, int child);

  std::size_t size() const { return m_names.size(); }
  std::string const& name(int n) const { return m_names[n]; }
  std::vector<int> const& children(int n) const { return m_children[n]; }
  std::vector<int> const& parents(int n) const { return m_parents[n]; }

 private:
  std::vector<std::string> m_names;
  std::unordered_map<std::string, int> m_ids;
  std::vector<std::vector<int>> m_children, m_parents;
  std::unordered_set<unsigned long long> m_pairs;
};

// The pairs a tree text shows.
void read_graph(std::vector<Line> const& lines, Graph& graph);

enum class Written { kOk, kCycle, kTooLong };

// The tree text of `graph` into `out`; on a cycle, `*cycle` is a node on it.
Written write_tree(Graph const& graph, std::string& out, int* cycle);

}  // namespace zelstr::str::tree

#endif  // ZELSTR_STR_TREE_TREE_TEXT_H
