// tree_command.cpp - zelstr tree: "parent child" lines printed as a tree
// through the library's tree builder.
#include <algorithm>
#include <cstring>
#include <string>
#include <vector>

#include "tool/command.h"
#include "tool/input.h"
#include "tool/invocation.h"
#include "zelstr/zelstr.h"

namespace zelstr::tool {

namespace {

// The words of a line (split at blanks and tabs).
std::vector<std::string> words_of(char const* line) {
  std::vector<std::string> words;
  for (char const* p = line + std::strspn(line, " \t\r"); *p != '\0';
       p += std::strspn(p, " \t\r")) {
    std::size_t const n = std::strcspn(p, " \t\r");
    words.emplace_back(p, n);
    p += n;
  }
  return words;
}

// Why the library refused the pairs, from its warning.
std::string refusal(Invocation& inv) {
  std::string const& w = inv.last_warning();
  std::size_t const at = w.find("cycle through '");
  if (at == std::string::npos) return "the tree would be longer than 256 MB";
  std::size_t const end = w.rfind("': NULL");
  return "the pairs form a cycle through " + w.substr(at + 14, end - (at + 14) + 1);
}

}  // namespace

// tree [FILE...]: the pairs of every input, one tree.
int run_tree(Invocation& inv) {
  std::vector<std::string> names;  // parent, child, parent, child...
  std::vector<std::string> lone;   // nodes named alone on their line
  for_each_line(inv, inv.operands(), [&](Input& in, char* line, std::size_t) {
    std::vector<std::string> words = words_of(line);
    if (words.empty() || words[0][0] == '#') return true;
    if (words.size() > 2) {
      inv.error("%s:%llu: a line holds a parent and a child, or one name", in.name(),
                static_cast<unsigned long long>(in.line_number()));
      return false;
    }
    if (words.size() == 1) {
      lone.push_back(std::move(words[0]));
    } else {
      names.push_back(std::move(words[0]));
      names.push_back(std::move(words[1]));
    }
    return true;
  });
  if (inv.exit_status() == kError) return kError;
  std::vector<char const*> pairs;
  for (std::string const& n : names) pairs.push_back(n.c_str());
  pairs.push_back(nullptr);
  inv.clear_warning();
  char* tree = _zstrbldtree(pairs.data(), static_cast<int>(names.size() / 2));
  if (tree == nullptr) {
    inv.error("%s", refusal(inv).c_str());
    return kError;
  }
  std::string out = tree;
  _zstrdupfree(tree);
  for (std::string const& n : lone) {
    if (std::find(names.begin(), names.end(), n) != names.end()) continue;
    // The name escaped as the builder writes it: the first line of a tree
    // of it and a child of another name.
    std::string const child = n + "_";
    char const* const one[] = {n.c_str(), child.c_str()};
    char* line = _zstrbldtree(one, 1);
    if (line == nullptr) continue;
    out.append(line, std::strcspn(line, "\n") + 1);
    _zstrdupfree(line);
    names.push_back(n);
  }
  write_out(out);
  if (!out.empty()) inv.found();
  return inv.exit_status();
}

}  // namespace zelstr::tool
