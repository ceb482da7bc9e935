// grep_colors.cpp - reading GREP_COLORS, and text in a colour.
#include "tool/grep_colors.h"

#include <utility>

namespace zelstr::tool {

void GrepColors::read(char const* grep_colors) {
  if (grep_colors == nullptr) return;
  std::string_view rest(grep_colors);
  while (!rest.empty()) {
    std::size_t const colon = rest.find(':');
    std::string_view const item = rest.substr(0, colon);
    rest = colon == std::string_view::npos ? std::string_view() : rest.substr(colon + 1);
    std::size_t const equals = item.find('=');
    std::string_view const name = item.substr(0, equals);
    if (equals == std::string_view::npos) {
      if (name == "ne") erase_line = false;
      if (name == "rv") reverse = true;
      continue;
    }
    std::string const value(item.substr(equals + 1));
    if (value.find_first_not_of("0123456789;") != std::string::npos) return;  // as grep: the rest is not read
    if (name == "mt") selected_match = context_match = value;
    for (auto const& [key, colour] : {std::pair<char const*, std::string*>{"ms", &selected_match},
                                      {"mc", &context_match},
                                      {"fn", &file_name},
                                      {"ln", &line_number},
                                      {"se", &separator},
                                      {"sl", &selected_line},
                                      {"cx", &context_line}}) {
      if (name == key) *colour = value;
    }
  }
}

std::string GrepColors::start(std::string_view sgr) const {
  if (sgr.empty()) return {};
  return "\33[" + std::string(sgr) + "m" + (erase_line ? "\33[K" : "");
}

std::string GrepColors::paint(std::string_view sgr, std::string_view text) const {
  if (sgr.empty()) return std::string(text);
  return start(sgr) + std::string(text) + "\33[m" + (erase_line ? "\33[K" : "");
}

}  // namespace zelstr::tool
