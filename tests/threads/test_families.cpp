// Every family on eight threads at once.  Each thread runs a seeded
// sequence of calls on inputs of its own and writes what it saw into a
// transcript; the same sequence run for each thread in turn, on one thread,
// gives the reference.  State a call leaves for the next (remembered
// patterns, result buffers, arenas, extraction walks, caches, error text,
// the backslash switch, look-up caches) shows in the transcript when
// another thread disturbs it.  Built with ThreadSanitizer by the `tsan`
// preset, where any race fails the run.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdarg>
#include <cstring>
#include <random>
#include <string>
#include <thread>
#include <type_traits>
#include <vector>

#include "errsvc/errsvc.h"
#include "support/library_text.h"
#include "zelstr/zelstr.h"

namespace {

using zelstr::test::cat;
using zelstr::test::vprint;

constexpr int kThreads = 8;
constexpr int kRounds = 24;

// One connection object per thread: the settings are keyed by its address.
struct Connection {
  int unused;
};
Connection g_connections[kThreads];

class Transcript {
 public:
  template <class T>
  requires std::is_arithmetic_v<T> Transcript& operator<<(T const& value) {
    m_text += std::to_string(value);
    m_text += ' ';
    return *this;
  }
  Transcript& operator<<(char const* text) {
    m_text += text == nullptr ? "(null)" : text;
    m_text += '|';
    return *this;
  }
  Transcript& operator<<(std::string const& text) { return *this << text.c_str(); }
  std::string const& text() const { return m_text; }

 private:
  std::string m_text;
};

std::string one_byte(int c) { return std::string(1, static_cast<char>(c)); }

long offset(char const* base, char const* p) { return p == nullptr ? -1 : p - base; }

std::string word(std::mt19937& rng, int length) {
  std::string w;
  for (int i = 0; i < length; ++i) w += static_cast<char>('a' + rng() % 6);
  return w;
}

// What one thread computes in one round.
struct Round {
  int thread;
  std::mt19937 rng;
  std::string pattern;  // this thread's own, found at a known place
  std::string text;     // 4 KB
  Transcript& out;

  Round(int t, int round, Transcript& transcript)
      : thread(t), rng(static_cast<unsigned>(t * 1000 + round)), out(transcript) {
    pattern = cat({"x", std::to_string(t), word(rng, 3 + t), "z"});
    text = word(rng, 4096);
    text.replace(1000 + 37 * t, pattern.size(), pattern);
    text.replace(3000 - 11 * t, pattern.size(), pattern);
  }

  void searches() {
    char const* const s = text.c_str();
    std::string upper = pattern;
    std::transform(upper.begin(), upper.end(), upper.begin(), ::toupper);
    std::string const delimiters = one_byte('a' + thread % 6);
    out << offset(s, _zstrstr(s, pattern.c_str())) << offset(s, _zstristr(s, upper.c_str()))
        << offset(s, _zstrrstr(s, pattern.c_str())) << _zstrstrcnt(s, pattern.c_str())
        << offset(s, _zstrstr1(s, pattern.c_str(), delimiters.c_str()))
        << offset(s, _zstristr1(s, upper.c_str(), delimiters.c_str()));
  }

  void replacements() {
    std::vector<char> buffer(text.size() * 2 + 64);
    std::strcpy(buffer.data(), text.c_str());
    std::string const by = cat({"<", std::to_string(thread), ">"});
    _zstrNreplace(buffer.data(), pattern.c_str(), by.c_str(), buffer.size() - 1);
    out << std::string(buffer.data());
    std::strcpy(buffer.data(), cat({"keep(", pattern, "(drop)", ")tail"}).c_str());
    out << _zstrpurge(buffer.data(), const_cast<char*>("("), const_cast<char*>(")"), thread % 2);
  }

  void framed_text() {
    std::string const w = word(rng, 5 + thread);
    char const* const quoted = _zstrquoted(w.c_str(), '\'');
    char const* const encapsulated = _zstrencapsulated(w.c_str(), '[', ']');
    char const* const unquoted = _zstrunquoted(quoted, '\'', nullptr);
    std::string framed = cat({"{", w, "}"});
    char const* const unencapsulated = _zstrunencapsulated(framed.data(), '{', '}');
    // Each result stays valid until the next call of its own function.
    out << quoted << encapsulated << unquoted << unencapsulated;
    std::string pieces;
    for (int i = 0; i < 4 + thread; ++i) pieces += cat({"<", word(rng, 1 + i % 4), ">.."});
    std::string copy = pieces;
    for (char* p = _zstrextract(pieces.data(), "<", ">", 1); p != nullptr;
         p = _zstrextract(nullptr, "<", ">", 1)) {
      out << p << _zstriextract(copy.data(), "<", ">", 1);
      _zstriextract(nullptr, "<", ">", 0);
    }
    _zstrextract(nullptr, "<", ">", 0);
  }

