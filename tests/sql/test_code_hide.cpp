// Code hiding, code context, comment discarding and HideCodeParts: exact
// results on written cases, and a model that builds random texts from
// known pieces and so knows what each byte is.
#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

#include "errsvc/errsvc.h"
#include "support/library_text.h"
#include "support/warnings.h"
#include "zelstr/zelstr.h"

namespace {

using zelstr::test::filed_exactly;
using zelstr::test::filed_nothing;
using zelstr::test::owned;

char g_keys[1];
void const* const kQuotedOn = &g_keys[0];  // "..." is a name; by default a literal

class CodeHide : public zelstr::test::WarningsTest {
 protected:
  static void SetUpTestSuite() {
    ASSERT_EQ(1, _ztsqlsetdefaults(kQuotedOn, 2016, 129, 1, 0, '[', nullptr));
  }
};

enum Dialect { kTsql, kTsqlQuotedOff, kPlsql };

std::string hidden(Dialect dialect, std::string text, int flags, char filler = '.') {
  int const end = dialect == kPlsql ? _zplsqlhidenonsqlcode(text.data(), flags, filler)
                                    : _ztsqlhidenonsqlcode(dialect == kTsql ? kQuotedOn : nullptr,
                                                           text.data(), flags, filler);
  return text + "|" + std::to_string(end);
}

struct HideCase {
  Dialect dialect;
  int flags;
  char const* code;
  char const* expected;  // the hidden text, "|" and the context at the end
};

constexpr int kAll = ZEAL_HIDE_COMMENTS | ZEAL_HIDE_STRINGS | ZEAL_HIDE_NAMES;
constexpr int kWhole = kAll | ZEAL_HIDE_DELIMITERS;

TEST_F(CodeHide, HidesWhatFlagsName) {
  HideCase const cases[] = {
      {kTsql, ZEAL_HIDE_DEFAULT, "a -- b\r\nc", "a ....\r\nc|1"},
      {kTsql, ZEAL_HIDE_DEFAULT, "x/* a /* b */ c */y", "x.................y|1"},
      {kTsql, ZEAL_HIDE_DEFAULT, "x/* a\r\n b */y", "x....\r\n.....y|1"},
      {kTsql, ZEAL_HIDE_COMMENTS, "-- a\rb\r\r\n", ".......\r\n|1"},
      {kTsql, ZEAL_HIDE_DEFAULT, "'it''s' N'x' n'y' U&'z'", "'.....' N'.' n'.' U&'.'|1"},
      {kTsql, kWhole, "'it''s' N'x' U&'z' AN'q'", "....... .... ..... AN...|1"},
      {kTsql, ZEAL_HIDE_DEFAULT, "'--' -- 'x'", "'..' ......|2"},
      {kTsql, kAll, "[a]]b] \"c\"\"d\" [x", "[....] \"....\" [.|5"},
      {kTsqlQuotedOff, kAll, "\"c\"\"d\" [x]", "\"....\" [.]|1"},
      {kTsql, ZEAL_HIDE_COMMENTS, "'/*' /* open", "'/*' .......|3"},
      {kTsql, ZEAL_HIDE_STRINGS, "'abc", "'...|4"},
      {kTsql, ZEAL_HIDE_DEFAULT, "a-b/c-", "a-b/c-|1"},
      {kTsql, ZEAL_HIDE_DEFAULT | ZEAL_HIDE_COMMANDS,
       "select 1\n  GO 2 -- x\r\n:setvar a b\n!!dir\nGOTO l\ngo",
       "select 1\n  .........\r\n...........\n.....\nGOTO l\n..|6"},
      {kTsql, ZEAL_HIDE_DEFAULT, "GO\n:r x", "GO\n:r x|1"},
      {kPlsql, ZEAL_HIDE_DEFAULT, "x/* a /* b */ c */y", "x............ c */y|1"},
      {kPlsql, ZEAL_HIDE_DEFAULT, "q'[it's]' Nq'{a}'} nq'!x!' q'(a)'", "q'[....]' Nq'{.}'} nq'!.!' q'(.)'|1"},
      {kPlsql, kWhole, "q'<a>' xq'b' q' c'", "...... xq... q....|1"},
      {kPlsql, kAll, "\"a\"\"b\" q'[x", "\".\"\".\" q'[.|4"},
      {kPlsql, ZEAL_HIDE_DEFAULT | ZEAL_HIDE_COMMANDS,
       "REM x\nset serveroutput on\nSET TRANSACTION READ ONLY;\n@run\nupdate t\nset a=1;\n  /  \nprompt 'x'",
       ".....\n...................\nSET TRANSACTION READ ONLY;\n....\nupdate t\nset a=1;\n  ...\n..........|6"},
  };
  for (HideCase const& c : cases) {
    EXPECT_EQ(c.expected, hidden(c.dialect, c.code, c.flags)) << c.code;
  }
  EXPECT_TRUE(filed_nothing());
}

TEST_F(CodeHide, CopyFormsAgreeWithInPlaceForms) {
  char const* const code = "select 'a' /* b */ from [t] -- c";
  int context = 0;
  EXPECT_EQ("select '.' ....... from [t] ....",
            owned(_ztsqlhidenonsqlcode(code, ZEAL_HIDE_DEFAULT, '.', &context)));
  EXPECT_EQ(ZEAL_SQL_LINE_COMMENT, context);
  EXPECT_EQ("select '#' ####### from [t] ####",
            owned(_zplsqlhidenonsqlcode(code, ZEAL_HIDE_DEFAULT, '#')));
}

TEST_F(CodeHide, ContextOfEachPosition) {
  struct Case {
    Dialect dialect;
    char const* code;
    char const* kinds;  // per position and the end: the ZEAL_SQL_* digit
    char const* depths;  // per position: how many comments enclose it
  };
  Case const cases[] = {
      {kTsql, "a/*b/*c*/d*/e'f'", "13333333333314441", "01112222211100000"},
      {kTsql, "--x\n[y", "2221555", "0000000"},
      {kPlsql, "/*/**/x", "33333311", "11111100"},
      {kPlsql, "q'(a)'\"b\"", "4444445551", "0000000000"},
  };
  for (Case const& c : cases) {
    std::string const code = c.code;
    for (std::size_t i = 0; i <= code.size(); ++i) {
      int depth = -1;
      int const kind = c.dialect == kPlsql
                           ? _zplsqlcodecontext(c.code, static_cast<int>(i), 0, &depth)
                           : _ztsqlcodecontext(c.code, static_cast<int>(i), 0, &depth);
      EXPECT_EQ(c.kinds[i] - '0', kind) << c.code << " at " << i;
      EXPECT_EQ(c.depths[i] - '0', depth) << c.code << " at " << i;
    }
  }
}

TEST_F(CodeHide, DiscardsComments) {
  struct Case {
    Dialect dialect;
    char const* code;
    char const* expected;
  };
  Case const cases[] = {
      {kTsql, "a/*x*/b", "a b"},
      {kTsql, "a/*x\r\ny\nz*/b--c\r\nd", "a \r\n\nb \r\nd"},
      {kTsql, "'--' [/*] /* /* */ */x", "'--' [/*]  x"},
      {kPlsql, "a/* /* */b */ q'[--]' --", "a b */ q'[--]'  "},
  };
  for (Case const& c : cases) {
    std::string text = c.code;
    int const n = c.dialect == kPlsql ? _zplsqldiscardcomments(text.data())
                                      : _ztsqldiscardcomments(text.data());
    EXPECT_EQ(c.expected, std::string(text.c_str())) << c.code;
    EXPECT_EQ(static_cast<int>(std::string(c.expected).size()), n);
    EXPECT_EQ(c.expected, owned(c.dialect == kPlsql ? _zplsqldiscardcomments(c.code)
                                                    : _ztsqldiscardcomments(c.code)));
  }
}

TEST_F(CodeHide, BadArgumentsWarnAndFallBack) {
  auto const warning = [](char const* text, char const* function, char const* unit) {
    return zelstr::test::ExpectedWarning{-1, text, 4, unit, function};
  };
  char const* const bad = ErrHand_Msg_ERRSVC_BAD_ARGUMENT();
  char text[] = "a -- b";
  EXPECT_EQ(0, _ztsqlhidenonsqlcode(static_cast<char*>(nullptr), ZEAL_HIDE_DEFAULT));
  EXPECT_EQ(0, _ztsqlhidenonsqlcode(text, ZEAL_HIDE_DEFAULT, '\0'));
  EXPECT_EQ(0, _zplsqlhidenonsqlcode(text, 0x40));
  EXPECT_STREQ("a -- b", text);
  EXPECT_EQ(0, _ztsqlcodecontext(text, 7));
  EXPECT_EQ(ZEAL_STR_ERR, _zplsqldiscardcomments(static_cast<char*>(nullptr)));
  EXPECT_EQ(0, _zplsqlcodecontext(nullptr, 0));
  EXPECT_EQ(nullptr, _ztsqldiscardcomments(static_cast<char const*>(nullptr)));
  HideCodeParts parts;
  EXPECT_EQ(nullptr, parts.HidePlSql(nullptr, 0));
  // NULL code is the notice of severity 2 that there is no code.
  auto const no_code = [](char const* function, char const* unit) {
    return zelstr::test::ExpectedWarning{-1, "Illegal NULL code to be processed.", 2, unit,
                                         function};
  };
  EXPECT_TRUE(filed_exactly({
      no_code("_ztsqlhidenonsqlcode", "connfortsqlstrfncs"),
      warning(bad, "_ztsqlhidenonsqlcode", "connfortsqlstrfncs"),
      warning(ErrHand_Msg_ERRSVC_INCOHERENT_FLAG(), "_zplsqlhidenonsqlcode", "connforplsqlstrfncs"),
      warning(bad, "_ztsqlcodecontext", "connfortsqlstrfncs"),
      no_code("_zplsqldiscardcomments", "connforplsqlstrfncs"),
      no_code("_zplsqlcodecontext", "connforplsqlstrfncs"),
      no_code("_ztsqldiscardcomments", "connfortsqlstrfncs"),
      no_code("HideCodeParts::HidePlSql", "connfortsqlstrfncs"),
  }));
}

TEST_F(CodeHide, PartsSetAsideAndPutBack) {
  HideCodeParts parts;
  char const* const code = "select 'a' from [t] -- c\n/* d */";
  char const* const hidden_code = parts.HideTSql(nullptr, code, kAll);
  ASSERT_NE(nullptr, hidden_code);
  EXPECT_EQ('\x01', parts.GetMarker());
  EXPECT_STREQ("select '\x01" "0\x01' from [\x01" "1\x01] \x01" "2\x01\n\x01" "3\x01", hidden_code);
  ASSERT_EQ(4, parts.GetCount());
  EXPECT_STREQ("-- c", parts.GetPart(2));
  EXPECT_EQ(ZEAL_SQL_BLOCK_COMMENT, parts.GetPartKind(3));
  // Code may change length; placeholders may move, repeat or go.
  std::string changed = std::string(hidden_code);
  changed.replace(0, 6, "SELECT DISTINCT");
  EXPECT_EQ("SELECT DISTINCT 'a' from [t] -- c\n/* d */", owned(parts.Restore(changed.c_str())));
  EXPECT_EQ("[t]t", owned(parts.Restore("[\x01" "1\x01]\x01" "1\x01")));
  EXPECT_TRUE(filed_nothing());

  char const* const damaged[] = {"\x01" "1", "\x01\x01", "\x01" "9\x01", "\x01" "x\x01"};
  for (char const* text : damaged) EXPECT_EQ(nullptr, parts.Restore(text)) << text;
  EXPECT_EQ(nullptr, parts.GetPart(4));
  std::vector<zelstr::test::ExpectedWarning> expected(
      4, {-1,
          "HideCodeParts::Restore() - Warning: <code> holds a damaged placeholder or one of no "
          "hidden part: NULL was returned as result.",
          2, "connfortsqlstrfncs", "HideCodeParts::Restore"});
  expected.push_back({-1, ErrHand_Msg_ERRSVC_BAD_ARGUMENT(), 4, "connfortsqlstrfncs",
                      "HideCodeParts::GetPart"});
  EXPECT_TRUE(filed_exactly(expected));
}

TEST_F(CodeHide, MarkerAvoidsEveryByteOfTheText) {
  std::string code = "x'y'";
  for (int c = 1; c < 0x1F; ++c) code += static_cast<char>(c);
  HideCodeParts parts;
  ASSERT_NE(nullptr, parts.HidePlSql(code.c_str(), ZEAL_HIDE_STRINGS));
  EXPECT_EQ('\x1F', parts.GetMarker());
  EXPECT_EQ(code, owned(parts.Restore(parts.HidePlSql(code.c_str(), ZEAL_HIDE_STRINGS))));
  for (int c = 0x1F; c < 256; ++c) code += static_cast<char>(c);
  EXPECT_EQ(nullptr, parts.HidePlSql(code.c_str(), ZEAL_HIDE_STRINGS));
  EXPECT_EQ(0, parts.GetCount());
}

// ---- The model ------------------------------------------------------------

// A piece of a generated text: [0, open) opens it, [close, size) closes it.
struct Piece {
  int kind;  // ZEAL_SQL_*
  std::string text;
  std::size_t open = 0;
  std::size_t close = 0;
};

class Generator {
 public:
  Generator(Dialect dialect, unsigned seed) : m_dialect(dialect), m_rng(seed) {}

