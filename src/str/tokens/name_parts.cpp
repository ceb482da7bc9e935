// name_parts.cpp - delimited runs, part copies, arrays of parts.
#include "str/tokens/name_parts.h"

#include <new>

#include "frame/memory.h"

namespace zelstr::str::tokens {

char const* run_end(char const* p, char close) {
  for (; *p != '\0'; ++p) {
    if (*p != close) continue;
    if (p[1] != close) break;
    ++p;  // a doubled mark stands for one
  }
  return p;
}

char const* read_delimited(char const* p, NamePart& part) {
  part.close = closing_mark(*p);
  part.begin = p + 1;
  part.end = run_end(part.begin, part.close);
  if (*part.end == '\0') return nullptr;
  part.length = 0;
  for (char const* q = part.begin; q < part.end; ++q, ++part.length) {
    if (*q == part.close) ++q;
  }
  return part.end + 1;
}

void copy_part(NamePart const& part, char* out, std::size_t size) {
  std::size_t n = 0;
  for (char const* p = part.begin; p < part.end && n + 1 < size; ++p) {
    out[n++] = *p;
    if (part.close != '\0' && *p == part.close) ++p;
  }
  out[n] = '\0';
}

char** new_components(NamePart const* parts, int count) {
  auto** const components = new (std::nothrow) char*[static_cast<std::size_t>(count) + 1]();
  if (components == nullptr) {
    frame::note_allocation_failure();
    return nullptr;
  }
  for (int i = 0; i < count; ++i) {
    components[i] = frame::new_array<char>(parts[i].length + 1);
    if (components[i] == nullptr) {
      for (int j = 0; j < i; ++j) delete[] components[j];
      delete[] components;
      return nullptr;
    }
    copy_part(parts[i], components[i], parts[i].length + 1);
  }
  return components;
}

}  // namespace zelstr::str::tokens
