// file_walk.h - the files a searching command reads: its operands, where
// -r or -R make a directory stand for the files under it.
//
// The walk goes depth first, the entries of each directory in the byte
// order of their names, so that a tree is read in the same order on every
// run and every system.  It keeps regular files only; names that begin
// with '.' (".git" among them) are passed over unless --hidden; --include
// GLOB keeps only the files whose name matches one of its patterns,
// --exclude GLOB drops those whose name matches (named operands too), and
// --exclude-dir GLOB does not enter the directories whose name matches
// (patterns of the library's wildcard MATCH: * ? [set]).  With -r the
// symbolic links found in the walk are not followed; with -R they are,
// and a directory met again below itself is reported and passed over.  A
// directory that cannot be read is reported as an input that cannot be
// opened.
#ifndef ZELSTR_TOOL_FILE_WALK_H
#define ZELSTR_TOOL_FILE_WALK_H

#include <condition_variable>
#include <cstddef>
#include <deque>
#include <mutex>
#include <span>
#include <string>
#include <vector>

#include "tool/invocation.h"

namespace zelstr::tool {

struct FileList {
  std::vector<std::string> names;  // "-" for standard input
};

// Where the names go as they are found.
struct NameSink {
  virtual ~NameSink() = default;
  virtual void add(std::string name) = 0;
};

// Whether the command walks directories (-r or -R, for the commands that
// take them).
bool walks(Invocation& inv);

// The files for `operands` (none: standard input, or with -r the working
// directory, whose files are then named without a "./" in front), handed
// to `out` in order as the walk finds them; files_to_read lists them all.
// Once the invocation has found enough (-q), the walk stops.
void find_files(Invocation& inv, std::span<char const* const> operands, NameSink& out);
FileList files_to_read(Invocation& inv, std::span<char const* const> operands);

// The names a walk on one thread finds, taken on others as they come:
// the readers of a tree start with its first files, not after the walk.
class FileFeed final : public NameSink {
 public:
  void add(std::string name) override;
  // No more names.
  void finish();
  // Name `index` (from 0), waiting for the walk to find it; NULL when the
  // walk ended with fewer.  The name stays where it is until the feed goes.
  std::string const* wait_for(std::size_t index);

 private:
  std::mutex m_lock;
  std::condition_variable m_more;
  std::deque<std::string> m_names;  // (growing at its end moves no name)
  bool m_finished = false;
};

// Whether the lines printed begin with their file's name: with -H, never
// with -h, else when there are several operands or a directory is walked.
bool names_shown(Invocation& inv, std::span<char const* const> operands);

}  // namespace zelstr::tool

#endif  // ZELSTR_TOOL_FILE_WALK_H
