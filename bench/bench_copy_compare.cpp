// The checked copy, length, comparison and formatting calls beside the C
// library's own: _zstrlen / strlen, _zstrcmp / strcmp, _zstricmp /
// strcasecmp, _zstrncpy / strncpy, _zstrprintf / snprintf.
//
// Comparisons run on equal strings, so both sides read every byte.  The
// print arena holds at most 639 KB, so _zstrprintf is measured up to 256 KB.
#include <strings.h>

#include <cstdio>
#include <cstring>
#include <string>
#include <vector>

#include "corpus.h"
#include "ratio_reporter.h"
#include "zelstr/zelstr.h"

namespace {

using benchmark::State;

std::string text_of(long size, char first) {
  std::string s(static_cast<std::size_t>(size), ' ');
  for (std::size_t i = 0; i < s.size(); ++i) s[i] = static_cast<char>(first + i % 26);
  return s;
}

template <class Call>
void add(char const* name, std::vector<long> const& sizes, Call call) {
  for (long size : sizes) {
    benchmark::RegisterBenchmark(name,
                                 [call, size](State& state) {
                                   call(state, size);
                                   state.SetBytesProcessed(state.iterations() * size);
                                 })
        ->Arg(size)
        ->MinTime(0.2);
  }
}

template <class Length>
void length(State& state, long size, Length f) {
  std::string const s = text_of(size, 'a');
  for (auto _ : state) benchmark::DoNotOptimize(f(s.c_str()));
}

template <class Compare>
void compare(State& state, long size, char first, Compare f) {
  std::string const a = text_of(size, 'a');
  std::string const b = text_of(size, first);
  for (auto _ : state) benchmark::DoNotOptimize(f(a.c_str(), b.c_str()));
}

template <class Copy>
void copy(State& state, long size, Copy f) {
  std::string const s = text_of(size, 'a');
  std::vector<char> dest(static_cast<std::size_t>(size) + 1);
  for (auto _ : state) {
    benchmark::DoNotOptimize(f(dest.data(), s.c_str(), static_cast<std::size_t>(size)));
    benchmark::ClobberMemory();
  }
}

template <class Print>
void print(State& state, long size, Print f) {
  std::string const s = text_of(size, 'a');
  for (auto _ : state) {
    benchmark::DoNotOptimize(f(s.c_str()));
    benchmark::ClobberMemory();
  }
}

void register_all() {
  std::vector<long> const sizes = {16, 1024, 1 << 20};
  add("strlen:_zstrlen", sizes, [](State& st, long n) { length(st, n, _zstrlen); });
  add("strlen:strlen", sizes, [](State& st, long n) { length(st, n, std::strlen); });
  add("strcmp:_zstrcmp", sizes, [](State& st, long n) { compare(st, n, 'a', _zstrcmp); });
  add("strcmp:strcmp", sizes, [](State& st, long n) { compare(st, n, 'a', std::strcmp); });
  add("stricmp:_zstricmp", sizes, [](State& st, long n) { compare(st, n, 'A', _zstricmp); });
  add("stricmp:strcasecmp", sizes, [](State& st, long n) { compare(st, n, 'A', ::strcasecmp); });
  add("strncpy:_zstrncpy", sizes, [](State& st, long n) {
    copy(st, n, [](char* d, char const* s, std::size_t c) { return _zstrncpy(d, s, c); });
  });
  add("strncpy:strncpy", sizes, [](State& st, long n) {
    copy(st, n, [](char* d, char const* s, std::size_t c) { return std::strncpy(d, s, c); });
  });
  std::vector<long> const print_sizes = {16, 1024, 256 << 10};
  static std::vector<char> out(static_cast<std::size_t>(print_sizes.back()) + 1);
  add("printf:_zstrprintf", print_sizes,
      [](State& st, long n) { print(st, n, [](char const* s) { return _zstrprintf("%s", s); }); });
  add("printf:snprintf", print_sizes, [](State& st, long n) {
    print(st, n, [](char const* s) { return std::snprintf(out.data(), out.size(), "%s", s); });
  });
}

}  // namespace

int main(int argc, char** argv) { return zelstr::bench::run_with_ratios(argc, argv, register_all); }
