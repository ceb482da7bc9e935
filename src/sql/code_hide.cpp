// code_hide.cpp - hiding what is not code, the context of a position and
// comment discarding: three visitors of the code scanner.
#include <cstring>

#include "errsvc/errsvc.h"
#include "frame/report.h"
#include "sql/code_scan.h"
#include "sql/hidden_span.h"
#include "zelstr/alloc.h"
#include "zelstr/codehide.h"
#include "zelstr/types.h"

namespace {

namespace code = zelstr::sql::code;
using code::Byte;
using code::Kind;
using code::Part;
using zelstr::frame::Unit;

using code::kHideFlags;

void warn(Unit unit, char const* text, char const* function, int line = __builtin_LINE()) {
  zelstr::frame::report(unit, zelstr::frame::Message{-1, 4, text}, function, line);
}

// NULL code draws the notice that there is no code to work on.
void notice_null_code(Unit unit, char const* function, int line = __builtin_LINE()) {
  zelstr::frame::report(unit, zelstr::frame::msg::kIllegalNullCode, function, line);
}

// Fills [from, to) with `filler`, line ends (LF and CR LF) kept.
void fill(Byte* from, Byte* to, Byte filler) {
  while (from < to) {
    auto const left = static_cast<std::size_t>(to - from);
    auto* const lf = static_cast<Byte*>(std::memchr(from, '\n', left));
    std::size_t n = lf != nullptr ? static_cast<std::size_t>(lf - from) : left;
    // A CR just before an LF belongs to the line end, also when the LF
    // follows the range (a line comment ends before its line end).
    bool const lf_next = lf != nullptr || *to == '\n';
    if (lf_next && n > 0 && from[n - 1] == '\r') --n;
    std::memset(from, filler, n);
    from = lf != nullptr ? lf + 1 : to;
  }
}

class Hider {
 public:
  Hider(int flags, Byte filler) : m_flags(flags), m_filler(filler) {}

  void code(Byte const*, Byte const*) {}
  void lone(Byte const*) {}
  void part(Part const& part) {
    Byte const* from = nullptr;
    Byte const* to = nullptr;
    if (code::hidden_span(part, m_flags, &from, &to)) {
      fill(const_cast<Byte*>(from), const_cast<Byte*>(to), m_filler);
    }
  }

 private:
  int m_flags;
  Byte m_filler;
};

// Whether the arguments of a hiding call are good; warns when not.
bool hiding_arguments(char const* text, int flags, char filler, Unit unit, char const* function) {
  if (text == nullptr) {
    notice_null_code(unit, function);
    return false;
  }
  if (filler == '\0') {
    warn(unit, ErrHand_Msg_ERRSVC_BAD_ARGUMENT(), function);
    return false;
  }
  if ((flags & ~kHideFlags) != 0) {
    warn(unit, ErrHand_Msg_ERRSVC_INCOHERENT_FLAG(), function);
    return false;
  }
  return true;
}

int hide_in_place(code::Grammar const& grammar, char* text, int flags, char filler) {
  Hider hider(flags, static_cast<Byte>(filler));
  return static_cast<int>(code::scan(grammar, text, std::strlen(text), hider));
}

int hide(code::Grammar const& grammar, char* text, int flags, char filler, Unit unit,
         char const* function) {
  if (!hiding_arguments(text, flags, filler, unit, function)) return 0;
  return hide_in_place(grammar, text, flags, filler);
}

char* hide_copy(code::Grammar const& grammar, char const* text, int flags, char filler,
                int* context, Unit unit, char const* function) {
  if (context != nullptr) *context = 0;
  if (!hiding_arguments(text, flags, filler, unit, function)) return nullptr;
  char* const copy = _zstrdupalloc(text, 0);
  if (copy == nullptr) return nullptr;
  int const end = hide_in_place(grammar, copy, flags, filler);
  if (context != nullptr) *context = end;
  return copy;
}

// The context of one position: the part holding it, or code.
class ContextFinder {
 public:
  // `at_text_end`: `at` is the end of the text, inside the part left open
  // there, if any.
  ContextFinder(Byte const* at, bool at_text_end) : m_at(at), m_at_text_end(at_text_end) {}

