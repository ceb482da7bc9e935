// reserved_keys - writes the reserved words of one version as a gperf
// keyword file, from which the build makes the perfect hash that
// bench_sql measures the reserved-word tests against.
//
//   reserved_keys tsql|oracle VERSION OUTPUT
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <string>

#include "reserved_set.h"

int main(int argc, char** argv) {
  std::string const dialect = argc == 4 ? argv[1] : "";
  if (dialect != "tsql" && dialect != "oracle") {
    std::fprintf(stderr, "usage: reserved_keys tsql|oracle VERSION OUTPUT\n");
    return 2;
  }
  auto const words = zelstr::bench::reserved_words(
      dialect == "tsql" ? zelstr::bench::Dialect::tsql : zelstr::bench::Dialect::oracle,
      std::atoi(argv[2]));
  if (words.empty()) {
    std::fprintf(stderr, "reserved_keys: no reserved word in %s version %s\n", argv[1], argv[2]);
    return 1;
  }
  std::ofstream out(argv[3], std::ios::binary);
  out << "%%\n";
  for (std::string const& w : words) out << w << '\n';
  out << "%%\n";
  out.close();
  if (!out) {
    std::fprintf(stderr, "reserved_keys: cannot write %s\n", argv[3]);
    return 1;
  }
  return 0;
}