  void scratch() {
    std::string const w = word(rng, 3 + thread);
    char const* const clone = _zstrclone(w.c_str(), 4);
    char const* const printed = _zstrprintf("%s-%d", w.c_str(), thread);
    char const* const vprinted = vprint("%d:%s", thread, w.c_str());
    char const* const upper = _zstrupperized(w.c_str());
    out << clone << printed << vprinted << upper;
  }

  void sets() {
    std::string const setdef = cat({"[a-", one_byte('a' + thread % 6), "]"});
    std::string const w = word(rng, 12);
    out << _zstrspnex(w.c_str(), setdef.c_str())
        << offset(w.c_str(), _zstrcposex(w.c_str(), setdef.c_str()));
  }

  void maps() {
    std::string const definition =
        cat({"a-", one_byte('a' + thread % 6), "=", one_byte('A' + thread % 6)});
    void* const map = _zmapdefine(definition.c_str());
    out << _zmapdump2string(map, 1);
    out << offset(text.c_str(), _zmapstrstr(map, text.c_str(), pattern.c_str()));
    _zmapfree(map);
  }

  void growing_and_findall() {
    CGrwStr grown;
    for (int i = 0; i < 3 + thread; ++i) grown.strcatf("%d,%s;", i, pattern.c_str());
    out << grown.gethos();
    CFindAllStr all(text.c_str(), pattern.c_str(), thread % 2);
    for (char* p = all.FindByXOR(1); p != nullptr; p = all.FindByXOR(1))
      out << offset(text.c_str(), p);
  }

  void regexes() {
    std::string const p = cat({"(", pattern.substr(0, 2), ")([a-f]+)z"});
    Tcl_RegExp_* const own = Tcl_RegExpCompile(p.c_str());
    out << Tcl_RegExpMatch(text.c_str(), own);
    char const* start = nullptr;
    char const* end = nullptr;
    Tcl_RegExpRange(own, 2, &start, &end);
    out << offset(text.c_str(), start) << offset(text.c_str(), end);
    Tcl_DeleteInterp(own);

    Tcl_Interp* interp = nullptr;
    Tcl_RegExp_* cached = nullptr;
    out << Tcl_CompileRE(p.c_str(), interp, cached, 0);
    out << Tcl_RegExpMatch(text.c_str(), cached);
    Tcl_RegExpRange(cached, 1, &start, &end);
    out << offset(text.c_str(), start);
    out << Tcl_MatchRE(text.c_str(), cat({pattern, "$|^", pattern}).c_str());

    // One pattern every thread compiles: each holds its own results.
    Tcl_RegExp_* common = nullptr;
    out << Tcl_CompileRE("([a-f]+)x([0-9])", interp, common, 0)
        << Tcl_RegExpMatch(text.c_str(), common);
    Tcl_RegExpRange(common, 2, &start, &end);
    out << offset(text.c_str(), start) << Tcl_MatchRE(text.c_str(), "[a-f]x[0-7][a-f]+z");

    // The error text and the switch are the thread's own.
    Tcl_RegExp_* const bad = Tcl_RegExpCompile(thread % 2 == 0 ? "a(" : "*a");
    out << (bad == nullptr) << Tcl_GetRegError();
    int previous = 0;
    Tcl_SetWhetherBackslashesInIntervalsAreHandled(thread % 2, previous);
    Tcl_RegExp_* const bracket = Tcl_RegExpCompile("^[\\d]$");
    out << Tcl_RegExpMatch("\\", bracket) << Tcl_GetIfBackslashesInIntervalsAreHandled();
    Tcl_DeleteInterp(bracket);
    Tcl_SetWhetherBackslashesInIntervalsAreHandled(previous, previous);
  }

  void dialects() {
    void const* const connection = &g_connections[thread];
    int const version = thread % 2 == 0 ? 8 : 15;
    std::string const first = cat({"[a-", one_byte('c' + thread), "_]"});
    out << _ztsqlsetdefaults(connection, version, 100 + thread, 1, thread % 2, '[', first.c_str());
    int v = 0, max_name = 0, quoted = 0, bracketed = 0;
    char quote = 0;
    char const* allowed = nullptr;
    out << _ztsqlgetdefaults(connection, &v, &max_name, &quoted, &bracketed, &quote, &allowed) << v
        << max_name << quoted << bracketed << static_cast<int>(quote) << allowed;
    char* first_table = nullptr;
    char* other_table = nullptr;
    out << _zstr_build_tsql_allowed_charsets(first_table, other_table, connection);
    std::string row;
    for (int c = 'a'; c <= 'z'; ++c) row += first_table[c] != 0 ? '1' : '0';
    out << row << _zistsqlresword("MERGE", version) << _zistsqlresword(pattern.c_str(), version);
    std::string name = cat({pattern, "\"q"});
    out << _zplsql2sysname(name.data(), 4) << name;
  }

