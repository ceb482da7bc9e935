// input.h - the tool's inputs: files or standard input, read 256 KiB at a
// time into one aligned buffer and handed out as blocks, lines or stretches
// of whole lines, so that no input needs to fit in memory (a searching
// command may instead see a named file whole in memory, and is handed
// stretches of it in place); or, for the commands that must see a whole
// text at once (a comment or a literal of SQL code may span lines), read
// whole, then gone over again line by line in a changed copy.
//
// Encodings: a UTF-8 byte-order mark is not part of the text; a file that
// begins with the mark of UTF-16 (either byte order), or any input when
// --encoding names an encoding, is decoded into UTF-8 as it is read, so
// that every command sees UTF-8 (offsets and line numbers are then those
// of the decoded text).
//
// The library works on zero-terminated strings, so a zero byte in the
// input cannot be handed to it: the reader stops there and the input is
// refused as binary data; or, for the searches, a zero byte in the first
// block read makes it a binary file, whose zero bytes are read as line
// ends (as grep reads them), or kept in their lines (grep -a).
#ifndef ZELSTR_TOOL_INPUT_H
#define ZELSTR_TOOL_INPUT_H

#include <cstdint>
#include <cstdio>
#include <cstring>
#include <memory>
#include <string>
#include <string_view>

#include "platform/mapped_file.h"
#include "platform/text_decoder.h"
#include "tool/aligned_bytes.h"
#include "tool/file_walk.h"
#include "tool/output.h"
#include "tool/invocation.h"

namespace zelstr::tool {

// A stretch of whole lines of an input, handed out by Input::next_lines:
// zero-terminated in place, so that the library's searches run over many
// lines in one call.
struct Lines {
  char* text = nullptr;
  std::size_t length = 0;        // up to and including its last line feed,
                                 // or to the input's end
  std::uint64_t offset = 0;      // of text[0] in the input
  std::uint64_t first_line = 0;  // the number of its first line, when numbered
};

// One line picked out of an input: what a command prints or counts.
struct PickedLine {
  std::string_view text;  // without its end
  std::string_view end;   // "\n", "\r\n", or "" for a last line without one
  std::uint64_t offset;   // of its first byte in the input: it tells lines apart
  std::uint64_t number;   // from 1, when the lines are numbered (else 0)
};

class Input {
 public:
  // What one read asks for: large enough that the system's cost per call
  // is small, small enough that the bytes are still in the cache when the
  // command goes over them.
  static constexpr std::size_t kRead = 1 << 18;
  // What next_lines gathers before it cuts at a line end.
  static constexpr std::size_t kStretch = kRead;
  // The same of a file seen whole: a stretch's terminator is written into
  // a copy-on-write view, where it costs a page's copy, so stretches are
  // longer; what was handed out is given back to the system a few of them
  // at a time, which keeps the resident memory small.
  static constexpr std::size_t kSeenStretch = 1 << 20;
  static constexpr std::size_t kGiveBack = 1 << 22;

  // `name` is a file, or "-" for standard input.  A file that cannot be
  // opened is reported on `invocation` (ok() is then false).  The bytes are
  // read into `buffer` when one is given (one kept for many inputs saves
  // the making of a large block for each), else into the input's own.
  Input(Invocation& invocation, char const* name, AlignedBytes* buffer = nullptr);
  ~Input();
  Input(Input const&) = delete;
  Input& operator=(Input const&) = delete;

  bool ok() const { return m_file != nullptr && !m_failed; }
  char const* name() const { return m_name; }
  bool is_standard_input() const { return m_file == stdin; }

  // What a zero byte does, to be said before anything is read: it refuses
  // the input (the default); or, in the first block, makes it a binary
  // input whose zero bytes are read as line feeds (kBinaryFiles; a zero
  // byte after the first block still refuses it); or stays in its line
  // (kAsText), where the library's calls see the line up to it.
  enum class ZeroBytes { kRefused, kBinaryFiles, kAsText };
  void take_zero_bytes(ZeroBytes how) { m_zero_bytes = how; }
  // Whether the input was found to be binary (see ZeroBytes).
  bool binary() const { return m_binary; }

  // The next block of at most kRead bytes (what one read gave); empty at
  // the end or on an error (reported).
  std::string_view next_block();

  // The next line, zero-terminated in place (valid until the next call);
  // false at the end or on an error (reported).  A line ends at a line
  // feed or a carriage return and line feed: the end is not part of the
  // line, and line_end() tells which it was ("" for a last line without
  // one).
  bool next_line(char*& line, std::size_t& length);
  std::uint64_t line_number() const { return m_line_number; }
  std::string_view line_end() const { return m_line_end; }
  // The offset in the input of the line next_line gave last.
  std::uint64_t line_offset() const { return m_line_offset; }

