// Names only the string library, as a program built with "-lzelstr32"
// alone: the library must find its error-handler service by itself, from
// wherever the two were installed.  A bad argument makes it call the
// service; the version query tells which library was loaded.
#include <zelstr/zelstr.h>

#include <cstdio>
#include <cstring>

int main() {
  int major = -1, minor = -1, patch = -1;
  char const* const version = _zversion(&major, &minor, &patch);
  bool const ok = _zstrlen(nullptr) == 0 && std::strcmp(version, ZELSTR_VERSION) == 0 &&
                  major == ZELSTR_VERSION_MAJOR && minor == ZELSTR_VERSION_MINOR &&
                  patch == ZELSTR_VERSION_PATCH;
  std::printf("library_only: ZelStr32 %s (%d.%d.%d)%s\n", version, major, minor, patch,
              ok ? "" : " MISMATCH");
  return ok ? 0 : 1;
}
