// grep_colors.h - the colours of --color, as GNU grep sets them: its
// defaults, changed by the GREP_COLORS variable (bn, for byte offsets this
// tool does not print, is not read).
#ifndef ZELSTR_TOOL_GREP_COLORS_H
#define ZELSTR_TOOL_GREP_COLORS_H

#include <string>
#include <string_view>

namespace zelstr::tool {

struct GrepColors {
  std::string selected_match = "01;31";  // ms
  std::string context_match = "01;31";   // mc
  std::string file_name = "35";          // fn
  std::string line_number = "32";        // ln
  std::string separator = "36";          // se
  std::string selected_line;             // sl
  std::string context_line;              // cx
  bool reverse = false;                  // rv: sl and cx swap places with -v
  bool erase_line = true;                // no "ne": each colour ends with "erase in line"

  // The defaults changed by a GREP_COLORS value ("ms=01;32:fn=:ne").
  void read(char const* grep_colors);

  // `text` in the colour `sgr` (as it is when `sgr` is empty).
  std::string paint(std::string_view sgr, std::string_view text) const;
  // What begins the colour `sgr` ("" for an empty one).
  std::string start(std::string_view sgr) const;
};

}  // namespace zelstr::tool

#endif  // ZELSTR_TOOL_GREP_COLORS_H
