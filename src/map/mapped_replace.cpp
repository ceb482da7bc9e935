// mapped_replace.cpp - _zmapstrNreplace, _zmapstr1replace,
// _zmapstrdeltalen, _zmapstrmultideltalen.
#include <cstring>

#include "frame/memory.h"
#include "map/map_handle.h"
#include "str/replace/deltalen.h"
#include "str/replace/engine.h"
#include "str/replace/through_map.h"
#include "zelstr/mapped.h"
#include "zelstr/replace.h"

using namespace zelstr::map;
namespace replace = zelstr::str::replace;

char* _zmapstrNreplace(void* map, char* string, char const* s2, char const* s3,
                       unsigned long maxlen) noexcept {
  if (is_bad(map)) warn(msg::kMapReplaceInvalid);
  if (map == nullptr || is_bad(map)) return _zstrNreplace(string, s2, s3, maxlen);
  return replace::replace_every_through(table_of(map), string, s2, s3, maxlen);
}

char* _zmapstr1replace(void* map, char* string, char const* s2, char const* s3,
                       unsigned long maxlen) noexcept {
  if (is_bad(map)) warn(msg::kMapReplaceInvalid);
  if (map == nullptr || is_bad(map)) return _zstr1replace(string, s2, s3, maxlen);
  if (s2 == nullptr || s3 == nullptr) {
    warn(msg::kReplaceNullStrings);
    return nullptr;
  }
  if (string == nullptr || *s2 == '\0') return string;
  std::size_t const length = std::strlen(string), len2 = std::strlen(s2);
  if (len2 > length) return string;
  zelstr::frame::FailureWatch const watch;
  char const* const at = len2 == 1 ? _zmapstrchr(map, string, *s2) : _zmapstrstr(map, string, s2);
  if (at == nullptr) return watch.failed() ? nullptr : string;  // no memory for the search
  replace::Run const run{string, length, s2, len2, s3, std::strlen(s3), maxlen & 0xFFFFFFFFu,
                         false,  nullptr};
  return replace::replace_one(run, string + (at - string));
}

long _zmapstrdeltalen(void* map, char* string, char* s2, char* s3) noexcept {
  if (is_bad(map)) warn(msg::kMapDeltalenInvalid);
  if (map == nullptr || is_bad(map)) return _zstrdeltalen(string, s2, s3);
  return replace::delta_length(string, s2, s3, table_of(map));
}

long _zmapstrmultideltalen(void* map, char* string, zstr_couple* couples) noexcept {
  if (is_bad(map)) warn(msg::kMapMultiDeltalenInvalid);
  if (map == nullptr || is_bad(map)) return _zstrmultideltalen(string, couples);
  return replace::multi_delta_length(string, couples, table_of(map));
}
