// The tool's streams against one library call on the whole text: the T-SQL
// case stream must give exactly what _zmaptsqlapply gives, however the code
// is cut into writes and however small its pieces; the all-occurrences
// stream must find exactly the occurrences of a plain overlapping scan.
#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

#include "tool/findall_stream.h"
#include "tool/tsql_case_stream.h"
#include "zelstr/zelstr.h"

namespace {

using zelstr::tool::FindAllStream;
using zelstr::tool::TsqlCaseStream;

std::string random_text(std::mt19937& random, std::string const& alphabet, std::size_t max) {
  std::string s(random() % max, ' ');
  for (char& c : s) c = alphabet[random() % alphabet.size()];
  return s;
}

// Writes `text` to `write` in pieces of random sizes.
template <class Write>
void write_in_pieces(std::mt19937& random, std::string const& text, Write write) {
  for (std::size_t at = 0; at < text.size();) {
    std::size_t const n = std::min<std::size_t>(text.size() - at, 1 + random() % 9);
    write(std::string_view(text).substr(at, n));
    at += n;
  }
}

class Map {
 public:
  explicit Map(char const* definition) : m_map(_zmapdefine(definition)) {}
  ~Map() { _zmapfree(m_map); }
  void* get() const { return m_map; }

 private:
  void* m_map;
};

TEST(TsqlCaseStream, AgreesWithOneCallOnTheWholeCode) {
  std::mt19937 random(8151);
  std::string const alphabet = "aXN&U'\"[]-/*\n @_";
  Map const lower("a-z=A-Z"), upper("A-Z=a-z");
  for (int i = 0; i < 20000; ++i) {
    std::string const code = random_text(random, alphabet, 60);
    bool const quoted_id = random() % 2 == 0;
    void* const map = random() % 2 == 0 ? lower.get() : upper.get();
    std::string expected = code;
    _zmaptsqlapply(map, expected.data(), quoted_id ? 1 : 0);

    std::string out;
    TsqlCaseStream stream(map, quoted_id, 1 + random() % 6,
                          [&out](std::string_view s) { out += s; });
    write_in_pieces(random, code, [&stream](std::string_view s) { stream.write(s); });
    std::uint64_t line = 0;
    stream.finish(line);
    ASSERT_EQ(expected, out) << "code [" << code << "] quoted_id " << quoted_id;
  }
}

// What the code leaves open, and the line where it opened.
TEST(TsqlCaseStream, ReportsWhatIsLeftOpen) {
  struct Case {
    char const* code;
    bool quoted_id;
    TsqlCaseStream::Open open;
    std::uint64_t line;
  } const cases[] = {
      {"select 1\n", false, TsqlCaseStream::Open::kNothing, 0},
      {"select 'a'\n-- end", false, TsqlCaseStream::Open::kNothing, 0},
      {"select\n'abc\n", false, TsqlCaseStream::Open::kLiteral, 2},
      {"x\n\n\"abc", false, TsqlCaseStream::Open::kLiteral, 3},
      {"x\n\n\"abc", true, TsqlCaseStream::Open::kName, 3},
      {"/* a /* b */\n", false, TsqlCaseStream::Open::kComment, 1},
      {"/* a /* b */ */", false, TsqlCaseStream::Open::kNothing, 0},
      {"[a]]", false, TsqlCaseStream::Open::kName, 1},
      {"[a]", false, TsqlCaseStream::Open::kNothing, 0},
  };
  Map const lower("a-z=A-Z");
  for (Case const& c : cases) {
    TsqlCaseStream stream(lower.get(), c.quoted_id, 4, [](std::string_view) {});
    stream.write(c.code);
    std::uint64_t line = 0;
    EXPECT_EQ(c.open, stream.finish(line)) << c.code;
    if (c.open != TsqlCaseStream::Open::kNothing) {
      EXPECT_EQ(c.line, line) << c.code;
    }
  }
}

TEST(FindAllStream, FindsWhatAnOverlappingScanFinds) {
  std::mt19937 random(4242);
  for (int i = 0; i < 5000; ++i) {
    std::string const text = random_text(random, "abAB", 80);
    std::string const pattern = random_text(random, "abAB", 4) + "a";
    bool const insensitive = random() % 2 == 0, overlap = random() % 2 == 0;

    auto same = [insensitive](char x, char y) {
      return insensitive ? std::tolower(x) == std::tolower(y) : x == y;
    };
    std::vector<std::uint64_t> expected;
    std::uint64_t free_from = 0;
    for (std::size_t at = 0; at + pattern.size() <= text.size(); ++at) {
      bool match = true;
      for (std::size_t k = 0; k < pattern.size() && match; ++k)
        match = same(text[at + k], pattern[k]);
      if (!match || (!overlap && at < free_from)) continue;
      expected.push_back(at);
      free_from = at + pattern.size();
    }

    std::vector<std::uint64_t> found;
    FindAllStream stream(pattern, insensitive, overlap, 1 + random() % 12,
                         [&found](std::uint64_t at) { found.push_back(at); });
    write_in_pieces(random, text, [&stream](std::string_view s) { stream.write(s); });
    stream.finish();
    ASSERT_EQ(expected, found) << "text [" << text << "] pattern [" << pattern << "] i "
                               << insensitive << " overlap " << overlap;
  }
}

}  // namespace
