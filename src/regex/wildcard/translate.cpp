// translate.cpp - a wildcard program written as an expression of the
// engine.
//
// Each token stands for the set of subject bytes whose image it accepts;
// the expression lists that set.  A list is ordered so that the engine
// reads every member literally whether or not backslashes escape inside
// brackets: "]" first, "-" last, "[" never before ":", "^" never first,
// and the backslash doubled (two members, or one escaped).
#include "regex/wildcard/translate.h"

#include <cstring>

namespace zelstr::regex::wildcard {
namespace {

bool is_word(Byte c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_';
}

// The subject bytes (never the terminator) whose image the token accepts.
ByteSet accepted(Program const& program, Token const& token) {
  ByteSet set{};
  for (int c = 1; c < 256; ++c) {
    Byte const image = program.table()[c];
    bool const in = token.op == Op::kByte ? image == token.byte
                                          : program.set(token.set).has(image);
    if (in) set.add(static_cast<Byte>(c));
  }
  return set;
}

int count(ByteSet const& set) {
  int n = 0;
  for (std::uint64_t w : set.bits) n += __builtin_popcountll(w);
  return n;
}

class Writer {
 public:
  Writer(char* out) : m_out(out) {}
  void put(char c) {
    if (m_out != nullptr) m_out[m_length] = c;
    ++m_length;
  }
  void put(char const* s) {
    while (*s != '\0') put(*s++);
  }
  std::size_t length() const { return m_length; }

 private:
  char* m_out;
  std::size_t m_length = 0;
};

// A list of `members` (none is the terminator), in brackets.
void write_list(Writer& w, ByteSet const& members, bool negated) {
  w.put('[');
  if (negated) w.put('^');
  Byte const specials[] = {']', '-', '[', '^', '\\'};
  bool const close = members.has(']');
  bool const dash = members.has('-');
  if (close) w.put(']');
  bool any = close;
  for (int c = 1; c < 256; ++c) {
    auto const b = static_cast<Byte>(c);
    if (!members.has(b) || std::memchr(specials, b, sizeof specials) != nullptr) continue;
    w.put(static_cast<char>(b));
    any = true;
  }
  if (members.has('\\')) {
    w.put("\\\\");
    any = true;
  }
  if (members.has('[')) {
    w.put('[');
    any = true;
  }
  if (members.has('^')) {
    // Only "-" could follow; a lone "^" first would negate, so "-" leads.
    if (!any && dash) {
      w.put("-^");
      w.put(']');
      return;
    }
    w.put('^');
  }
  if (dash) w.put('-');
  w.put(']');
}

void write_set(Writer& w, ByteSet const& set) {
  int const n = count(set);
  if (n == 255) {
    w.put('.');
  } else if (n == 1) {
    Byte c = 1;
    while (!set.has(c)) ++c;
    if (!is_word(c)) w.put('\\');
    w.put(static_cast<char>(c));
  } else if (n > 128) {
    ByteSet others{};
    for (int c = 1; c < 256; ++c) {
      if (!set.has(static_cast<Byte>(c))) others.add(static_cast<Byte>(c));
    }
    write_list(w, others, true);
  } else if (n == 0) {
    ByteSet all{};
    for (int c = 1; c < 256; ++c) all.add(static_cast<Byte>(c));
    write_list(w, all, true);  // no byte of a subject
  } else {
    write_list(w, set, false);
  }
}

void write(Writer& w, Program const& program) {
  w.put('^');
  for (std::size_t i = 0; i < program.size(); ++i) {
    Token const& t = program[i];
    if (t.op == Op::kStar) {
      w.put(".*");
    } else if (t.op == Op::kAny) {
      w.put('.');
    } else {
      write_set(w, accepted(program, t));
    }
  }
  w.put('$');
}

}  // namespace

std::size_t expression_length(Program const& program) {
  Writer w(nullptr);
  write(w, program);
  return w.length();
}

void write_expression(Program const& program, char* out) {
  Writer w(out);
  write(w, program);
  out[w.length()] = '\0';
}

}  // namespace zelstr::regex::wildcard
