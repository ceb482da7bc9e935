// sql_code.cpp - the tool's T-SQL connections, and an input's code read
// whole with what is not code hidden.
#include "tool/sql_code.h"

#include <algorithm>
#include <cstring>

#include "zelstr/codehide.h"
#include "zelstr/zelstr.h"

namespace zelstr::tool {

void const* tsql_connection(bool brackets, bool quotes) {
  struct Setting {
    int version, quoted_id, bracketed_id;
    char mark;
  };
  static constexpr Setting kSettings[] = {{2016, 1, 1, '['}, {2016, 0, 1, '['}, {15, 1, 0, '"'}};
  static char const keys[3] = {};
  static bool const set = [] {
    for (int i = 0; i < 3; ++i) {
      Setting const& s = kSettings[i];
      _ztsqlsetdefaults(&keys[i], s.version, 129, s.quoted_id, s.bracketed_id, s.mark, nullptr);
    }
    return true;
  }();
  static_cast<void>(set);
  return &keys[brackets && quotes ? 0 : brackets ? 1 : 2];
}

int hide_code(CodeReading const& reading, std::string& text) {
  if (reading.oracle) return _zplsqlhidenonsqlcode(text.data(), reading.flags, reading.filler);
  return _ztsqlhidenonsqlcode(tsql_connection(true, reading.quoted_id), text.data(), reading.flags,
                              reading.filler);
}

bool read_dialect(Invocation& inv, CodeReading& reading, char const* needed) {
  if (needed != nullptr && !inv.flag(needed)) {
    for (char const* option : {"--tsql", "--oracle", "--quoted-id"}) {
      if (inv.flag(option)) {
        inv.usage_error("option '%s' goes with '%s'", option, needed);
        return false;
      }
    }
  }
  reading.oracle = inv.flag("--oracle");
  reading.quoted_id = inv.flag("--quoted-id");
  return true;
}

namespace {

// The part left open at the end of `text`: its name in messages, and
// whether `flags` hides it; nullptr when the end is code, or a line comment
// or a command line (which end with their line).
char const* open_part(int context, int flags, bool& hidden) {
  switch (context) {
    case ZEAL_SQL_BLOCK_COMMENT:
      hidden = (flags & ZEAL_HIDE_COMMENTS) != 0;
      return "block comment";
    case ZEAL_SQL_STRING:
      hidden = (flags & ZEAL_HIDE_STRINGS) != 0;
      return "string literal";
    case ZEAL_SQL_NAME:
      hidden = (flags & ZEAL_HIDE_NAMES) != 0;
      return "delimited name";
    default:
      return nullptr;
  }
}

}  // namespace

// The part left open is the last part the text sets aside, and runs to the
// end; its line cannot be told without memory for the parts, or in a text
// holding every byte their placeholders may use.
unsigned long long opening_line(CodeReading const& reading, std::string const& text) {
  int const flags = ZEAL_HIDE_COMMENTS | ZEAL_HIDE_STRINGS | ZEAL_HIDE_NAMES |
                    ZEAL_HIDE_DELIMITERS | (reading.flags & ZEAL_HIDE_COMMANDS);
  HideCodeParts parts;
  char const* const code = reading.oracle ? parts.HidePlSql(text.c_str(), flags)
                                          : parts.HideTSql(tsql_connection(true, reading.quoted_id),
                                                           text.c_str(), flags);
  if (code == nullptr || parts.GetCount() == 0) return 0;
  std::size_t const length = std::strlen(parts.GetPart(parts.GetCount() - 1));
  std::size_t const start = length <= text.size() ? text.size() - length : 0;
  return 1 + static_cast<unsigned long long>(std::count(text.begin(), text.begin() + start, '\n'));
}

bool read_code(Invocation& inv, Input& in, CodeReading const& reading, bool open_is_error,
               std::string& text, std::string& hidden) {
  text.clear();
  if (!in.read_rest(text)) return false;
  hidden = text;
  bool hides_it = false;
  char const* const open = open_part(hide_code(reading, hidden), reading.flags, hides_it);
  if (open == nullptr) return true;
  std::string message = std::string(in.name()) + ": unterminated " + open;
  if (unsigned long long const line = opening_line(reading, text); line != 0) {
    message += " opened on line " + std::to_string(line);
  }
  message += hides_it ? " (hidden to the end)" : " (kept as it is to the end)";
  if (open_is_error) {
    inv.error("%s", message.c_str());
  } else {
    inv.notice("%s", message.c_str());
  }
  return true;
}

}  // namespace zelstr::tool
