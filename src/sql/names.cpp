// names.cpp - delimiting names, testing them, handing out copies.
#include "sql/names.h"

#include <cstring>

#include "zelstr/alloc.h"

namespace zelstr::sql {

void delimit(char* name, char open, char close) {
  std::size_t const length = std::strlen(name);
  std::size_t doubled = 0;
  for (std::size_t i = 0; i < length; ++i) doubled += name[i] == close;
  // Final layout: open, the name with each `close` doubled, close, NUL.
  std::size_t const end = length + doubled + 2;
  name[end] = '\0';
  name[end - 1] = close;
  std::size_t to = end - 1;
  for (std::size_t from = length; from-- > 0;) {
    name[--to] = name[from];
    if (name[from] == close) name[--to] = close;
  }
  name[0] = open;
}

bool undelimit(char* name, char close) {
  std::size_t const length = std::strlen(name);
  if (length < 2) {
    name[0] = '\0';
    return true;
  }
  bool all_doubled = true;
  std::size_t to = 0;
  for (std::size_t from = 1; from < length - 1; ++from) {
    char const c = name[from];
    name[to++] = c;
    if (c != close) continue;
    if (from + 1 < length - 1 && name[from + 1] == close) {
      ++from;
    } else {
      all_doubled = false;
    }
  }
  name[to] = '\0';
  return all_doubled;
}

std::size_t count_of(char const* name, char c) {
  std::size_t n = 0;
  for (; *name != '\0'; ++name) n += *name == c;
  return n;
}

bool is_regular(char const* name, char const* first, char const* others) {
  auto const* p = reinterpret_cast<unsigned char const*>(name);
  if (first[*p] == 0) return false;
  for (++p; *p != '\0'; ++p) {
    if (others[*p] == 0) return false;
  }
  return true;
}

}  // namespace zelstr::sql
