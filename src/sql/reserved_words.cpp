// reserved_words.cpp - is a word reserved in a T-SQL or Oracle version?
//
// A version's set is the set of an older version plus one list or a few
// words (sometimes minus a few words), so each test walks the chain of its
// version down to a base list, searching one short list per step.  The
// word is upper-cased once into a local buffer; a word longer than every
// listed word cannot be reserved.
#include <cstring>
#include <initializer_list>

#include "sql/report.h"
#include "sql/reserved_lists.h"
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

// A word upper-cased by the C run-time rules (ASCII letters only); `fits`
// is false when it is longer than any listed word.
struct UpperWord {
  char text[kLongestWord + 1];
  bool fits;

  explicit UpperWord(char const* word) : text{}, fits(true) {
    std::size_t n = 0;
    for (; word[n] != '\0'; ++n) {
      if (n == kLongestWord) {
        fits = false;
        text[0] = '\0';
        return;
      }
      char const c = word[n];
      text[n] = (c >= 'a' && c <= 'z') ? static_cast<char>(c - 'a' + 'A') : c;
    }
    text[n] = '\0';
  }
};

// Binary search among the words of `list` that share the word's first
// letter.
bool listed(WordList const& list, char const* word) {
  unsigned const letter = static_cast<unsigned char>(word[0]) - 'A';
  if (letter >= 26) return false;
  int lo = list.start[letter];
  int hi = list.start[letter + 1] - 1;
  while (lo <= hi) {
    int const mid = (lo + hi) / 2;
    int const order = std::strcmp(word + 1, list.words[mid] + 1);
    if (order == 0) return true;
    if (order < 0) {
      hi = mid - 1;
    } else {
      lo = mid + 1;
    }
  }
  return false;
}

bool one_of(char const* word, std::initializer_list<char const*> words) {
  for (char const* w : words) {
    if (std::strcmp(word, w) == 0) return true;
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
bool tsql_reserved(char const* word, int version) {
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
      return tsql_reserved(word, 8) ||
             one_of(word, {"COLLATE", "FILE", "FUNCTION", "OPENDATASOURCE", "OPENXML"});
    case 11:
      return tsql_reserved(word, 9) || one_of(word, {"IDENTITY_GAP", "JOIN", "MODIFY", "QUIESCE"});
    case 12:
    case 13:
      if (one_of(word, {"DOUBLE", "PRECISION"})) return false;
      return tsql_reserved(word, 11) || one_of(word, {"DETERMINISTIC", "FUNC", "FUNCTION", "INOUT",
                                                      "JAR", "OUT", "REMOVE", "RETURNS"});
    case 14:
    case 16:
    case 17:
      return tsql_reserved(word, 10) || one_of(word, {"PIVOT", "REVERT", "UNPIVOT", "TABLESAMPLE"});
    case 15:
      return tsql_reserved(word, 12);
    default:
      return false;
  }
}

bool is_handled_oracle(int version) {
  switch (version) {
    case 102:
    case 110:
    case 103:
    case 120:
    case 1160:
    case 104:
    case 105:
    case 107:
    case 108:
    case 109:
    case 130:
    case 140:
    case 150:
    case 151:
    case 152:
      return true;
    default:
      return version >= 1161 && version <= 1165;
  }
}

// `word` (upper case) is reserved in the handled Oracle version `version`.
bool oracle_reserved(char const* word, int version) {
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
  UpperWord const upper(word);
  return upper.fits && tsql_reserved(upper.text, short_version) ? 1 : 0;
}

int _zisosqlresword(char const* word, int version) {
  if (!is_handled_oracle(version)) {
    sql::warn_format(Unit::zelstroraclefnc, __LINE__, msg::kOsqlResWordBadVersionFormat, version);
    return 0;
  }
  if (word == nullptr) return 0;  // the empty word: never listed
  UpperWord const upper(word);
  return upper.fits && oracle_reserved(upper.text, version) ? 1 : 0;
}