  // The next stretch of whole lines (about kStretch bytes, more for a longer
  // line; the last one may lack its line feed), zero-terminated in place
  // until the next call; false at the end or on an error (reported).  With
  // `numbered`, first_line is the number of its first line (the lines are
  // counted, which costs a pass over them).  Not to be mixed with
  // next_line.
  bool next_lines(Lines& lines, bool numbered);

  // From here on, sees a named regular file whole in memory when the
  // system can, and next_lines hands out stretches of it in place: no copy
  // is made, and only a stretch's terminator is written.  For the commands
  // that search, and write nothing else into their lines; to be called
  // before anything is read.  It is decided at the first read: a file that
  // does not fill it is read (one read costs less than a map, and asking
  // for the file's size would cost a call for every small file).  (A
  // memory-mapped file that someone else makes shorter meanwhile takes its
  // pages away from under the command: the tool maps only the files it is
  // named, never standard input.)
  //
  // With Zeros::kFoundBySearch the stretches of a file seen whole are not
  // looked over for a zero byte first: the caller's search, which ends at
  // the first zero as at a terminator, tells searched_to() where it ended.
  // That saves a pass over the text; what the search found before a zero
  // byte has then been taken before the input is refused.
  enum class Zeros { kChecked, kFoundBySearch };
  void see_whole(Zeros zeros = Zeros::kChecked);
  // The search of `lines` ended at `end`: short of their end, the zero
  // byte there refuses the input (reported), and the result is false.
  bool searched_to(Lines const& lines, char const* end);

  // The line picked out of `lines` as current (for line_number, line_end
  // and the printers), with the numbers kept by next_lines.
  void pick(PickedLine const& line);
  PickedLine const& picked() const { return m_picked; }

  // Appends what is left of the input to `text`; false on an error
  // (reported), with `text` holding what was read before it.
  bool read_rest(std::string& text);
  // Goes over the input again as `text`, a copy of it as read_rest gave it
  // with bytes changed but its lines kept (the same length, the same line
  // ends): next_line then gives the copy's lines from the first, with their
  // numbers and offsets in the input.
  void reread(std::string const& text);

 private:
  // Reads up to kRead more bytes after those not yet handed out (moved to
  // the front first); false at the end or on an error (reported).
  bool fill();
  // The bytes not yet handed out: [m_start, m_end) of base(), with a
  // spare byte after them for a terminator when they are read (of a file
  // seen whole, they are followed by the rest of it).
  std::size_t pending() const { return m_end - m_start; }
  char* base() const { return m_whole.data() != nullptr ? m_whole.data() : m_bytes.data(); }
  // Where the bytes in base() end: after the last read, or the file's end.
  std::size_t bytes_end() const { return m_whole.data() != nullptr ? m_whole.size() : m_end; }
  // Takes up to kSeenStretch more bytes of a file seen whole; false at its
  // end.
  bool take_in();
  // Reads the next bytes into m_bytes after m_end (decoded when the input
  // is, without a byte-order mark at the start): how many; 0 at the end.
  std::size_t read_more();
  // The first read filled its block and see_whole asked for the file
  // whole: true when it is now seen so (what was read is dropped).
  bool see_whole_now();
  // At the first read: the decoder the input's mark or --encoding asks for,
  // and the length of a mark to pass over.
  std::size_t begin_reading(char const* bytes, std::size_t n);
  std::size_t decode_into_buffer(char const* raw, std::size_t n, bool last);
  char* raw_block();
  // Looks at the zero bytes of the `n` bytes after m_end (see ZeroBytes);
  // false when the input is refused.
  bool check_zeros(std::size_t n, bool first_block);
  std::size_t place(char const* bytes, std::size_t n);
  std::size_t read_some(char* into, std::size_t n);
  void report_read_error();
  // Refuses the input, reported, when the `n` bytes after the pending ones
  // hold a zero byte.
  bool text_only(std::size_t n);
  void refuse_zero_at(std::uint64_t offset);

