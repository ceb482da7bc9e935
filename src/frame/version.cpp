// version.cpp - _zversion: the version this module was built as.
#include "zelstr/version.h"

char const* _zversion(int* major, int* minor, int* patch) noexcept {
  if (major != nullptr) *major = ZELSTR_VERSION_MAJOR;
  if (minor != nullptr) *minor = ZELSTR_VERSION_MINOR;
  if (patch != nullptr) *patch = ZELSTR_VERSION_PATCH;
  return ZELSTR_VERSION;
}
