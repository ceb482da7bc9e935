// CStrScanner: the integer and quoted-string readers against strtoll and a
// hand-written encoder on seeded random input, the other readers by table,
// positions, a growing string that moves between reads, the format
// language, and the warnings of failed reads and bad arguments.
#include <gtest/gtest.h>

#include <cctype>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <random>
#include <string>
#include <vector>

#include "support/warnings.h"
#include "zelstr/zelstr.h"

namespace {

using zelstr::test::ExpectedWarning;
using Scanner = zelstr::test::WarningsTest;

ExpectedWarning scan_warning(std::string text) { return {-1, std::move(text), 4, "stringscan"}; }

std::string failed(char const* function, char const* reason, int line, int column,
                   char const* result = "0") {
  std::string s = "CStrScanner::";
  s += function;
  s += "() - Warning: ";
  s += reason;
  s += " at line ";
  s += std::to_string(line);
  s += ", column ";
  s += std::to_string(column);
  s += ": ";
  s += result;
  s += " was returned as result.";
  return s;
}

// Random text made of pieces that matter to integers.
std::string random_number_text(std::mt19937& rng) {
  static char const* const pieces[] = {" ",
                                       "\t",
                                       "+",
                                       "-",
                                       "0",
                                       "0x",
                                       "0X",
                                       "7",
                                       "9",
                                       "f",
                                       "A",
                                       "g",
                                       "x",
                                       "18446744073709551615",
                                       "9223372036854775808",
                                       "ffffffffffffffff",
                                       "1"};
  std::string s;
  for (int n = static_cast<int>(rng() % 6); n >= 0; --n) s += pieces[rng() % std::size(pieces)];
  return s;
}

TEST_F(Scanner, IntegersAgreeWithStrtoll) {
  std::mt19937 rng(21);
  int reads = 0;
  for (int round = 0; round < 20000; ++round) {
    std::string const text = random_number_text(rng);
    char const* p = text.c_str();
    while (*p == ' ' || *p == '\t') ++p;
    char const* const digits = p + (*p == '+' || *p == '-');
    bool const hex = digits[0] == '0' && (digits[1] | 0x20) == 'x' && std::isxdigit(digits[2]);
    SCOPED_TRACE(text);
    char* end = nullptr;

    // The unsigned reader refuses a "-" and agrees with strtoull otherwise.
    errno = 0;
    unsigned long long const uexpected = std::strtoull(text.c_str(), &end, hex ? 16 : 10);
    bool const unsigned_reads = *p != '-' && end != text.c_str() && errno != ERANGE;
    CStrScanner su(text.c_str());
    su.SetOptions(ZEAL_SCAN_QUIET);
    unsigned long long ugot = 0;
    ASSERT_EQ(su.ReadUInt(&ugot), unsigned_reads ? 1 : 0);
    if (unsigned_reads) {
      ASSERT_EQ(ugot, uexpected);
      ASSERT_EQ(su.GetOffset(), static_cast<std::size_t>(end - text.c_str()));
    }

    errno = 0;
    long long const expected = std::strtoll(text.c_str(), &end, hex ? 16 : 10);
    bool const range_error = errno == ERANGE;
    CStrScanner sc(text.c_str());
    sc.SetOptions(ZEAL_SCAN_QUIET);
    long long got = 12345;
    int const read = sc.ReadInt(&got);
    if (end == text.c_str()) {
      ASSERT_EQ(read, 0);
      ASSERT_EQ(sc.GetError(), *p == '\0' ? ZEAL_SCAN_END : ZEAL_SCAN_SYNTAX);
    } else if (range_error) {
      ASSERT_EQ(read, 0);
      ASSERT_EQ(sc.GetError(), ZEAL_SCAN_OVERFLOW);
    } else {
      ASSERT_EQ(read, 1);
      ASSERT_EQ(got, expected);
      ASSERT_EQ(sc.GetOffset(), static_cast<std::size_t>(end - text.c_str()));
      ++reads;
      continue;
    }
    ASSERT_EQ(got, 12345);
    ASSERT_EQ(sc.GetOffset(), 0u);
  }
  EXPECT_GT(reads, 5000);  // the pieces make numbers more often than not
  EXPECT_TRUE(zelstr::test::filed_nothing());
}

TEST_F(Scanner, NarrowIntegersRefuseWhatDoesNotFit) {
  struct Case {
    char const* text;
    int read;
    long long value;
  } const cases[] = {{"2147483647", 1, 2147483647},
                     {"-2147483648", 1, -2147483647 - 1},
                     {"2147483648", 0, 0},
                     {"-0x80000001", 0, 0},
                     {"0x7fffffff", 1, 0x7fffffff}};
  for (auto const& c : cases) {
    CStrScanner sc(c.text);
    sc.SetOptions(ZEAL_SCAN_QUIET);
    int v = 0;
    EXPECT_EQ(sc.ReadInt(&v), c.read) << c.text;
    EXPECT_EQ(v, c.value) << c.text;
  }
  CStrScanner su("4294967295 4294967296 -1");
  su.SetOptions(ZEAL_SCAN_QUIET);
  unsigned u = 0;
  EXPECT_EQ(su.ReadUInt(&u), 1);
  EXPECT_EQ(u, 4294967295u);
  EXPECT_EQ(su.ReadUInt(&u), 0);
  EXPECT_EQ(su.GetError(), ZEAL_SCAN_OVERFLOW);
  EXPECT_EQ(su.Expect("4294967296"), 1);
  EXPECT_EQ(su.ReadUInt(&u), 0);
  EXPECT_EQ(su.GetError(), ZEAL_SCAN_SYNTAX);
}

// The quoted form of `content` by the scanner's rules.
std::string quote(std::string const& content, char q, bool backslash) {
  std::string s(1, q);
  for (char c : content) {
    if (backslash && (c == q || c == '\\')) s += '\\';
    if (!backslash && c == q) s += q;
    s += c;
  }
  s += q;
  return s;
}

TEST_F(Scanner, QuotedStringsReadBackWhatWasQuoted) {
  std::mt19937 rng(7);
  char const alphabet[] = "a'\"\\ \n";
  for (int round = 0; round < 5000; ++round) {
    bool const backslash = rng() % 2 != 0;
    char const q = rng() % 2 != 0 ? '\'' : '"';
    std::string content;
    for (int n = static_cast<int>(rng() % 8); n > 0; --n) content += alphabet[rng() % 6];
    std::string const quoted = quote(content, q, backslash);
    std::string text = "  ";
    text += quoted;
    text += "x'";
    CStrScanner sc(text.c_str());
    sc.SetOptions(backslash ? ZEAL_SCAN_BACKSLASH : 0);
    char buffer[16];
    SCOPED_TRACE(text);
    ASSERT_EQ(sc.ReadQuoted(buffer, sizeof buffer), 1);
    ASSERT_EQ(std::string(buffer), content);
    ASSERT_EQ(sc.GetOffset(), 2 + quoted.size());

    // Without its closing quote the string is not closed.
    std::string const open = quoted.substr(0, quoted.size() - 1);
    CStrScanner unclosed(open.c_str());
    unclosed.SetOptions(ZEAL_SCAN_QUIET | (backslash ? ZEAL_SCAN_BACKSLASH : 0));
    ASSERT_EQ(unclosed.ReadQuoted(buffer, sizeof buffer), 0);
    ASSERT_EQ(unclosed.GetError(), ZEAL_SCAN_UNCLOSED);
    ASSERT_STREQ(buffer, "");
  }
  EXPECT_TRUE(zelstr::test::filed_nothing());
}

struct TextCase {
  char const* text;
  char what;  // w word, n name, u until, l line, f number, q quoted
  int read;
  char const* stored;  // the buffer, or the number as %g prints it
  std::size_t offset;
  int error;
};

TEST_F(Scanner, ReadersByTable) {
  TextCase const cases[] = {
      {"  ab_1-x", 'w', 1, "ab_1", 6, ZEAL_SCAN_OK},
      {"  -x", 'w', 0, "", 0, ZEAL_SCAN_SYNTAX},
      {"   ", 'w', 0, "", 0, ZEAL_SCAN_END},
      {"abcdefgh", 'w', 0, "", 0, ZEAL_SCAN_TOO_LONG},
      {" [a]]b] c", 'n', 1, "a]b", 7, ZEAL_SCAN_OK},
      {"\"x\"\"y\".z", 'n', 1, "x\"y", 6, ZEAL_SCAN_OK},
      {"[]", 'n', 0, "", 0, ZEAL_SCAN_SYNTAX},
      {"[a]]", 'n', 0, "", 0, ZEAL_SCAN_UNCLOSED},
      {"'a'", 'n', 0, "", 0, ZEAL_SCAN_SYNTAX},
      {" a b;c", 'u', 1, " a b", 4, ZEAL_SCAN_OK},
      {";c", 'u', 1, "", 0, ZEAL_SCAN_OK},
      {"", 'u', 0, "", 0, ZEAL_SCAN_END},
      {"one\r\ntwo", 'l', 1, "one", 5, ZEAL_SCAN_OK},
      {"one\rtwo", 'l', 1, "one", 4, ZEAL_SCAN_OK},
      {"last", 'l', 1, "last", 4, ZEAL_SCAN_OK},
      {"\n", 'l', 1, "", 1, ZEAL_SCAN_OK},
      {" 1.5e3x", 'f', 1, "1500", 6, ZEAL_SCAN_OK},
      {"-.25", 'f', 1, "-0.25", 4, ZEAL_SCAN_OK},
      {"+2.E-1", 'f', 1, "0.2", 6, ZEAL_SCAN_OK},
      {"7e+", 'f', 1, "7", 1, ZEAL_SCAN_OK},
      {"0x10", 'f', 1, "0", 1, ZEAL_SCAN_OK},
      {".e1", 'f', 0, "", 0, ZEAL_SCAN_SYNTAX},
      {"inf", 'f', 0, "", 0, ZEAL_SCAN_SYNTAX},
      {"1e999", 'f', 0, "", 0, ZEAL_SCAN_OVERFLOW},
      {"1e-999", 'f', 0, "", 0, ZEAL_SCAN_OVERFLOW},
      {"'it''s' x", 'q', 1, "it's", 7, ZEAL_SCAN_OK},
      {"'a\\'", 'q', 1, "a\\", 4, ZEAL_SCAN_OK},
      {"x'a'", 'q', 0, "", 0, ZEAL_SCAN_SYNTAX},
  };
  for (auto const& c : cases) {
    CStrScanner sc(c.text);
    sc.SetOptions(ZEAL_SCAN_QUIET);
    char buffer[5] = "####";
    double number = -1;
    int const read = c.what == 'w'   ? sc.ReadWord("[a-z_0-9]", buffer, sizeof buffer)
                     : c.what == 'n' ? sc.ReadName(buffer, sizeof buffer)
                     : c.what == 'u' ? sc.ReadUntil("[;]", buffer, sizeof buffer)
                     : c.what == 'l' ? sc.ReadLine(buffer, sizeof buffer)
                     : c.what == 'q' ? sc.ReadQuoted(buffer, sizeof buffer)
                                     : sc.ReadDouble(&number);
    char shown[32] = "";
    if (c.what == 'f' && read == 1) std::snprintf(shown, sizeof shown, "%g", number);
    EXPECT_EQ(read, c.read) << c.text;
    EXPECT_STREQ(c.what == 'f' ? shown : buffer, c.stored) << c.text;
    EXPECT_EQ(sc.GetOffset(), c.offset) << c.text;
    EXPECT_EQ(sc.GetError(), c.error) << c.text;
  }
}

TEST_F(Scanner, PositionsLinesAndSteppingBack) {
  CStrScanner sc("a\nb\r\nc\rd");
  EXPECT_EQ(sc.Peek(7), 'd');
  EXPECT_EQ(sc.Peek(8), 0);
  EXPECT_EQ(sc.Peek(1000), 0);  // never past the terminator
  std::string lines;
  while (sc.AtEnd() == 0) {
    char const c = static_cast<char>(sc.Get());
    if (c <= ' ') continue;
    lines += c;
    lines += std::to_string(sc.GetLine());
    lines += ':';
    lines += std::to_string(sc.GetColumn());
    lines += ' ';
  }
  EXPECT_EQ(lines, "a1:2 b2:2 c3:2 d4:2 ");
  EXPECT_EQ(sc.Get(), 0);
  EXPECT_EQ(sc.GetOffset(), 8u);

  sc.Reset("key = 'v'\n  next");
  char key[8];
  ASSERT_EQ(sc.ReadWord("[a-z]", key, sizeof key), 1);
  CStrScanner::Position const saved = sc.GetPos();
  ASSERT_EQ(sc.Expect("="), 1);
  ASSERT_EQ(sc.ReadQuoted(key, sizeof key), 1);
  EXPECT_EQ(sc.SkipBlanks(), 3u);
  EXPECT_EQ(sc.GetLine(), 2u);
  EXPECT_EQ(sc.GetColumn(), 3u);
  EXPECT_STREQ(sc.Rest(), "next");
  ASSERT_EQ(sc.SetPos(saved), 1);
  EXPECT_STREQ(sc.Rest(), " = 'v'\n  next");
  EXPECT_EQ(sc.GetColumn(), 4u);
  EXPECT_TRUE(zelstr::test::filed_nothing());
}

TEST_F(Scanner, GrowingStringMayMoveBetweenReads) {
  CGrwStr text(4);
  text = "12 ";
  CStrScanner sc(text);
  int v = 0;
  ASSERT_EQ(sc.ReadInt(&v), 1);
  EXPECT_EQ(v, 12);
  sc.SetOptions(ZEAL_SCAN_QUIET);
  EXPECT_EQ(sc.ReadInt(&v), 0);
  EXPECT_EQ(sc.GetError(), ZEAL_SCAN_END);
  char const* const before = text.gethos();
  for (int i = 0; i < 200; ++i) text.strcatf("%d ", i);
  ASSERT_NE(text.gethos(), before);  // the buffer moved
  for (int i = 0; i < 200; ++i) {
    ASSERT_EQ(sc.ReadInt(&v), 1);
    ASSERT_EQ(v, i);
  }
  EXPECT_EQ(sc.ReadInt(&v), 0);
  text -= 100;  // shortened below the position: the scanner stands at the end
  EXPECT_EQ(sc.AtEnd(), 1);
  EXPECT_EQ(sc.Peek(), 0);
  text.discard();
  EXPECT_EQ(sc.Get(), 0);
  EXPECT_STREQ(sc.Rest(), "");

  // A CR read before its LF arrives: the pair still ends one line.
  text = "a\r";
  sc.Reset(text);
  EXPECT_EQ(sc.Get(), 'a');
  EXPECT_EQ(sc.Get(), '\r');
  text += "\nb";
  EXPECT_EQ(sc.Get(), '\n');
  EXPECT_EQ(sc.Get(), 'b');
  EXPECT_EQ(sc.GetLine(), 2u);
  EXPECT_EQ(sc.GetColumn(), 2u);
}

TEST_F(Scanner, FormattedReading) {
  CStrScanner sc("size = 0x10, ratio=2.5 [dbo].[t] 'a''b' rest of line\nnext");
  unsigned size = 0;
  double ratio = 0;
  char schema[8], name[2], quoted[8], line[32];
  char c = 0;
  EXPECT_EQ(
      sc.Scan("size = %u , ratio=%f %N%c%N %q %l", &size, &ratio, schema, &c, name, quoted, line),
      7);
  EXPECT_EQ(size, 16u);
  EXPECT_EQ(ratio, 2.5);
  EXPECT_STREQ(schema, "dbo");
  EXPECT_EQ(c, '.');
  EXPECT_STREQ(name, "t");
  EXPECT_STREQ(quoted, "a'b");
  EXPECT_STREQ(line, "rest of line");
  EXPECT_EQ(sc.GetLine(), 2u);

  // Dropped conversions, a Buffer, 100%, and a stop at the first failure.
  sc.Reset("x:y 42 100% a;b -7 z");
  char word[4];
  long long n = 0;
  CStrScanner::Buffer const until{word, sizeof word};
  EXPECT_EQ(
      sc.Scan("%*w:%*w %d 100%% %*t;%t %d %d", "[a-z]", "[a-z]", &n, "[;]", "[ ]", until, &n, &n),
      3);
  EXPECT_EQ(n, -7);
  EXPECT_STREQ(word, "b");
  EXPECT_EQ(sc.GetOffset(), 19u);  // at "z", where the item that failed began
  EXPECT_EQ(sc.GetError(), ZEAL_SCAN_SYNTAX);
  EXPECT_TRUE(zelstr::test::filed_exactly(
      {scan_warning(failed("ReadInt", "the text there is not what was asked for", 1, 20))}));
}

TEST_F(Scanner, WrongFormatsReadNothing) {
  int i = 0;
  char buffer[4];
  struct Case {
    int result;
    int byte;
  };
  CStrScanner sc("12 ab");
  Case const got[] = {
      {sc.Scan("%d %d", &i), 3}, {sc.Scan("%d", &i, &i), 2}, {sc.Scan("%u", &i), 0},
      {sc.Scan("ab%", &i), 2},   {sc.Scan("%w", buffer), 0}, {sc.Scan("%z", &i), 0},
      {sc.Scan("%*d", &i), 3},   {sc.Scan("%q", "[a]"), 0},
  };
  std::vector<ExpectedWarning> expected;
  for (auto const& g : got) {
    EXPECT_EQ(g.result, -1);
    std::string text =
        "CStrScanner::Scan() - Warning: <format> given in argument is not valid, "
        "or does not agree with the arguments, at its byte ";
    text += std::to_string(g.byte);
    text += ": -1 was returned as result.";
    expected.push_back(scan_warning(text));
  }
  EXPECT_EQ(sc.GetOffset(), 0u);
  EXPECT_EQ(sc.GetError(), ZEAL_SCAN_BAD_ARGUMENT);
  EXPECT_TRUE(zelstr::test::filed_exactly(expected));
}

TEST_F(Scanner, FailuresAndBadArgumentsAreReported) {
  CStrScanner sc(nullptr);
  EXPECT_EQ(sc.AtEnd(), 1);
  sc.Reset("x\n  'abc");
  char buffer[4];
  long long v = 0;
  EXPECT_EQ(sc.ReadInt(static_cast<long long*>(nullptr)), 0);
  EXPECT_EQ(sc.ReadWord(nullptr, buffer, 4), 0);
  EXPECT_EQ(sc.ReadWord("[a-", buffer, 4), 0);
  EXPECT_EQ(sc.ReadLine(nullptr, 4), 0);
  EXPECT_EQ(sc.ReadName(buffer, 0), 0);
  EXPECT_EQ(sc.SetPos({50, 1, 1}), 0);
  EXPECT_EQ(sc.GetError(), ZEAL_SCAN_BAD_ARGUMENT);
  EXPECT_EQ(sc.ReadInt(&v), 0);
  EXPECT_EQ(sc.GetError(), ZEAL_SCAN_SYNTAX);
  sc.Get();
  EXPECT_EQ(sc.ReadQuoted(buffer, sizeof buffer), 0);
  EXPECT_EQ(sc.GetErrorPos().line, 2u);
  EXPECT_EQ(sc.GetErrorPos().column, 3u);
  EXPECT_EQ(sc.GetOffset(), 1u);
  sc.SetOptions(ZEAL_SCAN_QUIET);
  EXPECT_EQ(sc.Expect("'abd"), 0);  // quiet: kept, not filed
  EXPECT_EQ(sc.GetError(), ZEAL_SCAN_SYNTAX);
  EXPECT_EQ(sc.Expect("'abc"), 1);
  EXPECT_EQ(sc.GetError(), ZEAL_SCAN_OK);

  auto bad = [](char const* function, char const* what, char const* name, char const* result) {
    std::string s = "CStrScanner::";
    s += function;
    s += "() - Warning: <";
    s += name;
    s += "> given in argument is ";
    s += what;
    s += ": ";
    s += result;
    s += " was returned as result.";
    return scan_warning(s);
  };
  EXPECT_TRUE(zelstr::test::filed_exactly({
      bad("CStrScanner", "NULL", "text", "an empty text"),
      bad("ReadInt", "NULL", "value", "0"),
      bad("ReadWord", "NULL", "setdef", "0"),
      scan_warning("CStrScanner::ReadWord() - Warning: <setdef> given in argument is not a valid "
                   "set definition: 0 was returned as result."),
      bad("ReadLine", "NULL", "buffer", "0"),
      bad("ReadName", "out of range", "size", "0"),
      bad("SetPos", "out of range", "pos", "0"),
      scan_warning(failed("ReadInt", "the text there is not what was asked for", 1, 1)),
      scan_warning(
          failed("ReadQuoted", "the quotes or brackets opened there are not closed", 2, 3)),
  }));
}

}  // namespace
