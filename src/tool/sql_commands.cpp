// sql_commands.cpp - the subcommands for SQL source code: sqlcase (T-SQL
// code in one case, literals and comments kept), resword (is a word
// reserved in a server version?), sysname and plsqlname (PL/SQL names
// from source form to system form and back), tsqlname (the same for T-SQL),
// qname (the parts of qualified names) and hide (what is not code hidden).
#include <algorithm>
#include <cerrno>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <string>

#include "tool/input.h"
#include "tool/line_feeds.h"
#include "tool/sql_code.h"
#include "tool/text_tools.h"
#include "tool/tsql_case_stream.h"
#include "zelstr/codehide.h"
#include "zelstr/zelstr.h"

namespace zelstr::tool {
namespace {

// `text` as a whole decimal number in `value`; false when it is not one.
bool parse_int(char const* text, int& value) {
  if (text == nullptr || *text == '\0') return false;
  char* end = nullptr;
  errno = 0;
  long const n = std::strtol(text, &end, 10);
  if (*end != '\0' || errno != 0 || n < INT_MIN || n > INT_MAX) return false;
  value = static_cast<int>(n);
  return true;
}

constexpr char kTsqlVersions[] = "4, 6 to 17, or 2004 and 2006 to 2017";
constexpr char kOracleVersions[] =
    "102 to 105, 107 to 110, 120, 130, 140, 150 to 152, 1160 to 1165";

// Runs `each(word)` on every operand, or on every line of standard input
// when there are none.
template <class Each>
void for_each_word(Invocation& inv, Each each) {
  if (!inv.operands().empty()) {
    for (char const* word : inv.operands()) each(null_or(word));
    return;
  }
  for_each_line(inv, {}, [&each](Input&, char* line, std::size_t) {
    each(line);
    return true;
  });
}

// sqlcase hands the rest of an input to the stream once a part has stayed
// open this long.
constexpr std::size_t kSqlcaseMostPiece = std::size_t{4} << 20;

char const* describe(TsqlCaseStream::Open open) {
  switch (open) {
    case TsqlCaseStream::Open::kLiteral:
      return "string literal";
    case TsqlCaseStream::Open::kComment:
      return "block comment";
    default:
      return "delimited name";
  }
}

// A heap copy from a copying name conversion, released on the way out.  An
// empty name gives a shared empty string instead of a copy: it is kept.
class ConvertedName {
 public:
  ConvertedName(char const* name, char* converted)
      : m_text(converted), m_owned(name != nullptr && *name != '\0' && converted != nullptr) {}
  ~ConvertedName() {
    if (m_owned) _zstrdupfree(m_text);
  }
  ConvertedName(ConvertedName const&) = delete;
  ConvertedName& operator=(ConvertedName const&) = delete;
  char const* get() const { return m_text; }

