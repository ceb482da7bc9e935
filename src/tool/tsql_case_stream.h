// tsql_case_stream.h - _zmaptsqlapply over code of any length, a piece at a
// time, with the same result as one call on the whole code.
//
// The code is gathered into pieces that end where the mapping of what
// follows does not depend on what came before: in plain code just after a
// character that is neither part of a word nor one of "&", "-" and "/"
// (so that no N'...' or U&'...' prefix, no "--" or "/*", is cut), or inside
// a literal, a comment or a delimited name.  A piece is mapped by the
// library once it has grown past the limit and reaches such a place; a
// piece that ends inside a literal or a comment leaves the rest of it to be
// passed on unchanged (and the rest of a delimited name to be translated)
// until it closes.  To know where those places are, the stream follows the
// code with the same rules as the library: literals, line comments, nested
// block comments, bracketed and (with QUOTED_IDENTIFIER on) double-quoted
// names.
#ifndef ZELSTR_TOOL_TSQL_CASE_STREAM_H
#define ZELSTR_TOOL_TSQL_CASE_STREAM_H

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

namespace zelstr::tool {

class TsqlCaseStream {
 public:
  using Output = std::function<void(std::string_view)>;

  // What the code left open at its end.
  enum class Open { kNothing, kLiteral, kComment, kName };

  // `map` is a map handle for _zmaptsqlapply; pieces grow to about `limit`
  // bytes before they are mapped.
  // `first_line` is the number of the code's first line in its input.
  TsqlCaseStream(void* map, bool quoted_id, std::size_t limit, Output output,
                 std::uint64_t first_line = 1);

  // More code (no zero byte).
  void write(std::string_view code);
  // Maps and passes on what is left; returns what the code left open, and
  // the line (from 1) where that opened.
  Open finish(std::uint64_t& line);

 private:
  enum class State { kCode, kLiteral, kLineComment, kBlockComment, kName };

  void step(char c);
  void step_code(char c);
  void step_block_comment(char c);
  void step_name(char c);
  void open(State state, std::uint64_t line);
  bool at_cut() const;
  void flush_piece();
  void pass(char c);
  void write_passed();

  void* m_map;
  bool m_quoted_id;
  std::size_t m_limit;
  Output m_output;

  State m_state = State::kCode;
  char m_pending = 0;  // a '-', '/', '*' or closing delimiter waiting for the next byte
  char m_close = 0;    // closes the literal or the name
  int m_depth = 0;     // of nested block comments
  char m_last = '\n';  // the last byte of plain code
  std::uint64_t m_line, m_open_line = 0;

  std::string m_piece;     // gathered, to be mapped
  bool m_passing = false;  // the piece was mapped inside this region: pass bytes on
  std::string m_passed;    // bytes of the region passed on, not yet written
};

}  // namespace zelstr::tool

#endif  // ZELSTR_TOOL_TSQL_CASE_STREAM_H
