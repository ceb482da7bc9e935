// file_walk.cpp - the walk of directories for -r and -R.
#include "tool/file_walk.h"

#include <algorithm>
#include <cstring>
#include <filesystem>
#include <system_error>

#include "zelstr/wildcard.h"

namespace zelstr::tool {
namespace {

namespace fs = std::filesystem;

class Walk {
 public:
  Walk(Invocation& inv, NameSink& out)
      : m_inv(inv),
        m_out(out),
        m_follow(inv.flag("-R")),
        m_hidden(inv.flag("--hidden")),
        m_include(inv.values("--include")),
        m_exclude(inv.values("--exclude")),
        m_exclude_dir(inv.values("--exclude-dir")) {}

  // An operand: a directory is walked (unless --exclude-dir drops it),
  // anything else is read as named (unless --include or --exclude drop it).
  void operand(std::string const& name, std::string const& shown_prefix) {
    std::error_code ec;
    if (fs::is_directory(fs::path(name), ec)) {
      if (matches_any(m_exclude_dir, shown_prefix)) return;
      std::vector<std::string> ancestors;
      directory(fs::path(name), shown_prefix, ancestors);
      return;
    }
    if (chosen(m_include, m_exclude, name)) m_out.add(name);
  }

  // Whether the file `name` is to be read: --include and --exclude.
  static bool chosen(std::vector<char const*> const& include,
                     std::vector<char const*> const& exclude, std::string const& name) {
    return (include.empty() || matches_any(include, name)) && !matches_any(exclude, name);
  }

 private:
  // Whether a pattern matches the name, or what follows one of its '/'
  // (as grep matches a name it is given: "a/*.sql" matches "tree/a/x.sql";
  // the names the walk finds are matched alone).
  static bool matches_any(std::vector<char const*> const& globs, std::string const& name) {
    return std::any_of(globs.begin(), globs.end(), [&](char const* glob) {
      for (std::size_t from = 0;; ++from) {
        if (_zstrmatch(name.c_str() + from, glob) == 1) return true;
        from = name.find('/', from);
        if (from == std::string::npos) return false;
      }
    });
  }

  // `shown` is the directory's name as printed ("" for the working
  // directory when no operand was given).
  void directory(fs::path const& dir, std::string const& shown,
                 std::vector<std::string>& ancestors) {
    std::error_code ec;
    if (m_follow) {
      std::string const canonical = fs::canonical(dir, ec).generic_string();
      if (!ec && std::find(ancestors.begin(), ancestors.end(), canonical) != ancestors.end()) {
        m_inv.notice("warning: %s: recursive directory loop", shown.c_str());
        return;
      }
      ancestors.push_back(canonical);
    }
    // The type of an entry comes with its name (no system call for it),
    // but for a link that -R follows.  An entry's name is cut from its path
    // rather than taken apart by filename(), and a path is made only for a
    // directory entered: the walk's time was mostly spent taking paths
    // apart.
    std::vector<std::pair<std::string, fs::file_type>> names;
    for (fs::directory_iterator it(dir, ec), end; !ec && it != end; it.increment(ec)) {
      std::error_code type_ec;
      fs::file_type type = it->is_symlink(type_ec)       ? fs::file_type::symlink
                           : it->is_directory(type_ec)    ? fs::file_type::directory
                           : it->is_regular_file(type_ec) ? fs::file_type::regular
                                                          : fs::file_type::unknown;
      if (type == fs::file_type::symlink && m_follow) type = it->status(type_ec).type();
      names.emplace_back(name_in(it->path().string()), type);
    }
    if (ec) {
      m_inv.file_error("cannot read directory '%s': %s", shown.empty() ? "." : shown.c_str(),
                       ec.message().c_str());
    }
    std::sort(names.begin(), names.end());
    for (auto const& [name, type] : names) {
      if (m_inv.enough()) break;  // -q found its line: the readers stopped
      // (A file named "-" in the working directory is no standard input.)
      std::string const path = shown.empty()         ? (name == "-" ? "./-" : name)
                               : shown.back() == '/' ? shown + name
                                                     : shown + "/" + name;
      entry(dir, path, name, type, ancestors);
    }
    if (m_follow) ancestors.pop_back();
  }

