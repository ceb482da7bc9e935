// tree_text.cpp - reading and writing tree texts (tree_text.h).
#include "str/tree/tree_text.h"

#include <cstring>

namespace zelstr::str::tree {

namespace {

// Unescapes the `n` bytes of a name at `p` into `name`; false on an
// unknown escape or a backslash that ends the line.
bool unescape(char const* p, std::size_t n, std::string& name) {
  name.clear();
  for (std::size_t i = 0; i < n; ++i) {
    if (p[i] != '\\') {
      name += p[i];
      continue;
    }
    if (++i == n) return false;
    switch (p[i]) {
      case '\\': name += '\\'; break;
      case 'n': name += '\n'; break;
      case 'r': name += '\r'; break;
      case 's': name += ' '; break;
      default: return false;
    }
  }
  return true;
}

}  // namespace

bool read_lines(char const* text, std::vector<Line>& lines, int* bad_line) {
  lines.clear();
  int number = 0;
  for (char const* p = text; *p != '\0';) {
    ++number;
    std::size_t const n = std::strcspn(p, "\n");
    std::size_t blanks = 0;
    while (blanks < n && p[blanks] == ' ') ++blanks;
    int const depth = static_cast<int>(blanks / 2);
    int const deepest = lines.empty() ? 0 : lines.back().depth + 1;
    Line line{depth, {}};
    if (blanks % 2 != 0 || depth > deepest || blanks == n ||
        !unescape(p + blanks, n - blanks, line.name)) {
      *bad_line = number;
      return false;
    }
    lines.push_back(std::move(line));
    p += n + (p[n] == '\n');
  }
  return true;
}

void append_escaped(std::string& out, std::string const& name) {
  for (std::size_t i = 0; i < name.size(); ++i) {
    char const c = name[i];
    if (c == '\\') {
      out += "\\\\";
    } else if (c == '\n') {
      out += "\\n";
    } else if (c == '\r') {
      out += "\\r";
    } else if (c == ' ' && i == 0) {
      out += "\\s";
    } else {
      out += c;
    }
  }
}

int Graph::node(std::string const& key, std::string const& name) {
  auto const [at, made] = m_ids.emplace(key, static_cast<int>(m_names.size()));
  if (made) {
    m_names.push_back(name);
    m_children.emplace_back();
    m_parents.emplace_back();
  }
  return at->second;
}

int Graph::find(std::string const& key) const {
  auto const at = m_ids.find(key);
  return at == m_ids.end() ? -1 : at->second;
}

void Graph::add_pair(int parent, int child) {
  auto const key = static_cast<unsigned long long>(static_cast<unsigned>(parent)) << 32 |
                   static_cast<unsigned>(child);
  if (!m_pairs.insert(key).second) return;
  m_children[parent].push_back(child);
  m_parents[child].push_back(parent);
}

void read_graph(std::vector<Line> const& lines, Graph& graph) {
  std::vector<int> path;  // the node of each level above the line
  for (Line const& line : lines) {
    int const n = graph.node(line.name);
    path.resize(static_cast<std::size_t>(line.depth));
    if (!path.empty()) graph.add_pair(path.back(), n);
    path.push_back(n);
  }
}

namespace {

struct Frame {
  int node;
  std::size_t next;  // the next child to go down to
};

// Writes the subtree of `root` (a line per visit); a child met on its own
// path stops the walk with kCycle.
Written write_from(Graph const& g, int root, std::string& out, std::vector<char>& on_path,
                   std::vector<char>& seen, int* cycle) {
  std::vector<Frame> stack{{root, 0}};
  on_path[root] = seen[root] = 1;
  append_escaped(out, g.name(root));
  out += '\n';
  while (!stack.empty()) {
    Frame& top = stack.back();
    std::vector<int> const& children = g.children(top.node);
    if (top.next == children.size()) {
      on_path[top.node] = 0;
      stack.pop_back();
      continue;
    }
    int const c = children[top.next++];
    if (on_path[c]) {
      *cycle = c;
      return Written::kCycle;
    }
    out.append(2 * stack.size(), ' ');
    append_escaped(out, g.name(c));
    out += '\n';
    if (out.size() > kLongestText) return Written::kTooLong;
    on_path[c] = seen[c] = 1;
    stack.push_back({c, 0});
  }
  return Written::kOk;
}

}  // namespace

Written write_tree(Graph const& g, std::string& out, int* cycle) {
  std::vector<char> on_path(g.size()), seen(g.size());
  for (std::size_t n = 0; n < g.size(); ++n) {
    if (!g.parents(static_cast<int>(n)).empty()) continue;
    Written const w = write_from(g, static_cast<int>(n), out, on_path, seen, cycle);
    if (w != Written::kOk) return w;
  }
  // A node no root reaches has parents no root reaches either: following
  // first parents from it stays among them, so it comes back to a node it
  // passed, which lies on a cycle.
  for (std::size_t n = 0; n < g.size(); ++n) {
    if (seen[n]) continue;
    std::vector<char> passed(g.size());
    int up = static_cast<int>(n);
    while (!passed[up]) {
      passed[up] = 1;
      up = g.parents(up).front();
    }
    *cycle = up;
    return Written::kCycle;
  }
  return Written::kOk;
}

}  // namespace zelstr::str::tree
