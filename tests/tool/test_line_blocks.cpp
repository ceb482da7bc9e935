// trim's and quote's block forms against line-by-line models, on texts
// made to put every case on a block's edge: runs of blanks longer than a
// block, CR LFs and lone CRs, empty lines and lines of only blanks, a last
// line without its line feed.  And the line-feed count, whose lanes must
// not overflow on a text of nothing but line feeds.
#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <random>
#include <string>

#include "tool/line_feeds.h"
#include "tool/line_quote.h"
#include "tool/line_trim.h"

namespace {

using zelstr::tool::LineTrim;

// Calls each(line, end) for every line of `text`: a line ends at "\n" or
// "\r\n" (`end`, not part of it; "" for a last line without a feed).
template <class Each>
void for_each_line(std::string const& text, Each each) {
  for (std::size_t at = 0; at < text.size();) {
    std::size_t const feed = std::min(text.find('\n', at), text.size());
    std::size_t const line_end =
        feed < text.size() && feed > at && text[feed - 1] == '\r' ? feed - 1 : feed;
    std::size_t const next = std::min(feed + 1, text.size());
    each(text.substr(at, line_end - at), text.substr(line_end, next - line_end));
    at = next;
  }
}

std::string model_trim(std::string const& text, std::string const& set, bool head, bool tail) {
  std::string out;
  for_each_line(text, [&](std::string line, std::string const& end) {
    std::size_t first = 0, last = line.size();
    while (head && first < last && set.find(line[first]) != std::string::npos) ++first;
    while (tail && last > first && set.find(line[last - 1]) != std::string::npos) --last;
    out += line.substr(first, last - first) + end;
  });
  return out;
}

std::string model_quote(std::string const& text, char quote) {
  std::string out;
  for_each_line(text, [&](std::string const& line, std::string const& end) {
    out += quote + line + quote + end;
  });
  return out;
}

std::string random_lines(std::mt19937& random) {
  // Runs of one byte, some long enough to cross a block or two.
  std::string text;
  std::size_t const size = random() % 400;
  while (text.size() < size) {
    char const c = " \t\r\nxa\xff"[random() % 7];
    text.append(random() % 4 == 0 ? 1 + random() % 150 : 1, c);
  }
  return text;
}

// The text in a block of its own size, so that a read past it is caught by
// the address sanitizer.
std::unique_ptr<char[]> exact_copy(std::string const& text) {
  auto copy = std::make_unique<char[]>(text.size());
  std::copy(text.begin(), text.end(), copy.get());
  return copy;
}

std::string trimmed(std::string const& text, char const* set, bool head, bool tail) {
  std::string out(text.size() + LineTrim::kOvershoot, '?');
  out.resize(LineTrim(set, head, tail).trim(exact_copy(text).get(), text.size(), out.data()));
  return out;
}

// Every byte but the zero byte, "x" and "a": the set of a table's look-up.
std::string const kLargeSet = [] {
  std::string set;
  for (int c = 1; c < 256; ++c) {
    if (c != 'x' && c != 'a') set.push_back(static_cast<char>(c));
  }
  return set;
}();

TEST(LineTrim, EveryLineAsTheModelTrimsIt) {
  std::mt19937 random(29);
  struct Form {
    char const* set;
    bool head, tail;
  };
  Form const forms[] = {{" ", true, true},
                        {" ", true, false},
                        {" ", false, true},
                        {" \t\r", true, true},
                        {"x x", true, true},
                        {"\n\xff", true, true},
                        {kLargeSet.c_str(), true, true},
                        {kLargeSet.c_str(), false, true}};
  for (int round = 0; round < 3000; ++round) {
    std::string const text = random_lines(random);
    for (Form const& f : forms) {
      ASSERT_EQ(model_trim(text, f.set, f.head, f.tail), trimmed(text, f.set, f.head, f.tail))
          << "set \"" << f.set << "\" head " << f.head << " tail " << f.tail << " text \"" << text
          << '"';
    }
  }
}

TEST(QuoteLines, EveryLineAsTheModelQuotesIt) {
  std::mt19937 random(31);
  for (int round = 0; round < 3000; ++round) {
    std::string const text = random_lines(random);
    std::string out(3 * text.size() + 1 + zelstr::tool::kQuoteOvershoot, '?');
    out.resize(zelstr::tool::quote_lines(exact_copy(text).get(), text.size(), '"', out.data()));
    ASSERT_EQ(model_quote(text, '"'), out) << '"' << text << '"';
  }
}

TEST(CountLineFeeds, EveryLengthAndOffsetAsCountedOneByOne) {
  std::mt19937 random(37);
  std::string text(40000, '\n');  // every lane full for many rounds
  for (std::size_t i = 20000; i < text.size(); ++i) text[i] = "\n\rab"[random() % 4];
  for (int round = 0; round < 400; ++round) {
    std::size_t const from = random() % text.size();
    std::size_t const length = round < 8 ? text.size() - from : random() % (text.size() - from);
    auto const expected = static_cast<std::uint64_t>(
        std::count(text.begin() + from, text.begin() + from + length, '\n'));
    ASSERT_EQ(expected, zelstr::tool::count_line_feeds(text.data() + from, length))
        << from << '+' << length;
  }
}

}  // namespace
