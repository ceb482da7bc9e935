// _zmaptsqlapply: mapping T-SQL code while keeping literals and comments.
#include <gtest/gtest.h>

#include <cctype>
#include <random>
#include <string>

#include "zelstr/zelstr.h"

namespace {

// A lower-casing map (this syntax maps the right-hand side to the left), and
// one that also changes the bytes that open or close a part.
struct Maps {
  void* lower = _zmapdefine("a-z=A-Z");
  void* upper = _zmapdefine("A-Z=a-z");
  void* marks = _zmapdefine("a-z=A-Z #=- %=/ !=[ ~=\" ^=\r");
  ~Maps() {
    _zmapfree(lower);
    _zmapfree(upper);
    _zmapfree(marks);
  }
};

std::string applied(void* map, std::string code, int quoted_id) {
  _zmaptsqlapply(map, code.data(), quoted_id);
  return code;
}

struct Case {
  char const* code;
  int quoted_id;
  char const* lowered;
};

TEST(MapTsql, LowerCasing) {
  Maps maps;
  Case const cases[] = {
      {"SELECT N'ABC' /* X */ FROM [T]", 0, "select N'ABC' /* X */ from [t]"},
      {"A \"B C\" D", 0, "a \"B C\" d"},
      {"A \"B C\" D", 1, "a \"b c\" d"},
      {"\"A\"\"B\" C", 1, "\"a\"\"b\" c"},
      {"[A]]B] C", 0, "[a]]b] c"},
      {"'IT''S' X", 0, "'IT''S' x"},
      {"X -- KEEP 'ME\nY", 0, "x -- KEEP 'ME\ny"},
      {"A /* B /* C */ D */ E", 0, "a /* B /* C */ D */ e"},
      {"A /* B /* C */ D", 0, "a /* B /* C */ D"},
      {"A-B/C", 0, "a-b/c"},
      {"(N'A') XN'A' @N'A' $N'A' \xe9N'A' N'A'", 0, "(N'A') xn'A' @n'A' $n'A' \xe9n'A' N'A'"},
      {"U&'A' XU&'A' ,U&'A'", 0, "U&'A' xu&'A' ,U&'A'"},
      {"N\"A\" N\"A\"", 1, "n\"a\" n\"a\""},
      {"N\"A\"", 0, "N\"A\""},
      {"'UNTERMINATED", 0, "'UNTERMINATED"},
      {"[UNTERMINATED", 0, "[unterminated"},
  };
  for (Case const& c : cases) {
    EXPECT_EQ(c.lowered, applied(maps.lower, c.code, c.quoted_id)) << c.code;
  }
}

TEST(MapTsql, OtherMaps) {
  Maps maps;
  // The prefixes are only put back when the map lowers them.
  EXPECT_EQ("SELECT N'abc' XN'a'", applied(maps.upper, "select N'abc' xn'a'", 0));
  EXPECT_EQ("SELECT [T]", applied(ZEAL_STR_BAD_MAP, "SELECT [T]", 0));
  EXPECT_EQ("SELECT [T]", applied(nullptr, "SELECT [T]", 0));
  _zmaptsqlapply(maps.lower, nullptr, 0);  // nothing to do
}

// A character-by-character model: which bytes of the code are mapped.
std::string model(void* map, std::string code, int quoted_id) {
  auto word_char = [](unsigned char c) {
    return std::isalnum(c) || c == '@' || c == '#' || c == '_' || c == '$' || c >= 0x80;
  };
  std::string const original = code;
  std::size_t i = 0, n = code.size();
  auto lower = [&](std::size_t k) {
    code[k] = _zmapchrapply(map, original[k]);
  };
  while (i < n) {
    char const c = original[i];
    bool const literal = c == '\'' || (c == '"' && quoted_id == 0);
    if (literal) {
      if (i >= 1 && original[i - 1] == 'N' && (i < 2 || !word_char(original[i - 2])))
        code[i - 1] = 'N';
      if (i >= 2 && original[i - 1] == '&' && original[i - 2] == 'U' &&
          (i < 3 || !word_char(original[i - 3])))
        code[i - 2] = 'U';
      std::size_t const close = original.find(c, i + 1);
      i = close == std::string::npos ? n : close + 1;
    } else if (c == '[' || c == '"') {
      char const end = c == '[' ? ']' : '"';
      std::size_t k = i + 1;
      while (k < n && !(original[k] == end && (k + 1 >= n || original[k + 1] != end))) {
        lower(k);
        if (original[k] == end) lower(++k);  // a doubled mark, both translated
        ++k;
      }
      if (k < n) lower(k);
      i = k + 1;
    } else if (original.compare(i, 2, "--") == 0) {
      std::size_t const eol = original.find('\n', i);
      i = eol == std::string::npos ? n : eol;
    } else if (original.compare(i, 2, "/*") == 0) {
      int depth = 0;
      do {
        if (original.compare(i, 2, "/*") == 0) {
          ++depth;
          i += 2;
        } else if (original.compare(i, 2, "*/") == 0) {
          --depth;
          i += 2;
        } else
          ++i;
      } while (depth > 0 && i < n);
    } else {
      if (c != '-' && c != '/') lower(i);
      ++i;
    }
  }
  return code;
}

// Up to `longest` bytes drawn from `alphabet`.
std::string random_code(std::mt19937& random, std::string const& alphabet, unsigned longest) {
  std::string code(random() % longest, ' ');
  for (char& c : code) c = alphabet[random() % alphabet.size()];
  return code;
}

TEST(MapTsql, AgreesWithAModelOnRandomCode) {
  Maps maps;
  ASSERT_EQ('!', _zmapchrapply(maps.marks, '['));
  ASSERT_EQ('^', _zmapchrapply(maps.marks, '\r'));
  std::mt19937 random(7);
  std::string const alphabet = "aXN&U'\"[]-/*\r\n @";
  for (int i = 0; i < 40000; ++i) {
    // Long enough for the vector kernel to translate some stretches.
    std::string const code = random_code(random, alphabet, i % 4 == 0 ? 160 : 24);
    int const quoted_id = static_cast<int>(random() % 2);
    void* const map = i % 2 == 0 ? maps.lower : maps.marks;
    ASSERT_EQ(model(map, code, quoted_id), applied(map, code, quoted_id))
        << "code [" << code << "] quoted_id " << quoted_id << " map " << (i % 2);
  }
}

// The context the mapping tells at the code's end is the one the scanner
// of _ztsqlcodecontext finds there; the code is mapped as without it; cut
// where the open part begins, the two pieces map alone as they did
// together, the first ending in code.
TEST(MapTsql, TellsTheContextAtTheEndAndWhereTheOpenPartBegins) {
  Maps maps;
  static char keys[2];
  ASSERT_EQ(1, _ztsqlsetdefaults(&keys[0], 2016, 129, 0, 1, '[', nullptr));
  ASSERT_EQ(1, _ztsqlsetdefaults(&keys[1], 2016, 129, 1, 1, '[', nullptr));
  std::mt19937 random(11);
  std::string const alphabet = "aN'\"[]-/*\r\n ";
  for (int i = 0; i < 20000; ++i) {
    std::string const code = random_code(random, alphabet, 16);
    int const quoted_id = static_cast<int>(random() % 2);
    int const want = _ztsqlcodecontext(&keys[quoted_id], code.c_str(), static_cast<int>(code.size()));
    void* const map = i % 3 == 0 ? nullptr : maps.lower;
    std::string mapped = code;
    int context = -1, open = -1;
    _zmaptsqlapply(map, mapped.data(), quoted_id, &context, &open);
    ASSERT_EQ(want, context) << "code [" << code << "] quoted_id " << quoted_id;
    ASSERT_EQ(map == nullptr ? code : applied(map, code, quoted_id), mapped) << code;
    ASSERT_EQ(want == ZEAL_SQL_CODE, open == static_cast<int>(code.size())) << code;
    std::string head = code.substr(0, static_cast<std::size_t>(open));
    std::string tail = code.substr(static_cast<std::size_t>(open));
    int head_context = -1, tail_context = -1;
    _zmaptsqlapply(map, head.data(), quoted_id, &head_context);
    _zmaptsqlapply(map, tail.data(), quoted_id, &tail_context);
    ASSERT_EQ(ZEAL_SQL_CODE, head_context) << code;
    ASSERT_EQ(want, tail_context) << code;
    ASSERT_EQ(mapped, head + tail) << "code [" << code << "] quoted_id " << quoted_id;
  }
}

}  // namespace
