// input.cpp - reading the tool's inputs.
#include "tool/input.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <utility>

#include "tool/out_of_memory.h"

namespace zelstr::tool {
namespace {

// The last `c` of the `n` bytes at `from`, or NULL (memrchr, which not
// every C library has); lines are short, so the walk back is too.
char const* last_of(char const* from, std::size_t n, char c) {
  for (char const* p = from + n; p > from;) {
    if (*--p == c) return p;
  }
  return nullptr;
}

char const* display_name(char const* name) {
  return std::strcmp(name, "-") == 0 ? "(standard input)" : name;
}

}  // namespace

Input::Input(Invocation& invocation, char const* name)
    : m_invocation(invocation), m_path(name), m_name(display_name(name)) {
  if (std::strcmp(name, "-") == 0) {
    m_file = stdin;
    return;
  }
  m_file = std::fopen(name, "rb");
  if (m_file == nullptr) {
    if (errno == ENOMEM) note_out_of_memory();
    m_invocation.error("cannot open '%s': %s", name, std::strerror(errno));
  }
}

Input::~Input() {
  if (m_file != nullptr && m_file != stdin) std::fclose(m_file);
}

bool Input::fill() {
  if (!ok() || m_ended) return false;
  if (m_start > 0) {
    m_offset += m_start;
    m_buffer.erase(0, m_start);
    m_start = 0;
  }
  std::size_t const old_size = m_buffer.size();
  m_buffer.resize(old_size + kBlock);
  std::size_t const n = std::fread(m_buffer.data() + old_size, 1, kBlock, m_file);
  m_buffer.resize(old_size + n);
  if (n == 0) {
    if (std::ferror(m_file)) {
      m_invocation.error("%s: read error: %s", m_name, std::strerror(errno));
      m_failed = true;
    }
    m_ended = true;
    return false;
  }
  if (void const* zero = std::memchr(m_buffer.data() + old_size, '\0', n)) {
    auto const at = static_cast<char const*>(zero) - m_buffer.data();
    m_invocation.error("%s: binary data (a zero byte at offset %llu): only text can be read",
                       m_name, static_cast<unsigned long long>(m_offset + at));
    m_failed = true;
    return false;
  }
  return true;
}

std::string_view Input::next_block() {
  m_offset += m_buffer.size();
  m_buffer.clear();
  m_start = 0;
  if (!fill()) return {};
  return m_buffer;
}

bool Input::next_line(char*& line, std::size_t& length) {
  std::size_t searched = m_start;
  for (;;) {
    void* const end = std::memchr(m_buffer.data() + searched, '\n', m_buffer.size() - searched);
    if (end != nullptr) {
      line = m_buffer.data() + m_start;
      length = static_cast<std::size_t>(static_cast<char*>(end) - line);
      m_line_offset = m_offset + m_start;
      m_start += length + 1;
      m_line_end = "\n";
      if (length > 0 && line[length - 1] == '\r') {
        --length;
        m_line_end = "\r\n";
      }
      line[length] = '\0';
      ++m_line_number;
      return true;
    }
    searched = m_buffer.size() - m_start;  // after fill() moves the rest to the front
    if (!fill()) break;
  }
  if (m_failed || m_start == m_buffer.size()) return false;
  m_buffer.push_back('\0');  // the last line, without a line feed
  line = m_buffer.data() + m_start;
  m_line_offset = m_offset + m_start;
  length = m_buffer.size() - 1 - m_start;
  m_start = m_buffer.size();
  m_line_end = "";
  ++m_line_number;
  return true;
}

bool Input::next_lines(Lines& lines, bool numbered) {
  if (m_mapping == Mapping::kUntried) {
    bool const regular = ok() && m_file != stdin && m_file_map.open(m_path);
    m_mapping = regular ? Mapping::kMapped : Mapping::kRead;
  }
  if (m_mapping == Mapping::kMapped) return next_mapped_lines(lines, numbered);
  if (m_covered_at != std::string::npos) {  // the byte the last stretch's terminator covered
    m_buffer[m_covered_at] = m_covered;
    m_covered_at = std::string::npos;
  }
  std::size_t searched = m_start;  // no line feed before here (but the stretch's own)
  for (;;) {
    if (m_buffer.size() - m_start >= kStretch || m_ended) {
      char const* const from = m_buffer.data() + searched;
      char const* const lf = last_of(from, m_buffer.size() - searched, '\n');
      std::size_t end = lf != nullptr ? static_cast<std::size_t>(lf - m_buffer.data()) + 1
                        : m_ended     ? m_buffer.size()
                                      : std::string::npos;
      if (end != std::string::npos) {
        if (end == m_start) return false;  // nothing left
        lines.text = m_buffer.data() + m_start;
        lines.length = end - m_start;
        lines.offset = m_offset + m_start;
        lines.first_line = m_stretch_lines + 1;
        if (numbered) {
          for (char const* p = lines.text;
               (p = static_cast<char const*>(std::memchr(p, '\n', lines.text + lines.length - p)));
               ++p) {
            ++m_stretch_lines;
          }
        }
        if (end < m_buffer.size()) {
          m_covered = m_buffer[end];
          m_covered_at = end;
          m_buffer[end] = '\0';
        }  // else the string's own terminator follows
        m_start = end;
        return true;
      }
      searched = m_buffer.size();  // a line longer than the stretch: read on
    }
    std::size_t const kept = searched - m_start;
    if (!fill()) {
      if (m_failed) return false;
      searched = m_start + kept;
      continue;  // ended: the rest is the last line
    }
    searched = m_start + kept;
  }
}

// The view holds the file's bytes [from, to) (to at most the file's end,
// and then the zeros after it in its last page too).
bool Input::viewed(std::uint64_t from, std::uint64_t to) {
  if (from >= m_view_from && to <= m_view_to && m_view != nullptr) return true;
  std::uint64_t const size = m_file_map.size();
  std::uint64_t const start = from - from % m_file_map.granularity();
  std::uint64_t const page = m_file_map.page();
  std::uint64_t const file_end = (size + page - 1) / page * page;
  std::uint64_t const end = std::min(file_end, std::max(to, start + kView));
  m_view = m_file_map.view(start, static_cast<std::size_t>(end - start));
  if (m_view == nullptr) {
    m_invocation.error("%s: cannot be read: the system refused to map it into memory", m_name);
    m_failed = true;
    return false;
  }
  m_view_from = start;
  m_view_to = std::min(end, size);
  return true;
}

// Hands `text` out as a stretch (zero-terminated just after it), refusing
// it when it holds a zero byte.
bool Input::hand_out(Lines& lines, char* text, std::size_t length, bool numbered) {
  if (void const* zero = std::memchr(text, '\0', length)) {
    auto const at = static_cast<char const*>(zero) - text;
    m_invocation.error("%s: binary data (a zero byte at offset %llu): only text can be read",
                       m_name, static_cast<unsigned long long>(m_mapped_next + at));
    m_failed = true;
    return false;
  }
  lines.text = text;
  lines.length = length;
  lines.offset = m_mapped_next;
  lines.first_line = m_stretch_lines + 1;
  if (numbered) {
    for (char const* p = text;
         (p = static_cast<char const*>(std::memchr(p, '\n', text + length - p))); ++p) {
      ++m_stretch_lines;
    }
  }
  m_mapped_next += length;
  return true;
}

bool Input::next_mapped_lines(Lines& lines, bool numbered) {
  if (m_covered_at != std::string::npos) {  // the byte the last terminator covered
    m_view[m_covered_at] = m_covered;
    m_covered_at = std::string::npos;
  }
  std::uint64_t const size = m_file_map.size();
  std::uint64_t const from = m_mapped_next;
  if (from >= size || m_failed) return false;
  // A stretch of about kStretch bytes, cut after its last line feed; a line
  // longer than that makes it longer.
  for (std::uint64_t span = std::min<std::uint64_t>(kStretch, size - from);; span *= 2) {
    span = std::min(span, size - from);
    if (!viewed(from, from + span + (from + span < size ? 1 : 0))) return false;
    char* const text = m_view + (from - m_view_from);
    char const* const lf = last_of(text, static_cast<std::size_t>(span), '\n');
    if (lf == nullptr && from + span < size) continue;
    std::size_t const length = lf != nullptr && from + span < size
                                   ? static_cast<std::size_t>(lf + 1 - text)
                                   : static_cast<std::size_t>(span);
    if (from + length < size) {
      m_covered_at = static_cast<std::size_t>(from + length - m_view_from);
      m_covered = m_view[m_covered_at];
      m_view[m_covered_at] = '\0';
      return hand_out(lines, text, length, numbered);
    }
    if (size % m_file_map.page() != 0) return hand_out(lines, text, length, numbered);
    // The file ends on a page's end, with no byte after it for the
    // terminator: its last stretch is handed out as a copy.
    m_buffer.assign(text, length);
    return hand_out(lines, m_buffer.data(), length, numbered);
  }
}

void Input::pick(PickedLine const& line) {
  m_picked = line;
  m_line_number = line.number != 0 ? line.number : m_line_number;
  m_line_offset = line.offset;
  m_line_end = line.end;
}

PickedLine LineLocator::line_at(char const* at) {
  char const* const text = m_lines.text;
  char const* const before = last_of(text, static_cast<std::size_t>(at - text), '\n');
  char const* const start = before != nullptr ? before + 1 : text;
  auto const* lf = static_cast<char const*>(std::memchr(at, '\n', text + m_lines.length - at));
  char const* const end = lf != nullptr ? lf : text + m_lines.length;
  std::size_t length = static_cast<std::size_t>(end - start);
  std::string_view line_end = lf != nullptr ? "\n" : "";
  if (lf != nullptr && length > 0 && start[length - 1] == '\r') {
    --length;
    line_end = "\r\n";
  }
  std::uint64_t number = 0;
  if (m_numbered) {
    std::uint64_t feeds = 0;
    for (char const* p = m_counted; p < start; ++p) feeds += *p == '\n';
    m_number += feeds;
    m_counted = start;
    number = m_number;
  }
  return PickedLine{
      {start, length}, line_end, m_lines.offset + static_cast<std::uint64_t>(start - text), number};
}

char const* LineLocator::after(PickedLine const& line) const {
  return line.text.data() + line.text.size() + line.end.size();
}

bool Input::read_rest(std::string& text) {
  text.append(m_buffer, m_start);
  for (std::string_view b; !(b = next_block()).empty();) text.append(b);
  return ok();
}

void Input::reread(std::string text) {
  m_buffer = std::move(text);
  m_start = 0;
  m_offset = 0;
  m_line_number = 0;
  m_line_offset = 0;
  m_line_end = {};
}

void write_out(char const* data, std::size_t length) { std::fwrite(data, 1, length, stdout); }

void write_passed_line(Input const& in, std::string_view text) {
  write_out(text);
  write_out(in.line_end());
}

void write_picked_line(Input const& in, std::string_view text) {
  write_out(text);
  write_out(in.line_end().empty() ? std::string_view("\n") : in.line_end());
}

}  // namespace zelstr::tool
