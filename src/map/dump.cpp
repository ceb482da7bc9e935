// dump.cpp - _zmapdump2string: a map's table as text.
#include "frame/per_thread.h"
#include "map/map_handle.h"
#include "zelstr/grwstr.h"
#include "zelstr/map.h"

using namespace zelstr::map;

namespace {

// Each thread's text, valid until its next call.
struct DumpText {
  CGrwStr text{4096, -1, 0};
};
using DumpSlot = zelstr::frame::PerThread<DumpText, zelstr::frame::ThreadSlot::kMap>;

}  // namespace

// A line that cannot be appended for lack of memory leaves the text empty:
// the result is then NULL rather than a table with lines missing.
char const* _zmapdump2string(void const* map, int changedOnly) noexcept {
  if (is_bad(map)) return nullptr;
  CGrwStr& text = DumpSlot::get().text;
  if (text.emptynonnull() == nullptr) return nullptr;
  // A NULL map is the identity: every line shows a byte onto itself.
  auto image = [map](int c) { return map == nullptr ? c : int{table_of(map)[c]}; };
  for (int c = 0; c < 256; ++c) {
    int const to = image(c);
    bool const same = to == c;
    if (same && changedOnly != 0) continue;
    char const* const head = c < 32 ? (same ? msg::kMapDumpSameNumber : msg::kMapDumpChangedNumber)
                                    : (same ? msg::kMapDumpSameChar : msg::kMapDumpChangedChar);
    bool const written =
        text.strcatf(head, c) != nullptr &&
        (to < 32 ? text.strcatf(msg::kMapDumpNumber, static_cast<int>(static_cast<signed char>(to)))
                 : text.strcatf(msg::kMapDumpChar, to)) != nullptr;
    if (!written) return nullptr;
  }
  return text.gethos();
}