  void code(Byte const*, Byte const*) {}
  void lone(Byte const*) {}
  void part(Part const& part) {
    bool const inside =
        m_at_text_end ? part.end == m_at && part.close == m_at : part.begin <= m_at && m_at < part.end;
    if (!inside) return;
    m_kind = part.kind;
    m_part = part;
  }

  Kind kind() const { return m_kind; }
  Part const& found() const { return m_part; }

 private:
  Byte const* m_at;
  bool m_at_text_end;
  Kind m_kind = Kind::kCode;
  Part m_part{};
};

// How many comments enclose `at` inside the block comment `part`.  The
// marks of a nested comment belong to it: its "/*" and "*/" are one level
// deeper than the text around them.
int comment_depth(Part const& part, Byte const* at, bool nested) {
  if (!nested) return 1;
  int depth = 1;
  Byte const* x = part.content;
  while (x <= at && x < part.close) {
    if (x[0] == '/' && x[1] == '*') {
      ++depth;
      x += 2;
    } else if (x[0] == '*' && x[1] == '/') {
      if (at >= x + 2) --depth;
      x += 2;
    } else {
      ++x;
    }
  }
  return depth;
}

int context(code::Grammar const& grammar, char const* text, int position, int* depth,
            Unit unit, char const* function) {
  if (depth != nullptr) *depth = 0;
  if (text == nullptr) {
    notice_null_code(unit, function);
    return 0;
  }
  std::size_t const length = std::strlen(text);
  if (position < 0 || static_cast<std::size_t>(position) > length) {
    warn(unit, ErrHand_Msg_ERRSVC_BAD_ARGUMENT(), function);
    return 0;
  }
  auto const* const at = reinterpret_cast<Byte const*>(text) + position;
  ContextFinder finder(at, static_cast<std::size_t>(position) == length);
  code::scan(grammar, text, length, finder);
  Kind const kind = finder.kind();
  if (depth != nullptr && kind == Kind::kBlockComment) {
    *depth = comment_depth(finder.found(), at, grammar.tsql);
  }
  return static_cast<int>(kind);
}

// Copies the code over itself without its comments: each comment becomes
// one blank and the line ends it held.  The writer never overtakes the
// reader: a comment is at least two bytes and gives at most one byte more
// than its line ends.
class CommentDiscarder {
 public:
  explicit CommentDiscarder(Byte* out) : m_out(out) {}

  void code(Byte const* from, Byte const* to) { keep(from, to); }
  void lone(Byte const* p) { keep(p, p + 1); }
  void part(Part const& part) {
    if (part.kind != Kind::kLineComment && part.kind != Kind::kBlockComment) {
      keep(part.begin, part.end);
      return;
    }
    *m_out++ = ' ';
    for (Byte const* x = part.begin; x < part.end; ++x) {
      bool const crlf = *x == '\r' && (x + 1 < part.end ? x[1] : *part.end) == '\n';
      if (*x == '\n' || crlf) *m_out++ = *x;
    }
  }

  Byte* out() const { return m_out; }

 private:
  void keep(Byte const* from, Byte const* to) {
    if (m_out != from) std::memmove(m_out, from, to - from);
    m_out += to - from;
  }

