// reserved_words.cpp - is a word reserved in a T-SQL or Oracle version?
//
// Each version's set is the set of an older version plus one list or a few
// words, sometimes minus a few words.  The rules below say so in the terms
// of word_set.h, and the compiler builds every version's set from them: a
// test is then one search in one sorted set, whatever the version's
// history.  Removals are applied after additions, so that a word both
// added and removed by a rule (none today) stays out, as when the removals
// are checked first.
#include "sql/report.h"
#include "sql/reserved_lists.h"
#include "sql/versions.h"
#include "sql/word_set.h"
#include "zelstr/reserved.h"

namespace {

using zelstr::frame::Unit;
using zelstr::sql::words;
using zelstr::sql::WordSet;
namespace msg = zelstr::sql::msg;
namespace sql = zelstr::sql;

// The few words the version rules add or remove beside the lists.
constexpr char const* kTsql10Added[] = {"COLLATE", "FILE", "FUNCTION", "OPENDATASOURCE", "OPENXML"};
constexpr char const* kTsql11Added[] = {"IDENTITY_GAP", "JOIN", "MODIFY", "QUIESCE"};
constexpr char const* kTsql12Removed[] = {"DOUBLE", "PRECISION"};
constexpr char const* kTsql12Added[] = {"DETERMINISTIC", "FUNC", "FUNCTION", "INOUT",
                                        "JAR",           "OUT",  "REMOVE",   "RETURNS"};
constexpr char const* kTsql14Added[] = {"PIVOT", "REVERT", "TABLESAMPLE", "UNPIVOT"};

// T-SQL, by short version (13 and 15 are 12; 16 and 17 are 14).
constexpr auto kTsql4 = words(sql::kTsql4);
constexpr auto kTsql6 = words(sql::kTsql6);
constexpr auto kTsql7 = kTsql6 + words(sql::kTsql7Added);
constexpr auto kTsql8 = kTsql4 + words(sql::kTsql8Added);
constexpr auto kTsql9 = kTsql6 + words(sql::kTsql9Added);
constexpr auto kTsql10 = kTsql8 + words(kTsql10Added) - words(sql::kTsql10Removed);
constexpr auto kTsql11 = kTsql9 + words(kTsql11Added);
constexpr auto kTsql12 = kTsql11 + words(kTsql12Added) - words(kTsql12Removed);
constexpr auto kTsql14 = kTsql10 + words(kTsql14Added);

// Oracle: 102 and 110; 103, 120 and 1160; every other handled version.
constexpr auto kOracle102 = words(sql::kOracleBase);
constexpr auto kOracle103 = kOracle102 + words(sql::kOracleSecond);
constexpr auto kOracleLater = kOracle103 + words(sql::kOracleThird);

// The searched form of a set the compiler built.
template <sql::WordSequence const& kWords>
constexpr sql::WordSetData<kWords.size> kSearched{kWords};

// The lengths of the words of each language's sets, by first two bytes.
constexpr sql::LengthFilter kTsqlLengths(kTsql4, kTsql6, kTsql7, kTsql8, kTsql9, kTsql10, kTsql11,
                                         kTsql12, kTsql14);
constexpr sql::LengthFilter kOracleLengths(kOracle102, kOracle103, kOracleLater);

constexpr WordSet kTsqlSets[] = {
    {kSearched<kTsql4>, kTsqlLengths},  {kSearched<kTsql6>, kTsqlLengths},
    {kSearched<kTsql7>, kTsqlLengths},  {kSearched<kTsql8>, kTsqlLengths},
    {kSearched<kTsql9>, kTsqlLengths},  {kSearched<kTsql10>, kTsqlLengths},
    {kSearched<kTsql11>, kTsqlLengths}, {kSearched<kTsql12>, kTsqlLengths},
    {kSearched<kTsql14>, kTsqlLengths}};
constexpr WordSet kOracleSets[] = {{kSearched<kOracle102>, kOracleLengths},
                                   {kSearched<kOracle103>, kOracleLengths},
                                   {kSearched<kOracleLater>, kOracleLengths}};

// The set of a T-SQL version (short or year form), NULL for an unhandled
// one.  A year form stands for its short form: 2004, and 2006 to 2017;
// 2005 is not handled.
WordSet const* tsql_set(int version) {
  if (version == 2004 || (version >= 2006 && version <= 2017)) version -= 2000;
  switch (version) {
    case 4:
      return &kTsqlSets[0];
    case 6:
    case 7:
    case 8:
    case 9:
    case 10:
    case 11:
    case 12:
      return &kTsqlSets[version - 5];
    case 13:
    case 15:
      return &kTsqlSets[7];
    case 14:
    case 16:
    case 17:
      return &kTsqlSets[8];
    default:
      return nullptr;
  }
}

// The set of a handled Oracle version.
WordSet const& oracle_set(int version) {
  switch (version) {
    case 102:
    case 110:
      return kOracleSets[0];
    case 103:
    case 120:
    case 1160:
      return kOracleSets[1];
    default:
      return kOracleSets[2];
  }
}

bool is_ascii_letter(char c) { return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z'); }

}  // namespace

int _zistsqlresword(char const* word, int version) noexcept {
  if (word == nullptr || !is_ascii_letter(word[0])) return 0;
  WordSet const* set = tsql_set(version);
  if (set == nullptr) {
    sql::warn_format(Unit::zelstrsqlserverfnc, __LINE__, msg::kTsqlResWordBadVersionFormat,
                     version);
    return 0;
  }
  return set->contains(word) ? 1 : 0;
}

int _zisosqlresword(char const* word, int version) noexcept {
  if (!sql::is_plsql_version(version)) {
    sql::warn_format(Unit::zelstroraclefnc, __LINE__, msg::kOsqlResWordBadVersionFormat, version);
    return 0;
  }
  if (word == nullptr) return 0;  // the empty word: never listed
  return oracle_set(version).contains(word) ? 1 : 0;
}
