// Every NULL argument of the copy, length and comparison calls: the exact
// warning (id, text, severity, unit, function) and the fallback returned.
#include <cctype>
#include <cstdio>
#include <functional>
#include <string>

#include "support/warnings.h"
#include "zelstr/zelstr.h"

namespace {

using zelstr::test::ExpectedWarning;

char g_dest[16];
char g_src[] = "abc";

struct NullCase {
  char const* name;
  std::function<bool()> gives_fallback;  // runs the call, checks its result
  int id;
  char const* text;
};

#define CALL(expr, fallback) [] { return (expr) == (fallback); }

// Literal messages carry id -1.
NullCase const kCases[] = {
    {"strlen", CALL(_zstrlen(nullptr), 0u), 86,
     "_zstrlen() - Warning: <string> given in argument was NULL: 0L was returned as length."},
    {"strsetlen", CALL(_zstrsetlen(nullptr), 0u), 137,
     "_zstrsetlen() - Warning: <strings_set> given in argument was NULL: 0L was returned as lenght "
     "of your strings-set."},
    {"streos", CALL(_zstreos(static_cast<char*>(nullptr)), nullptr), 166,
     "_zstreos() - Warning: <string> given in argument was NULL: NULL was returned as result."},
    {"strcpy dest", CALL(_zstrcpy(nullptr, "x"), nullptr), -1,
     "_zstrcpy() - Warning: <dest> given in argument was NULL: NULL was returned as result of "
     "copying."},
    {"strcpy src", CALL(_zstrcpy(g_dest, nullptr), nullptr), -1,
     "_zstrcpy() - Warning: <src> given in argument was NULL: NULL was returned as result of "
     "copying."},
    {"strncpy dest", CALL(_zstrncpy(nullptr, "x", 1), nullptr), 95,
     "_zstrncpy() - Warning: <dest> given in argument was NULL: NULL was returned as result of "
     "partial copying."},
    {"strncpyf0 src", CALL(_zstrncpyf0(g_dest, nullptr, 1), nullptr), 96,
     "_zstrncpy() - Warning: <src> given in argument was NULL: NULL was returned as result of "
     "partial copying."},
    {"samestrncpy dest", CALL(_zsamestrncpy(nullptr, g_src, 1), nullptr), 97,
     "_zsamestrncpy() - Warning: <dest> given in argument was NULL: NULL was returned as result of "
     "partial copying."},
    {"samestrncpy src", CALL(_zsamestrncpy(g_dest, nullptr, 1), nullptr), 98,
     "_zsamestrncpy() - Warning: <src> given in argument was NULL: NULL was returned as result of "
     "partial copying."},
    {"safecpyf0 dest", CALL(_zstrsafecpyf0(nullptr, "x", 1), nullptr), 134,
     "_zstrsafecpyf0() - Warning: <dest> given in argmument was NULL: NULL was returned as copy's "
     "result."},
    {"safecpyf0 src count 0", CALL(_zstrsafecpyf0(g_dest, nullptr, 0), g_dest), 136,
     "_zstrsafecpyf0() - Warning: <src> given in argmument was NULL: the destination string was "
     "returned intact since <count> was equal to 0."},
    {"cpyuntil dest", CALL(_zstrcpyuntil(nullptr, g_src, g_src), nullptr), -1,
     "_zstrcpyuntil() - Warning: <dest> given in argument was NULL: NULL was returned as result of "
     "copying."},
    {"cpyuntil src", CALL(_zstrcpyuntil(g_dest, nullptr, g_src), nullptr), -1,
     "_zstrcpyuntil() - Warning: <src> given in argument was NULL: NULL was returned as result of "
     "copying."},
    {"cpyuntil stop", CALL(_zstrcpyuntil(g_dest, g_src, nullptr), nullptr), -1,
     "_zstrcpyuntil() - Warning: <stop_at_pos_in_src> given in argument was NULL: NULL was "
     "returned as result of copying."},
    {"cpybefore set dest", CALL(_zstrcpybefore(nullptr, "x", ","), nullptr), -1,
     "_zstrcpybefore() - Warning: <dest> given in argument was NULL: NULL was returned as result "
     "of copying."},
    {"cpybefore char src", CALL(_zstrcpybefore(g_dest, nullptr, ','), nullptr), -1,
     "_zstrcpybefore() - Warning: <src> given in argument was NULL: NULL was returned as result of "
     "copying."},
    {"ncpybefore set dest", CALL(_zstrncpybefore(nullptr, "x", ",", 2), nullptr), -1,
     "_zstrcpybefore() - Warning: <dest> given in argument was NULL: NULL was returned as result "
     "of copying."},
    {"ncpybefore set src", CALL(_zstrncpybefore(g_dest, nullptr, ",", 2), nullptr), -1,
     "_zstrcpybefore() - Warning: <src> given in argument was NULL: NULL was returned as result of "
     "copying."},
    {"ncpybefore char dest", CALL(_zstrncpybefore(nullptr, "x", ',', 2), nullptr), -1,
     "_zstrncpybefore() - Warning: <dest> given in argument was NULL: NULL was returned as result "
     "of copying."},
    {"ncpybefore char src", CALL(_zstrncpybefore(g_dest, nullptr, ',', 2), nullptr), -1,
     "_zstrncpybefore() - Warning: <src> given in argument was NULL: NULL was returned as result "
     "of copying."},
    {"getbefore set", CALL(_zstrgetbefore(nullptr, ","), nullptr), -1,
     "_zstrgetbefore() - Warning: <src> given in argument was NULL: NULL was returned as result of "
     "extraction."},
    {"getbefore char", CALL(_zstrgetbefore(nullptr, ','), nullptr), -1,
     "_zstrgetbefore() - Warning: <src> given in argument was NULL: NULL was returned as result of "
     "extraction."},
    {"strcat dest", CALL(_zstrcat(nullptr, g_src), nullptr), 180,
     "_zstrcat() - Warning: <dest> given in argument was NULL: NULL was returned as result of "
     "appending."},
    {"strcat src", CALL(_zstrcat(g_dest, nullptr), g_dest), 181,
     "_zstrcat() - Warning: <src> given in argument was NULL: destination string <dest> was "
     "returned intact."},
    {"strncat dest", CALL(_zstrncat(nullptr, "x", 1), nullptr), 184,
     "_zstrncat() - Warning: <dest> given in argument was NULL: NULL was returned as result of "
     "appending."},
    {"strncat src", CALL(_zstrncat(g_dest, nullptr, 1), g_dest), 185,
     "_zstrncat() - Warning: <src> given in argument was NULL: destination string <dest> was "
     "returned intact."},
    {"strins dest", CALL(_zstrins(nullptr, "x"), nullptr), 182,
     "_zstrins() - Warning: <dest> given in argument was NULL: NULL was returned as result of "
     "insertion."},
    {"strins src", CALL(_zstrins(g_dest, nullptr), g_dest), 183,
     "_zstrins() - Warning: <src> given in argument was NULL: destination string <dest> was "
     "returned intact."},
    {"strshift", CALL(_zstrshift(nullptr, 1, ' ', 0), nullptr), 186,
     "_zstrshift() - Warning: <string> given in argument was NULL: NULL was returned as result of "
     "shifting."},
    {"memcpy dest", CALL(_zmemcpy(nullptr, g_src, 1), nullptr), 99,
     "_zmemcpy() - Warning: <dest> given in argument was NULL: NULL was returned as result of "
     "copying."},
    {"memcpy src", CALL(_zmemcpy(g_dest, nullptr, 1), nullptr), 100,
     "_zmemcpy() - Warning: <src> given in argument was NULL: NULL was returned as result of "
     "copying."},
    {"memset", CALL(_zmemset(nullptr, 'x', 1), nullptr), 101,
     "_zmemset() - Warning: <buffer> given in argument was NULL: NULL was returned as result of "
     "initialization."},
    {"strchr", CALL(_zstrchr(static_cast<char const*>(nullptr), 'x'), nullptr), 123,
     "_zstr[i]chr() - Warning: <string> given in argument was NULL: NULL was returned as "
     "occurrence."},
    {"strneq both", CALL(_zstrneq(nullptr, nullptr), nullptr), 146,
     "_zstrneq() - Warning: Both <string1> and <string2> given in argument are NULL: NULL was "
     "returned as position of 1st mismatching character."},
    {"strneq s1", CALL(_zstrneq(nullptr, g_src), nullptr), 147,
     "_zstrneq() - Warning: <string2> given in argument are NULL: NULL was returned as position of "
     "1st mismatching character."},
    {"strneq s2", CALL(_zstrneq(g_src, nullptr), g_src), 148,
     "_zstrneq() - Warning: <string1> given in argument are NULL: <string1> was returned as "
     "position of 1st mismatching character."},
    {"strcmp both", CALL(_zstrcmp(nullptr, nullptr), 0), 192,
     "_zstrcmp() - Warning: Both <string1> and <string2> given in argmument were NULL: value '0' "
     "was returned as result."},
    {"strcmp s1", CALL(_zstrcmp(nullptr, "a"), -1), 193,
     "_zstrcmp() - Warning: <string1> given in argmument was NULL: value '-1' was returned as "
     "result."},
    {"strcmp s2", CALL(_zstrcmp("a", nullptr), 1), 194,
     "_zstrcmp() - Warning: <string2> given in argmument was NULL: value '+1' was returned as "
     "result."},
    {"stricmp both", CALL(_zstricmp(nullptr, nullptr), 0), 195,
     "_zstricmp() - Warning: Both <string1> and <string2> given in argmument were NULL: value '0' "
     "was returned as result."},
    {"stricmp s1", CALL(_zstricmp(nullptr, "a"), -1), 196,
     "_zstricmp() - Warning: <string1> given in argmument was NULL: value '-1' was returned as "
     "result."},
    {"stricmp s2", CALL(_zstricmp("a", nullptr), 1), 197,
     "_zstricmp() - Warning: <string2> given in argmument was NULL: value '+1' was returned as "
     "result."},
    {"strncmp both", CALL(_zstrncmp(nullptr, nullptr, 3), 0), 87,
     "_zstrncmp() - Warning: Both <string1> and <string2> given in argmument were NULL: value '0' "
     "was returned as result."},
    {"strncmp s1", CALL(_zstrncmp(nullptr, "a", 3), -1), 88,
     "_zstrncmp() - Warning: <string1> given in argmument was NULL: value 0 or '-1' was returned "
     "as result, whether <count> was equal to 0L or not."},
    {"strncmp s1 count 0", CALL(_zstrncmp(nullptr, "a", 0), 0), 88,
     "_zstrncmp() - Warning: <string1> given in argmument was NULL: value 0 or '-1' was returned "
     "as result, whether <count> was equal to 0L or not."},
    {"strncmp s2", CALL(_zstrncmp("a", nullptr, 3), 1), 89,
     "_zstrncmp() - Warning: <string2> given in argmument was NULL: value 0 or '+1' was returned "
     "as result, whether <count> was equal to 0L or not."},
    {"strncmp s2 count 0", CALL(_zstrncmp("a", nullptr, 0), 0), 89,
     "_zstrncmp() - Warning: <string2> given in argmument was NULL: value 0 or '+1' was returned "
     "as result, whether <count> was equal to 0L or not."},
    {"strnicmp both", CALL(_zstrnicmp(nullptr, nullptr, 3), 0), 90,
     "_zstrnicmp() - Warning: Both <string1> and <string2> given in argmument were NULL: value '0' "
     "was returned as result."},
    {"strnicmp s1", CALL(_zstrnicmp(nullptr, "a", 3), -1), 91,
     "_zstrnicmp() - Warning: <string1> given in argmument was NULL: value 0 or '-1' was returned "
     "as result, whether <count> was equal to 0L or not."},
    {"strnicmp s2", CALL(_zstrnicmp("a", nullptr, 3), 1), 92,
     "_zstrnicmp() - Warning: <string2> given in argmument was NULL: value 0 or '+1' was returned "
     "as result, whether <count> was equal to 0L or not."},
    {"upper", CALL(_zstrupper(static_cast<char*>(nullptr)), nullptr), 143,
     "_zstrupper() - Warning: <string> given in argument is NULL: NULL has been returned as result "
     "of turning to string contents upper-case."},
    {"lowerASCII", CALL(_zstrlowerASCII(static_cast<char*>(nullptr)), nullptr), 142,
     "_zstrlower() - Warning: <string> given in argument is NULL: NULL has been returned as result "
     "of turning string contents to lower-case."},
    {"strichr", CALL(_zstrichr(static_cast<char const*>(nullptr), 'x'), nullptr), 123,
     "_zstr[i]chr() - Warning: <string> given in argument was NULL: NULL was returned as "
     "occurrence."},
    {"strrichr", CALL(_zstrrichr(static_cast<char*>(nullptr), 'x'), nullptr), 107,
     "_zstr[i]rchr() - Warning: <string> given in argument was NULL: NULL was returned as "
     "occurrence."},
    {"strrstr s1", CALL(_zstrrstr(static_cast<char const*>(nullptr), "a"), nullptr), 81,
     "_z[i]rstr() - Warning: <string1> given in argument was NULL: NULL was returned as result of "
     "backward search."},
    {"strristr s2", CALL(_zstrristr(g_src, nullptr), nullptr), 82,
     "_z[i]rstr() - Warning: <string2> given in argument was NULL: NULL was returned as result of "
     "backward search."},
    {"strstrcnt s1", CALL(_zstrstrcnt(nullptr, "a"), -1), 83,
     "_z[i]strstrcnt() - Warning: <string1> given in argument was NULL: -1 was returned as count "
     "of occurrences."},
    {"stristrcnt s2", CALL(_zstristrcnt("a", nullptr), -1), 102,
     "_z[i]strstrcnt() - Warning: <string2> given in argument was NULL: -1 was returned as count "
     "of occurrences."},
    {"strstrcnt empty", CALL(_zstrstrcnt("a", ""), -1), 103,
     "_z[i]strstrcnt() - Warning: <string2> given in argument was empty: -1 was returned as count "
     "of occurrences."},
    {"strccnt", CALL(_zstrccnt(nullptr, 'a'), -1), 106,
     "_zstrccnt() - Warning: <string> given in argument was NULL: -1 was returned as count of "
     "occurrences."},
    {"strspn s", CALL(_zstrspn(nullptr, "a"), 0u), 108,
     "_zstrspn() - Warning: <string> given in argument was NULL: 0L was returned as result of "
     "count."},
    {"strspn accept", CALL(_zstrspn("a", nullptr), 0u), 109,
     "_zstrspn() - Warning: <accept> given in argument was NULL: 0L was returned as result of "
     "count."},
    {"strrspn s", CALL(_zstrrspn(nullptr, "a"), 0u), 110,
     "_zstrrspn() - Warning: <string> given in argument was NULL: 0L was returned as result of "
     "count."},
    {"strrspn accept", CALL(_zstrrspn("a", nullptr), 0u), 122,
     "_zstrrspn() - Warning: <accept> given in argument was NULL: 0L was returned as result of "
     "count."},
    {"strfind string1", CALL(_zstrfind(static_cast<char const*>(nullptr), "a", 0, -1), nullptr),
     -1,
     "_zstrfind() - Warning: <string1> or <string2> given in argument is NULL: NULL was returned "
     "as result of search."},
    {"strrifind string2", CALL(_zstrrifind("a", nullptr, 0, -1), nullptr), -1,
     "_zstrrifind() - Warning: <string1> or <string2> given in argument is NULL: NULL was "
     "returned as result of search."},
    {"strnearestistr string1", CALL(_zstrnearestistr(static_cast<char const*>(nullptr), "a", 0),
                                    nullptr),
     -1,
     "_zstrnearestistr() - Warning: <string1> or <string2> given in argument is NULL: NULL was "
     "returned as result of search."},
    {"strneareststr position", CALL(_zstrneareststr("a", "a", -1), nullptr), -1,
     "_zstrneareststr() - Warning: <position> given in argument is negative: NULL was returned as "
     "result of search."},
    {"strNthrchr string", CALL(_zstrNthrchr(static_cast<char const*>(nullptr), 'a', 1), nullptr),
     -1,
     "_zstrNthrchr() - Warning: <string> given in argument is NULL: NULL was returned as result "
     "of search."},
    {"strNthichr n", CALL(_zstrNthichr("a", 'a', 0), nullptr), -1,
     "_zstrNthichr() - Warning: <n> given in argument is smaller than 1: NULL was returned as "
     "result of search."},
};

#undef CALL

class NullArgument : public zelstr::test::WarningsTest,
                     public ::testing::WithParamInterface<NullCase> {};

TEST_P(NullArgument, FilesItsWarningAndReturnsItsFallback) {
  NullCase const& c = GetParam();
  std::snprintf(g_dest, sizeof g_dest, "intact");
  EXPECT_TRUE(c.gives_fallback());
  EXPECT_TRUE(zelstr::test::filed_exactly({ExpectedWarning{c.id, c.text}}));
  // Only the NULL src of _zstrsafecpyf0 with a count may touch the buffer.
  EXPECT_STREQ(g_dest, "intact");
}

INSTANTIATE_TEST_SUITE_P(StringCalls, NullArgument, ::testing::ValuesIn(kCases),
                         [](auto const& info) {
                           std::string name = info.param.name;
                           for (char& ch : name) {
                             if (!std::isalnum(static_cast<unsigned char>(ch))) ch = '_';
                           }
                           return name;
                         });

using NullAccepted = zelstr::test::WarningsTest;

TEST_F(NullAccepted, SafeCopyOfNullSourceEmptiesTheDestination) {
  char dest[] = "intact";
  EXPECT_EQ(_zstrsafecpyf0(dest, nullptr, 5), dest);
  EXPECT_EQ(std::string(dest, sizeof dest), std::string("\0ntact\0", 7));
  EXPECT_TRUE(zelstr::test::filed_exactly({ExpectedWarning{
      135,
      "_zstrsafecpyf0() - Warning: <src> given in argmument was NULL: an emptied destination "
      "string was returned as copy result since <count> was equal or greater than 1."}}));
}

// These calls take NULL as a value and file nothing.
TEST_F(NullAccepted, QuietCallsFileNothing) {
  char const* s = "abc";
  EXPECT_EQ(_zstrdiffpoint(nullptr, s, 1), nullptr);
  EXPECT_EQ(_zstrdiffpoint(s, nullptr, 1), s);
  EXPECT_EQ(_zstrmax(s, nullptr), s);
  EXPECT_EQ(_zstrmin(nullptr, s), s);
  EXPECT_EQ(_zstrmax(nullptr, nullptr), nullptr);
  EXPECT_EQ(_zstrnullisablecmp(nullptr, nullptr), 0);
  EXPECT_EQ(_zstrnullisablecmp(nullptr, ""), -1);
  EXPECT_EQ(_zstrnullisableicmp("", nullptr), 1);
  EXPECT_EQ(_zstrdupalloc(nullptr, 4), nullptr);
  EXPECT_EQ(_zstrdupnalloc(nullptr, 4, 4), nullptr);
  EXPECT_TRUE(zelstr::test::filed_nothing());
}

}  // namespace