  // The last part of an entry's path: after its last separator ('/', and
  // on Windows '\\' too, which elsewhere may be part of a name).
  static std::string name_in(std::string const& path) {
    char const* const separators = fs::path::preferred_separator == '/' ? "/" : "/\\";
    std::size_t const last = path.find_last_of(separators);
    return last == std::string::npos ? path : path.substr(last + 1);
  }

  void entry(fs::path const& dir, std::string const& shown, std::string const& name,
             fs::file_type type, std::vector<std::string>& ancestors) {
    if (!m_hidden && name[0] == '.') return;
    if (type == fs::file_type::directory) {
      if (!matches_any(m_exclude_dir, name)) directory(dir / name, shown, ancestors);
    } else if (type == fs::file_type::regular ||
               (m_follow && type == fs::file_type::not_found)) {
      // (A link -R follows to nothing is read, to be reported as missing.)
      if (chosen(m_include, m_exclude, name)) m_out.add(shown);
    }  // links (with -r), devices, pipes and sockets are passed over
  }

  Invocation& m_inv;
  NameSink& m_out;
  bool m_follow, m_hidden;
  std::vector<char const*> m_include, m_exclude, m_exclude_dir;
};

// The names as a list.
struct ListSink final : NameSink {
  explicit ListSink(FileList& list) : list(list) {}
  void add(std::string name) override { list.names.push_back(std::move(name)); }
  FileList& list;
};

}  // namespace

bool walks(Invocation& inv) { return inv.declares("--hidden") && (inv.flag("-r") || inv.flag("-R")); }

bool names_shown(Invocation& inv, std::span<char const* const> operands) {
  if (inv.flag("-h")) return false;
  if (inv.flag("-H") || operands.size() > 1) return true;
  if (!walks(inv)) return false;
  std::error_code ec;
  return operands.empty() || fs::is_directory(fs::path(operands[0]), ec);
}

void find_files(Invocation& inv, std::span<char const* const> operands, NameSink& out) {
  if (!walks(inv)) {
    // --include and --exclude choose among the files named too.
    std::vector<char const*> const include = inv.values("--include"), exclude = inv.values("--exclude");
    for (char const* name : operands) {
      if (std::strcmp(name, "-") == 0 || Walk::chosen(include, exclude, name)) out.add(name);
    }
    if (operands.empty()) out.add("-");
    return;
  }
  Walk walk(inv, out);
  if (operands.empty()) walk.operand(".", "");
  for (char const* name : operands) {
    if (std::string(name) == "-") {
      out.add("-");
    } else {
      std::string shown(name);
      while (shown.size() > 1 && (shown.back() == '/' || shown.back() == '\\')) shown.pop_back();
      walk.operand(name, shown);
    }
  }
}

FileList files_to_read(Invocation& inv, std::span<char const* const> operands) {
  FileList list;
  ListSink sink(list);
  find_files(inv, operands, sink);
  return list;
}

void FileFeed::add(std::string name) {
  std::lock_guard<std::mutex> const hold(m_lock);
  m_names.push_back(std::move(name));
  m_more.notify_all();
}

void FileFeed::finish() {
  std::lock_guard<std::mutex> const hold(m_lock);
  m_finished = true;
  m_more.notify_all();
}

std::string const* FileFeed::wait_for(std::size_t index) {
  std::unique_lock<std::mutex> hold(m_lock);
  m_more.wait(hold, [&] { return index < m_names.size() || m_finished; });
  return index < m_names.size() ? &m_names[index] : nullptr;
}

}  // namespace zelstr::tool
