// The SQL functions on real scripts: the shared corpus of T-SQL and Oracle
// scripts, read where it lies.
//
// Mapping T-SQL code is checked against an independent tokenizer, Python's
// sqlparse, which sql_tokens.py runs; the reserved-word tests against sets
// built here from the word lists; the PL/SQL name conversions against the
// naming rules written out below.
#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <map>
#include <memory>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "errsvc/errsvc.h"
#include "sql/reserved_sets.h"
#include "zelstr/zelstr.h"

namespace {

namespace fs = std::filesystem;

struct Script {
  std::string path, text;
};

// The scripts of one folder of the corpus, by name.  A file holding NUL
// bytes (the UTF-16 one) is left out: the functions take C strings.
std::vector<Script> corpus(char const* folder) {
  char const* const dir = std::getenv("ZELSTR_CORPUS_DIR");
  fs::path const root = fs::path(dir != nullptr ? dir : ZELSTR_SHARED_DIR "/corpus") / folder;
  std::vector<Script> scripts;
  for (auto const& entry : fs::directory_iterator(root)) {
    std::ifstream in(entry.path(), std::ios::binary);
    std::string text{std::istreambuf_iterator<char>(in), {}};
    if (text.find('\0') == std::string::npos) scripts.push_back({entry.path().string(), text});
  }
  std::sort(scripts.begin(), scripts.end(), [](auto& a, auto& b) { return a.path < b.path; });
  return scripts;
}

std::string upper(std::string s) {
  for (char& c : s) c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
  return s;
}

// --- Mapping T-SQL code ---------------------------------------------------

struct Span {
  bool comment;
  std::size_t offset, length;
};

// Runs sql_tokens.py on the scripts: the literals and comments of each.
// python3-sqlparse is a Debian package, so the script runs under Debian's
// interpreter; a missing interpreter or module fails the test.
//
// Where sqlparse reads T-SQL otherwise: it ends a block comment at its first
// "*/" (T-SQL nests them) and takes "# " as opening a line comment.  The
// corpus has neither outside literals and comments; a script that had one
// would show as a difference below.  Backslashes: see sql_tokens.py.
std::vector<std::vector<Span>> sqlparse_spans(std::vector<Script> const& scripts) {
  std::string command = "/usr/bin/python3 '" ZELSTR_SQL_TOKENS_SCRIPT "'";
  for (Script const& s : scripts) command += " '" + s.path + "'";
  FILE* const pipe = popen(command.c_str(), "r");
  if (pipe == nullptr) ADD_FAILURE() << "cannot run " << command;
  std::string out;
  char buffer[65536];
  for (std::size_t n; pipe != nullptr && (n = std::fread(buffer, 1, sizeof buffer, pipe)) > 0;) {
    out.append(buffer, n);
  }
  EXPECT_EQ(pipe != nullptr ? pclose(pipe) : -1, 0) << "sql_tokens.py failed (python3-sqlparse?)";
  std::vector<std::vector<Span>> spans;
  std::istringstream lines(out);
  std::string kind;
  for (std::size_t offset, length; lines >> kind >> offset;) {
    if (kind == "file") {
      EXPECT_EQ(offset, scripts.at(spans.size()).text.size());
      spans.emplace_back();
    } else if (!spans.empty() && lines >> length) {
      spans.back().push_back({kind == "comment", offset, length});
    }
  }
  EXPECT_EQ(spans.size(), scripts.size());
  return spans;
}

// Characters that continue a word, so that an N or U before them does not
// begin one.
bool in_word(std::string const& s, std::size_t i) {
  unsigned char const c = static_cast<unsigned char>(s[i]);
  return std::isalnum(c) || c == '@' || c == '#' || c == '_' || c == '$' || c >= 0x80;
}

// The code lower-cased, except the comments and the kept literals (with
// quotedId non-zero, "..." is a name and lower-cased too) and the N of N'...'
// and the U of U&'...' that begin a word.  Counts the prefixes kept.
std::string expected_mapping(std::string const& code, std::vector<Span> const& spans, int quotedId,
                             int& prefixes) {
  std::string expected = code;
  for (char& c : expected) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  for (Span const& s : spans) {
    if (!s.comment && quotedId != 0 && code[s.offset] == '"') continue;
    expected.replace(s.offset, s.length, code, s.offset, s.length);
    if (s.comment) continue;
    std::size_t const o = s.offset;
    if (o >= 1 && code[o - 1] == 'N' && (o == 1 || !in_word(code, o - 2))) {
      expected[o - 1] = 'N';
      ++prefixes;
    }
    if (o >= 2 && code.compare(o - 2, 2, "U&") == 0 && (o == 2 || !in_word(code, o - 3))) {
      expected[o - 2] = 'U';
      ++prefixes;
    }
  }
  return expected;
}

TEST(TsqlCorpus, MappingLowersCodeAndKeepsLiteralsAndComments) {
  std::vector<Script> const scripts = corpus("tsql");
  ASSERT_GT(scripts.size(), 50u);
  std::vector<std::vector<Span>> const spans = sqlparse_spans(scripts);
  ASSERT_EQ(spans.size(), scripts.size());
  void* const lower = _zmapdefine("a-z=A-Z");
  for (int quotedId : {0, 1}) {
    int prefixes = 0;
    for (std::size_t f = 0; f < scripts.size(); ++f) {
      std::string const& code = scripts[f].text;
      std::string mapped = code;
      _zmaptsqlapply(lower, mapped.data(), quotedId);
      std::string const expected = expected_mapping(code, spans[f], quotedId, prefixes);
      auto const e = std::mismatch(expected.begin(), expected.end(), mapped.begin()).first;
      if (e == expected.end()) continue;
      std::size_t const at = static_cast<std::size_t>(e - expected.begin());
      std::size_t const from = at < 40 ? 0 : at - 40;
      ADD_FAILURE() << scripts[f].path << " (quotedId " << quotedId << "), line "
                    << std::count(code.begin(), code.begin() + at, '\n') + 1 << ", byte " << at
                    << ":\n  expected: " << testing::PrintToString(expected.substr(from, 80))
                    << "\n  mapped:   " << testing::PrintToString(mapped.substr(from, 80));
    }
    // The corpus has thousands of N'...' literals: the prefix rule was used.
    EXPECT_GT(prefixes, 1000) << "quotedId " << quotedId;
  }
  EXPECT_TRUE(_zmapfree(lower));
}

// --- Reserved words ---------------------------------------------------------

using zelstr::test::oracle_sets;
using zelstr::test::tsql_sets;
using zelstr::test::Words;

// Occurrences of each word ([A-Za-z][A-Za-z0-9_]*, spelt as in the text).
std::map<std::string, long> corpus_words(char const* folder) {
  std::map<std::string, long> words;
  for (Script const& s : corpus(folder)) {
    std::string const& t = s.text;
    for (std::size_t i = 0; i < t.size();) {
      std::size_t j = i;
      while (j < t.size() && (std::isalnum(static_cast<unsigned char>(t[j])) || t[j] == '_')) ++j;
      if (j > i && std::isalpha(static_cast<unsigned char>(t[i]))) ++words[t.substr(i, j - i)];
      i = j > i ? j : i + 1;
    }
  }
  return words;
}

// Per version, each word of a corpus folder is reserved for `is_reserved`
// exactly when the version's set holds it; the words they disagree on are
// named.  Reserved words occur by the thousand in every handled version; an
// unhandled one answers 0 with one warning per call.
void check_words(char const* folder, int (*is_reserved)(char const*, int),
                 std::map<int, Words> const& sets) {
  std::map<std::string, long> const words = corpus_words(folder);
  ASSERT_GT(words.size(), 1000u);
  for (auto const& [version, set] : sets) {
    errsvc::clear();
    long occurrences = 0;
    std::string disagreements;
    for (auto const& [word, count] : words) {
      bool const listed = set.count(upper(word)) != 0;
      if (is_reserved(word.c_str(), version) != int{listed}) disagreements += " " + word;
      occurrences += listed ? count : 0;
    }
    EXPECT_EQ(disagreements, "") << "version " << version;
    EXPECT_EQ(errsvc::records().size(), set.empty() ? words.size() : 0u) << "version " << version;
    EXPECT_TRUE(set.empty() || occurrences > 1000) << "version " << version;
  }
}

TEST(ReservedWords, TsqlCorpusWordsMatchTheLists) {
  check_words("tsql", _zistsqlresword, tsql_sets());
}

TEST(ReservedWords, PlsqlCorpusWordsMatchTheLists) {
  check_words("plsql", _zisosqlresword, oracle_sets());
}

// --- PL/SQL names -----------------------------------------------------------

struct LibraryString {
  void operator()(char* p) const { _zstrdupfree(p); }
};
using Owned = std::unique_ptr<char, LibraryString>;

std::string text_of(Owned const& p) { return p ? std::string(p.get()) : "<null>"; }

// The names of the PL/SQL corpus in source form: words (an ASCII letter,
// then letters, digits, "_", "$", "#" and bytes from 0x80, which make a
// name the default tables refuse) and non-empty "..." names on one line.
std::set<std::string> plsql_names() {
  auto const in_name = [](unsigned char c) {
    return std::isalnum(c) || c == '_' || c == '$' || c == '#' || c >= 0x80;
  };
  std::set<std::string> names;
  for (Script const& s : corpus("plsql")) {
    std::string const& t = s.text;
    for (std::size_t i = 0, j; i < t.size(); i = std::max(j, i + 1)) {
      j = i + 1;
      if (t[i] == '"') {
        while (j < t.size() && t[j] != '\n' && (t[j] != '"' || t.compare(j, 2, "\"\"") == 0)) {
          j += t[j] == '"' ? 2 : 1;
        }
        if (j < t.size() && t[j] == '"' && j > i + 1) names.insert(t.substr(i, ++j - i));
      } else if (std::isalpha(static_cast<unsigned char>(t[i]))) {
        while (j < t.size() && in_name(static_cast<unsigned char>(t[j]))) ++j;
        names.insert(t.substr(i, j - i));
      }
    }
  }
  return names;
}

bool regular_system_name(std::string const& name) {
  return std::isupper(static_cast<unsigned char>(name[0])) &&
         name.find_first_not_of("0123456789$_#ABCDEFGHIJKLMNOPQRSTUVWXYZ") == std::string::npos;
}

// Source form to system form by the naming rules: a "..." name loses its
// marks and undoubles the inner ones; a word is upper-cased and must then
// be regular and shorter than 31 characters (the default limit).
std::string system_form(std::string const& name) {
  if (name[0] != '"') {
    return name.size() < 31 && regular_system_name(upper(name)) ? upper(name) : "<null>";
  }
  std::string out;
  for (std::size_t i = 1; i + 1 < name.size(); ++i) {
    out += name[i];
    if (name[i] == '"') ++i;
  }
  return out;
}

// System form to source form: a name that is not regular or is reserved in
// the default version 152 is quoted, its quotation marks doubled.
std::string source_form(std::string const& name, Words const& reserved) {
  if (regular_system_name(name) && reserved.count(name) == 0) return name;
  std::string out = "\"";
  for (char c : name) out += c == '"' ? "\"\"" : std::string(1, c);
  return out + "\"";
}

// Both conversions give exactly what the rules give, and from a system
// name, source form and back is the identity.  Each way a name can go
// (word or "...", coming back bare or quoted) is met in the corpus.
TEST(PlsqlCorpus, NamesConvertAndComeBack) {
  Words const reserved = oracle_sets().at(152);
  std::set<std::string> const names = plsql_names();
  ASSERT_GT(names.size(), 1000u);
  std::map<std::string, int> ways;
  for (std::string const& name : names) {
    Owned const system(_zplsql2sysname(name.c_str(), 4));
    ASSERT_EQ(text_of(system), system_form(name)) << name;
    if (!system) {
      ++ways["word refused"];
      continue;
    }
    std::string const sys = system.get();
    ++ways[std::string(name[0] == '"' ? "\"...\"" : "word") +
           (source_form(sys, reserved)[0] == '"' ? " to quoted" : " to bare")];
    // No corpus name holds a quotation mark: a copy with one added is tried.
    for (std::string const& from : {sys, sys.substr(0, 1) + '"' + sys.substr(1)}) {
      Owned const source(_zsysname2plsql(from.c_str()));
      ASSERT_EQ(text_of(source), source_form(from, reserved)) << name;
      Owned const again(_zplsql2sysname(static_cast<char const*>(source.get()), 4));
      EXPECT_EQ(text_of(again), from) << name;
    }
  }
  for (char const* way :
       {"word refused", "word to bare", "word to quoted", "\"...\" to bare", "\"...\" to quoted"}) {
    EXPECT_GT(ways[way], 0) << way;
  }
}

}  // namespace
