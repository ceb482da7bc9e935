// wrap.cpp - _zstrwrapped: a text wrapped at blanks to a width, indented.
#include <cstring>

#include "str/report.h"
#include "str/text/writer.h"
#include "zelstr/textutil.h"

using namespace zelstr::str;
using namespace zelstr::str::text;

namespace {

bool is_gap(char c) { return c == ' ' || c == '\t' || c == '\r'; }

// Writes one paragraph (`n` bytes, no line end inside) as wrapped lines.
void put_paragraph(Writer& out, char const* p, std::size_t n, std::size_t width,
                   std::size_t indent) {
  std::size_t line = 0;  // bytes on the current line, 0 before its first word
  for (std::size_t i = 0; i < n;) {
    while (i < n && is_gap(p[i])) ++i;
    std::size_t const start = i;
    while (i < n && !is_gap(p[i])) ++i;
    std::size_t const word = i - start;
    if (word == 0) break;
    if (line > 0 && line + 1 + word > width) {
      out.put('\n');
      line = 0;
    }
    if (line == 0) {
      out.put_blanks(indent);
      line = indent;
    } else {
      out.put(' ');
      ++line;
    }
    out.put(p + start, word);
    line += word;
  }
}

void put_wrapped(Writer& out, char const* text, std::size_t width, std::size_t indent) {
  for (char const* p = text;;) {
    char const* const lf = std::strchr(p, '\n');
    std::size_t const n = lf != nullptr ? static_cast<std::size_t>(lf - p) : std::strlen(p);
    put_paragraph(out, p, n, width, indent);
    if (lf == nullptr) return;
    out.put('\n');
    p = lf + 1;
  }
}

}  // namespace

char* _zstrwrapped(char const* text, int width, int indent) noexcept {
  if (text == nullptr) {
    warn_format(msg::kTextNullArgumentFormat, "_zstrwrapped", "text", "NULL");
    return nullptr;
  }
  if (indent < 0 || width <= indent) {
    warn_format(msg::kTextOutOfRangeFormat, "_zstrwrapped", indent < 0 ? "indent" : "width",
                "NULL");
    return nullptr;
  }
  auto const w = static_cast<std::size_t>(width);
  auto const in = static_cast<std::size_t>(indent);
  return into_arena([&](Writer& out) { put_wrapped(out, text, w, in); });
}
