// Fuzzes code hiding, the code context, comment discarding and
// HideCodeParts on any text, in T-SQL (quoted identifiers on and off) and
// PL/SQL, with any flags and filler:
//   - hiding keeps the length and what follows the terminator, changes
//     bytes only to the filler and never touches an LF; the copying form
//     gives the same text and end context;
//   - hiding more kinds hides every byte hiding fewer did;
//   - with everything hidden, a byte is hidden exactly when its context is
//     not code (line ends aside);
//   - discarding comments never lengthens the text and, done twice, changes
//     nothing more;
//   - the parts set aside and put back give the text again.
#include <fuzzer/FuzzedDataProvider.h>

#include <cstdint>
#include <cstring>
#include <memory>
#include <string>

#include "errsvc/errsvc.h"
#include "require.h"
#include "zelstr/zelstr.h"

namespace {

char g_key;
void const* const kQuotedOn = &g_key;

constexpr int kEverything = ZEAL_HIDE_COMMENTS | ZEAL_HIDE_STRINGS | ZEAL_HIDE_NAMES |
                            ZEAL_HIDE_COMMANDS | ZEAL_HIDE_DELIMITERS;

struct Dialect {
  bool plsql;
  void const* connection;
};

// `text` hidden in a heap block of exactly its bytes and a terminator (the
// bytes after an inner NUL kept, to see that they are not touched).
std::string hidden(Dialect d, std::string const& text, int flags, char filler, int* end) {
  std::unique_ptr<char[]> const block(new char[text.size() + 1]);
  std::memcpy(block.get(), text.data(), text.size());
  block[text.size()] = '\0';
  *end = d.plsql ? _zplsqlhidenonsqlcode(block.get(), flags, filler)
                 : _ztsqlhidenonsqlcode(d.connection, block.get(), flags, filler);
  return std::string(block.get(), text.size());
}

int context(Dialect d, char const* text, int at, int commands) {
  return d.plsql ? _zplsqlcodecontext(text, at, commands)
                 : _ztsqlcodecontext(d.connection, text, at, commands);
}

void check_hiding(Dialect d, std::string const& text, int flags, char filler) {
  std::size_t const length = std::strlen(text.c_str());
  int end = 0;
  std::string const some = hidden(d, text, flags, filler, &end);
  require(end >= ZEAL_SQL_CODE && end <= ZEAL_SQL_COMMAND);
  require(some.compare(length, std::string::npos, text, length) == 0);
  for (std::size_t i = 0; i < length; ++i) {
    require(some[i] == text[i] || (some[i] == filler && text[i] != '\n'));
  }
  int copy_end = 0;
  char const* const c = text.c_str();
  char* const copy = d.plsql ? _zplsqlhidenonsqlcode(c, flags, filler, &copy_end)
                             : _ztsqlhidenonsqlcode(d.connection, c, flags, filler, &copy_end);
  require(copy != nullptr && some.compare(0, length, copy) == 0 && copy_end == end);
  char* owned = copy;
  _zstrdupfree(owned);

  // Command lines are a matter of grammar: a line that is one holds no
  // literal that might have run on.  So the comparison keeps the bit.
  int const commands = flags & ZEAL_HIDE_COMMANDS;
  int all_end = 0;
  std::string const all =
      hidden(d, text, (kEverything & ~ZEAL_HIDE_COMMANDS) | commands, filler, &all_end);
  std::size_t const step = length / 64 + 1;  // the context reads from the start
  for (std::size_t i = 0; i < length; ++i) {
    if (text[i] == filler) continue;
    if (some[i] == filler) require(all[i] == filler);
    bool const line_end = text[i] == '\n' || (text[i] == '\r' && text[i + 1] == '\n');
    if (line_end || i % step != 0) continue;
    bool const in_code = context(d, c, static_cast<int>(i), commands) == ZEAL_SQL_CODE;
    require((all[i] == filler) == !in_code);
  }
}

void check_discarding(Dialect d, std::string const& text) {
  std::size_t const length = std::strlen(text.c_str());
  std::string once = text.substr(0, length);
  int const n = d.plsql ? _zplsqldiscardcomments(once.data())
                        : _ztsqldiscardcomments(d.connection, once.data());
  require(n >= 0 && static_cast<std::size_t>(n) <= length && once.c_str()[n] == '\0');
  once.resize(static_cast<std::size_t>(n));
  std::string twice = once;
  if (d.plsql) {
    _zplsqldiscardcomments(twice.data());
  } else {
    _ztsqldiscardcomments(d.connection, twice.data());
  }
  require(std::strcmp(twice.c_str(), once.c_str()) == 0);
}

void check_parts(Dialect d, std::string const& text, int flags) {
  HideCodeParts parts;
  char const* const h = d.plsql ? parts.HidePlSql(text.c_str(), flags)
                                : parts.HideTSql(d.connection, text.c_str(), flags);
  if (h == nullptr) return;  // a text holding every marker byte
  char* back = parts.Restore(h);
  require(back != nullptr && std::strcmp(back, text.c_str()) == 0);
  _zstrdupfree(back);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
  static bool const set = _ztsqlsetdefaults(kQuotedOn, 2016, 129, 1, 0, '"', nullptr) == 1;
  require(set);
  FuzzedDataProvider in(data, size);
  int const which = in.ConsumeIntegralInRange(0, 2);
  int const flags = in.ConsumeIntegralInRange(0, kEverything);
  char filler = in.ConsumeIntegral<char>();
  if (filler == '\0' || filler == '\n' || filler == '\r') filler = ' ';
  std::string const text = in.ConsumeRemainingBytesAsString();
  Dialect const d{which == 2, which == 1 ? kQuotedOn : nullptr};

  check_hiding(d, text, flags, filler);
  check_discarding(d, text);
  check_parts(d, text, flags);
  errsvc::clear();
  return 0;
}