  std::vector<Piece> pieces() {
    std::vector<Piece> out;
    int const n = pick(12);
    for (int i = 0; i < n; ++i) {
      out.push_back(code());
      out.push_back(part());
      if (out.back().kind == ZEAL_SQL_LINE_COMMENT) out.push_back(Piece{ZEAL_SQL_CODE, newline()});
    }
    out.push_back(code());
    if (pick(3) == 0) out.push_back(open_part());
    return out;
  }

 private:
  int pick(int n) { return static_cast<int>(m_rng() % static_cast<unsigned>(n)); }
  template <std::size_t N>
  char const* one_of(char const* const (&words)[N]) {
    return words[pick(static_cast<int>(N))];
  }
  std::string newline() { return pick(2) ? "\n" : "\r\n"; }

  // Code ends in a blank, so that no piece after it reads a prefix from it.
  Piece code() {
    static char const* const kWords[] = {"SELECT", "N", "q", "nq", "U", "&", "x1", "@v", ",",
                                         "=",      "(", ")", "*", ";", "- ", "/ ", "\n", "\r\n",
                                         "\t",     "GO", "é"};
    std::string text;
    for (int i = pick(4); i > 0; --i) text += one_of(kWords);
    return Piece{ZEAL_SQL_CODE, text + " "};
  }

