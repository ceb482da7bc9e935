// find_all_str.cpp - CFindAllStr: the all-occurrences search.
#include <cctype>
#include <cstring>

#include "errsvc/errsvc.h"
#include "frame/report.h"
#include "platform/case_compare.h"
#include "str/search/plan.h"
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
  // its terminator, nor further than the string's length: the text may be
  // long, and the search that follows finds its end.
  auto const needed = static_cast<std::size_t>(searchedLen);
  if (::strnlen(string1, needed) < needed) {
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

// Ignoring case, an occurrence is a place whose first character and
// comparison agree as a window's do, found by a loop over the text.
char const* CFindAllStr::next_occurrence(char const* from) const noexcept {
  std::size_t const n = static_cast<std::size_t>(searchedLen);
  for (char const* p = from; *p != '\0'; ++p) {
    if (fold(*p) == searchedFirst && zelstr::platform::case_compare_n(p, searched, n) == 0) {
      return p;
    }
  }
  return nullptr;
}

void CFindAllStr::stop_on(char const* at) noexcept {
  current = const_cast<char*>(at);
  ahead = at + searchedLen;
  windowHash = 0;
  windowFirst = fold(*at);
  state = kSearching;
}

int CFindAllStr::FindAll(int (*found)(char const*, void*), void* context, int overlap) noexcept {
  if (found == nullptr) {
    zelstr::frame::report(zelstr::frame::Unit::findmanystrhoary,
                          zelstr::frame::Message{-1, 4, ErrHand_Msg_ERRSVC_BAD_ARGUMENT()},
                          "CFindAllStr::FindAll");
    return -1;
  }
  if (state == kEmptySearched) {
    state = kFinished;
    found(current, context);
    return 1;
  }
  if (state != kReady && state != kSearching) {
    if (state == kTextTooShort) state = kFinished;
    return 0;
  }
  // The occurrences go to `found` from a visitor of the library's forward
  // search (one pass over the text, case kept) or from the loop above.
  struct Walk {
    int (*found)(char const*, void*);
    void* context;
    std::size_t step;
    int count;
    char const* stopped;
    static char const* visit(void* w, char const* at) {
      auto& walk = *static_cast<Walk*>(w);
      ++walk.count;
      if (walk.found(at, walk.context) == 0) {
        walk.stopped = at;
        return nullptr;
      }
      return at + walk.step;
    }
  } walk{found, context, overlap != 0 ? 1 : static_cast<std::size_t>(searchedLen), 0, nullptr};
  char const* from = current + 1;
  char const* end = nullptr;
  if (!caseInsensitive) {
    zelstr::str::search::SearchState plain;
    if (!zelstr::str::search::prepare(plain, searched, static_cast<std::uint32_t>(searchedLen))) {
      return -1;  // no memory for the search (counted)
    }
    end = zelstr::str::search::find_all(from, searched, plain,
                                        zelstr::str::search::Visitor{&Walk::visit, &walk});
  } else {
    for (char const* at = next_occurrence(from); at != nullptr; at = next_occurrence(at)) {
      at = Walk::visit(&walk, at);
      if (at == nullptr) break;
    }
    if (walk.stopped == nullptr) end = from + std::strlen(from);
  }
  if (walk.stopped != nullptr) {
    stop_on(walk.stopped);
    return walk.count;
  }
  // Exhausted: on the text's last window, as a walk of FindByXOR ends.
  if (end - text >= searchedLen) current = const_cast<char*>(end - searchedLen);
  ahead = end;
  state = kFinished;
  return walk.count;
}

int CFindAllStr::FindAll(char const** positions, int capacity, int overlap) noexcept {
  if (positions == nullptr || capacity < 0) {
    zelstr::frame::report(zelstr::frame::Unit::findmanystrhoary,
                          zelstr::frame::Message{-1, 4, ErrHand_Msg_ERRSVC_BAD_ARGUMENT()},
                          "CFindAllStr::FindAll");
    return -1;
  }
  if (capacity == 0) return 0;
  struct Array {
    char const** positions;
    int capacity;
    int stored;
  } array{positions, capacity, 0};
  return FindAll(
      [](char const* at, void* c) {
        auto& a = *static_cast<Array*>(c);
        a.positions[a.stored++] = at;
        return a.stored < a.capacity ? 1 : 0;
      },
      &array, overlap);
}

char const* CFindAllStr::GetLastFindPos() const noexcept { return current; }

void CFindAllStr::SetJumpQty(int jump) noexcept { m_nJumpQty = jump; }
int CFindAllStr::GetJumpQty() noexcept { return m_nJumpQty; }

CFindAllStr& CFindAllStr::operator=(CFindAllStr const& other) noexcept = default;
