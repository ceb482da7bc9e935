// commands.cpp - the command table of the zelstr tool: each subcommand's
// options, help text and example.  The examples are run by the tool's
// end-to-end tests, which compare their output with the one shown here.
#include <cstring>

#include "tool/command.h"

namespace zelstr::tool {

int run_find(Invocation& inv);
int run_span(Invocation& inv);
int run_replace(Invocation& inv);
int run_trim(Invocation& inv);
int run_eol(Invocation& inv);
int run_tree(Invocation& inv);
int run_sort(Invocation& inv);
int run_quote(Invocation& inv);
int run_unquote(Invocation& inv);
int run_cmp(Invocation& inv);
int run_map(Invocation& inv);
int run_grep(Invocation& inv);
int run_findall(Invocation& inv);
int run_like(Invocation& inv);
int run_match(Invocation& inv);
int run_sub(Invocation& inv);
int run_sqlcase(Invocation& inv);
int run_resword(Invocation& inv);
int run_sysname(Invocation& inv);
int run_plsqlname(Invocation& inv);
int run_tsqlname(Invocation& inv);
int run_qname(Invocation& inv);
int run_hide(Invocation& inv);
int run_demo(Invocation& inv);

namespace {

constexpr char kLinesFound[] = "0: a line was found; 1: none was";

// grep's everyday options of output, which find and grep share.
#define ZELSTR_LINE_OUTPUT_OPTIONS                                                             \
  {"-v", nullptr, "select the lines that do not match"},                                       \
      {"-n", nullptr, "print each line's number first"},                                       \
      {"-c", nullptr, "print only the number of selected lines of each file"},                 \
      {"-l", nullptr, "print only the names of the files with a selected line"},               \
      {"-L", nullptr, "print only the names of the files without a selected line"},            \
      {"-q", nullptr, "print nothing; exit 0 at the first selected line (even after an error)"}, \
      {"-s", nullptr, "say nothing of files that cannot be opened or read"},                   \
      {"-a", nullptr,                                                                          \
       "read a binary file (a zero byte in its first block) as text: a line is matched up to " \
       "a zero byte, and printed whole"},                                                      \
      {"-H", nullptr, "begin each line with its file's name, even for one file"},              \
      {"-h", nullptr, "never begin a line with its file's name"},                              \
      {"--label", "LABEL", "the name printed for standard input"},                             \
      {"-Z", nullptr, "end a file's name with a zero byte instead of ':' or a line feed"},     \
      {"--null", nullptr, "the same as -Z"},                                                   \
      {"-m", "NUM", "stop reading a file after NUM selected lines"},                           \
      {"-A", "NUM", "print NUM lines of context after each selected line"},                    \
      {"-B", "NUM", "print NUM lines of context before each selected line"},                   \
      {"-C", "NUM", "print NUM lines of context before and after each selected line"},          \
      {"-r", nullptr, "read the files under each directory named (the working one without any)"}, \
      {"-R", nullptr, "the same, following symbolic links (a link back up the tree is not)"},   \
      {"--include", "GLOB", "with -r: read only the files whose name matches GLOB (repeatable)"}, \
      {"--exclude", "GLOB", "skip the files whose name matches GLOB (repeatable)"},             \
      {"--exclude-dir", "GLOB", "with -r: skip the directories whose name matches GLOB"},       \
      {"--hidden", nullptr, "with -r: read hidden files and directories too (.git among them)"}, \
      {"-j", "NUM",                                                                             \
       "read the files on NUM threads (default: the processors the process may use); the "      \
       "output is the same, in the files' order"},                                              \
      {"--color", "WHEN",                                                                       \
       "mark matches, names and numbers in colour (GREP_COLORS): never, always, or auto (on a " \
       "terminal)"}

constexpr Option kFindOptions[] = {
    {"-i", nullptr, "ignore the case of ASCII letters"},
    {"--map", "DEFINITION", "compare through the character map DEFINITION, such as \"A-Z=a-z\""},
    {"-w", nullptr, "whole words only: no letter, digit or _ (or member of --word-set) on either side"},
    {"--word-set", "SETDEF", "with -w: the characters words are made of, a set such as [a-zA-Z0-9_@#$]"},
    {"-x", nullptr, "whole lines only"},
    {"-o", nullptr, "print every occurrence in each selected line, one a line, instead of the line"},
    ZELSTR_LINE_OUTPUT_OPTIONS,
};
constexpr Conflict kFindConflicts[] = {{"-H", "-h"}, {"-l", "-L"}};
constexpr Option kSpanOptions[] = {
    {"--complement", nullptr, "the initial run of bytes that are not members"},
};
constexpr Option kReplaceOptions[] = {
    {"-i", nullptr, "ignore the case of ASCII letters"},
    {"--first", nullptr, "replace only the first occurrence of each line"},
    {"--last", nullptr, "replace only the last occurrence of each line"},
    {"--delimiters", "SETDEF",
     "replace only occurrences that no member of the set touches on either side"},
};
constexpr Conflict kReplaceConflicts[] = {
    {"--first", "--last"},
    {"--last", "-i"},
    {"--first", "--delimiters"},
    {"--last", "--delimiters"},
};
constexpr Option kTrimOptions[] = {
    {"--left", nullptr, "trim the beginning only"},
    {"--right", nullptr, "trim the end only"},
    {"--chars", "LIST", "trim the characters of LIST (each one as it is) instead of spaces"},
};
constexpr Conflict kTrimConflicts[] = {{"--left", "--right"}};
constexpr Option kEolOptions[] = {
    {"--lf", nullptr, "end every line with a line feed (LF)"},
    {"--crlf", nullptr, "end every line with a carriage return and a line feed (CR LF)"},
};
constexpr Conflict kEolConflicts[] = {{"--lf", "--crlf"}};
constexpr Option kSortOptions[] = {
    {"--order", "ORDER",
     "sort by the sort order ORDER: bytes, ascii-ci, cp1252-ci-ai, cp1252-ci-as or a "
     "definition such as \"b=B a=A\""},
    {"--locale", "LOCALE",
     "sort by the collator of LOCALE (such as de_DE, sv, or root), as the system collates"},
    {"--strength", "S",
     "the collator's strength: 1 base letters only, 2 accents too, 3 case too (default)"},
    {"-r", nullptr, "print the lines in reverse order"},
    {"-u", nullptr, "print only the first of each run of equal lines"},
};
constexpr Conflict kSortConflicts[] = {{"--order", "--locale"}, {"--order", "--strength"}};
constexpr Option kQuoteOptions[] = {
    {"-c", "CHAR", "the quote (default ')"},
};
constexpr Option kCmpOptions[] = {
    {"-i", nullptr, "ignore the case of ASCII letters"},
    {"-n", "COUNT", "compare at most COUNT bytes"},
};
constexpr Option kMapOptions[] = {
    {"--dump", nullptr, "print the characters the map changes instead of translating"},
};
constexpr Option kGrepOptions[] = {
    {"-F", nullptr, "the patterns are plain words, searched all at once as they are"},
    {"-E", nullptr, "the patterns are regular expressions of the library's engine (the default)"},
    {"-e", "PATTERN", "a pattern to search for (repeatable); every operand is then a file"},
    {"-f", "FILE", "the patterns to search for, one a line (repeatable; - for standard "
                   "input); every operand is then a file"},
    {"-i", nullptr, "ignore the case of ASCII letters"},
    {"-w", nullptr, "whole words only: no letter, digit or _ (or member of --word-set) on either side"},
    {"--word-set", "SETDEF", "with -w: the characters words are made of, a set such as [a-zA-Z0-9_@#$]"},
    {"-x", nullptr, "whole lines only"},
    {"-o", nullptr, "print every match of each selected line, one a line, instead of the line"},
    {"-g", "N", "print what group N of the pattern matched in every match, one a line"},
    ZELSTR_LINE_OUTPUT_OPTIONS,
    {"--code-only", nullptr,
     "match in SQL code only: comments and string literals read as blanks, quotes kept"},
    {"--tsql", nullptr, "with --code-only: T-SQL code (the default)"},
    {"--oracle", nullptr, "with --code-only: Oracle SQL and PL/SQL code"},
    {"--quoted-id", nullptr,
     "with --code-only: T-SQL text between double quotation marks is a name, not a literal"},
};
#undef ZELSTR_LINE_OUTPUT_OPTIONS
// The dialects of code, for the commands that read SQL code.
constexpr Conflict kCodeConflicts[] = {{"--tsql", "--oracle"}, {"--oracle", "--quoted-id"}};
constexpr Conflict kGrepConflicts[] = {{"--tsql", "--oracle"}, {"--oracle", "--quoted-id"},
                                       {"-F", "-g"},         {"-F", "-E"},
                                       {"-H", "-h"},         {"-l", "-L"}};
constexpr Option kLikeOptions[] = {
    {"-i", nullptr, "ignore the case of ASCII letters"},
    {"--escape", "CHAR", "the escape character: the character after it stands for itself"},
    {"-n", nullptr, "print each line's number first"},
    {"-c", nullptr, "print only the number of matching lines of each file"},
};
constexpr Option kMatchOptions[] = {
    {"-i", nullptr, "ignore the case of ASCII letters"},
    {"-n", nullptr, "print each line's number first"},
    {"-c", nullptr, "print only the number of matching lines of each file"},
};
constexpr Option kSubOptions[] = {
    {"--all", nullptr, "replace every match of each line, not only the first"},
};
constexpr Option kFindallOptions[] = {
    {"-f", "FILE",
     "count each word of FILE (one a line; repeatable; - for standard input) instead: a line "
     "per word, its count and the word; PATTERN is then a file"},
    {"-i", nullptr, "ignore the case of ASCII letters"},
    {"--no-overlap", nullptr, "skip occurrences that begin inside the one before"},
    {"--code-only", nullptr,
     "find in SQL code only: comments and string literals read as blanks, quotes kept"},
    {"--tsql", nullptr, "with --code-only: T-SQL code (the default)"},
    {"--oracle", nullptr, "with --code-only: Oracle SQL and PL/SQL code"},
    {"--quoted-id", nullptr,
     "with --code-only: T-SQL text between double quotation marks is a name, not a literal"},
};
constexpr Option kSqlcaseOptions[] = {
    {"--lower", nullptr, "lower case"},
    {"--upper", nullptr, "upper case"},
    {"--quoted-id", nullptr,
     "text between double quotation marks is a name (mapped), not a literal (QUOTED_IDENTIFIER "
     "ON)"},
};
constexpr Conflict kSqlcaseConflicts[] = {{"--lower", "--upper"}};
constexpr Option kReswordOptions[] = {
    {"--tsql", "VERSION", "a T-SQL version: 4, 6 to 17, or 2004 and 2006 to 2017"},
    {"--oracle", "VERSION",
     "an Oracle version: 102 to 105, 107 to 110, 120, 130, 140, 150 to 152, or 1160 to 1165"},
};
constexpr Conflict kReswordConflicts[] = {{"--tsql", "--oracle"}};
constexpr Option kSysnameOptions[] = {
    {"--kind", "KIND",
     "what the name is: 4 an ordinary name (default), 2 a database link, 8 a name that may "
     "begin with a digit"},
};

constexpr Option kTsqlnameOptions[] = {
    {"--source", nullptr, "convert system names to their source form instead"},
};
constexpr Option kQnameOptions[] = {
    {"--tsql", nullptr, "T-SQL names (the default): up to four parts"},
    {"--oracle", nullptr, "Oracle names: \"...\" delimits, @ starts a database link"},
    {"--quote", "CHARS",
     "the delimiters that count: '\"', '[' or both (default: both for T-SQL, '\"' for Oracle)"},
    {"--parts", nullptr, "print the parts (the default)"},
    {"--denormalize", nullptr, "print each T-SQL name in its shortest source form instead"},
};
constexpr Conflict kQnameConflicts[] = {
    {"--tsql", "--oracle"}, {"--oracle", "--denormalize"}, {"--parts", "--denormalize"}};
constexpr Option kHideOptions[] = {
    {"--tsql", nullptr, "T-SQL code (the default)"},
    {"--oracle", nullptr, "Oracle SQL and PL/SQL code"},
    {"--quoted-id", nullptr,
     "T-SQL text between double quotation marks is a name, not a literal (QUOTED_IDENTIFIER "
     "ON)"},
    {"--keep-strings", nullptr, "hide the comments only, not the string literals"},
    {"--names", nullptr, "hide the names in [...] or \"...\" too"},
    {"--commands", nullptr,
     "hide the command lines of sqlcmd and osql (GO, :setvar...) or of SQL*Plus (REM, SET, "
     "@file, /...) too"},
    {"--quotes", nullptr, "hide the quotes, brackets and prefixes (N, q) of what is hidden too"},
    {"--fill", "CHAR", "the character each hidden byte becomes (default: a space)"},
};

constexpr Command kCommands[] = {
    {"find",
     "[-i|--map DEFINITION] [-w [--word-set SETDEF]|-x] [-v] [-o] [-n] [-c|-l|-L|-q] [-m NUM] "
     "[-A NUM] [-B NUM] [-C NUM] [-H|-h] [-Z] [--label LABEL] [-s] [-a] [--color WHEN] "
     "[-r|-R [--include GLOB] [--exclude GLOB] [--exclude-dir GLOB] [--hidden]] [-j NUM] "
     "PATTERN [FILE...]",
     "print the lines that contain a string",
     "Prints each line of the files (or of standard input) that contains PATTERN,\n"
     "a plain string, compared byte by byte, without case with -i, or through a\n"
     "character map with --map.  With several files each line begins with its\n"
     "file's name.  The options of output are grep's, with the same meaning and\n"
     "output (see zelstr grep --help).\n",
     kFindOptions,
     {"printf 'SELECT a\\nFROM dbo.T\\n' | zelstr find -i -n from", "2:FROM dbo.T\n"},
     kLinesFound,
     run_find,
     kFindConflicts},
    {"span",
     "[--complement] SETDEF [FILE...]",
     "print the initial run of each line made of members of a set",
     "For each line of the files (or of standard input), prints the length of its\n"
     "initial run of bytes that are members of the set SETDEF, a tab, and the run.\n"
     "A set is written between [ and ] as single characters and ranges x-y, such\n"
     "as [a-zA-Z_0-9]; a ` takes the character after it as it is ([`-`]]).\n"
     "With --complement, the run of bytes that are not members.\n",
     kSpanOptions,
     {"printf 'sp_who2 x\\n2sp\\n' | zelstr span '[a-z_]'", "6\tsp_who\n0\t\n"},
     "0: a line began with a member; 1: none did",
     run_span},
    {"replace",
     "[-i] [--first|--last] [--delimiters SETDEF] FROM TO [FILE...]",
     "replace a string in each line",
     "Prints the files (or standard input) with FROM replaced by TO in each line:\n"
     "every occurrence, or only the first or the last one.  With --delimiters,\n"
     "only the occurrences that no member of the set SETDEF touches (a set is\n"
     "written as for span, such as [a-zA-Z_0-9]).\n",
     kReplaceOptions,
     {"printf 'select t.id from t\\n' | zelstr replace --delimiters '[a-z_.]' t tab",
      "select t.id from tab\n"},
     "0: a line changed; 1: none did",
     run_replace,
     kReplaceConflicts},
    {"trim",
     "[--left|--right] [--chars LIST] [FILE...]",
     "remove spaces (or other characters) around each line",
     "Prints each line of the files (or of standard input) without its leading and\n"
     "trailing spaces (tabs are kept), or the characters of LIST.\n",
     kTrimOptions,
     {"printf '  SELECT 1  \\n' | zelstr trim --left", "SELECT 1  \n"},
     "0: lines were printed; 1: the input was empty",
     run_trim,
     kTrimConflicts},
    {"eol",
     "--lf|--crlf [FILE...]",
     "write every line end as LF or as CR LF",
     "Prints the files (or standard input) with each line end written as a line\n"
     "feed (--lf) or as a carriage return and a line feed (--crlf).  A line ends at\n"
     "LF or at CR LF; a carriage return alone is not a line end and stays as it\n"
     "is.  A last line without an end is left without one.\n",
     kEolOptions,
     {"printf 'a\\nb\\n' | zelstr eol --crlf | tr '\\r' '~'", "a~\nb~\n"},
     "0: lines were printed; 1: the input was empty",
     run_eol,
     kEolConflicts},
    {"tree",
     "[FILE...]",
     "print \"parent child\" lines as an indented tree",
     "Reads lines of two names, a parent and its child (or one name, a node on\n"
     "its own), separated by blanks, from the files (or standard input) and prints\n"
     "the tree they make: a node a line, two more blanks for each level, each root\n"
     "first and each child under its parent in the order the lines give them.  A\n"
     "node that several parents name appears under each.  Blank lines and lines\n"
     "starting with # are skipped.  Pairs that form a cycle are refused.\n",
     {},
     {"printf 'main load\\nmain report\\nload read\\n' | zelstr tree",
      "main\n  load\n    read\n  report\n"},
     "0: a tree was printed; 1: the input held no name",
     run_tree},
    {"sort",
     "[--order ORDER|--locale LOCALE [--strength S]] [-r] [-u] [FILE...]",
     "sort lines by a sort order or a collator",
     "Prints the lines of the files (or of standard input) sorted by the sort order\n"
     "ORDER, or by the collator of LOCALE at strength S (text in code page 1252),\n"
     "byte order without either.  Lines that compare equal are ordered by their\n"
     "bytes; with -u they are equal, and only the first of them in the input is\n"
     "printed.  The ready orders: bytes; ascii-ci (ASCII letters without case);\n"
     "cp1252-ci-ai and cp1252-ci-as (code page 1252 without case, without or with\n"
     "accents).  A definition lists the characters in ascending order, a=b giving\n"
     "two one weight and a-z a range (see the library's sortorder.h).  Every line\n"
     "is printed with a line feed; a line ends at its first NUL byte.\n",
     kSortOptions,
     {"printf 'b\\nA\\na\\nB\\n' | zelstr sort --order ascii-ci", "A\na\nB\nb\n"},
     "0: lines were printed; 1: the input was empty",
     run_sort,
     kSortConflicts},
    {"quote",
     "[-c CHAR] [FILE...]",
     "frame each line with quotes",
     "Prints each line of the files (or of standard input) between two quotes.\n"
     "Quotes inside the line are left as they are.\n",
     kQuoteOptions,
     {"printf 'dbo.T\\n' | zelstr quote -c '\"'", "\"dbo.T\"\n"},
     "0: lines were printed; 1: the input was empty",
     run_quote},
    {"unquote",
     "[-c CHAR] [FILE...]",
     "remove the quotes framing each line",
     "Prints each line of the files (or of standard input) without the quote that\n"
     "opens and closes it; a line that is not framed so is printed as it is.\n",
     kQuoteOptions,
     {"printf \"'abc'\\nabc\\n\" | zelstr unquote", "abc\nabc\n"},
     "0: a line was unquoted; 1: none was",
     run_unquote},
    {"cmp",
     "[-i] [-n COUNT] A B",
     "compare two strings",
     "Prints -1, 0 or 1 as A sorts before, with or after B, byte by byte\n"
     "(unsigned).  An argument written (null) is passed as a NULL pointer, to see\n"
     "the warning it draws with -W.\n",
     kCmpOptions,
     {"zelstr cmp -i -n 3 SELx selY", "0\n"},
     "0: the strings are equal; 1: they differ",
     run_cmp},
    {"map",
     "[--dump] DEFINITION [FILE...]",
     "translate text through a character map",
     "Prints the files (or standard input) with each byte translated through the\n"
     "character map DEFINITION: elements separated by spaces, each SOURCE=TARGET,\n"
     "where the TARGET characters take the image of the SOURCE characters: a\n"
     "range s1-s2=t1-t2 (t1 to t2 become what s1 to s2 are) or a chain\n"
     "s=t1=t2... (t1, t2... become what s is).  \"a-z=A-Z\" turns A-Z into a-z\n"
     "(lower case), \"A-Z=a-z\" upper-cases, \"_=-\" turns - into _.\n",
     kMapOptions,
     {"printf 'SELECT 1\\n' | zelstr map 'a-z=A-Z'", "select 1\n"},
     "0: text was translated; 1: the input was empty",
     run_map},
    {"grep",
     "[-F|-E] [-i] [-w [--word-set SETDEF]|-x] [-v] [-o|-g N] [-n] [-c|-l|-L|-q] [-m NUM] "
     "[-A NUM] [-B NUM] [-C NUM] [-H|-h] [-Z] [--label LABEL] [-s] [-a] [--color WHEN] "
     "[-r|-R [--include GLOB] [--exclude GLOB] [--exclude-dir GLOB] [--hidden]] [-j NUM] "
     "[--code-only [--tsql|--oracle] [--quoted-id]] {PATTERN|-e PATTERN...|-f FILE...} [FILE...]",
     "print the lines that match a regular expression or hold a word",
     "Prints each line of the files (or of standard input) that matches PATTERN, a\n"
     "regular expression of the library's engine: alternation |, groups ( ), * + ?,\n"
     "bracket lists such as [[:alpha:]_].  With -o (or -g N), prints instead each\n"
     "match of the line in turn (or what group N matched in it); empty matches,\n"
     "and matches in which group N is empty or takes no part, print nothing.\n"
     "PATTERN may hold several patterns, one a line, or they come from -e and -f\n"
     "(every operand is then a file): a line matches when one of them does.\n"
     "With -F, the patterns are plain words, all searched at once, as grep -F\n"
     "does (an empty word is in every line); -o prints each occurrence, the\n"
     "leftmost first, then the longest at a place.  -i ignores the case of ASCII\n"
     "letters (the engine compiles each letter as both its cases); -w keeps only\n"
     "matches with no word character on either side (letters, digits and _, or\n"
     "the members of --word-set, such as [a-zA-Z0-9_@#$] for T-SQL names); -x\n"
     "only matches of the whole line.\n"
     "The options of output are GNU grep's, with its output byte for byte: -v,\n"
     "-c, -l, -L, -q, -m, -H, -h, -Z, --label, -A, -B, -C with \"--\" between\n"
     "groups of lines that do not follow on, and --color with grep's colours\n"
     "(GREP_COLORS: ms, mc, mt, sl, cx, rv, fn, ln, se, ne).  Exit status 2\n"
     "after an error, even when a line was found, unless -q found one.\n"
     "With -r, a directory stands for the files under it, read in the byte order\n"
     "of their names, on several threads (-j) with the output of one.\n"
     "With --code-only, each input is read whole and matched as hide shows it\n"
     "(comments and literals hidden; they may span lines), line by line, while\n"
     "the lines and matches printed are those of the input as written.\n",
     kGrepOptions,
     {"printf 'EXEC sp_who\\nSELECT 1\\n' | zelstr grep -g 1 'EXEC (sp_[a-z]+)'", "sp_who\n"},
     kLinesFound,
     run_grep,
     kGrepConflicts},
    {"like",
     "[-i] [--escape CHAR] [-n] [-c] PATTERN [FILE...]",
     "print the lines that are LIKE a SQL pattern",
     "Prints each line of the files (or of standard input) that PATTERN matches\n"
     "as a whole, by the rules of T-SQL's LIKE: % any run of characters, _ one\n"
     "character, [set] one character of the set, [^set] one not in it (x-y is a\n"
     "range).  With --escape, the character after CHAR stands for itself; a\n"
     "pattern that ends with CHAR is refused.  Blanks that end a line are\n"
     "ignored, as the server ignores them at the end of a varchar value; those\n"
     "of PATTERN count.\n",
     kLikeOptions,
     {"printf 'usp_Orders\\nuspOrders\\n' | zelstr like 'usp[_]%'", "usp_Orders\n"},
     kLinesFound,
     run_like},
    {"match",
     "[-i] [-n] [-c] PATTERN [FILE...]",
     "print the lines that match a wildcard pattern",
     "Prints each line of the files (or of standard input) that PATTERN matches\n"
     "as a whole: * any run of characters, ? one character, [set] one character\n"
     "of the set, [!set] or [^set] one not in it (x-y is a range).  There is no\n"
     "escape character: [*] matches a star.\n",
     kMatchOptions,
     {"printf 'orders.sql\\nreport.txt\\n' | zelstr match '*.[st]ql'", "orders.sql\n"},
     kLinesFound,
     run_match},
    {"sub",
     "[--all] PATTERN TEMPLATE [FILE...]",
     "replace the matches of a regular expression in each line",
     "Prints the files (or standard input) with the first match of PATTERN in each\n"
     "line (every match with --all, left to right) replaced by TEMPLATE.  PATTERN\n"
     "is a regular expression as for grep.  In TEMPLATE, & and \\0 stand for the\n"
     "whole match, \\1 to \\9 for what a group matched (nothing for a group that\n"
     "took no part), \\& and \\\\ for & and \\; every other character for itself.\n"
     "After an empty match the search goes on one character further.\n",
     kSubOptions,
     {"printf 'exec dbo.usp_a; exec dbo.usp_b\\n' | zelstr sub --all 'dbo\\.([a-z_]+)' "
      "'[dbo].[\\1]'",
      "exec [dbo].[usp_a]; exec [dbo].[usp_b]\n"},
     "0: a line changed; 1: none did",
     run_sub},
    {"findall",
     "[-f FILE]... [-i] [--no-overlap] [--code-only [--tsql|--oracle] [--quoted-id]] "
     "PATTERN [FILE...]",
     "print the offset of every occurrence of a string, or count each of many",
     "Prints the byte offset (from 0) of every occurrence of PATTERN in each file\n"
     "(or in standard input), overlapping ones included, one a line.  With -f, the\n"
     "words of FILE (one a line) are all searched at once instead, and each\n"
     "input gets a line per word: the number of its occurrences, a tab and the\n"
     "word (with --no-overlap, an occurrence inside a longer one before it, or\n"
     "of a shorter word at the same place, is not counted).  With --code-only,\n"
     "only the occurrences in SQL code: each input is searched as hide shows it\n"
     "(comments and literals hidden), at the same offsets.\n",
     kFindallOptions,
     {"printf 'aaaa' | zelstr findall aa", "0\n1\n2\n"},
     "0: an occurrence was found; 1: none was",
     run_findall,
     kCodeConflicts},
    {"sqlcase",
     "--lower|--upper [--quoted-id] [FILE...]",
     "put T-SQL code in one case, keeping literals and comments",
     "Prints the T-SQL code of the files (or of standard input) in lower or upper\n"
     "case.  String literals ('...', N'...', and \"...\" unless --quoted-id) and\n"
     "comments (-- and nested /* */) are kept as they are; names in [...] are\n"
     "mapped.  A literal or comment that is not closed is kept as it is to the\n"
     "end, a name that is not closed is mapped to the end; either is printed,\n"
     "then reported as an error.\n",
     kSqlcaseOptions,
     {"printf \"SELECT [Name], N'Keep' FROM T -- As Is\\n\" | zelstr sqlcase --lower",
      "select [name], N'Keep' from t -- As Is\n"},
     "0: code was printed; 1: the input was empty",
     run_sqlcase,
     kSqlcaseConflicts},
    {"resword",
     "--tsql VERSION|--oracle VERSION [WORD...]",
     "tell whether words are reserved in a server version",
     "Prints, for each WORD (or each line of standard input), whether it is a\n"
     "reserved word of the T-SQL or Oracle server VERSION, case-blind.\n",
     kReswordOptions,
     {"zelstr resword --tsql 2016 PIVOT name", "PIVOT: reserved\nname: not reserved\n"},
     "0: a word was reserved; 1: none was",
     run_resword,
     kReswordConflicts},
    {"sysname",
     "[--kind KIND] [NAME...]",
     "convert PL/SQL names to their system form",
     "Prints the system form of each PL/SQL source NAME (or each line of standard\n"
     "input): a name in \"...\" loses its quotation marks (doubled ones become\n"
     "single), a regular name is upper-cased and must be valid.\n",
     kSysnameOptions,
     {"zelstr sysname emp '\"Mixed Case\"'", "EMP\nMixed Case\n"},
     "0: every name was converted; 1: one was not, or there was none",
     run_sysname},
    {"plsqlname",
     "[NAME...]",
     "convert system names to their PL/SQL source form",
     "Prints the PL/SQL source form of each system NAME (or each line of standard\n"
     "input): delimited by quotation marks when it is not a regular upper-case\n"
     "name or is a reserved word.\n",
     {},
     {"zelstr plsqlname EMP 'Mixed Case' VARRAY", "EMP\n\"Mixed Case\"\n\"VARRAY\"\n"},
     "0: every name was converted; 1: one was not, or there was none",
     run_plsqlname},
    {"tsqlname",
     "[--source] [NAME...]",
     "convert T-SQL names between source form and system form",
     "Prints the system form of each T-SQL source NAME (or each line of standard\n"
     "input): a name in [...] or \"...\" loses its delimiters (doubled closing\n"
     "marks become single), a regular name stays as written and must be valid.\n"
     "With --source, prints the source form of each system NAME: delimited by\n"
     "[...] when it is not regular or is a reserved word.  The settings are those\n"
     "of SQL Server 2016 with quoted identifiers on; names have up to 128\n"
     "characters.\n",
     kTsqlnameOptions,
     {"zelstr tsqlname '[Order Details]' dbo", "Order Details\ndbo\n"},
     "0: every name was converted; 1: one was not, or there was none",
     run_tsqlname},
    {"qname",
     "[--tsql|--oracle] [--quote CHARS] [--parts|--denormalize] [FILE...]",
     "split qualified names into their parts",
     "Reads one qualified name a line from the files (or standard input) and\n"
     "prints its parts in system form, tab-separated, empty parts empty:\n"
     "server.database.schema.object for T-SQL (up to four parts; [...] and\n"
     "\"...\" delimit), any number of parts and a last @link part for Oracle.\n"
     "--quote limits the delimiters to those given.  With --denormalize, prints\n"
     "each T-SQL name with every part in its shortest source form.  A line that\n"
     "is not a name gets a message naming the line.\n",
     kQnameOptions,
     {"printf '[Sales].dbo..\"Order Details\"\\n' | zelstr qname", "Sales\tdbo\t\tOrder Details\n"},
     "0: every line was a name; 1: one was not, or there was none",
     run_qname,
     kQnameConflicts},
    {"hide",
     "[--tsql|--oracle] [--quoted-id] [--keep-strings] [--names] [--commands] [--quotes] "
     "[--fill CHAR] [FILE...]",
     "hide the comments and literals of SQL code",
     "Prints the SQL code of the files (or of standard input) with its comments\n"
     "and the contents of its string literals hidden: each of their bytes becomes\n"
     "a space (or CHAR), line ends excepted, so that every byte keeps its offset\n"
     "and every line its number.  T-SQL: -- and nested /* */ comments, '...',\n"
     "N'...' and (unless --quoted-id) \"...\" literals, [...] names.  Oracle: -- and\n"
     "/* */ comments, '...', N'...' and q'[...]' literals, \"...\" names.  Each\n"
     "input is read whole: comments and literals may span lines.  A literal,\n"
     "comment or name that is not closed runs to the end; it is printed so, then\n"
     "reported as an error.\n",
     kHideOptions,
     {"printf \"SELECT 'a--b' -- note\\n\" | zelstr hide --fill .", "SELECT '....' .......\n"},
     "0: something was hidden; 1: nothing was",
     run_hide,
     kCodeConflicts},
    {"demo",
     "",
     "run the built-in example",
     "Runs a short tour of the library's calls on SQL-flavoured text and prints\n"
     "each call with its result, and the warnings that bad arguments draw.\n",
     {},
     {"zelstr demo | grep -c warning", "4\n"},
     "0: the tour ran",
     run_demo},
};

}  // namespace

std::span<Command const> commands() { return kCommands; }

Command const* find_command(char const* name) {
  for (Command const& c : kCommands) {
    if (std::strcmp(c.name, name) == 0) return &c;
  }
  return nullptr;
}

}  // namespace zelstr::tool
