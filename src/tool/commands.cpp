// commands.cpp - the subcommands that run single library calls.
#include "tool/commands.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

#include "errsvc/errsvc.h"
#include "zelstr/zelstr.h"

namespace zelstr::tool {

int run_demo(std::span<char* const> args);
int run_map(std::span<char* const> args);
int run_mapfind(std::span<char* const> args);
int run_grep(std::span<char* const> args);
int run_findall(std::span<char* const> args);
int run_sqlcase(std::span<char* const> args);
int run_resword(std::span<char* const> args);
int run_sysname(std::span<char* const> args);
int run_plsqlname(std::span<char* const> args);

namespace {

void print_record(errsvc::Record const& r) {
  std::fprintf(stderr, "warning %d (severity %d): %s\n", r.id, r.severity, r.text.c_str());
}

// cmp [-i] [-n COUNT] A B: the -1/0/+1 comparison of two strings.
int run_cmp(std::span<char* const> args) {
  bool insensitive = false;
  char const* count = nullptr;
  std::size_t i = 0;
  for (; i < args.size() && args[i][0] == '-' && args[i][1] != '\0'; ++i) {
    if (std::strcmp(args[i], "-i") == 0) {
      insensitive = true;
    } else if (std::strcmp(args[i], "-n") == 0 && i + 1 < args.size()) {
      count = args[++i];
    } else {
      std::fprintf(stderr, "zelstr cmp: unknown option '%s'\n", args[i]);
      return kUsageError;
    }
  }
  if (args.size() - i != 2) {
    std::fprintf(stderr, "usage: zelstr cmp [-i] [-n COUNT] A B\n");
    return kUsageError;
  }
  char const* a = argument(args[i]);
  char const* b = argument(args[i + 1]);
  int result;
  if (count != nullptr) {
    unsigned long const n = std::strtoul(count, nullptr, 10);
    result = insensitive ? _zstrnicmp(a, b, n) : _zstrncmp(a, b, n);
  } else {
    result = insensitive ? _zstricmp(a, b) : _zstrcmp(a, b);
  }
  std::printf("%d\n", result);
  return 0;
}

// len S: the length of a string.
int run_len(std::span<char* const> args) {
  if (args.size() != 1) {
    std::fprintf(stderr, "usage: zelstr len S\n");
    return kUsageError;
  }
  std::printf("%u\n", _zstrlen(argument(args[0])));
  return 0;
}

// The whole of standard input.
std::string read_stdin() {
  std::string text;
  read_text("-", text);
  return text;
}

// find [-i] PATTERN TEXT: the first occurrence ("-" reads the text from
// standard input).
int run_find(std::span<char* const> args) {
  bool const insensitive = !args.empty() && std::strcmp(args[0], "-i") == 0;
  if (args.size() != (insensitive ? 3u : 2u)) {
    std::fprintf(stderr, "usage: zelstr find [-i] PATTERN TEXT|-\n");
    return kUsageError;
  }
  char const* const pattern = argument(args[args.size() - 2]);
  char const* text = argument(args.back());
  std::string input;
  if (text != nullptr && std::strcmp(text, "-") == 0) {
    input = read_stdin();
    text = input.c_str();
  }
  char const* const at = insensitive ? _zstristr(text, pattern) : _zstrstr(text, pattern);
  if (at == nullptr) {
    std::printf("not found\n");
    return 1;
  }
  std::printf("found at %ld: %.40s\n", static_cast<long>(at - text), at);
  return 0;
}

// span SETDEF [LINE...]: the initial run of each line (or of each line of
// standard input) made of members of the set.
int run_span(std::span<char* const> args) {
  if (args.empty()) {
    std::fprintf(stderr, "usage: zelstr span SETDEF [LINE...]\n");
    return kUsageError;
  }
  char const* const setdef = argument(args[0]);
  auto show = [setdef](char const* line) {
    unsigned const n = _zstrspnex(line, setdef);
    std::printf("%u\t%.*s\n", n, static_cast<int>(n), line != nullptr ? line : "");
  };
  if (args.size() > 1) {
    for (char* const line : args.subspan(1)) show(argument(line));
    return 0;
  }
  std::string const input = read_stdin();
  for (std::size_t start = 0; start < input.size();) {
    std::size_t end = input.find('\n', start);
    if (end == std::string::npos) end = input.size();
    std::string line = input.substr(start, end - start);
    if (!line.empty() && line.back() == '\r') line.pop_back();
    show(line.c_str());
    start = end + 1;
  }
  return 0;
}

// replace [-i] [--first|--last] [--delimiters SETDEF] FROM TO [FILE|-]
int run_replace(std::span<char* const> args) {
  bool insensitive = false;
  char const* which = "all";
  char const* delimiters = nullptr;
  std::size_t i = 0;
  auto is_option = [&args](std::size_t k) {
    return k < args.size() && args[k][0] == '-' && (args[k][1] == '-' || args[k][1] == 'i');
  };
  for (; is_option(i); ++i) {
    if (std::strcmp(args[i], "-i") == 0) {
      insensitive = true;
    } else if (std::strcmp(args[i], "--first") == 0 || std::strcmp(args[i], "--last") == 0) {
      which = args[i] + 2;
    } else if (std::strcmp(args[i], "--delimiters") == 0 && i + 1 < args.size()) {
      delimiters = args[++i];
    } else {
      std::fprintf(stderr, "zelstr replace: unknown option '%s'\n", args[i]);
      return kUsageError;
    }
  }
  if (args.size() - i < 2 || args.size() - i > 3) {
    std::fprintf(stderr,
                 "usage: zelstr replace [-i] [--first|--last] [--delimiters SETDEF] FROM TO "
                 "[FILE|-]\n");
    return kUsageError;
  }
  char const* const from = argument(args[i]);
  char const* const to = argument(args[i + 1]);
  std::string text;
  if (!read_text(args.size() - i == 3 ? args[i + 2] : "-", text)) {
    std::fprintf(stderr, "zelstr replace: cannot read '%s'\n", args[i + 2]);
    return 1;
  }
  text.resize(std::strlen(text.c_str()));  // the library sees up to the first NUL
  std::size_t const grow = to != nullptr ? std::strlen(to) : 0;
  std::string buffer = text;
  buffer.resize(text.size() * (grow > 1 ? grow : 1) + 1, '\0');
  unsigned long const size = static_cast<unsigned long>(buffer.size() - 1);
  char* const b = buffer.data();
  char* result;
  if (std::strcmp(which, "first") == 0) {
    result = insensitive ? _zstri1replace(b, from, to, size) : _zstr1replace(b, from, to, size);
  } else if (std::strcmp(which, "last") == 0) {
    result = _zstrr1replace(b, from, to, size);
  } else if (delimiters != nullptr) {
    result = insensitive ? _zstriNreplaceEx(b, from, to, size, delimiters)
                         : _zstrNreplaceEx(b, from, to, size, delimiters);
  } else {
    result = insensitive ? _zstriNreplace(b, from, to, size) : _zstrNreplace(b, from, to, size);
  }
  if (result == nullptr) return 1;
  std::fputs(result, stdout);
  return 0;
}

// trim [--left|--right] [--chars LIST] TEXT
int run_trim(std::span<char* const> args) {
  char const* side = "both";
  char const* chars = nullptr;
  std::size_t i = 0;
  for (; i + 1 < args.size(); ++i) {
    if (std::strcmp(args[i], "--left") == 0 || std::strcmp(args[i], "--right") == 0) {
      side = args[i] + 2;
    } else if (std::strcmp(args[i], "--chars") == 0) {
      chars = args[++i];
    } else {
      break;
    }
  }
  if (args.size() - i != 1) {
    std::fprintf(stderr, "usage: zelstr trim [--left|--right] [--chars LIST] TEXT\n");
    return kUsageError;
  }
  std::string text = args[i];
  char* const t = text.data();
  char* result;
  if (chars != nullptr) {
    result = side[0] == 'l'   ? _zstrltrimex(t, chars)
             : side[0] == 'r' ? _zstrrtrimex(t, chars)
                              : _zstrbtrimex(t, chars);
  } else {
    result = side[0] == 'l' ? _zstrltrim(t) : side[0] == 'r' ? _zstrrtrim(t) : _zstrbtrim(t);
  }
  std::printf("[%s]\n", result != nullptr ? result : "");
  return 0;
}

// quote / unquote [-c CHAR] TEXT
int run_quoting(std::span<char* const> args, bool unquote) {
  char quote = '\'';
  std::size_t i = 0;
  if (args.size() == 3 && std::strcmp(args[0], "-c") == 0) {
    quote = args[1][0];
    i = 2;
  }
  if (args.size() - i != 1) {
    std::fprintf(stderr, "usage: zelstr %s [-c CHAR] TEXT\n", unquote ? "unquote" : "quote");
    return kUsageError;
  }
  char const* const text = argument(args[i]);
  char const* const result =
      unquote ? _zstrunquoted(text, quote, nullptr) : _zstrquoted(text, quote);
  std::printf("%s\n", result != nullptr ? result : "(null)");
  return 0;
}

int run_quote(std::span<char* const> args) { return run_quoting(args, false); }
int run_unquote(std::span<char* const> args) { return run_quoting(args, true); }

constexpr Command kCommands[] = {
    {"cmp", "[-i] [-n COUNT] A B",
     "compare A and B (-i: ignoring case, -n: at most COUNT bytes); prints -1, 0 or 1", run_cmp},
    {"len", "S", "print the length of S", run_len},
    {"find", "[-i] PATTERN TEXT|-",
     "the first occurrence of PATTERN in TEXT (-: standard input; -i: ignoring case)", run_find},
    {"span", "SETDEF [LINE...]",
     "the initial run of each line (default: lines of standard input) made of members of the "
     "set SETDEF, such as [a-zA-Z_]",
     run_span},
    {"replace", "[-i] [--first|--last] [--delimiters SETDEF] FROM TO [FILE|-]",
     "print the text (a file, or standard input) with FROM replaced by TO: every occurrence, "
     "or the first or last; -i ignores case; --delimiters replaces only occurrences no member "
     "of the set touches",
     run_replace},
    {"trim", "[--left|--right] [--chars LIST] TEXT",
     "print TEXT, in brackets, without its leading and/or trailing spaces (or LIST characters)",
     run_trim},
    {"quote", "[-c CHAR] TEXT", "print TEXT framed by the quote CHAR (default ')", run_quote},
    {"unquote", "[-c CHAR] TEXT", "print TEXT without its framing quotes", run_unquote},
    {"map", "DEFINITION [--dump] [FILE|-]",
     "print the text (a file, or standard input) translated through the map DEFINITION, such "
     "as \"A-Z=a-z\"; --dump prints the bytes the map changes instead",
     run_map},
    {"mapfind", "DEFINITION PATTERN [FILE|-]",
     "print the lines holding PATTERN when both are compared through the map DEFINITION, as "
     "LINE:COLUMN:text",
     run_mapfind},
    {"grep", "[-o] [-g N] PATTERN [FILE...]",
     "print the lines (of the files, or of standard input) that match the regular expression "
     "PATTERN; -o prints the match, -g N group N",
     run_grep},
    {"findall", "[-i] [--no-overlap] PATTERN [FILE|-]",
     "print the byte offset of every occurrence of PATTERN (overlapping ones included, unless "
     "--no-overlap), one a line; -i ignores case",
     run_findall},
    {"sqlcase", "--lower|--upper [--quoted-id] [FILE|-]",
     "print the T-SQL code (a file, or standard input) in lower or upper case, its string "
     "literals and comments kept; --quoted-id makes \"...\" a name (mapped), not a literal",
     run_sqlcase},
    {"resword", "--tsql|--oracle VERSION WORD...",
     "print for each WORD whether it is reserved in the T-SQL or Oracle server VERSION, such as "
     "15 or 2008 (T-SQL) and 152 (Oracle), as WORD: reserved|not reserved",
     run_resword},
    {"sysname", "[--kind KIND] NAME...",
     "print the system form of each PL/SQL source name: \"...\" loses its quotation marks, a "
     "regular name is upper-cased and must be valid: an ordinary name (KIND 4, the default), a "
     "database link (2) or a name that may begin with a digit (8)",
     run_sysname},
    {"plsqlname", "NAME...",
     "print the PL/SQL source form of each system name: delimited by quotation marks when it is "
     "not a regular upper-case name or is reserved",
     run_plsqlname},
    {"demo", "", "run the built-in example: a tour of the calls with their results", run_demo},
};

}  // namespace

std::span<Command const> commands() { return kCommands; }

char const* argument(char const* text) { return std::strcmp(text, "(null)") == 0 ? nullptr : text; }

void print_warnings_to_stderr() { errsvc::set_sink(print_record); }

std::FILE* open_input(char const* command, char const* name) {
  if (std::strcmp(name, "-") == 0) return stdin;
  std::FILE* const f = std::fopen(name, "rb");
  if (f == nullptr) std::fprintf(stderr, "zelstr %s: cannot read '%s'\n", command, name);
  return f;
}

void close_input(std::FILE* in) {
  if (in != stdin) std::fclose(in);
}

bool read_line(std::FILE* in, std::string& line) {
  line.clear();
  int c;
  while ((c = std::fgetc(in)) != EOF && c != '\n') line += static_cast<char>(c);
  return c != EOF || !line.empty();
}

// Reads the whole input: a file, or standard input for "-".
bool read_text(char const* arg, std::string& text) {
  std::FILE* const in = std::strcmp(arg, "-") == 0 ? stdin : std::fopen(arg, "rb");
  if (in == nullptr) return false;
  char buffer[65536];
  for (std::size_t n; (n = std::fread(buffer, 1, sizeof buffer, in)) > 0;) text.append(buffer, n);
  close_input(in);
  return true;
}

}  // namespace zelstr::tool