  // Text made of `pool`'s bits, never holding `forbidden` (when given);
  // nested comments, each between blanks, when `nested`.
  template <std::size_t N>
  std::string content(char const* const (&pool)[N], std::string const& forbidden = "",
                      bool nested = false) {
    std::string text;
    for (int i = pick(6); i > 0; --i) {
      if (nested && pick(5) == 0) {
        text += " /*" + content(pool, forbidden, true) + "*/ ";
        continue;
      }
      std::string const next = text + one_of(pool);
      if (forbidden.empty() || next.find(forbidden) == std::string::npos) text = next;
    }
    return text;
  }

  Piece part() { return make_part(false); }
  Piece open_part() { return make_part(true); }

  Piece make_part(bool open) {
    static char const* const kTsqlComment[] = {"a", " ", "\n", "\r\n", "\r", "'", "\"", "[", "]", "-", "--", "é"};
    static char const* const kPlsqlComment[] = {"a", " ", "\n", "\r\n", "'", "\"", "/", "/*", "--", "é"};
    static char const* const kLineComment[] = {"a", " ", "'", "/*", "*/", "-", "é"};
    static char const* const kApostrophes[] = {"a", " ", "''", "\"", "[", "]", "/*", "*/", "--", "\n", "\r\n", "\r"};
    static char const* const kQuotes[] = {"a", " ", "\"\"", "'", "]", "/*", "--", "\n"};
    static char const* const kBrackets[] = {"a", " ", "]]", "'", "\"", "[", "/*", "\r\n"};
    static char const* const kOracleName[] = {"a", " ", "'", "[", "]", "/*", "--", "é"};
    static char const* const kAlternative[] = {"a", " ", "'", "]", "[", ")", "}", ">", "#", "!", "\n"};
    bool const tsql = m_dialect != kPlsql;
    switch (pick(open ? 4 : 5)) {
      case 0: {
        std::string const body = tsql ? content(kTsqlComment, "", true) : content(kPlsqlComment, "*/");
        if (open && tsql && pick(2)) {
          // an outer comment left open around a closed nested one
          return Piece{ZEAL_SQL_BLOCK_COMMENT, "/* /*" + body + "*/ " + body, 2, 0};
        }
        return closed(ZEAL_SQL_BLOCK_COMMENT, "/*", body, open ? "" : "*/");
      }
      case 1:
        if (!tsql && pick(2)) {
          static char const* const kOpen[] = {"[", "{", "<", "(", "!", "#"};
          static char const* const kClose[] = {"]'", "}'", ">'", ")'", "!'", "#'"};
          int const k = pick(6);
          return closed(ZEAL_SQL_STRING, (pick(2) ? "Nq'" : "q'") + std::string(kOpen[k]),
                        content(kAlternative, kClose[k]), open ? "" : kClose[k]);
        }
        return closed(ZEAL_SQL_STRING, prefix() + "'", content(kApostrophes), open ? "" : "'");
      case 2:
        return closed(ZEAL_SQL_LINE_COMMENT, "--", content(kLineComment), "");
      default:
        if (m_dialect == kTsqlQuotedOff && pick(2)) {
          return closed(ZEAL_SQL_STRING, "\"", content(kQuotes), open ? "" : "\"");
        }
        if (tsql && (m_dialect == kTsqlQuotedOff || pick(2))) {
          return closed(ZEAL_SQL_NAME, "[", content(kBrackets), open ? "" : "]");
        }
        if (tsql) return closed(ZEAL_SQL_NAME, "\"", content(kQuotes), open ? "" : "\"");
        return closed(ZEAL_SQL_NAME, "\"", content(kOracleName), open ? "" : "\"");
    }
  }

