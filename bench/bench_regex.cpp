// The regular-expression engine beside PCRE2 (its interpreter and its JIT),
// RE2, std::regex (extended syntax) and glibc's POSIX regcomp/regexec, on
// patterns all of them read the same way, over the lines of the SQL corpus.
//   match.NAME    every line of the corpus searched once (is there a match?)
//   compile.NAME  the pattern compiled (and freed)
// The first implementation of each group is the library's; the ratio table
// after the usual one divides its time by each peer's.
#include <pcre2.h>
#include <re2/re2.h>
#include <regex.h>

#include <memory>
#include <regex>
#include <string>
#include <vector>

#include "corpus.h"
#include "ratio_reporter.h"
#include "zelstr/regex.h"

namespace {

using benchmark::State;

struct Pattern {
  char const* name;
  char const* text;
};

// Tabs are written as tab characters: no engine needs to read "\t".  The
// code patterns run over the lines of the corpus, the last one over
// generated lines of a, b, c and d.
Pattern const kPatterns[] = {
    {"literal", "customers"},
    {"keywords", "SELECT|INSERT|UPDATE|DELETE"},
    {"assignment", "[A-Za-z_][A-Za-z0-9_]*[ \t]*="},
    {"quoted", "'[^']*'"},
    {"create", "^[ \t]*(CREATE|ALTER)[ \t]+(PROCEDURE|FUNCTION|TABLE)"},
    {"id_suffix", "[A-Za-z_]+_(ID|Id|id)"},
    {"backtrack", "^.*(BEGIN|END).*;$"},
    {"alternatives", "(a|ab)(c|bcd)(d*)"},
};

std::vector<std::string> corpus_lines() {
  std::vector<std::string> out;
  std::string const text = zelstr::bench::sql_corpus();
  for (std::size_t start = 0; start < text.size();) {
    std::size_t end = text.find('\n', start);
    if (end == std::string::npos) end = text.size();
    out.push_back(text.substr(start, end - start));
    start = end + 1;
  }
  return out;
}

// As many bytes as the corpus, in lines of 20 to 80 letters a to d.
std::vector<std::string> generated_lines() {
  std::vector<std::string> out;
  unsigned seed = 12345;
  auto next = [&seed] { return (seed = seed * 1103515245u + 12345u) >> 16; };
  std::size_t const total = zelstr::bench::sql_corpus().size();
  for (std::size_t bytes = 0; bytes < total;) {
    std::string line(20 + next() % 61, ' ');
    for (char& c : line) c = "abcd"[next() % 4];
    bytes += line.size() + 1;
    out.push_back(std::move(line));
  }
  return out;
}

std::vector<std::string> const& lines(Pattern const& p) {
  static std::vector<std::string> const corpus = corpus_lines();
  static std::vector<std::string> const generated = generated_lines();
  return std::string(p.name) == "alternatives" ? generated : corpus;
}

// One engine: compile a pattern, and count the lines with a match.
class Engine {
 public:
  virtual ~Engine() = default;
  virtual bool compile(char const* pattern) = 0;
  virtual bool search(std::string const& line) = 0;
  virtual void release() = 0;
};

class Library : public Engine {
 public:
  bool compile(char const* p) override { return (m_re = Tcl_RegExpCompile(p)) != nullptr; }
  bool search(std::string const& line) override { return Tcl_RegExpMatch(line.c_str(), m_re) == 1; }
  void release() override { Tcl_DeleteInterp(m_re); }

 private:
  Tcl_RegExp_* m_re = nullptr;
};

class Pcre2 : public Engine {
 public:
  bool compile(char const* p) override {
    int error;
    PCRE2_SIZE offset;
    m_code = pcre2_compile(reinterpret_cast<PCRE2_SPTR>(p), PCRE2_ZERO_TERMINATED, 0, &error,
                           &offset, nullptr);
    m_data = m_code ? pcre2_match_data_create_from_pattern(m_code, nullptr) : nullptr;
    return m_code != nullptr;
  }
  bool search(std::string const& line) override {
    return pcre2_match(m_code, reinterpret_cast<PCRE2_SPTR>(line.data()), line.size(), 0, 0, m_data,
                       nullptr) >= 0;
  }
  void release() override {
    pcre2_match_data_free(m_data);
    pcre2_code_free(m_code);
  }

 protected:
  pcre2_code* code() const { return m_code; }

 private:
  pcre2_code* m_code = nullptr;
  pcre2_match_data* m_data = nullptr;
};

// The same with PCRE2's just-in-time compiler.
class Pcre2Jit : public Pcre2 {
 public:
  bool compile(char const* p) override {
    return Pcre2::compile(p) && pcre2_jit_compile(code(), PCRE2_JIT_COMPLETE) == 0;
  }
};

class Re2 : public Engine {
 public:
  bool compile(char const* p) override {
    m_re = std::make_unique<RE2>(p, RE2::Quiet);
    return m_re->ok();
  }
  bool search(std::string const& line) override { return RE2::PartialMatch(line, *m_re); }
  void release() override { m_re.reset(); }

 private:
  std::unique_ptr<RE2> m_re;
};

class StdRegex : public Engine {
 public:
  bool compile(char const* p) override {
    m_re = std::make_unique<std::regex>(p, std::regex::extended);
    return true;
  }
  bool search(std::string const& line) override { return std::regex_search(line, *m_re); }
  void release() override { m_re.reset(); }

 private:
  std::unique_ptr<std::regex> m_re;
};

class Posix : public Engine {
 public:
  bool compile(char const* p) override { return regcomp(&m_re, p, REG_EXTENDED | REG_NOSUB) == 0; }
  bool search(std::string const& line) override {
    return regexec(&m_re, line.c_str(), 0, nullptr, 0) == 0;
  }
  void release() override { regfree(&m_re); }

 private:
  regex_t m_re{};
};

template <class E>
void register_engine(char const* impl) {
  for (Pattern const& p : kPatterns) {
    benchmark::RegisterBenchmark((std::string("match.") + p.name + ":" + impl).c_str(),
                                 [p](State& state) {
                                   E engine;
                                   if (!engine.compile(p.text)) {
                                     state.SkipWithError("does not compile");
                                     return;
                                   }
                                   long found = 0;
                                   for (auto _ : state) {
                                     for (std::string const& line : lines(p))
                                       found += engine.search(line);
                                   }
                                   state.counters["lines_matched"] = static_cast<double>(
                                       found / static_cast<long>(state.iterations()));
                                   engine.release();
                                 })
        ->Arg(0)
        ->MinTime(0.2)
        ->Unit(benchmark::kMillisecond);
    benchmark::RegisterBenchmark((std::string("compile.") + p.name + ":" + impl).c_str(),
                                 [p](State& state) {
                                   E engine;
                                   for (auto _ : state) {
                                     engine.compile(p.text);
                                     engine.release();
                                   }
                                 })
        ->Arg(0)
        ->MinTime(0.1);
  }
}

void register_all() {
  register_engine<Library>("Tcl_RegExp");
  register_engine<Pcre2>("pcre2");
  register_engine<Pcre2Jit>("pcre2-jit");
  register_engine<Re2>("re2");
  register_engine<StdRegex>("std::regex");
  register_engine<Posix>("posix");
}

}  // namespace

int main(int argc, char** argv) {
  if (corpus_lines().size() < 1000) {
    std::fprintf(stderr, "bench_regex: the SQL corpus was not found under %s\n",
                 zelstr::bench::corpus_dir());
    return 1;
  }
  return zelstr::bench::run_with_ratios(argc, argv, register_all);
}
