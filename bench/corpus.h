// corpus.h - the shared SQL corpus as one text, for the benchmarks.
#ifndef ZELSTR_BENCH_CORPUS_H
#define ZELSTR_BENCH_CORPUS_H

#include <string>

namespace zelstr::bench {

// The corpus folder: the environment's ZELSTR_CORPUS_DIR when it is set (a
// copy of the benchmarks run on another machine), else the one beside the
// source tree, as compiled in.
char const* corpus_dir();

// The scripts of one folder of corpus_dir() ("tsql" or "plsql"), in
// name order, each followed by a newline, without NUL bytes; empty when the
// folder is missing.
std::string sql_scripts(char const* folder);

// The scripts of both folders: plsql/, then tsql/.
std::string sql_corpus();

// The first megabyte of sql_corpus(), read once (shorter when the corpus
// is: the benchmarks that use it refuse to run then).
std::string const& sql_megabyte();

// run_with_ratios for the benchmarks that work on sql_megabyte(): they
// refuse to run (a message and status 1) when the corpus is shorter.
int run_on_sql_megabyte(char const* program, int argc, char** argv, void (*register_all)());

// Registers the benchmarks with `register_all`, runs them, and prints the
// ratio table after the usual one.
int run_with_ratios(int argc, char** argv, void (*register_all)());

}  // namespace zelstr::bench

#endif  // ZELSTR_BENCH_CORPUS_H
