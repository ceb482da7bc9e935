// corpus.cpp - the shared SQL corpus, and the common main of the benchmarks.
#include "corpus.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <vector>

#include "ratio_reporter.h"

namespace zelstr::bench {

char const* corpus_dir() {
  char const* const dir = std::getenv("ZELSTR_CORPUS_DIR");
  return dir != nullptr && *dir != '\0' ? dir : ZELSTR_CORPUS_DIR;
}

std::string sql_scripts(char const* folder) {
  std::filesystem::path const dir = std::filesystem::path(corpus_dir()) / folder;
  if (!std::filesystem::exists(dir)) return {};
  std::vector<std::filesystem::path> files;
  for (auto const& entry : std::filesystem::directory_iterator(dir)) files.push_back(entry.path());
  std::sort(files.begin(), files.end());
  std::string all;
  for (auto const& f : files) {
    std::ifstream in(f, std::ios::binary);
    std::stringstream ss;
    ss << in.rdbuf();
    all += ss.str();
    all += '\n';
  }
  all.erase(std::remove(all.begin(), all.end(), '\0'), all.end());  // one UTF-16 file
  return all;
}

std::string sql_corpus() { return sql_scripts("plsql") + sql_scripts("tsql"); }

std::string const& sql_megabyte() {
  static std::string const text = [] {
    std::string all = sql_corpus();
    all.resize(std::min<std::size_t>(all.size(), 1u << 20));
    return all;
  }();
  return text;
}

int run_with_ratios(int argc, char** argv, void (*register_all)()) {
  benchmark::Initialize(&argc, argv);
  register_all();
  RatioReporter reporter;
  benchmark::RunSpecifiedBenchmarks(&reporter);
  benchmark::Shutdown();
  return 0;
}

int run_on_sql_megabyte(char const* program, int argc, char** argv, void (*register_all)()) {
  if (sql_megabyte().size() < (1u << 20)) {
    std::fprintf(stderr, "%s: the SQL corpus under %s holds less than 1 MB\n", program,
                 corpus_dir());
    return 1;
  }
  return run_with_ratios(argc, argv, register_all);
}

}  // namespace zelstr::bench
