// corpus.h - the shared SQL corpus as one text, for the benchmarks.
#ifndef ZELSTR_BENCH_CORPUS_H
#define ZELSTR_BENCH_CORPUS_H

#include <string>

namespace zelstr::bench {

// Every script under ZELSTR_CORPUS_DIR (tsql/, then plsql/), in name order,
// joined by newlines, without NUL bytes; empty when the folder is missing.
std::string sql_corpus();

// Registers the benchmarks with `register_all`, runs them, and prints the
// ratio table after the usual one.
int run_with_ratios(int argc, char** argv, void (*register_all)());

}  // namespace zelstr::bench

#endif  // ZELSTR_BENCH_CORPUS_H
