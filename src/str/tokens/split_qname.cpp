// split_qname.cpp - _zstrsplitqname: the parts of a qualified name, for the
// delimiters a caller names (T-SQL's [...] and "...", Oracle's "...").
#include <cstring>

#include "str/report.h"
#include "str/tokens/name_parts.h"
#include "zelstr/tokens.h"

namespace {

using namespace zelstr::str;
using tokens::NamePart;

constexpr int kMostParts = 64;  // more parts than any dialect uses

// Reads the parts of `name` into `parts`; their number, or 0 on a syntax
// error or past `room` parts.  `open` marks the opening characters that
// delimit.
int read_parts(char const* name, bool const (&open)[2], NamePart* parts, int room) {
  if (*name == '\0') return 0;  // no name, no parts
  int count = 0;
  for (char const* p = name;;) {
    p = tokens::skip_blanks(p);
    if (count == room) return 0;
    NamePart& part = parts[count++];
    if (*p == '@') {  // a database link: the rest of the name
      tokens::read_plain(p, part, [](char) { return false; });
      return count;
    }
    if ((*p == '[' && open[0]) || (*p == '"' && open[1])) {
      p = tokens::read_delimited(p, part);
      if (p == nullptr) return 0;
      p = tokens::skip_blanks(p);
    } else {
      p = tokens::read_plain(p, part, [](char c) { return c == '.' || c == '@'; });
    }
    if (*p == '\0') return count;
    if (*p == '@') continue;  // the link follows this part
    if (*p != '.') return 0;
    ++p;
  }
}

// The delimiters named, or false for another character.
bool delimiters_of(char const* delimiters, bool (&open)[2]) {
  if (delimiters == nullptr) {
    open[0] = open[1] = true;
    return true;
  }
  open[0] = open[1] = false;
  for (char const* d = delimiters; *d != '\0'; ++d) {
    if (*d == '[') {
      open[0] = true;
    } else if (*d == '"') {
      open[1] = true;
    } else {
      return false;
    }
  }
  return true;
}

}  // namespace

int _zstrsplitqname(char const* name, char const* delimiters, char*** parts) noexcept {
  if (parts != nullptr) *parts = nullptr;
  bool open[2];
  if (name == nullptr || parts == nullptr || !delimiters_of(delimiters, open)) {
    warn(msg::kSplitQnameBadArgument);
    return 0;
  }
  NamePart found[kMostParts];
  int const count = read_parts(name, open, found, kMostParts);
  if (count == 0) return 0;
  *parts = tokens::new_components(found, count);
  return *parts != nullptr ? count : 0;
}

int _zstrsplitqname(char const* name, char const* delimiters, char** parts, int count,
                    unsigned int size) noexcept {
  bool open[2];
  if (name == nullptr || parts == nullptr || !delimiters_of(delimiters, open)) {
    warn(msg::kSplitQnameBadArgument);
    return 0;
  }
  NamePart found[kMostParts];
  int const n = read_parts(name, open, found, count < kMostParts ? count : kMostParts);
  for (int i = 0; i < n && size > 0; ++i) tokens::copy_part(found[i], parts[i], size);
  return n;
}
