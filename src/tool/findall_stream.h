// findall_stream.h - every occurrence of a string in a text of any length,
// found by CFindAllStr's one call per window.
//
// The text is gathered into windows of about `limit` bytes.  Each window is
// searched whole; the last pattern-length-minus-one bytes, where an
// occurrence may begin that the window cannot hold whole, start the next
// window (they cannot hold a whole occurrence themselves, so none is found
// twice).  Without overlaps, an occurrence is skipped when it begins inside
// the one reported before it.
#ifndef ZELSTR_TOOL_FINDALL_STREAM_H
#define ZELSTR_TOOL_FINDALL_STREAM_H

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

namespace zelstr::tool {

class FindAllStream {
 public:
  using Found = std::function<void(std::uint64_t offset)>;

  // `pattern` is not empty.
  FindAllStream(std::string pattern, bool insensitive, bool overlap, std::size_t limit,
                Found found);

  void write(std::string_view text);  // more text (no zero byte)
  void finish();

 private:
  void search();

  std::string m_pattern;
  bool m_insensitive, m_overlap;
  std::size_t m_limit;
  Found m_found;
  std::string m_window;
  std::uint64_t m_base = 0;       // offset of the window in the text
  std::uint64_t m_free_from = 0;  // without overlaps: the first offset not yet covered
};

}  // namespace zelstr::tool

#endif  // ZELSTR_TOOL_FINDALL_STREAM_H
