// tree_api.cpp - the exported functions of trees kept in strings: the
// builders, adding a node, the children and parents of a node, the walk.
#include <cstring>
#include <new>
#include <string>
#include <vector>

#include "frame/memory.h"
#include "str/report.h"
#include "str/text/writer.h"
#include "str/tree/tree_text.h"
#include "zelstr/alloc.h"
#include "zelstr/tree.h"

using namespace zelstr::str;
using namespace zelstr::str::tree;

namespace {

// `graph` written as a new heap text, or NULL with the warning of what
// stopped it.
char* written(Graph const& graph, char const* function) {
  std::string out;
  int cycle = -1;
  switch (write_tree(graph, out, &cycle)) {
    case Written::kCycle:
      warn_format(msg::kTreeCycleFormat, function, graph.name(cycle).c_str());
      return nullptr;
    case Written::kTooLong:
      warn_format(msg::kTreeTooLongFormat, function);
      return nullptr;
    case Written::kOk:
      break;
  }
  char* const copy = _zstrdupnalloc(out.c_str(), static_cast<unsigned>(out.size()), 0);
  if (copy == nullptr) zelstr::frame::note_allocation_failure();
  return copy;
}

bool null_argument(void const* p, char const* function, char const* name, char const* fallback) {
  if (p != nullptr) return false;
  warn_format(msg::kTextNullArgumentFormat, function, name, fallback);
  return true;
}

// The graph of the tree text `tree`; false with the warning when it is not
// one.
bool read_tree(char const* tree, Graph& graph, char const* function, char const* fallback) {
  std::vector<Line> lines;
  int bad_line = 0;
  if (!read_lines(tree, lines, &bad_line)) {
    warn_format(msg::kTreeBadTextFormat, function, bad_line, fallback);
    return false;
  }
  read_graph(lines, graph);
  return true;
}

// Runs `body`, which builds with the standard containers: short memory
// gives `failed`, counted.
template <class T, class Body>
T guarded(T failed, Body const& body) noexcept {
  try {
    return body();
  } catch (std::bad_alloc const&) {
    zelstr::frame::note_allocation_failure();
    return failed;
  }
}

// The names of `nodes`, escaped, a line each, in the clone arena.
char* name_lines(Graph const& graph, std::vector<int> const& nodes) {
  std::string out;
  for (int n : nodes) {
    append_escaped(out, graph.name(n));
    out += '\n';
  }
  return zelstr::str::text::into_arena([&](zelstr::str::text::Writer& w) {
    w.put(out.data(), out.size());
  });
}

char* neighbours(char const* tree, char const* node, bool children, char const* function) {
  if (null_argument(tree, function, "tree", "NULL") || null_argument(node, function, "node", "NULL"))
    return nullptr;
  return guarded<char*>(nullptr, [&]() -> char* {
    Graph graph;
    if (!read_tree(tree, graph, function, "NULL")) return nullptr;
    int const n = graph.find(node);
    if (n < 0) return nullptr;
    return name_lines(graph, children ? graph.children(n) : graph.parents(n));
  });
}

}  // namespace

char* _zstrbldtree(char const* const* pairs, int count) noexcept {
  if (null_argument(pairs, "_zstrbldtree", "pairs", "NULL")) return nullptr;
  if (count < 0) {
    warn_format(msg::kTextOutOfRangeFormat, "_zstrbldtree", "count", "NULL");
    return nullptr;
  }
  for (int i = 0; i < 2 * count; ++i) {
    if (pairs[i] == nullptr || *pairs[i] == '\0') {
      warn_format(pairs[i] == nullptr ? msg::kTextNullArgumentFormat : msg::kTextOutOfRangeFormat,
                  "_zstrbldtree", "pairs", "NULL");
      return nullptr;
    }
  }
  return guarded<char*>(nullptr, [&] {
    Graph graph;
    for (int i = 0; i < count; ++i) {
      int const parent = graph.node(pairs[2 * i]);
      graph.add_pair(parent, graph.node(pairs[2 * i + 1]));
    }
    return written(graph, "_zstrbldtree");
  });
}

char* _zstrbldtreepaths(char const* const* paths, int count, char separator) noexcept {
  if (null_argument(paths, "_zstrbldtreepaths", "paths", "NULL")) return nullptr;
  if (count < 0 || separator == '\0') {
    warn_format(msg::kTextOutOfRangeFormat, "_zstrbldtreepaths", count < 0 ? "count" : "separator",
                "NULL");
    return nullptr;
  }
  for (int i = 0; i < count; ++i) {
    if (null_argument(paths[i], "_zstrbldtreepaths", "paths", "NULL")) return nullptr;
  }
  char const separators[2] = {separator, '\0'};
  return guarded<char*>(nullptr, [&] {
    Graph graph;
    for (int i = 0; i < count; ++i) {
      std::string key;  // the parts so far, each after a zero byte
      int parent = -1;
      for (char const* p = paths[i]; *p != '\0';) {
        std::size_t const n = std::strcspn(p, separators);
        if (n > 0) {
          std::string const part(p, n);
          key += '\0';
          key += part;
          int const node = graph.node(key, part);
          if (parent >= 0) graph.add_pair(parent, node);
          parent = node;
        }
        p += n + (p[n] != '\0');
      }
    }
    return written(graph, "_zstrbldtreepaths");
  });
}

char* _zstrtreeaddnode(char const* tree, char const* parent, char const* child) noexcept {
  char const* const function = "_zstrtreeaddnode";
  if (null_argument(tree, function, "tree", "NULL") ||
      null_argument(parent, function, "parent", "NULL") ||
      null_argument(child, function, "child", "NULL"))
    return nullptr;
  if (*parent == '\0' || *child == '\0') {
    warn_format(msg::kTextOutOfRangeFormat, function, *parent == '\0' ? "parent" : "child", "NULL");
    return nullptr;
  }
  return guarded<char*>(nullptr, [&]() -> char* {
    Graph graph;
    if (!read_tree(tree, graph, function, "NULL")) return nullptr;
    int const p = graph.node(parent);
    graph.add_pair(p, graph.node(child));
    return written(graph, function);
  });
}

char* _zstrtreechildren(char const* tree, char const* node) noexcept {
  return neighbours(tree, node, true, "_zstrtreechildren");
}

char* _zstrtreeparents(char const* tree, char const* node) noexcept {
  return neighbours(tree, node, false, "_zstrtreeparents");
}

int _zstrtreewalk(char const* tree, int (*visit)(char const*, int, void*), void* context) noexcept {
  char const* const function = "_zstrtreewalk";
  if (null_argument(tree, function, "tree", "-1") ||
      null_argument(reinterpret_cast<void const*>(visit), function, "visit", "-1"))
    return -1;
  return guarded(-1, [&] {
    std::vector<Line> lines;
    int bad_line = 0;
    if (!read_lines(tree, lines, &bad_line)) {
      warn_format(msg::kTreeBadTextFormat, function, bad_line, "-1");
      return -1;
    }
    int visited = 0;
    for (Line const& line : lines) {
      ++visited;
      if (visit(line.name.c_str(), line.depth, context) == 0) break;
    }
    return visited;
  });
}