 private:
  char* m_text;
  bool m_owned;
};

// A name as a message shows it: a long one by its beginning.
std::string shown(char const* name) {
  if (name == nullptr) return "(null)";
  constexpr std::size_t kShown = 60;
  std::string s(name, strnlen(name, kShown + 1));
  if (s.size() > kShown) s.replace(kShown, std::string::npos, "...");
  return s;
}

// Prints each name converted; a name without a conversion gets a message.
// Nothing to convert counts as nothing found.
// `form`: the form converted to, as the message names it.
template <class Convert>
int convert_names(Invocation& inv, char const* form, Convert convert) {
  bool failed = false, converted_one = false;
  for_each_word(inv, [&](char const* name) {
    ConvertedName const converted(name, convert(name));
    if (converted.get() == nullptr) {
      inv.notice("'%s' has no %s form", shown(name).c_str(), form);
      failed = true;
      return;
    }
    std::printf("%s\n", converted.get());
    converted_one = true;
  });
  if (converted_one && !failed) inv.found();
  return inv.exit_status();
}

}  // namespace

// sqlcase --lower|--upper [--quoted-id] [FILE...]
int run_sqlcase(Invocation& inv) {
  bool const lower = inv.flag("--lower"), upper = inv.flag("--upper");
  if (lower == upper) return inv.usage_error("one of --lower and --upper is needed");
  DefinedMap const map(inv, lower ? "a-z=A-Z" : "A-Z=a-z");
  if (map.bad()) return kError;
  CodeReading reading;
  reading.quoted_id = inv.flag("--quoted-id");
  for_each_input(inv, inv.operands(), [&](Input& in) {
    // A stretch of lines read in code is mapped where it lies, in one call,
    // and written up to where a literal, comment or name left open at its
    // end begins: what follows maps alike whatever came before that.  The
    // open part starts a piece that gathers the lines after it
    // and is mapped again, in a copy, each time it has doubled, until it is
    // closed.  A part that stays open for long goes, with the rest of the
    // input, through the stream, which follows the code itself in bounded
    // memory.
    std::string piece, mapped;
    std::size_t next_check = 0;
    std::uint64_t lines_before = 0;
    std::unique_ptr<TsqlCaseStream> stream;
    int context = ZEAL_SQL_CODE;
    // Maps `text` (zero-terminated after `length` bytes) in place and writes
    // it up to the part it leaves open; where that part begins.
    auto const map_and_write = [&](char* text) {
      int open = 0;
      _zmaptsqlapply(map.get(), text, reading.quoted_id ? 1 : 0, &context, &open);
      auto const written = static_cast<std::size_t>(open);
      write_out(text, written);
      lines_before += count_line_feeds(text, written);
      return written;
    };
    Lines lines;
    while (in.next_lines(lines, false)) {
      inv.found();
      if (stream != nullptr) {
        stream->write({lines.text, lines.length});
        continue;
      }
      if (piece.empty()) {
        // The open part starts the piece as mapped, not as read: of its
        // bytes the map may change only a name's content, which maps
        // again as a name's content, and a case map leaves what it made.
        std::size_t const written = map_and_write(lines.text);
        piece.assign(lines.text + written, lines.length - written);
        next_check = 2 * piece.size();
        continue;
      }
      piece.append(lines.text, lines.length);
      if (piece.size() < next_check) continue;
      mapped.assign(piece);
      piece.erase(0, map_and_write(mapped.data()));
      next_check = 2 * piece.size();
      if (piece.size() > kSqlcaseMostPiece) {
        stream = std::make_unique<TsqlCaseStream>(
            map.get(), reading.quoted_id, 1 << 20, [](std::string_view s) { write_out(s); },
            lines_before + 1);
        stream->write(piece);
        piece.clear();
      }
    }
    char const* open = nullptr;
    std::uint64_t line = 0;
    if (stream != nullptr) {
      TsqlCaseStream::Open const left = stream->finish(line);
      if (left != TsqlCaseStream::Open::kNothing) open = describe(left);
    } else if (!piece.empty()) {
      mapped.assign(piece);
      std::size_t const written = map_and_write(mapped.data());
      // What is left is the part open at the end, mapped as it maps alone.
      write_out(mapped.data() + written, mapped.size() - written);
      if (context == ZEAL_SQL_STRING || context == ZEAL_SQL_BLOCK_COMMENT ||
          context == ZEAL_SQL_NAME) {
        open = context == ZEAL_SQL_STRING          ? "string literal"
               : context == ZEAL_SQL_BLOCK_COMMENT ? "block comment"
                                                   : "delimited name";
        line = lines_before + 1;
      }
    }
    if (open != nullptr && in.ok()) {
      inv.error("%s: unterminated %s opened on line %llu (%s to the end)", in.name(), open,
                static_cast<unsigned long long>(line),
                std::strcmp(open, "delimited name") == 0 ? "mapped" : "kept as it is");
    }
  });
  return inv.exit_status();
}

// resword --tsql VERSION | --oracle VERSION [WORD...]
int run_resword(Invocation& inv) {
  char const* const tsql = inv.value("--tsql");
  char const* const oracle = inv.value("--oracle");
  if ((tsql == nullptr) == (oracle == nullptr)) {
    return inv.usage_error("one of --tsql and --oracle is needed");
  }
  char const* const given = tsql != nullptr ? tsql : oracle;
  char const* const accepted = tsql != nullptr ? kTsqlVersions : kOracleVersions;
  int version = 0;
  if (!parse_int(given, version)) {
    return inv.usage_error("'%s' is not a version number (%s)", given, accepted);
  }
  int (*const reserved)(char const*, int) = tsql != nullptr ? _zistsqlresword : _zisosqlresword;
  // An unhandled version draws a warning from any call on a word that
  // begins with a letter: ask once before printing anything.
  inv.clear_warning();
  reserved("A", version);
  if (!inv.last_warning().empty()) {
    return inv.usage_error("%s version %d is not known (%s)", tsql != nullptr ? "T-SQL" : "Oracle",
                           version, accepted);
  }
  for_each_word(inv, [&](char const* word) {
    bool const is = reserved(word, version) != 0;
    if (is) inv.found();
    std::printf("%s: %s\n", word != nullptr ? word : "(null)", is ? "reserved" : "not reserved");
  });
  return inv.exit_status();
}

// sysname [--kind KIND] [NAME...]: the system form of each source name.
int run_sysname(Invocation& inv) {
  int kind = 4;
  if (char const* const k = inv.value("--kind"); k != nullptr && !parse_int(k, kind)) {
    return inv.usage_error("'%s' is not a kind", k);
  }
  return convert_names(inv, "system",
                       [kind](char const* name) { return _zplsql2sysname(name, kind); });
}

// plsqlname [NAME...]: the source form of each system name.
int run_plsqlname(Invocation& inv) {
  return convert_names(inv, "source", [](char const* name) { return _zsysname2plsql(name); });
}

namespace {

// A T-SQL conversion's result as a heap copy (NULL for none).
char* tsql_copy(char const* name, bool to_source) {
  if (name == nullptr || *name == '\0') return nullptr;
  return to_source ? _zsysname2tsql(tsql_connection(), name, 0)
                   : _ztsql2sysname(tsql_connection(), name);
}

void print_parts(char** parts, int count) {
  std::string line;
  for (int i = 0; i < count; ++i) line.append(i > 0 ? "\t" : "").append(parts[i]);
  line += '\n';
  write_out(line);
}

}  // namespace

// tsqlname [--source] [NAME...]: the system form of each T-SQL source name,
// or the source form of each system name.
int run_tsqlname(Invocation& inv) {
  bool const to_source = inv.flag("--source");
  return convert_names(inv, to_source ? "source" : "system",
                       [to_source](char const* name) { return tsql_copy(name, to_source); });
}

// qname [--oracle] [--denormalize] [FILE...]: the parts of each qualified
// name, one a line, or the name in minimal source form.
int run_qname(Invocation& inv) {
  bool const oracle = inv.flag("--oracle"), denormalize = inv.flag("--denormalize");
  char const* const quote = inv.value("--quote");
  bool const brackets = quote == nullptr || std::strchr(quote, '[') != nullptr;
  bool const quotes = quote == nullptr || std::strchr(quote, '"') != nullptr;
  if (quote != nullptr && (*quote == '\0' || std::strspn(quote, "[\"") != std::strlen(quote))) {
    return inv.usage_error("--quote takes '\"', '[' or both, not '%s'", quote);
  }
  std::string const delimiters = std::string(brackets ? "[" : "") + (quotes ? "\"" : "");
  CHTSQL const tsql(tsql_connection(brackets, quotes));
  bool failed = false, named = false;
  for_each_line(inv, inv.operands(), [&](Input& in, char* line, std::size_t) {
    if (denormalize) {
      char* canonical = const_cast<char*>(tsql.GetDenormalizedQualId(line, 0));
      if (canonical != nullptr) {
        write_picked_line(in, canonical);
        named = true;
        _zstrdupfree(canonical);
        return true;
      }
    } else {
      char** parts = nullptr;
      int const n =
          oracle ? _zstrsplitqname(line, quote != nullptr ? delimiters.c_str() : "\"", &parts)
                 : tsql.SplitQualCodeName(line, &parts, quote != nullptr ? 1 : 0);
      if (n > 0) {
        print_parts(parts, n);
        named = true;
        CHSQL::DeleteComponents(&parts, nullptr);
        return true;
      }
    }
    inv.notice("%s:%llu: '%s' is not a qualified name", in.name(),
               static_cast<unsigned long long>(in.line_number()), shown(line).c_str());
    failed = true;
    return true;
  });
  if (named && !failed) inv.found();
  return inv.exit_status();
}

namespace {

// The filler of --fill: one character, and not a line end, which would
// change the lines of the text.
bool fill_char(Invocation& inv, char& filler) {
  char const* const c = inv.value("--fill");
  if (c == nullptr) return true;
  if (std::strlen(c) != 1) {
    inv.usage_error("--fill takes one character, not '%s'", c);
    return false;
  }
  if (*c == '\n' || *c == '\r') {
    inv.usage_error(
        "--fill takes a character that ends no line, not a line feed or a carriage "
        "return");
    return false;
  }
  filler = *c;
  return true;
}

// Whether hiding changed `text` into `hidden`.  A part whose bytes were all
// the filler already leaves the text as it was: the text is then hidden
// again with another filler to tell.
bool hid_something(CodeReading reading, std::string const& text, std::string const& hidden) {
  if (hidden != text) return true;
  reading.filler = reading.filler == ' ' ? '.' : ' ';
  std::string again = text;
  hide_code(reading, again);
  return again != text;
}

}  // namespace

// hide [--tsql|--oracle] [--quoted-id] [--keep-strings] [--names] [--commands]
// [--quotes] [--fill CHAR] [FILE...]: each input read whole (a comment or a
// literal may span lines) and printed with what is not code hidden.
int run_hide(Invocation& inv) {
  CodeReading reading;
  if (!read_dialect(inv, reading) || !fill_char(inv, reading.filler)) return kError;
  reading.flags = ZEAL_HIDE_COMMENTS | (inv.flag("--keep-strings") ? 0 : ZEAL_HIDE_STRINGS) |
                  (inv.flag("--names") ? ZEAL_HIDE_NAMES : 0) |
                  (inv.flag("--commands") ? ZEAL_HIDE_COMMANDS : 0) |
                  (inv.flag("--quotes") ? ZEAL_HIDE_DELIMITERS : 0);
  std::string text, hidden;
  for_each_input(inv, inv.operands(), [&](Input& in) {
    if (!read_code(inv, in, reading, true, text, hidden)) return;
    write_out(hidden);
    if (hid_something(reading, text, hidden)) inv.found();
  });
  return inv.exit_status();
}

}  // namespace zelstr::tool
