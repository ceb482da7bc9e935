// dump.cpp - _zmapdump2string: a map's table as text.
#include "map/map_handle.h"
#include "zelstr/grwstr.h"
#include "zelstr/map.h"

using namespace zelstr::map;

char const* _zmapdump2string(void const* map, int changedOnly) {
  if (is_bad(map)) return nullptr;
  static CGrwStr s_text(4096, -1, 0);
  s_text.emptynonnull();
  // A NULL map is the identity: every line shows a byte onto itself.
  auto image = [map](int c) { return map == nullptr ? c : int{table_of(map)[c]}; };
  for (int c = 0; c < 256; ++c) {
    int const to = image(c);
    bool const same = to == c;
    if (same && changedOnly != 0) continue;
    if (c < 32) {
      s_text.strcatf(same ? msg::kMapDumpSameNumber : msg::kMapDumpChangedNumber, c);
    } else {
      s_text.strcatf(same ? msg::kMapDumpSameChar : msg::kMapDumpChangedChar, c);
    }
    if (to < 32) {
      s_text.strcatf(msg::kMapDumpNumber, static_cast<int>(static_cast<signed char>(to)));
    } else {
      s_text.strcatf(msg::kMapDumpChar, to);
    }
  }
  return s_text.gethos() != nullptr ? s_text.gethos() : "";
}