  std::string prefix() {
    if (m_dialect == kPlsql) return pick(2) ? "" : "n";
    static char const* const kPrefixes[] = {"", "N", "n", "U&"};
    return one_of(kPrefixes);
  }

  static Piece closed(int kind, std::string const& opening, std::string const& body,
                      std::string const& closing) {
    return Piece{kind, opening + body + closing, opening.size(), opening.size() + body.size()};
  }

  Dialect m_dialect;
  std::mt19937 m_rng;
};

// What the text of `pieces` should become under `flags`.
struct Expected {
  std::string text, hidden, discarded;
  std::vector<int> kinds;  // per byte
  std::vector<std::string> set_aside;
  int end = ZEAL_SQL_CODE;
};

bool is_line_end(std::string const& s, std::size_t i) {
  return s[i] == '\n' || (s[i] == '\r' && i + 1 < s.size() && s[i + 1] == '\n');
}

Expected expect(std::vector<Piece> const& pieces, int flags, bool last_open) {
  Expected e;
  for (std::size_t k = 0; k < pieces.size(); ++k) {
    Piece const& p = pieces[k];
    std::size_t const at = e.text.size();
    e.text += p.text;
    e.kinds.insert(e.kinds.end(), p.text.size(), p.kind);
    bool const comment = p.kind == ZEAL_SQL_LINE_COMMENT || p.kind == ZEAL_SQL_BLOCK_COMMENT;
    bool const hide = comment ? (flags & ZEAL_HIDE_COMMENTS)
                      : p.kind == ZEAL_SQL_STRING ? (flags & ZEAL_HIDE_STRINGS)
                      : p.kind == ZEAL_SQL_NAME   ? (flags & ZEAL_HIDE_NAMES)
                                                  : 0;
    std::size_t from = 0, to = p.text.size();
    if (!comment && !(flags & ZEAL_HIDE_DELIMITERS) && p.kind != ZEAL_SQL_CODE) {
      from = p.open;
      to = p.close == 0 ? p.text.size() : p.close;
    }
    if (hide) e.set_aside.push_back(p.text.substr(from, to - from));
    std::string shown = p.text;
    if (hide) {
      for (std::size_t i = from; i < to; ++i) {
        if (!is_line_end(p.text, i) && !(p.text[i] == '\r' && i + 1 == p.text.size() &&
                                         k + 1 < pieces.size() && pieces[k + 1].text[0] == '\n')) {
          shown[i] = '.';
        }
      }
    }
    e.hidden += shown;
    if (comment) {
      e.discarded += ' ';
      for (std::size_t i = 0; i < p.text.size(); ++i) {
        bool const cr_before_next = p.text[i] == '\r' && i + 1 == p.text.size() &&
                                    k + 1 < pieces.size() && pieces[k + 1].text[0] == '\n';
        if (is_line_end(p.text, i) || p.text[i] == '\n' || cr_before_next) e.discarded += p.text[i];
      }
    } else {
      e.discarded += p.text;
    }
    (void)at;
  }
  if (last_open) e.end = pieces.back().kind;
  return e;
}

TEST_F(CodeHide, AgreesWithAModelOnRandomTexts) {
  int const flag_sets[] = {ZEAL_HIDE_DEFAULT, kAll, kWhole, ZEAL_HIDE_COMMENTS,
                           ZEAL_HIDE_STRINGS | ZEAL_HIDE_DELIMITERS};
  for (Dialect dialect : {kTsql, kTsqlQuotedOff, kPlsql}) {
    for (unsigned seed = 1; seed <= 400; ++seed) {
      Generator generator(dialect, seed * 7919 + dialect);
      std::vector<Piece> const pieces = generator.pieces();
      bool const last_open = pieces.back().kind != ZEAL_SQL_CODE;
      int const flags = flag_sets[seed % 5];
      Expected const e = expect(pieces, flags, last_open);
      SCOPED_TRACE(testing::Message() << "dialect " << dialect << " seed " << seed << ": "
                                      << e.text);
      void const* const connection = dialect == kTsql ? kQuotedOn : nullptr;
      EXPECT_EQ(e.hidden + "|" + std::to_string(e.end), hidden(dialect, e.text, flags));

      std::size_t const at = seed % (e.text.size() + 1);
      int const want = at == e.text.size() ? e.end : e.kinds[at];
      EXPECT_EQ(want, dialect == kPlsql ? _zplsqlcodecontext(e.text.c_str(), static_cast<int>(at))
                                        : _ztsqlcodecontext(connection, e.text.c_str(),
                                                            static_cast<int>(at)));

      EXPECT_EQ(e.discarded, owned(dialect == kPlsql
                                       ? _zplsqldiscardcomments(e.text.c_str())
                                       : _ztsqldiscardcomments(connection, e.text.c_str())));

      HideCodeParts parts;
      char const* const h = dialect == kPlsql ? parts.HidePlSql(e.text.c_str(), flags)
                                              : parts.HideTSql(connection, e.text.c_str(), flags);
      ASSERT_NE(nullptr, h);
      ASSERT_EQ(static_cast<int>(e.set_aside.size()), parts.GetCount());
      for (std::size_t i = 0; i < e.set_aside.size(); ++i) {
        EXPECT_EQ(e.set_aside[i], parts.GetPart(static_cast<int>(i)));
      }
      EXPECT_EQ(e.text, owned(parts.Restore(h)));
    }
  }
  EXPECT_TRUE(filed_nothing());
}

}  // namespace
