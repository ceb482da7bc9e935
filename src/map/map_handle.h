// map_handle.h - telling the map handles apart, and the maps' warnings.
#ifndef ZELSTR_MAP_MAP_HANDLE_H
#define ZELSTR_MAP_MAP_HANDLE_H

#include "frame/report.h"
#include "zelstr/types.h"

namespace zelstr::map {

namespace msg = frame::msg;

inline bool is_bad(void const* map) { return map == ZEAL_STR_BAD_MAP; }

// The table of a real map (neither NULL nor ZEAL_STR_BAD_MAP).
inline unsigned char const* table_of(void const* map) {
  return static_cast<unsigned char const*>(map);
}

// Reports a message of the maps; literal texts name `function`.
inline void warn(frame::Message const& message, char const* function = frame::kUnknownFunction,
                 int line = __builtin_LINE()) {
  frame::report(frame::Unit::zeal_str, message, function, line);
}

}  // namespace zelstr::map

#endif  // ZELSTR_MAP_MAP_HANDLE_H
