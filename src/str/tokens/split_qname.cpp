// split_qname.cpp - _zstrsplitqname: the parts of a qualified name, for the
// delimiters a caller names (T-SQL's [...] and "...", Oracle's "...").
#include <cstring>
#include <new>

#include "frame/memory.h"
#include "str/report.h"
#include "zelstr/tokens.h"

namespace {

using namespace zelstr::str;

constexpr int kMostParts = 64;  // more parts than any dialect uses

bool is_blank(char c) { return c == ' ' || c == '\t'; }

struct Part {
  char const* begin;
  char const* end;
  char close;  // the closing mark of a delimited part, else 0
  std::size_t length;  // of the part as returned
};

// Reads the parts of `name` into `parts`; their number, or 0 on a syntax
// error or past `room` parts.  `open` marks the opening characters that
// delimit.
int read_parts(char const* name, bool const (&open)[2], Part* parts, int room) {
  if (*name == '\0') return 0;  // no name, no parts
  int count = 0;
  char const* p = name;
  for (;;) {
    while (is_blank(*p)) ++p;
    if (count == room) return 0;
    Part& part = parts[count++];
    part.close = '\0';
    if (*p == '@') {  // a database link: the rest of the name
      part.begin = p;
      part.end = p + std::strlen(p);
      while (part.end > part.begin && is_blank(part.end[-1])) --part.end;
      part.length = static_cast<std::size_t>(part.end - part.begin);
      return count;
    }
    if ((*p == '[' && open[0]) || (*p == '"' && open[1])) {
      part.close = *p == '[' ? ']' : '"';
      part.begin = ++p;
      part.length = 0;
      for (;; ++p, ++part.length) {
        if (*p == '\0') return 0;
        if (*p == part.close && p[1] != part.close) break;
        if (*p == part.close) ++p;
      }
      part.end = p++;
      while (is_blank(*p)) ++p;
    } else {
      part.begin = p;
      while (*p != '\0' && *p != '.' && *p != '@') ++p;
      char const* end = p;
      while (end > part.begin && is_blank(end[-1])) --end;
      part.end = end;
      part.length = static_cast<std::size_t>(end - part.begin);
    }
    if (*p == '\0') return count;
    if (*p == '@') continue;  // the link follows this part
    if (*p != '.') return 0;
    ++p;
  }
}

// Copies a part as returned (at most `size` - 1 bytes).
void copy_part(Part const& part, char* out, std::size_t size) {
  std::size_t n = 0;
  for (char const* p = part.begin; p < part.end && n + 1 < size; ++p) {
    out[n++] = *p;
    if (part.close != '\0' && *p == part.close) ++p;
  }
  out[n] = '\0';
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
  Part found[kMostParts];
  int const count = read_parts(name, open, found, kMostParts);
  if (count == 0) return 0;
  auto** const out = new (std::nothrow) char*[static_cast<std::size_t>(count) + 1]();
  if (out == nullptr) {
    zelstr::frame::note_allocation_failure();
    return 0;
  }
  for (int i = 0; i < count; ++i) {
    out[i] = zelstr::frame::new_array<char>(found[i].length + 1);
    if (out[i] == nullptr) {
      for (int j = 0; j < i; ++j) delete[] out[j];
      delete[] out;
      return 0;
    }
    copy_part(found[i], out[i], found[i].length + 1);
  }
  *parts = out;
  return count;
}

int _zstrsplitqname(char const* name, char const* delimiters, char** parts, int count,
                    unsigned int size) noexcept {
  bool open[2];
  if (name == nullptr || parts == nullptr || !delimiters_of(delimiters, open)) {
    warn(msg::kSplitQnameBadArgument);
    return 0;
  }
  Part found[kMostParts];
  int const n = read_parts(name, open, found, count < kMostParts ? count : kMostParts);
  for (int i = 0; i < n && size > 0; ++i) copy_part(found[i], parts[i], size);
  return n;
}
