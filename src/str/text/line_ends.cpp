// line_ends.cpp - _zstreol, _zstreolized, _zstreolcpy: every line end in
// one style.
//
// Only LF and CR LF end lines; a CR alone stays.  Turning a text to LF
// never moves a byte forward, so it runs in place; to CR LF a text grows
// by one byte for each bare LF, and goes to the arena when it does.
#include <cstring>

#include "platform/line_end.h"
#include "str/report.h"
#include "str/text/writer.h"
#include "zelstr/textutil.h"

using namespace zelstr::str;
using namespace zelstr::str::text;

namespace {

bool to_crlf(int style) {
  return style == ZEAL_EOL_CRLF ||
         (style == ZEAL_EOL_NATIVE && zelstr::platform::line_end_is_crlf());
}

// Writes `s` with its line ends in the style: CR LF or LF.
void put_with_line_ends(Writer& out, char const* s, bool crlf) {
  for (char const* p = s;;) {
    char const* const lf = std::strchr(p, '\n');
    if (lf == nullptr) {
      out.put(p, std::strlen(p));
      return;
    }
    bool const had_cr = lf > s && lf[-1] == '\r';
    out.put(p, static_cast<std::size_t>(lf - p) - (had_cr ? 1 : 0));
    if (crlf) out.put('\r');
    out.put('\n');
    p = lf + 1;
  }
}

// The number of LF without a CR before them.
std::size_t bare_line_feeds(char const* s) {
  std::size_t n = 0;
  for (char const* lf = std::strchr(s, '\n'); lf != nullptr; lf = std::strchr(lf + 1, '\n')) {
    n += lf == s || lf[-1] != '\r';
  }
  return n;
}

bool checked(void const* string, int style, char const* function, char const* fallback) {
  if (string == nullptr) {
    warn_format(msg::kTextNullArgumentFormat, function, "string", fallback);
    return false;
  }
  if (style < ZEAL_EOL_LF || style > ZEAL_EOL_NATIVE) {
    warn_format(msg::kTextOutOfRangeFormat, function, "style", fallback);
    return false;
  }
  return true;
}

}  // namespace

char* _zstreol(char* string, int style) noexcept {
  if (!checked(string, style, "_zstreol", "NULL")) return nullptr;
  bool const crlf = to_crlf(style);
  if (crlf && bare_line_feeds(string) > 0) {
    return into_arena([&](Writer& out) { put_with_line_ends(out, string, true); });
  }
  Writer out(string, std::strlen(string) + 1);  // writes behind what it reads
  put_with_line_ends(out, string, crlf);
  out.finish();
  return string;
}

char* _zstreolized(char const* string, int style) noexcept {
  if (!checked(string, style, "_zstreolized", "NULL")) return nullptr;
  bool const crlf = to_crlf(style);
  return into_arena([&](Writer& out) { put_with_line_ends(out, string, crlf); });
}

unsigned long _zstreolcpy(char* dest, unsigned long size, char const* src, int style) noexcept {
  if (!checked(src, style, "_zstreolcpy", "0")) return 0;
  if (dest == nullptr && size != 0) {
    warn_format(msg::kTextNullArgumentFormat, "_zstreolcpy", "dest", "0");
    return 0;
  }
  Writer out(dest, size);
  put_with_line_ends(out, src, to_crlf(style));
  out.finish();
  return static_cast<unsigned long>(out.length());
}
