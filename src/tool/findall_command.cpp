// findall_command.cpp - the findall subcommand: the offset of every
// occurrence of a string, overlapping ones included, through CFindAllStr;
// or, with -f, the number of occurrences of each of many words, searched
// all at once; with --code-only, in the input's code (read whole, its
// comments and literals hidden).
#include <cstdint>
#include <cstdio>
#include <string>
#include <vector>

#include "tool/findall_stream.h"
#include "tool/fixed_strings.h"
#include "tool/input.h"
#include "tool/sql_code.h"
#include "zelstr/codehide.h"

namespace zelstr::tool {
namespace {

std::string folded(std::string s, bool insensitive) {
  if (insensitive) {
    for (char& c : s) c = c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c;
  }
  return s;
}

// The words whose counts rise with word i's: those written the same (later
// in the list: the search names the first), and with overlapping
// occurrences those that begin it, which occur wherever it occurs (the
// search names the longest word at a place).
std::vector<std::vector<int>> also_counted(std::vector<std::string> const& words, bool insensitive,
                                           bool overlap) {
  std::vector<std::string> images;
  for (std::string const& w : words) images.push_back(folded(w, insensitive));
  std::vector<std::vector<int>> also(words.size());
  for (std::size_t i = 0; i < words.size(); ++i) {
    for (std::size_t j = 0; j < words.size(); ++j) {
      if (i == j || images[j].empty()) continue;
      bool const same = images[j] == images[i] && j > i;
      bool const begins = overlap && images[j].size() < images[i].size() &&
                          images[i].compare(0, images[j].size(), images[j]) == 0;
      if (same || begins) also[i].push_back(static_cast<int>(j));
    }
  }
  return also;
}

// findall -f FILE... [-i] [--no-overlap] [--code-only ...] [FILE...]: each
// input is read whole.
int count_words(Invocation& inv, CodeReading const& reading) {
  bool const insensitive = inv.flag("-i"), overlap = !inv.flag("--no-overlap");
  FixedStrings words;
  if (!words.read(inv, nullptr, insensitive, false, overlap)) return kError;
  std::vector<std::vector<int>> const also = also_counted(words.words(), insensitive, overlap);
  auto const names = inv.operands();
  std::string text, hidden;
  for_each_input(inv, names, [&](Input& in) {
    if (inv.flag("--code-only")) {
      if (!read_code(inv, in, reading, false, text, hidden)) return;
      text.swap(hidden);
    } else {
      text.clear();
      for (std::string_view b; !(b = in.next_block()).empty();) text.append(b);
      if (!in.ok()) return;
    }
    std::vector<std::uint64_t> counts(words.words().size());
    words.each(text, [&](std::size_t, std::size_t, int index) {
      ++counts[static_cast<std::size_t>(index)];
      for (int j : also[static_cast<std::size_t>(index)]) ++counts[static_cast<std::size_t>(j)];
    });
    for (std::size_t i = 0; i < counts.size(); ++i) {
      if (names.size() > 1) std::printf("%s:", in.name());
      std::printf("%llu\t%s\n", static_cast<unsigned long long>(counts[i]),
                  words.words()[i].c_str());
      if (counts[i] != 0) inv.found();
    }
  });
  return inv.exit_status();
}

}  // namespace

// findall [-i] [--no-overlap] [--code-only [--tsql|--oracle] [--quoted-id]]
// PATTERN [FILE...]: one offset a line, after "FILE:" when there are several
// files.
int run_findall(Invocation& inv) {
  CodeReading reading;
  if (!read_dialect(inv, reading, "--code-only")) return kError;
  reading.flags = ZEAL_HIDE_DEFAULT;
  if (inv.flag("-f")) return count_words(inv, reading);
  if (inv.operands().empty()) return inv.usage_error("no pattern");
  char const* const pattern = inv.operands()[0];
  if (*pattern == '\0') return inv.usage_error("the pattern is empty");
  bool const code_only = inv.flag("--code-only");
  auto const names = inv.operands().subspan(1);
  std::string text, hidden;
  for_each_input(inv, names, [&](Input& in) {
    FindAllStream stream(pattern, inv.flag("-i"), !inv.flag("--no-overlap"), 1 << 20,
                         [&](std::uint64_t offset) {
                           if (names.size() > 1) std::printf("%s:", in.name());
                           std::printf("%llu\n", static_cast<unsigned long long>(offset));
                           inv.found();
                         });
    if (!code_only) {
      for (std::string_view b; !(b = in.next_block()).empty();) stream.write(b);
    } else if (read_code(inv, in, reading, false, text, hidden)) {
      stream.write(hidden);
    }
    stream.finish();
  });
  return inv.exit_status();
}

}  // namespace zelstr::tool
