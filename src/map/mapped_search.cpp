// mapped_search.cpp - _zmapstrstr, _zmapstristr, _zmapstrrstr,
// _zmapstrstrcnt, _zmapstrccnt, _zmapstrchr, _zmapstrrchr, _zmapstrichr.
//
// The searches through a map are the library's forward search with the map
// as its fold table, on a search state of the call's own: the vector scan
// looks for two of the pattern's bytes together with the other byte of the
// same image, when an image has at most two bytes.
#include <cstring>

#include "chars/upper_fold.h"
#include "map/map_handle.h"
#include "str/search/forward.h"
#include "str/search/walks.h"
#include "zelstr/mapped.h"
#include "zelstr/position.h"
#include "zelstr/search.h"

using namespace zelstr::map;
namespace search = zelstr::str::search;

namespace {

// One table after another: the fold tables of _zmapstristr (toupper, then
// the map) and _zmapstrichr (the map, then toupper).
struct Composed {
  unsigned char table[256];
  Composed(unsigned char const* first, unsigned char const* then) {
    for (int c = 0; c < 256; ++c) table[c] = then[first[c]];
  }
};

unsigned char const* upper() { return zelstr::chars::upper_fold().upper; }

char const* forward_through(unsigned char const* table, char const* s1, char const* s2) {
  search::SearchState state;
  state.map = table;
  return search::forward_search(s1, s2, state);
}

}  // namespace

char const* _zmapstrstr(void* map, char const* string1, char const* string2) noexcept {
  if (is_bad(map)) warn(msg::kMapStrstrInvalid);
  if (map == nullptr || is_bad(map)) return _zstrstr(string1, string2);
  return forward_through(table_of(map), string1, string2);
}

char const* _zmapstristr(void* map, char const* string1, char const* string2) noexcept {
  if (is_bad(map)) warn(msg::kMapStristrInvalid);
  if (map == nullptr || is_bad(map)) return _zstristr(string1, string2);
  return forward_through(Composed(upper(), table_of(map)).table, string1, string2);
}

char const* _zmapstrrstr(void* map, char const* string1, char const* string2) noexcept {
  if (is_bad(map)) warn(msg::kMapStrrstrInvalid);
  if (map == nullptr || is_bad(map) || string1 == nullptr || string2 == nullptr ||
      *string2 == '\0') {
    return _zstrrstr(string1, string2);
  }
  return search::last_occurrence(string1, string2, table_of(map));
}

long _zmapstrstrcnt(void* map, char* string1, char* string2) noexcept {
  if (is_bad(map)) warn(msg::kMapStrstrcntInvalid);
  if (map == nullptr || is_bad(map) || string1 == nullptr || string2 == nullptr ||
      *string2 == '\0') {
    return _zstrstrcnt(string1, string2);
  }
  return search::count_occurrences(string1, string2, table_of(map));
}

unsigned long _zmapstrccnt(void* map, char* string, char c) noexcept {
  if (is_bad(map)) warn(msg::kMapStrccntInvalid);
  if (map == nullptr || is_bad(map) || string == nullptr) {
    return static_cast<unsigned long>(static_cast<long>(_zstrccnt(string, c)));
  }
  return search::count_bytes(string, c, table_of(map));
}

char const* _zmapstrchr(void* map, char const* string, char c) noexcept {
  if (is_bad(map)) warn(msg::kMapStrchrInvalid);
  if (map == nullptr || is_bad(map) || string == nullptr) return _zstrchr(string, c);
  return search::find_byte(string, c, table_of(map), false);
}

char const* _zmapstrrchr(void* map, char const* string, char c) noexcept {
  if (is_bad(map)) warn(msg::kMapStrrchrInvalid);
  if (map == nullptr || is_bad(map) || string == nullptr) return _zstrrchr(string, c);
  return search::find_byte(string, c, table_of(map), true);
}

char const* _zmapstrichr(void* map, char const* string, char c) noexcept {
  if (is_bad(map)) warn(msg::kMapStrichrInvalid);
  if (map == nullptr || is_bad(map) || string == nullptr) return _zstrichr(string, c);
  return search::find_byte(string, c, Composed(table_of(map), upper()).table, false);
}
