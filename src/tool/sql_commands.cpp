// sql_commands.cpp - the subcommands for SQL source code: sqlcase (T-SQL
// code in lower or upper case, literals and comments kept), resword (is a
// word reserved in a server version?), and sysname and plsqlname (PL/SQL
// names from source form to system form and back).
#include <cerrno>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

#include "errsvc/errsvc.h"
#include "tool/commands.h"
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

// A heap copy from a copying name conversion, released on the way out.  An
// empty name gives a shared empty string instead of a copy: it is kept.
class ConvertedName {
 public:
  ConvertedName(char const* name, char* converted)
      : m_text(converted), m_owned(name != nullptr && *name != '\0') {}
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

// Prints each name converted by `convert` on its own line; a name without
// a conversion gets a message instead and makes the status 1.
int convert_names(char const* command, std::span<char* const> names,
                  char* (*convert)(char const* name, int kind), int kind) {
  int status = 0;
  for (char* const arg : names) {
    char const* const name = argument(arg);
    ConvertedName const converted(name, convert(name, kind));
    if (converted.get() == nullptr) {
      std::fprintf(stderr, "zelstr %s: '%s' cannot be converted\n", command, arg);
      status = 1;
      continue;
    }
    std::printf("%s\n", converted.get());
  }
  return status;
}

}  // namespace

// sqlcase --lower|--upper [--quoted-id] [FILE|-]
int run_sqlcase(std::span<char* const> args) {
  char const* definition = nullptr;
  int quoted_id = 0;
  std::size_t i = 0;
  for (; i < args.size() && args[i][0] == '-' && args[i][1] != '\0'; ++i) {
    if (std::strcmp(args[i], "--lower") == 0) {
      definition = "a-z=A-Z";
    } else if (std::strcmp(args[i], "--upper") == 0) {
      definition = "A-Z=a-z";
    } else if (std::strcmp(args[i], "--quoted-id") == 0) {
      quoted_id = 1;
    } else {
      std::fprintf(stderr, "zelstr sqlcase: unknown option '%s'\n", args[i]);
      return kUsageError;
    }
  }
  if (definition == nullptr || args.size() - i > 1) {
    std::fprintf(stderr, "usage: zelstr sqlcase --lower|--upper [--quoted-id] [FILE|-]\n");
    return kUsageError;
  }
  char const* const name = i < args.size() ? args[i] : "-";
  std::string text;
  if (!read_text(name, text)) {
    std::fprintf(stderr, "zelstr sqlcase: cannot read '%s'\n", name);
    return kUsageError;
  }
  void* const map = _zmapdefine(definition);
  // The library stops at a NUL byte: each stretch between NULs is code of
  // its own, and the NULs are passed through.
  char* const code = text.data();
  for (std::size_t at = 0; at < text.size(); at += std::strlen(code + at) + 1) {
    _zmaptsqlapply(map, code + at, quoted_id);
  }
  _zmapfree(map);
  std::fwrite(text.data(), 1, text.size(), stdout);
  return 0;
}

// resword --tsql|--oracle VERSION WORD...: one line a word.
int run_resword(std::span<char* const> args) {
  bool const tsql = !args.empty() && std::strcmp(args[0], "--tsql") == 0;
  bool const oracle = !args.empty() && std::strcmp(args[0], "--oracle") == 0;
  if ((!tsql && !oracle) || args.size() < 3) {
    std::fprintf(stderr, "usage: zelstr resword --tsql|--oracle VERSION WORD...\n");
    return kUsageError;
  }
  int version = 0;
  if (!parse_int(args[1], version)) {
    std::fprintf(stderr, "zelstr resword: '%s' is not a version number\n", args[1]);
    return kUsageError;
  }
  int (*const reserved)(char const*, int) = tsql ? _zistsqlresword : _zisosqlresword;
  // A version the library does not handle draws a warning from any call on
  // a word that begins with a letter: ask once before printing anything.
  errsvc::clear();
  reserved("A", version);
  if (!errsvc::records().empty()) {
    std::fprintf(stderr, "zelstr resword: %s version %d is not handled\n",
                 tsql ? "T-SQL" : "Oracle", version);
    return 1;
  }
  for (char* const arg : args.subspan(2)) {
    std::printf("%s: %s\n", arg, reserved(argument(arg), version) ? "reserved" : "not reserved");
  }
  return 0;
}

// sysname [--kind KIND] NAME...: the system form of each source name.
int run_sysname(std::span<char* const> args) {
  int kind = 4;
  std::size_t i = 0;
  if (args.size() >= 2 && std::strcmp(args[0], "--kind") == 0) {
    if (!parse_int(args[1], kind)) {
      std::fprintf(stderr, "zelstr sysname: '%s' is not a kind\n", args[1]);
      return kUsageError;
    }
    i = 2;
  }
  if (i == args.size()) {
    std::fprintf(stderr, "usage: zelstr sysname [--kind KIND] NAME...\n");
    return kUsageError;
  }
  char* (*const convert)(char const*, int) = _zplsql2sysname;
  return convert_names("sysname", args.subspan(i), convert, kind);
}

// plsqlname NAME...: the source form of each system name.
int run_plsqlname(std::span<char* const> args) {
  if (args.empty()) {
    std::fprintf(stderr, "usage: zelstr plsqlname NAME...\n");
    return kUsageError;
  }
  auto const convert = [](char const* name, int) { return _zsysname2plsql(name); };
  return convert_names("plsqlname", args, convert, 0);
}

}  // namespace zelstr::tool
