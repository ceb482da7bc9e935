// length.cpp - _zstrlen, _zstrsetlen, _zstreos.
#include "zelstr/length.h"

#include <cstring>

#include "str/report.h"

using namespace zelstr::str;

unsigned int _zstrlen(char const* s) noexcept {
  if (s == nullptr) {
    warn(msg::kStrlenNullString);
    return 0;
  }
  return static_cast<unsigned int>(std::strlen(s));
}

unsigned int _zstrsetlen(char* set) noexcept {
  if (set == nullptr) {
    warn(msg::kStrsetlenNullSet);
    return 0;
  }
  return static_cast<unsigned int>(std::strlen(set) + 1);
}

char const* _zstreos(char const* s) noexcept {
  if (s == nullptr) {
    warn(msg::kStreosNullString);
    return nullptr;
  }
  return s + std::strlen(s);
}

char* _zstreos(char* s) noexcept {
  return const_cast<char*>(_zstreos(static_cast<char const*>(s)));
}