  // Wildcards (each worker's cache is the thread's own), substitution and
  // code hiding.
  void patterns() {
    std::string const like = cat({"%", pattern.substr(1), "%"});
    std::string const glob = cat({"*", pattern.substr(0, 2), "?", "*"});
    out << _zstrlike(text.c_str(), like.c_str()) << _zstrimatch(text.c_str(), glob.c_str())
        << _zstrmatch(pattern.c_str(), cat({pattern.substr(0, 1), "*"}).c_str());
    char* replaced = _zstrregsub(text.c_str(), pattern.c_str(), "<&>", 1);
    out << std::string(replaced).substr(990, 80);
    _zstrdupfree(replaced);
    std::string code = cat({"select '", pattern, "' -- ", pattern, "\n/* x */ from t"});
    HideCodeParts parts;
    out << _ztsqlhidenonsqlcode(code.data(), ZEAL_HIDE_DEFAULT) << code
        << parts.HidePlSql(code.c_str(), ZEAL_HIDE_COMMENTS);
  }

  // A scanner over a growing string that grows between two scans, with a
  // set definition of the thread's own.
  void scanning() {
    CGrwStr settings(8);
    settings = cat({"name = [", pattern, "] size=", std::to_string(thread), "\n"}).c_str();
    CStrScanner sc(settings);
    std::string const keys = cat({"[a-", one_byte('n' + thread), "]"});
    char key[16];
    char name[64];
    int size = -1;
    out << sc.Scan("%w = %N %w=%d", keys.c_str(), key, name, "[a-z]", key, &size) << key << name
        << size;
    settings += "a = 'it''s' ";
    out << sc.Scan(" %*w = %q", keys.c_str(), name) << name << sc.GetLine() << sc.GetColumn();
  }

  // Two warnings a round, with texts of their own.
  void warnings() {
    _zstrquoted(nullptr, '\'');
    _zstrunencapsulated(nullptr, '[', ']');
  }

  // One collator-aware helper, opened by the first round, shared by all.
  // (It searches a piece of the text around the pattern: the system's
  // search under Wine is slow on long texts.)
  void collation() {
    static ZealStrHelper const shared("de", ZealStrHelper::secondary);
    std::string const piece = text.substr(980 + 37 * static_cast<std::size_t>(thread), 64);
    char const* const s = piece.c_str();
    std::string const a = word(rng, 6);
    std::string const b = word(rng, 6);
    std::string upper = pattern;
    shared.upper(upper.data());
    char const* words[] = {a.c_str(), b.c_str(), pattern.c_str(), upper.c_str()};
    shared.sort(words, 4);
    out << shared.compare(a.c_str(), b.c_str()) << shared.ncompare(pattern.c_str(), a.c_str(), 3)
        << offset(s, shared.search(s, pattern.c_str()))
        << offset(s, shared.isearch(s, upper.c_str())) << upper << words[0] << words[1] << words[2]
        << words[3];
  }

  void run() {
    searches();
    collation();
    replacements();
    framed_text();
    scratch();
    sets();
    maps();
    growing_and_findall();
    regexes();
    dialects();
    patterns();
    scanning();
    warnings();
  }
};

std::string transcript_of(int thread) {
  Transcript out;
  for (int round = 0; round < kRounds; ++round) Round(thread, round, out).run();
  return out.text();
}

std::vector<std::string> texts_of(std::vector<errsvc::Record> const& records) {
  std::vector<std::string> texts;
  for (auto const& r : records) texts.push_back(cat({r.text, " @", r.function}));
  std::sort(texts.begin(), texts.end());
  return texts;
}

TEST(Families, EightThreadsGetTheResultsOfOne) {
  errsvc::clear();
  std::vector<std::string> reference;
  for (int t = 0; t < kThreads; ++t) reference.push_back(transcript_of(t));
  std::vector<std::string> const reference_warnings = texts_of(errsvc::records());
  ASSERT_GE(reference_warnings.size(), static_cast<std::size_t>(kThreads * kRounds * 2));
  errsvc::clear();

  std::vector<std::string> seen(kThreads);
  std::vector<std::thread> threads;
  for (int t = 0; t < kThreads; ++t)
    threads.emplace_back([&seen, t] { seen[t] = transcript_of(t); });
  for (auto& th : threads) th.join();

  for (int t = 0; t < kThreads; ++t) EXPECT_EQ(seen[t], reference[t]) << "thread " << t;
  // No warning lost, none mixed with another.
  EXPECT_EQ(texts_of(errsvc::records()), reference_warnings);
  errsvc::clear();
}

}  // namespace