  Byte* m_out;
};

int discard(code::Grammar const& grammar, char* text, Unit unit, char const* function) {
  if (text == nullptr) {
    notice_null_code(unit, function);
    return ZEAL_STR_ERR;
  }
  CommentDiscarder discarder(reinterpret_cast<Byte*>(text));
  code::scan(grammar, text, std::strlen(text), discarder);
  *discarder.out() = '\0';
  return static_cast<int>(discarder.out() - reinterpret_cast<Byte*>(text));
}

char* discard_copy(code::Grammar const& grammar, char const* text, Unit unit,
                   char const* function) {
  if (text == nullptr) {
    notice_null_code(unit, function);
    return nullptr;
  }
  char* const copy = _zstrdupalloc(text, 0);
  if (copy != nullptr) discard(grammar, copy, unit, function);
  return copy;
}

constexpr Unit kTsql = Unit::connfortsqlstrfncs;
constexpr Unit kPlsql = Unit::connforplsqlstrfncs;

code::Grammar tsql(void const* connection, int flags) {
  return code::tsql_grammar(connection, (flags & ZEAL_HIDE_COMMANDS) != 0);
}

}  // namespace

int _ztsqlhidenonsqlcode(void const* const connection, char* code, int flags,
                         char filler) noexcept {
  return hide(tsql(connection, flags), code, flags, filler, kTsql, "_ztsqlhidenonsqlcode");
}

int _ztsqlhidenonsqlcode(char* code, int flags, char filler) noexcept {
  return _ztsqlhidenonsqlcode(nullptr, code, flags, filler);
}

char* _ztsqlhidenonsqlcode(void const* const connection, char const* code, int flags,
                           char filler, int* context) noexcept {
  return hide_copy(tsql(connection, flags), code, flags, filler, context, kTsql,
                   "_ztsqlhidenonsqlcode");
}

char* _ztsqlhidenonsqlcode(char const* code, int flags, char filler, int* context) noexcept {
  return _ztsqlhidenonsqlcode(nullptr, code, flags, filler, context);
}

int _zplsqlhidenonsqlcode(char* code, int flags, char filler) noexcept {
  return hide(code::plsql_grammar((flags & ZEAL_HIDE_COMMANDS) != 0), code, flags, filler, kPlsql,
              "_zplsqlhidenonsqlcode");
}

char* _zplsqlhidenonsqlcode(char const* code, int flags, char filler, int* context) noexcept {
  return hide_copy(code::plsql_grammar((flags & ZEAL_HIDE_COMMANDS) != 0), code, flags, filler,
                   context, kPlsql, "_zplsqlhidenonsqlcode");
}

int _ztsqlcodecontext(void const* const connection, char const* code, int position, int commands,
                      int* depth) noexcept {
  return context(code::tsql_grammar(connection, commands != 0), code, position, depth, kTsql,
                 "_ztsqlcodecontext");
}

int _ztsqlcodecontext(char const* code, int position, int commands, int* depth) noexcept {
  return _ztsqlcodecontext(nullptr, code, position, commands, depth);
}

int _zplsqlcodecontext(char const* code, int position, int commands, int* depth) noexcept {
  return context(code::plsql_grammar(commands != 0), code, position, depth, kPlsql,
                 "_zplsqlcodecontext");
}

int _ztsqldiscardcomments(void const* const connection, char* code) noexcept {
  return discard(code::tsql_grammar(connection, false), code, kTsql, "_ztsqldiscardcomments");
}

int _ztsqldiscardcomments(char* code) noexcept { return _ztsqldiscardcomments(nullptr, code); }

int _zplsqldiscardcomments(char* code) noexcept {
  return discard(code::plsql_grammar(false), code, kPlsql, "_zplsqldiscardcomments");
}

char* _ztsqldiscardcomments(void const* const connection, char const* code) noexcept {
  return discard_copy(code::tsql_grammar(connection, false), code, kTsql,
                      "_ztsqldiscardcomments");
}

char* _ztsqldiscardcomments(char const* code) noexcept {
  return _ztsqldiscardcomments(nullptr, code);
}

char* _zplsqldiscardcomments(char const* code) noexcept {
  return discard_copy(code::plsql_grammar(false), code, kPlsql, "_zplsqldiscardcomments");
}
