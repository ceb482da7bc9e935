// file_walk.cpp - the walk of directories for -r and -R.
#include "tool/file_walk.h"

#include <algorithm>
#include <filesystem>
#include <system_error>

#include "zelstr/wildcard.h"

namespace zelstr::tool {
namespace {

namespace fs = std::filesystem;

class Walk {
 public:
  Walk(Invocation& inv, FileList& out)
      : m_inv(inv),
        m_out(out),
        m_follow(inv.flag("-R")),
        m_hidden(inv.flag("--hidden")),
        m_include(inv.values("--include")),
        m_exclude(inv.values("--exclude")),
        m_exclude_dir(inv.values("--exclude-dir")) {}

  // An operand: a directory is walked, anything else is read as named
  // (unless --exclude drops it).
  void operand(std::string const& name, std::string const& shown_prefix) {
    std::error_code ec;
    if (fs::is_directory(fs::path(name), ec)) {
      m_out.walked = true;
      std::vector<std::string> ancestors;
      directory(fs::path(name), shown_prefix, ancestors);
      return;
    }
    if (!matches_any(m_exclude, base_name(name))) m_out.names.push_back(name);
  }

 private:
  static std::string base_name(std::string const& name) {
    std::size_t const slash = name.find_last_of("/\\");
    return slash == std::string::npos ? name : name.substr(slash + 1);
  }
  static bool matches_any(std::vector<char const*> const& globs, std::string const& name) {
    return std::any_of(globs.begin(), globs.end(),
                       [&](char const* glob) { return _zstrmatch(name.c_str(), glob) == 1; });
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
    // but for a link that -R follows.
    std::vector<std::pair<std::string, fs::file_type>> names;
    for (fs::directory_iterator it(dir, ec), end; !ec && it != end; it.increment(ec)) {
      std::error_code type_ec;
      fs::file_type type = it->is_symlink(type_ec)       ? fs::file_type::symlink
                           : it->is_directory(type_ec)    ? fs::file_type::directory
                           : it->is_regular_file(type_ec) ? fs::file_type::regular
                                                          : fs::file_type::unknown;
      if (type == fs::file_type::symlink && m_follow) type = it->status(type_ec).type();
      names.emplace_back(it->path().filename().string(), type);
    }
    if (ec) {
      m_inv.file_error("cannot read directory '%s': %s", shown.empty() ? "." : shown.c_str(),
                       ec.message().c_str());
    }
    std::sort(names.begin(), names.end());
    for (auto const& [name, type] : names) {
      entry(dir / name, shown.empty() ? name : shown + "/" + name, name, type, ancestors);
    }
    if (m_follow) ancestors.pop_back();
  }

  void entry(fs::path const& path, std::string const& shown, std::string const& name,
             fs::file_type type, std::vector<std::string>& ancestors) {
    if (!m_hidden && name[0] == '.') return;
    if (type == fs::file_type::directory) {
      if (!matches_any(m_exclude_dir, name)) directory(path, shown, ancestors);
    } else if (type == fs::file_type::regular) {
      if ((m_include.empty() || matches_any(m_include, name)) && !matches_any(m_exclude, name)) {
        m_out.names.push_back(shown);
      }
    }  // links (with -r), devices, pipes and sockets are passed over
  }

  Invocation& m_inv;
  FileList& m_out;
  bool m_follow, m_hidden;
  std::vector<char const*> m_include, m_exclude, m_exclude_dir;
};

// -r and -R walk trees for the commands of the walk's options (sort has a
// -r of its own).
bool walks(Invocation& inv) { return inv.declares("--hidden") && (inv.flag("-r") || inv.flag("-R")); }

}  // namespace

bool names_shown(Invocation& inv, std::span<char const* const> operands) {
  if (inv.flag("-h")) return false;
  if (inv.flag("-H") || operands.size() > 1) return true;
  if (!walks(inv)) return false;
  std::error_code ec;
  return operands.empty() || fs::is_directory(fs::path(operands[0]), ec);
}

FileList files_to_read(Invocation& inv, std::span<char const* const> operands) {
  FileList list;
  if (!walks(inv)) {
    list.names.assign(operands.begin(), operands.end());
    if (list.names.empty()) list.names.emplace_back("-");
    return list;
  }
  Walk walk(inv, list);
  if (operands.empty()) walk.operand(".", "");
  for (char const* name : operands) {
    if (std::string(name) == "-") {
      list.names.emplace_back("-");
    } else {
      std::string shown(name);
      while (shown.size() > 1 && (shown.back() == '/' || shown.back() == '\\')) shown.pop_back();
      walk.operand(name, shown);
    }
  }
  return list;
}

}  // namespace zelstr::tool
