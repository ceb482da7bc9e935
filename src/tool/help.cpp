// help.cpp - the tool's texts, all printed from the command table: the
// overview, each subcommand's help, the manual page (roff) and the bash
// completion script.
#include "tool/help.h"

#include <cstring>
#include <string>

#include "zelstr/version.h"

namespace zelstr::tool {
namespace {

constexpr char kErrorStatus[] = "2: an error (a message on standard error)";

// The one rule every command follows for line ends.
constexpr char kLineEnds[] =
    "Line ends: a line ends at a line feed (LF) or a carriage return and line\n"
    "feed (CRLF).  The end is not part of the line: no command matches, counts,\n"
    "trims, quotes or translates it, and every line a command prints keeps the\n"
    "end it came with.  A last line without an end is printed without one by\n"
    "the commands that pass every line on (replace, sub, trim, quote, unquote,\n"
    "map, sqlcase, hide) and with LF by the others; matched parts, counts,\n"
    "offsets and answers end with LF.";

std::string option_label(Option const& o) {
  return o.value != nullptr ? std::string(o.name) + " " + o.value : std::string(o.name);
}

void print_options(std::FILE* out, std::span<Option const> options) {
  for (Option const& o : options) {
    std::fprintf(out, "  %-20s %s\n", option_label(o).c_str(), o.help);
  }
}

// Text for roff: backslashes and dashes escaped, a line never beginning
// with a control character.
std::string roff(char const* text) {
  std::string out;
  bool line_start = true;
  for (char const* p = text; *p != '\0'; ++p) {
    if (line_start && (*p == '.' || *p == '\'')) out += "\\&";
    line_start = *p == '\n';
    if (*p == '\\') {
      out += "\\e";
    } else if (*p == '-') {
      out += "\\-";
    } else {
      out += *p;
    }
  }
  return out;
}

void print_man_command(std::FILE* out, Command const& c) {
  std::fprintf(out, ".SS \"%s\"\n.B zelstr %s\n%s\n.PP\n%s", c.name, c.name,
               roff(c.synopsis).c_str(), roff(c.description).c_str());
  for (Option const& o : c.options) {
    std::fprintf(out, ".TP\n.B %s\n%s\n", roff(option_label(o).c_str()).c_str(),
                 roff(o.help).c_str());
  }
  if (c.example.command != nullptr) {
    std::fprintf(out, ".PP\nExample:\n.PP\n.nf\n.RS\n$ %s\n%s.RE\n.fi\n",
                 roff(c.example.command).c_str(), roff(c.example.output).c_str());
  }
  std::fprintf(out, ".PP\nExit status: %s.\n", roff(c.exit_status).c_str());
}

}  // namespace

void print_overview(std::FILE* out) {
  std::fprintf(out,
               "usage: zelstr [-W] COMMAND [OPTIONS] [ARGUMENTS]\n"
               "       zelstr COMMAND --help | zelstr --help | zelstr --version\n\n"
               "Runs the ZelStr32 string library on text and SQL code.  Commands read the\n"
               "files named (or standard input) and write standard output; the exit status\n"
               "is 0 when something was found, 1 when nothing was, 2 on an error.\n\n"
               "%s\n\noptions:\n",
               kLineEnds);
  print_options(out, kToolOptions);
  std::fprintf(out, "\ncommands:\n");
  for (Command const& c : commands()) std::fprintf(out, "  %-10s %s\n", c.name, c.summary);
}

void print_command_help(std::FILE* out, Command const& c) {
  std::fprintf(out, "usage: zelstr %s%s%s\n\n%s\noptions:\n", c.name,
               *c.synopsis != '\0' ? " " : "", c.synopsis, c.description);
  print_options(out, c.options);
  print_options(out, kCommonOptions);
  if (c.example.command != nullptr) {
    std::fprintf(out, "\nexample:\n  $ %s\n", c.example.command);
    for (char const* line = c.example.output; *line != '\0';) {
      char const* const end = std::strchr(line, '\n');
      std::fprintf(out, "  %.*s\n", static_cast<int>(end - line), line);
      line = end + 1;
    }
  }
  std::fprintf(out, "\nexit status: %s; %s.\n", c.exit_status, kErrorStatus);
}

void print_man_page(std::FILE* out) {
  std::fprintf(out,
               ".TH ZELSTR 1 \"\" \"zelstr %s\" \"User Commands\"\n"
               ".SH NAME\nzelstr \\- string and SQL code tools of the ZelStr32 library\n"
               ".SH SYNOPSIS\n.B zelstr\n[\\-W] COMMAND [OPTIONS] [ARGUMENTS]\n"
               ".SH DESCRIPTION\n"
               "Runs the ZelStr32 string library on text and SQL code.  Commands read the\n"
               "files named, or standard input when there are none or for \\-, a line or\n"
               "a block at a time (hide, and grep and findall with \\-\\-code\\-only, read\n"
               "each input whole: a comment or a literal may span lines), and write\n"
               "standard output.\n"
               ".PP\n"
               "A file that begins with the byte-order mark of UTF-16 (little- or\n"
               "big-endian) is decoded into UTF-8 before any command sees it, and a\n"
               "UTF-8 mark is no part of the first line; \\-\\-encoding NAME decodes\n"
               "every input from that encoding (ICU's converter names on Linux; UTF-16LE,\n"
               "UTF-16BE, UTF-8 and windows-N code pages of one byte a character on\n"
               "Windows).  Line numbers, the text \\-o prints and the offsets findall\n"
               "prints are those of the decoded text.\n"
               ".PP\n"
               "Text holding a zero byte is refused as binary data (find, and grep with\n"
               "a plain string, may have printed lines before the line that holds it);\n"
               "but find and grep read a file with a zero byte in its first block (256\n"
               "KiB, after decoding) as a binary file: its zero bytes end lines, and\n"
               "\"Binary file NAME matches\" is printed at its first selected line instead\n"
               "of the lines (counts and names as for any file), or with \\-a its lines\n"
               "are printed whole and matched up to a zero byte.\n"
               ".PP\n"
               "find and grep see a file they\n"
               "are named whole in memory where the system allows it (not on Windows),\n"
               "as the fastest search tools do: a file made shorter while it is searched\n"
               "may end the command with a signal.\n"
               ".SS \"Line ends\"\n%s\n"
               ".SH OPTIONS\nBefore any command:\n",
               ZELSTR_VERSION, roff(kLineEnds).c_str());
  for (Option const& o : kToolOptions) {
    std::fprintf(out, ".TP\n.B %s\n%s\n", roff(o.name).c_str(), roff(o.help).c_str());
  }
  std::fprintf(out, ".PP\nEvery command takes these options:\n");
  for (Option const& o : kCommonOptions) {
    std::fprintf(out, ".TP\n.B %s\n%s\n", roff(o.name).c_str(), roff(o.help).c_str());
  }
  std::fprintf(out, ".SH COMMANDS\n");
  for (Command const& c : commands()) print_man_command(out, c);
  std::fprintf(out,
               ".SH \"EXIT STATUS\"\n0 when something was found, 1 when nothing was (each "
               "command says what that means), 2 on an error.  When memory runs out the "
               "one message is \"zelstr: out of memory\", with status 2.\n"
               ".SH \"SEE ALSO\"\nThe ZelStr32 documentation, installed with the library's "
               "headers.\n");
}

void print_bash_completion(std::FILE* out) {
  std::fprintf(out,
               "# bash completion for zelstr\n"
               "_zelstr() {\n"
               "  local cur=${COMP_WORDS[COMP_CWORD]} command='' i\n"
               "  for ((i = 1; i < COMP_CWORD; i++)); do\n"
               "    [[ ${COMP_WORDS[i]} != -* ]] && { command=${COMP_WORDS[i]}; break; }\n"
               "  done\n"
               "  local words\n"
               "  case $command in\n"
               "    '') words='");
  for (Option const& o : kToolOptions) std::fprintf(out, "%s ", o.name);
  for (Command const& c : commands()) std::fprintf(out, " %s", c.name);
  std::fprintf(out, "' ;;\n");
  for (Command const& c : commands()) {
    std::fprintf(out, "    %s) words='", c.name);
    for (Option const& o : c.options) std::fprintf(out, "%s ", o.name);
    for (Option const& o : kCommonOptions) std::fprintf(out, "%s ", o.name);
    std::fprintf(out, "' ;;\n");
  }
  std::fprintf(out,
               "  esac\n"
               "  if [[ -z $command || $cur == -* ]]; then\n"
               "    COMPREPLY=($(compgen -W \"$words\" -- \"$cur\"))\n"
               "  else\n"
               "    COMPREPLY=($(compgen -f -- \"$cur\"))\n"
               "  fi\n"
               "}\n"
               "complete -o filenames -F _zelstr zelstr\n");
}

}  // namespace zelstr::tool
