// code_grammar.cpp - the stop tables and the client command lines.
#include "sql/code_grammar.h"

#include "sql/connection_env.h"

namespace zelstr::sql::code {
namespace {

constexpr StopTable make_stops(bool tsql, bool commands) {
  StopTable t{};
  t.at[0] = true;
  t.at[static_cast<Byte>('\'')] = true;
  t.at[static_cast<Byte>('"')] = true;
  t.at[static_cast<Byte>('-')] = true;
  t.at[static_cast<Byte>('/')] = true;
  if (tsql) t.at[static_cast<Byte>('[')] = true;
  if (commands) t.at[static_cast<Byte>('\n')] = true;
  return t;
}

constexpr StopTable kStops[2][2] = {
    {make_stops(false, false), make_stops(false, true)},
    {make_stops(true, false), make_stops(true, true)},
};

Byte lower(Byte c) { return c >= 'A' && c <= 'Z' ? static_cast<Byte>(c + 32) : c; }

// Where the line at `x` ends: its LF, or the end of the text.
bool at_line_end(Byte const* x, Byte const* end) {
  return x == end || *x == '\n' || (*x == '\r' && x + 1 < end && x[1] == '\n');
}

Byte const* skip_blanks(Byte const* x, Byte const* end) {
  while (x < end && is_blank(*x)) ++x;
  return x;
}

// The letters of the word at `x` (lower case) into `word` (at most `room`
// bytes, a longer word is not a command); its length, 0 for none.
std::size_t read_word(Byte const* x, Byte const* end, char* word, std::size_t room) {
  std::size_t n = 0;
  for (; x + n < end; ++n) {
    Byte const c = lower(x[n]);
    if (c < 'a' || c > 'z') break;
    if (n == room) return 0;
    word[n] = static_cast<char>(c);
  }
  return n;
}

bool same(char const* word, std::size_t n, char const* text) {
  std::size_t i = 0;
  for (; i < n; ++i) {
    if (text[i] != word[i]) return false;
  }
  return text[i] == '\0';
}

// "rem" for REMARK, REMA, REMAR and REM: at least `least` letters of `full`.
bool abbreviates(char const* word, std::size_t n, char const* full, std::size_t least) {
  std::size_t full_length = 0;
  while (full[full_length] != '\0') ++full_length;
  if (n < least || n > full_length) return false;
  for (std::size_t i = 0; i < n; ++i) {
    if (word[i] != full[i]) return false;
  }
  return true;
}

// SET opens SQL statements too.
bool is_sql_set(Byte const* x, Byte const* end) {
  char word[16];
  std::size_t const n = read_word(skip_blanks(x, end), end, word, sizeof word);
  return same(word, n, "transaction") || same(word, n, "role") || same(word, n, "constraint") ||
         same(word, n, "constraints");
}

bool is_sqlplus_keyword(char const* word, std::size_t n) {
  struct Command {
    char const* full;
    std::size_t least;
  };
  static constexpr Command kCommands[] = {
      {"remark", 3}, {"prompt", 3}, {"spool", 3},    {"define", 3},   {"undefine", 5},
      {"column", 3}, {"show", 3},   {"accept", 3},   {"pause", 3},    {"whenever", 8},
      {"connect", 4}, {"set", 3},
  };
  for (Command const& command : kCommands) {
    if (abbreviates(word, n, command.full, command.least)) return true;
  }
  return false;
}

}  // namespace

Grammar tsql_grammar(void const* connection, bool commands) {
  CConnectionEnv const* const settings = CConnectionEnv::FindOrDefault(connection, 'T', nullptr);
  Grammar g;
  g.tsql = true;
  g.quoted_id = settings != nullptr && settings->m_bQuotedId != 0;
  g.commands = commands;
  return g;
}

Grammar plsql_grammar(bool commands) {
  Grammar g;
  g.tsql = false;
  g.commands = commands;
  return g;
}

StopTable const& stops_of(Grammar const& grammar) {
  return kStops[grammar.tsql ? 1 : 0][grammar.commands ? 1 : 0];
}

bool is_sqlcmd_line(Byte const* x, Byte const* end) {
  if (x == end) return false;
  if (*x == ':') return x + 1 < end && ((x[1] | 0x20) >= 'a' && (x[1] | 0x20) <= 'z');
  if (*x == '!') return x + 1 < end && x[1] == '!';
  if (end - x < 2 || lower(x[0]) != 'g' || lower(x[1]) != 'o') return false;
  Byte const* y = skip_blanks(x + 2, end);
  if (y == x + 2 && !at_line_end(y, end) && !(y[0] == '-' && y + 1 < end && y[1] == '-')) {
    return false;  // GOTO, GOx: a word
  }
  while (y < end && *y >= '0' && *y <= '9') ++y;
  y = skip_blanks(y, end);
  return at_line_end(y, end) || (y[0] == '-' && y + 1 < end && y[1] == '-');
}

bool is_sqlplus_line(Byte const* x, Byte const* end, bool statement_start) {
  if (x == end) return false;
  if (*x == '/') return at_line_end(skip_blanks(x + 1, end), end);
  if (!statement_start) return false;
  if (*x == '@') return true;
  char word[16];
  std::size_t const n = read_word(x, end, word, sizeof word);
  if (n == 0) return false;
  Byte const* const after = x + n;
  if (!at_line_end(after, end) && !is_blank(*after)) return false;
  if (!is_sqlplus_keyword(word, n)) return false;
  return !(n == 3 && same(word, n, "set") && is_sql_set(after, end));
}

}  // namespace zelstr::sql::code
