// marked_definition.cpp - the notice of a refused definition.
#include "map/marked_definition.h"

#include <cstdio>

#include "frame/memory.h"
#include "map/map_handle.h"
#include "zelstr/scratch.h"

namespace zelstr::map {

void report_marked_definition(char const* format, char const* function, char const* definition,
                              std::size_t length, std::size_t start, std::size_t n) {
  char* const marked = frame::new_array<char>(length + 5);
  if (marked != nullptr) {
    std::snprintf(marked, length + 5, "%.*s<<%.*s>>%s", static_cast<int>(start), definition,
                  static_cast<int>(n), definition + start, definition + start + n);
  }
  warn(frame::Message{-1, 2, _zstrprintf(format, marked != nullptr ? marked : msg::kMapNoCopy)},
       function);
  delete[] marked;
}

}  // namespace zelstr::map
