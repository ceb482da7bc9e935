// reserved_words.cpp - is a word reserved in a T-SQL or Oracle version?
//
// A version's set is the set of an older version plus one list or a few
// words (sometimes minus a few words), so each test walks the chain of its
// version down to a base list, searching one list per step (only the
// words of the list that share the word's first letter, and only when one
// of them has the word's length).  The word is compared as if upper-cased,
// without a copy; its first letter and length alone rule out most words
// that no version reserves.
#include <cstdint>

#include "sql/report.h"
#include "sql/reserved_lists.h"
#include "sql/versions.h"
#include "zelstr/reserved.h"

namespace {

using zelstr::frame::Unit;
using zelstr::sql::WordList;
namespace msg = zelstr::sql::msg;
namespace sql = zelstr::sql;

constexpr std::size_t kLongestWord = 24;
static_assert(sql::kTsql4List.longest <= kLongestWord && sql::kTsql6List.longest <= kLongestWord &&
                  sql::kOracleBaseList.longest <= kLongestWord &&
                  sql::kOracleSecondList.longest <= kLongestWord &&
                  sql::kOracleThirdList.longest <= kLongestWord,
              "the word buffer holds every listed word");

// The few words the version rules add or remove beside the lists, kept as
// lists too so that they are searched the same way.
constexpr char const* kTsql10Added[] = {"COLLATE", "FILE", "FUNCTION", "OPENDATASOURCE", "OPENXML"};
constexpr char const* kTsql11Added[] = {"IDENTITY_GAP", "JOIN", "MODIFY", "QUIESCE"};
constexpr char const* kTsql12Removed[] = {"DOUBLE", "PRECISION"};
constexpr char const* kTsql12Added[] = {"DETERMINISTIC", "FUNC", "FUNCTION", "INOUT",
                                        "JAR",           "OUT",  "REMOVE",   "RETURNS"};
constexpr char const* kTsql14Added[] = {"PIVOT", "REVERT", "TABLESAMPLE", "UNPIVOT"};
constexpr WordList kTsql10AddedList = sql::make_list(kTsql10Added);
constexpr WordList kTsql11AddedList = sql::make_list(kTsql11Added);
constexpr WordList kTsql12RemovedList = sql::make_list(kTsql12Removed);
constexpr WordList kTsql12AddedList = sql::make_list(kTsql12Added);
constexpr WordList kTsql14AddedList = sql::make_list(kTsql14Added);

// For each first letter, the lengths (bit n: n characters) of the words
// any version reserves: most words that no version reserves are told apart
// by this alone, before any search.
struct LengthFilter {
  std::uint32_t lengths[26];
};

template <std::size_t... N>
constexpr LengthFilter make_filter(char const* const (&... lists)[N]) {
  LengthFilter filter{};
  auto add = [&filter](char const* word) {
    std::size_t n = 0;
    while (word[n] != '\0') ++n;
    filter.lengths[word[0] - 'A'] |= std::uint32_t{1} << n;
  };
  (..., [&] {
    for (char const* word : lists) add(word);
  }());
  return filter;
}

constexpr LengthFilter kTsqlFilter =
    make_filter(sql::kTsql4, sql::kTsql6, sql::kTsql7Added, sql::kTsql8Added, sql::kTsql9Added,
                kTsql10Added, kTsql11Added, kTsql12Added, kTsql14Added);
constexpr LengthFilter kOracleFilter =
    make_filter(sql::kOracleBase, sql::kOracleSecond, sql::kOracleThird);

// Upper case by the C run-time rules: ASCII letters only.
constexpr unsigned char upper_ascii(unsigned char c) {
  return (c >= 'a' && c <= 'z') ? static_cast<unsigned char>(c - 'a' + 'A') : c;
}

// The word looked for, compared as if upper-cased (the caller's string is
// only read), and whether it may be reserved at all: a word longer than any
// listed word, or whose first letter and length no listed word has, is not.
struct UpperWord {
  unsigned char const* text;
  std::size_t length = 0;
  unsigned letter = 26;  // the upper-cased first letter, 0 for 'A'
  bool candidate = false;

