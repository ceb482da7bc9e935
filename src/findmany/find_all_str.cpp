// find_all_str.cpp - CFindAllStr: the all-occurrences search.
#include <cctype>
#include <cstring>

#include "frame/report.h"
#include "platform/case_compare.h"
#include "zelstr/findall.h"

namespace {

void warn(zelstr::frame::Message const& message, int line = __builtin_LINE()) {
  zelstr::frame::report(zelstr::frame::Unit::findmanystrhoary, message,
                        zelstr::frame::kUnknownFunction, line);
}

namespace msg = zelstr::frame::msg;

enum State : int { kReady, kEmptySearched, kTextTooShort, kSearching, kFinished, kBadArgument };

}  // namespace

int CFindAllStr::m_nJumpQty = 0;

CFindAllStr::CFindAllStr(char const* string1, char const* string2, int caseInsensitive_) noexcept
    : state(kBadArgument),
      current(nullptr),
      searched(string2),
      ahead(nullptr),
      caseInsensitive(caseInsensitive_),
      searchedLen(0),
      searchedHash(0),
      windowHash(0),
      windowFirst(0),
      searchedFirst(0),
      text(string1) {
  if (string1 == nullptr) {
    warn(msg::kFindAllNullString1);
    return;
  }
  if (string2 == nullptr) {
    warn(msg::kFindAllNullString2);
    return;
  }
  searchedLen = static_cast<int>(std::strlen(string2));
  if (searchedLen == 0) {
    current = const_cast<char*>(string1);  // the one "occurrence" is the text's start
    state = kEmptySearched;
    return;
  }
  // A text shorter than the searched string, measured without reading past
  // its terminator.
  if (std::strlen(string1) < static_cast<std::size_t>(searchedLen)) {
    state = kTextTooShort;
    return;
  }
  for (int i = searchedLen - 1; i >= 0; --i) searchedHash ^= fold(string2[i]);
  ahead = string1 + searchedLen;
  current = const_cast<char*>(string1) - 1;
  searchedFirst = fold(string2[0]);
  state = kReady;
}

unsigned char CFindAllStr::fold(char c) const noexcept {
  auto const b = static_cast<unsigned char>(c);
  return caseInsensitive ? static_cast<unsigned char>(std::toupper(b)) : b;
}

unsigned char CFindAllStr::window_xor(unsigned char hash, int from, int to) const noexcept {
  for (int i = from; i <= to; ++i) hash ^= fold(current[i]);
  return hash;
}

char* CFindAllStr::FindByXOR(int jump) noexcept {
  if (jump != 0 && (state == kReady || state == kSearching)) {
    if (jump > 0) {
      for (int k = 0; k < jump; ++k) {
        if (ahead[k] == '\0') {
          state = kFinished;
          return nullptr;
        }
      }
      ahead += jump;
    } else if (current + jump < text - 1) {
      jump = static_cast<int>(text - 1 - current);  // no further back than the start
    }
    current += jump;
    windowHash = window_xor(searchedHash, 1, state == kReady ? searchedLen : searchedLen - 1);
    windowFirst = 0;
  }
  switch (state) {
    case kReady:
      if (jump == 0) windowHash = window_xor(searchedHash, 1, searchedLen);
      state = kSearching;
      break;
    case kEmptySearched:
      state = kFinished;
      return current;
    case kSearching: {
      char const entering = *ahead++;
      if (entering == '\0') {
        --ahead;  // stays on the terminator: the position no longer moves
        state = kFinished;
        return nullptr;
      }
      windowHash = static_cast<unsigned char>(windowFirst ^ windowHash ^ fold(entering));
      break;
    }
    default:  // text too short (then finished), finished, bad argument
      if (state == kTextTooShort) state = kFinished;
      return nullptr;
  }
  ++current;
  windowFirst = fold(*current);
  if (windowFirst != searchedFirst || windowHash != 0) return nullptr;
  std::size_t const n = static_cast<std::size_t>(searchedLen);
  bool const same = caseInsensitive ? zelstr::platform::case_compare_n(current, searched, n) == 0
                                    : std::strncmp(current, searched, n) == 0;
  return same ? current : nullptr;
}

char* CFindAllStr::FindByXOR() noexcept { return FindByXOR(m_nJumpQty); }

char const* CFindAllStr::GetLastFindPos() const noexcept { return current; }

void CFindAllStr::SetJumpQty(int jump) noexcept { m_nJumpQty = jump; }
int CFindAllStr::GetJumpQty() noexcept { return m_nJumpQty; }

CFindAllStr& CFindAllStr::operator=(CFindAllStr const& other) noexcept = default;