  Invocation& m_invocation;
  char const* m_name;
  std::FILE* m_file = nullptr;
  bool m_failed = false;
  bool m_ended = false;  // the file gave its last byte: no more reading
  AlignedBytes m_own_bytes;
  AlignedBytes& m_bytes;  // the own ones, or the caller's
  platform::MappedFile m_whole;         // a file seen whole (see see_whole)
  bool m_whole_asked = false;           // see_whole was called, the first read not yet made
  Zeros m_whole_zeros = Zeros::kChecked;
  std::size_t m_given_back = 0;         // its bytes before this went back to the system
  bool m_zeros_left_to_search = false;  // see Zeros::kFoundBySearch
  ZeroBytes m_zero_bytes = ZeroBytes::kRefused;
  bool m_binary = false;
  bool m_started = false;                           // the first read is done
  bool m_text_started = false;                      // decoded text was placed
  std::unique_ptr<platform::TextDecoder> m_decoder;  // for an input not in UTF-8
  std::unique_ptr<char[]> m_raw;                    // its bytes, before (kRead of them)
  std::string m_decoded;                            // and after decoding
  std::size_t m_start = 0, m_end = 0;
  std::uint64_t m_offset = 0;  // of m_bytes.data()[0] in the input
  std::uint64_t m_line_number = 0;
  std::uint64_t m_line_offset = 0;
  std::string_view m_line_end;
  std::uint64_t m_stretch_lines = 0;  // the lines next_lines has handed out
  // next_lines: the byte its terminator covers (put back at the next call)
  // and where, or npos when none is covered.
  char m_covered = '\0';
  std::size_t m_covered_at = std::string::npos;
  PickedLine m_picked{};
};

// Finds the lines of a stretch that a search hit, and numbers them when
// asked, counting line feeds only over the text between hits.
class LineLocator {
 public:
  LineLocator(Lines const& lines, bool numbered)
      : m_lines(lines), m_numbered(numbered), m_counted(lines.text), m_number(lines.first_line) {}

  // The line that holds `at` (a position in the stretch).
  PickedLine line_at(char const* at);
  // The line that starts at `start`, for a walk over every line of an
  // unnumbered stretch (nothing to look back for, nothing to count).
  PickedLine line_from(char const* start) const {
    char const* const end = m_lines.text + m_lines.length;
    auto const* const lf = static_cast<char const*>(std::memchr(start, '\n', end - start));
    if (lf == nullptr) {
      return PickedLine{{start, static_cast<std::size_t>(end - start)}, "", offset_of(start), 0};
    }
    bool const cr = lf > start && lf[-1] == '\r';
    return PickedLine{{start, static_cast<std::size_t>(lf - start) - cr},
                      cr ? std::string_view("\r\n") : std::string_view("\n"),
                      offset_of(start),
                      0};
  }
  // The start of the line after `line` (the stretch's end after its last).
  char const* after(PickedLine const& line) const;

 private:
  std::uint64_t offset_of(char const* at) const {
    return m_lines.offset + static_cast<std::uint64_t>(at - m_lines.text);
  }

  Lines const& m_lines;
  bool m_numbered;
  char const* m_counted;   // line feeds before here are counted
  std::uint64_t m_number;  // the number of the line that starts at m_counted
};

// Runs `each(input)` on every operand as a file, or on standard input when
// there are none; an operand "-" is standard input too.  With -r or -R (for
// the commands that take them), on the files of the directories named
// (file_walk.h).  No further input is read once the invocation has found
// enough (-q).  read_each does the same on files already listed.
template <class Each>
void read_each(Invocation& invocation, FileList const& files, Each each) {
  AlignedBytes buffer;  // one for all the inputs
  for (std::string const& name : files.names) {
    if (invocation.enough()) return;
    Input in(invocation, name.c_str(), &buffer);
    if (in.ok()) each(in);
  }
}

template <class Each>
void for_each_input(Invocation& invocation, std::span<char const* const> names, Each each) {
  read_each(invocation, files_to_read(invocation, names), each);
}

// Runs `each(input, line, length)` on every line of every input (see
// for_each_input), stopping at an input's first error.
template <class Each>
void for_each_line(Invocation& invocation, std::span<char const* const> names, Each each) {
  for_each_input(invocation, names, [&each](Input& in) {
    char* line;
    std::size_t length;
    while (in.next_line(line, length)) {
      if (!each(in, line, length)) return;
    }
  });
}


// A line of `in` that the command changed or passed on whole: with the end
// the line came with, none for a last line that had none (so that a text
// goes through unchanged but for what the command does).
void write_passed_line(Input const& in, std::string_view text);
// A line or a result the command picked out of its input: with the end the
// line came with, or a line feed for a last line that had none (so that
// results from several inputs never run together).
void write_picked_line(Input const& in, std::string_view text);

}  // namespace zelstr::tool

#endif  // ZELSTR_TOOL_INPUT_H
