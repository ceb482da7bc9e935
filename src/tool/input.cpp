// input.cpp - reading the tool's inputs.
#include "tool/input.h"

#include <algorithm>
#include <cerrno>
#include <cstring>

#include "frame/byte_mask.h"
#include "platform/binary_stdio.h"
#include "tool/line_feeds.h"
#include "tool/out_of_memory.h"

namespace zelstr::tool {
namespace {

// The last `c` of the `n` bytes at `from`, or NULL (memrchr, which not
// every C library has): sixteen bytes at a time back from the end.
char const* last_of(char const* from, std::size_t n, char c) {
  char const* p = from + n;
  frame::Bytes16 const splat = frame::splat16(static_cast<unsigned char>(c));
  for (; p - from >= 16; p -= 16) {
    auto const hit = reinterpret_cast<frame::Bytes16>(frame::load16(p - 16) == splat);
    if (std::uint32_t const mask = frame::byte_mask(hit))
      return p - 16 + (31 - __builtin_clz(mask));
  }
  while (p > from) {
    if (*--p == c) return p;
  }
  return nullptr;
}

// The byte-order mark the `n` bytes at `bytes` begin with: the encoding it
// names (NULL for UTF-8, which needs no decoding) and its length; 0 for
// none.
struct Mark {
  char const* encoding;
  std::size_t length;
};
Mark byte_order_mark(char const* bytes, std::size_t n) {
  auto const* const b = reinterpret_cast<unsigned char const*>(bytes);
  if (n >= 2 && b[0] == 0xFF && b[1] == 0xFE) return {"UTF-16LE", 2};
  if (n >= 2 && b[0] == 0xFE && b[1] == 0xFF) return {"UTF-16BE", 2};
  if (n >= 3 && b[0] == 0xEF && b[1] == 0xBB && b[2] == 0xBF) return {nullptr, 3};
  return {nullptr, 0};
}

char const* display_name(char const* name) {
  return std::strcmp(name, "-") == 0 ? "(standard input)" : name;
}

}  // namespace

Input::Input(Invocation& invocation, char const* name, AlignedBytes* buffer)
    : m_invocation(invocation),
      m_name(display_name(name)),
      m_bytes(buffer != nullptr ? *buffer : m_own_bytes) {
  if (std::strcmp(name, "-") == 0) {
    m_file = stdin;
    return;
  }
  m_file = std::fopen(name, "rb");
  if (m_file == nullptr) {
    if (errno == ENOMEM) note_out_of_memory();
    m_invocation.file_error("cannot open '%s': %s", name, std::strerror(errno));
  }
}

Input::~Input() {
  if (m_file != nullptr && m_file != stdin) std::fclose(m_file);
}

bool Input::fill() {
  if (!ok() || m_ended) return false;
  if (m_whole.data() != nullptr) return take_in();
  // What is pending moves down to end on an aligned byte, where the read
  // then starts.
  std::size_t const kept = pending();
  std::size_t const start = aligned_start(kept);
  if (m_start > start) {
    std::memmove(m_bytes.data() + start, m_bytes.data() + m_start, kept);
    m_offset += m_start - start;
    m_start = start;
    m_end = start + kept;
  }
  bool const first_block = !m_started;
  std::size_t const n = read_more();
  if (m_whole.data() != nullptr) return take_in();
  if (n == 0) {
    m_ended = true;
    if (m_bytes.data() != nullptr) m_bytes.data()[m_end] = '\0';
    return false;
  }
  if (!check_zeros(n, first_block)) return false;
  m_end += n;
  m_bytes.data()[m_end] = '\0';
  return true;
}

std::size_t Input::read_more() {
  for (;;) {
    if (m_decoder == nullptr) {
      m_bytes.reserve(m_end + kRead + 1, m_end);
      char* const at = m_bytes.data() + m_end;
      std::size_t const n = read_some(at, kRead);
      if (m_started) return n;
      if (n == kRead && m_whole_asked && see_whole_now()) return 0;
      // The first read: a byte-order mark, or --encoding, says how to go on.
      std::size_t const mark = begin_reading(at, n);
      if (m_failed) return 0;
      if (m_decoder != nullptr) {
        // Decoded from here on, these bytes first (moved out of the way of
        // the text they become).
        std::memcpy(raw_block(), at + mark, n - mark);
        std::size_t const decoded = decode_into_buffer(m_raw.get(), n - mark, n == 0 || m_ended);
        if (decoded > 0 || n == 0 || m_failed) return decoded;
        continue;
      }
      // A UTF-8 mark is passed over where it lies (not moved out): the
      // text begins after it, at offset 0.
      m_start += mark;
      m_end += mark;
      m_offset -= mark;
      if (n - mark > 0 || n == 0) return n - mark;
      continue;  // a mark alone so far
    }
    std::size_t const got = read_some(raw_block(), kRead);
    if (m_failed) return 0;
    std::size_t const n = decode_into_buffer(m_raw.get(), got, got == 0);
    if (n > 0 || got == 0 || m_failed) return n;
  }
}

// The block the bytes to decode are read into, made once per input and
// never filled with zeros first: an input in UTF-16 is most often a small
// file, which uses only the block's first pages.
char* Input::raw_block() {
  if (m_raw == nullptr) m_raw = std::make_unique_for_overwrite<char[]>(kRead);
  return m_raw.get();
}

// Standard input goes through its stream (something may have read from
// it before); a file the input opened is read from the system directly.
std::size_t Input::read_some(char* into, std::size_t n) {
  if (m_file == stdin) {
    std::size_t const got = std::fread(into, 1, n, m_file);
    if (got == 0 && std::ferror(m_file)) report_read_error();
    // A read that met the end needs no further read to be told so.
    if (got > 0 && std::feof(m_file)) m_ended = true;
    return got;
  }
  long const got = platform::read_file(m_file, into, n);
  if (got < 0) {
    report_read_error();
    return 0;
  }
  return static_cast<std::size_t>(got);
}

void Input::report_read_error() {
  m_invocation.file_error("%s: read error: %s", m_name, std::strerror(errno));
  m_failed = true;
}

std::size_t Input::begin_reading(char const* bytes, std::size_t n) {
  m_started = true;
  Mark const mark = m_invocation.encoding() != nullptr ? Mark{m_invocation.encoding(), 0}
                                                       : byte_order_mark(bytes, n);
  char const* const name = mark.encoding;
  if (name == nullptr) return mark.length;
  m_decoder = platform::TextDecoder::open(name);
  if (m_decoder == nullptr) {
    m_invocation.error("%s: cannot decode %s", m_name, name);
    m_failed = true;
  }
  return mark.length;
}

std::size_t Input::decode_into_buffer(char const* raw, std::size_t n, bool last) {
  m_decoded.clear();
  if (!m_decoder->decode({raw, n}, last, m_decoded)) {
    note_out_of_memory();
    m_invocation.error("%s: out of memory", m_name);
    m_failed = true;
    return 0;
  }
  // A mark the decoder kept (one --encoding named) is no part of the text.
  std::size_t from = 0;
  if (!m_text_started && !m_decoded.empty()) {
    m_text_started = true;
    if (m_decoded.compare(0, 3, "\xEF\xBB\xBF") == 0) from = 3;
  }
  return place(m_decoded.data() + from, m_decoded.size() - from);
}

std::size_t Input::place(char const* bytes, std::size_t n) {
  m_bytes.reserve(m_end + n + 1, m_end);
  if (n > 0) std::memcpy(m_bytes.data() + m_end, bytes, n);
  return n;
}

bool Input::check_zeros(std::size_t n, bool first_block) {
  switch (m_zero_bytes) {
    case ZeroBytes::kAsText:
      return true;
    case ZeroBytes::kRefused:
      return text_only(n);
    case ZeroBytes::kBinaryFiles:
      break;
  }
  char* const from = base() + m_end;
  if (!m_binary) {
    // A zero byte after the first block refuses the input; none in it
    // leaves a text.
    if (!first_block) return text_only(n);
    if (std::memchr(from, '\0', n) == nullptr) return true;
  }
  m_binary = true;
  for (char* zero = from;
       (zero = static_cast<char*>(std::memchr(zero, '\0', n - (zero - from))));) {
    *zero++ = '\n';
  }
  return true;
}

void Input::see_whole(Zeros zeros) {
  if (!ok() || m_file == stdin || m_started || m_invocation.encoding() != nullptr) return;
  m_whole_asked = true;
  m_whole_zeros = zeros;
}

bool Input::see_whole_now() {
  m_whole_asked = false;
  if (!m_whole.open(m_file, kRead)) return false;
  // A file in UTF-16, or a binary one, is read instead; a UTF-8 mark is
  // passed over (the text's offsets begin after it).
  Mark const mark = byte_order_mark(m_whole.data(), m_whole.size());
  bool const binary = m_zero_bytes != ZeroBytes::kRefused &&
                      std::memchr(m_whole.data(), '\0', std::min(m_whole.size(), kRead)) != nullptr;
  if (mark.encoding != nullptr || binary) {
    m_whole.close();
    return false;
  }
  m_start = m_end = mark.length;
  m_offset = std::uint64_t{0} - mark.length;  // so that the text after a mark is at 0
  m_started = true;
  m_zeros_left_to_search = m_whole_zeros == Zeros::kFoundBySearch;
  return true;
}

bool Input::searched_to(Lines const& lines, char const* end) {
  if (end == lines.text + lines.length) return true;
  void const* const zero = std::memchr(lines.text, '\0', lines.length);
  if (zero == nullptr) return true;
  refuse_zero_at(lines.offset +
                 static_cast<std::uint64_t>(static_cast<char const*>(zero) - lines.text));
  return false;
}

bool Input::take_in() {
  std::size_t const n = std::min(kSeenStretch, m_whole.size() - m_end);
  if (n == 0) {
    m_ended = true;
    return false;
  }
  if (!m_zeros_left_to_search && !check_zeros(n, false)) return false;
  m_end += n;
  return true;
}

bool Input::text_only(std::size_t n) {
  void const* const zero = std::memchr(base() + m_end, '\0', n);
  if (zero == nullptr) return true;
  refuse_zero_at(m_offset + static_cast<std::uint64_t>(static_cast<char const*>(zero) - base()));
  return false;
}

void Input::refuse_zero_at(std::uint64_t offset) {
  m_invocation.error("%s: binary data (a zero byte at offset %llu): only text can be read", m_name,
                     static_cast<unsigned long long>(offset));
  m_failed = true;
}

std::string_view Input::next_block() {
  if (pending() == 0 && !fill()) return {};
  std::string_view const block(base() + m_start, pending());
  m_start = m_end;
  return block;
}

bool Input::next_line(char*& line, std::size_t& length) {
  std::size_t searched = 0;  // bytes after m_start known to hold no line feed
  for (;;) {
    char* const from = base() + m_start;
    // (nothing is allocated before the first read: no memchr on NULL)
    void* const end =
        pending() > searched ? std::memchr(from + searched, '\n', pending() - searched) : nullptr;
    if (end != nullptr) {
      line = from;
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
    searched = pending();
    if (!fill()) break;
  }
  if (m_failed || pending() == 0) return false;
  line = base() + m_start;  // the last line, without a line feed
  length = pending();
  m_line_offset = m_offset + m_start;
  m_start = m_end;  // the spare byte after it is its terminator
  m_line_end = "";
  ++m_line_number;
  return true;
}

bool Input::next_lines(Lines& lines, bool numbered) {
  if (m_covered_at != std::string::npos) {  // the byte the last stretch's terminator covered
    base()[m_covered_at] = m_covered;
    m_covered_at = std::string::npos;
  }
  if (m_whole.data() != nullptr && m_start - m_given_back >= kGiveBack) {
    m_whole.release(m_start);
    m_given_back = m_start;
  }
  std::size_t const stretch = m_whole.data() != nullptr ? kSeenStretch : kStretch;
  std::size_t searched = 0;  // bytes after m_start known to hold no line feed
  for (;;) {
    if (pending() >= stretch || m_ended) {
      char* const text = base() + m_start;
      char const* const lf = last_of(text + searched, pending() - searched, '\n');
      std::size_t const length = lf != nullptr ? static_cast<std::size_t>(lf - text) + 1
                                 : m_ended     ? pending()
                                               : std::string::npos;
      if (length != std::string::npos) {
        if (length == 0) return false;  // nothing left
        lines.text = text;
        lines.length = length;
        lines.offset = m_offset + m_start;
        lines.first_line = m_stretch_lines + 1;
        if (numbered) {
          m_stretch_lines += count_line_feeds(text, length);
        }
        m_start += length;
        if (m_start < bytes_end()) {
          m_covered = base()[m_start];
          m_covered_at = m_start;
          base()[m_start] = '\0';
        }  // else the byte after the input's last is the terminator
        return true;
      }
      searched = pending();  // a line longer than the stretch: read on
    }
    if (!fill() && (m_failed || !m_ended)) return false;
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
    m_number += count_line_feeds(m_counted, static_cast<std::size_t>(start - m_counted));
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
  for (std::string_view b; !(b = next_block()).empty();) text.append(b);
  return ok();
}

void Input::reread(std::string const& text) {
  m_bytes.reserve(text.size() + 1, 0);
  std::memcpy(m_bytes.data(), text.data(), text.size());
  m_bytes.data()[text.size()] = '\0';
  m_start = 0;
  m_end = text.size();
  m_offset = 0;
  m_ended = true;
  m_line_number = 0;
  m_line_offset = 0;
  m_line_end = {};
}

void write_passed_line(Input const& in, std::string_view text) {
  write_out(text);
  write_out(in.line_end());
}

void write_picked_line(Input const& in, std::string_view text) {
  write_out(text);
  write_out(in.line_end().empty() ? std::string_view("\n") : in.line_end());
}

}  // namespace zelstr::tool