  UpperWord(char const* word, LengthFilter const& filter)
      : text(reinterpret_cast<unsigned char const*>(word)) {
    while (text[length] != '\0') {
      if (++length > kLongestWord) return;
    }
    letter = static_cast<unsigned>(upper_ascii(text[0])) - 'A';
    candidate = letter < 26 && ((filter.lengths[letter] >> length) & 1) != 0;
  }
};

// Byte order of the word (upper-cased) and a listed word with the same
// first letter.
int compare_tails(unsigned char const* word, char const* listed_word) {
  auto const* b = reinterpret_cast<unsigned char const*>(listed_word) + 1;
  unsigned char const* a = word + 1;
  for (; upper_ascii(*a) == *b && *b != '\0'; ++a, ++b) {
  }
  return upper_ascii(*a) - *b;
}

// Binary search among the words of `list` that share the word's first
// letter (an upper-case letter: UpperWord made sure), unless none of them
// has the word's length.
bool listed(WordList const& list, UpperWord const& word) {
  unsigned const letter = word.letter;
  if (((list.lengths[letter] >> word.length) & 1) == 0) return false;
  int lo = list.start[letter];
  int hi = list.start[letter + 1] - 1;
  while (lo <= hi) {
    int const mid = (lo + hi) / 2;
    int const order = compare_tails(word.text, list.words[mid]);
    if (order == 0) return true;
    if (order < 0) {
      hi = mid - 1;
    } else {
      lo = mid + 1;
    }
  }
  return false;
}

// Short T-SQL version for a year form (2004 and 2006 to 2017), else the
// version itself; 2005 stays as it is and is not handled.
int short_tsql_version(int version) {
  if (version == 2004 || (version >= 2006 && version <= 2017)) return version - 2000;
  return version;
}

bool is_handled_tsql(int version) { return version == 4 || (version >= 6 && version <= 17); }

// `word` (upper case) is reserved in the short T-SQL version `version`.
bool tsql_reserved(UpperWord const& word, int version) {
  switch (version) {
    case 4:
      return listed(sql::kTsql4List, word);
    case 6:
      return listed(sql::kTsql6List, word);
    case 7:
      return tsql_reserved(word, 6) || listed(sql::kTsql7AddedList, word);
    case 8:
      return tsql_reserved(word, 4) || listed(sql::kTsql8AddedList, word);
    case 9:
      return tsql_reserved(word, 6) || listed(sql::kTsql9AddedList, word);
    case 10:
      if (listed(sql::kTsql10RemovedList, word)) return false;
      return tsql_reserved(word, 8) || listed(kTsql10AddedList, word);
    case 11:
      return tsql_reserved(word, 9) || listed(kTsql11AddedList, word);
    case 12:
    case 13:
      if (listed(kTsql12RemovedList, word)) return false;
      return tsql_reserved(word, 11) || listed(kTsql12AddedList, word);
    case 14:
    case 16:
    case 17:
      return tsql_reserved(word, 10) || listed(kTsql14AddedList, word);
    case 15:
      return tsql_reserved(word, 12);
    default:
      return false;
  }
}

// `word` (upper case) is reserved in the handled Oracle version `version`.
bool oracle_reserved(UpperWord const& word, int version) {
  switch (version) {
    case 102:
    case 110:
      return listed(sql::kOracleBaseList, word);
    case 103:
    case 120:
    case 1160:
      return oracle_reserved(word, 102) || listed(sql::kOracleSecondList, word);
    default:
      return oracle_reserved(word, 103) || listed(sql::kOracleThirdList, word);
  }
}

bool is_ascii_letter(char c) { return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z'); }

}  // namespace

int _zistsqlresword(char const* word, int version) {
  if (word == nullptr || !is_ascii_letter(word[0])) return 0;
  int const short_version = short_tsql_version(version);
  if (!is_handled_tsql(short_version)) {
    sql::warn_format(Unit::zelstrsqlserverfnc, __LINE__, msg::kTsqlResWordBadVersionFormat,
                     version);
    return 0;
  }
  UpperWord const upper(word, kTsqlFilter);
  return upper.candidate && tsql_reserved(upper, short_version) ? 1 : 0;
}

int _zisosqlresword(char const* word, int version) {
  if (!sql::is_plsql_version(version)) {
    sql::warn_format(Unit::zelstroraclefnc, __LINE__, msg::kOsqlResWordBadVersionFormat, version);
    return 0;
  }
  if (word == nullptr) return 0;  // the empty word: never listed
  UpperWord const upper(word, kOracleFilter);
  return upper.candidate && oracle_reserved(upper, version) ? 1 : 0;
}
