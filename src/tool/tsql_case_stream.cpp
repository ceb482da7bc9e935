// tsql_case_stream.cpp - _zmaptsqlapply a piece at a time.
#include "tool/tsql_case_stream.h"

#include <utility>

#include "zelstr/zelstr.h"

namespace zelstr::tool {
namespace {

// Characters that may stand just before a string prefix inside a word.
bool is_word_char(char c) {
  auto const u = static_cast<unsigned char>(c);
  return (u >= 'A' && u <= 'Z') || (u >= 'a' && u <= 'z') || (u >= '0' && u <= '9') || u == '@' ||
         u == '#' || u == '_' || u == '$' || u >= 0x80;
}

}  // namespace

TsqlCaseStream::TsqlCaseStream(void* map, bool quoted_id, std::size_t limit, Output output,
                               std::uint64_t first_line)
    : m_map(map),
      m_quoted_id(quoted_id),
      m_limit(limit),
      m_output(std::move(output)),
      m_line(first_line) {}

void TsqlCaseStream::write(std::string_view code) {
  for (char const c : code) {
    step(c);
    if (m_piece.size() >= m_limit && at_cut()) flush_piece();
    if (m_passed.size() >= m_limit) write_passed();
  }
}

TsqlCaseStream::Open TsqlCaseStream::finish(std::uint64_t& line) {
  write_passed();
  flush_piece();
  line = m_open_line;
  switch (m_state) {
    case State::kLiteral:
      return Open::kLiteral;
    case State::kBlockComment:
      return Open::kComment;
    case State::kName:
      return m_pending != 0 ? Open::kNothing : Open::kName;  // a pending close closed it
    default:
      return Open::kNothing;
  }
}

void TsqlCaseStream::step(char c) {
  if (c == '\n') ++m_line;
  switch (m_state) {
    case State::kCode:
      return step_code(c);
    case State::kLiteral:
      pass(c);
      if (c == m_close) open(State::kCode, 0);
      return;
    case State::kLineComment:
      if (c == '\n') {
        open(State::kCode, 0);
        return step_code(c);  // the line feed is code again
      }
      return pass(c);
    case State::kBlockComment:
      return step_block_comment(c);
    case State::kName:
      return step_name(c);
  }
}

void TsqlCaseStream::step_code(char c) {
  m_piece += c;
  char const pending = std::exchange(m_pending, 0);
  if (pending == '-' && c == '-') return open(State::kLineComment, m_line);
  if (pending == '/' && c == '*') {
    m_depth = 1;
    return open(State::kBlockComment, m_line);
  }
  m_last = c;
  switch (c) {
    case '\'':
      m_close = c;
      return open(State::kLiteral, m_line);
    case '"':
      m_close = c;
      return open(m_quoted_id ? State::kName : State::kLiteral, m_line);
    case '[':
      m_close = ']';
      return open(State::kName, m_line);
    case '-':
    case '/':
      m_pending = c;
      return;
    default:
      return;
  }
}

// Nested comments, scanned as the library does: "/*" opens one more, "*/"
// closes one, and a pair's second byte never starts another pair.
void TsqlCaseStream::step_block_comment(char c) {
  pass(c);
  char const pending = std::exchange(m_pending, 0);
  if (pending == '/' && c == '*') {
    ++m_depth;
    return;
  }
  if (pending == '*' && c == '/') {
    if (--m_depth == 0) {
      m_last = c;
      open(State::kCode, 0);
    }
    return;
  }
  if (c == '/' || c == '*') m_pending = c;
}

// A closing delimiter ends the name unless the next byte doubles it.
void TsqlCaseStream::step_name(char c) {
  if (m_pending != 0) {
    m_pending = 0;
    if (c == m_close) return pass(c);
    m_last = m_close;
    open(State::kCode, 0);
    return step_code(c);
  }
  pass(c);
  if (c == m_close) m_pending = c;
}

// Enters `state`; back in code, the bytes passed on for a region that was
// cut are written out.
void TsqlCaseStream::open(State state, std::uint64_t line) {
  if (state == State::kCode && m_passing) {
    write_passed();
    m_passing = false;
  }
  m_state = state;
  m_open_line = line;
}

// Whether the piece may end here (see the header).
bool TsqlCaseStream::at_cut() const {
  if (m_pending != 0 || m_passing) return false;
  if (m_state != State::kCode) return true;
  return !is_word_char(m_last) && m_last != '&' && m_last != '-' && m_last != '/';
}

void TsqlCaseStream::flush_piece() {
  if (m_piece.empty()) return;
  _zmaptsqlapply(m_map, m_piece.data(), m_quoted_id ? 1 : 0);
  m_output(m_piece);
  m_piece.clear();
  m_passing = m_state != State::kCode;
}

// A byte of the current literal, comment or name: gathered into the piece,
// or, once the piece was cut inside the region, passed on.
void TsqlCaseStream::pass(char c) { (m_passing ? m_passed : m_piece) += c; }

// Writes out the bytes passed on, a name's translated.
void TsqlCaseStream::write_passed() {
  if (m_passed.empty()) return;
  if (m_state == State::kName) _zmapstrapply(m_map, m_passed.data());
  m_output(m_passed);
  m_passed.clear();
}

}  // namespace zelstr::tool
