// Uses the installed library as a program of the analyser would: a few calls
// with their exact results, a bad argument and the warning it filed, and the
// version of the headers and of the modules the program loaded.  Prints what
// went wrong and exits non-zero on the first difference.
#include <errsvc/errsvc.h>
#include <zelstr/version.h>
#include <zelstr/zelstr.h>

#include <cstdio>
#include <cstring>
#include <string>
#include <vector>

#ifdef _WIN32
#include <windows.h>
#else
#include <link.h>
#endif

namespace {

int failures = 0;

void expect(bool ok, char const* what, std::string const& got) {
  if (!ok) {
    std::fprintf(stderr, "consumer: %s: got [%s]\n", what, got.c_str());
    ++failures;
  }
}

// The path of the loaded module whose file name starts with `name` (on
// Windows: is `name`), or "" when there is none.
std::string loaded_module(char const* name) {
#ifdef _WIN32
  char path[MAX_PATH] = "";
  if (HMODULE module = GetModuleHandleA(name)) GetModuleFileNameA(module, path, sizeof path);
  return path;
#else
  struct Search {
    char const* name;
    std::string path;
  } search{name, ""};
  dl_iterate_phdr(
      [](dl_phdr_info* info, size_t, void* data) {
        auto* s = static_cast<Search*>(data);
        char const* slash = std::strrchr(info->dlpi_name, '/');
        char const* base = slash ? slash + 1 : info->dlpi_name;
        if (std::strncmp(base, s->name, std::strlen(s->name)) != 0) return 0;
        s->path = info->dlpi_name;
        return 1;
      },
      &search);
  return search.path;
#endif
}

std::string base_name(std::string const& path) { return path.substr(path.find_last_of("/\\") + 1); }

#ifdef _WIN32
// "major.minor.patch" from the module's VERSIONINFO resource.
std::string file_version(std::string const& path) {
  DWORD ignored = 0;
  std::vector<char> block(GetFileVersionInfoSizeA(path.c_str(), &ignored));
  VS_FIXEDFILEINFO* info = nullptr;
  UINT size = 0;
  if (block.empty() ||
      !GetFileVersionInfoA(path.c_str(), 0, static_cast<DWORD>(block.size()), block.data()) ||
      !VerQueryValueA(block.data(), "\\", reinterpret_cast<void**>(&info), &size))
    return "none";
  return std::to_string(HIWORD(info->dwFileVersionMS)) + "." +
         std::to_string(LOWORD(info->dwFileVersionMS)) + "." +
         std::to_string(HIWORD(info->dwFileVersionLS));
}
#endif

}  // namespace

int main() {
  expect(std::strcmp(ZELSTR_VERSION, ZELSTR_EXPECTED_VERSION) == 0, "ZELSTR_VERSION",
         ZELSTR_VERSION);
  int major = -1, minor = -1, patch = -1;
  char const* const loaded = _zversion(&major, &minor, &patch);
  expect(std::strcmp(loaded, ZELSTR_VERSION) == 0 && major == ZELSTR_VERSION_MAJOR &&
             minor == ZELSTR_VERSION_MINOR && patch == ZELSTR_VERSION_PATCH,
         "_zversion",
         std::string(loaded) + " " + std::to_string(major) + "." + std::to_string(minor) + "." +
             std::to_string(patch));

  expect(_zstrcmp("dbo.a", "dbo.b") == -1, "_zstrcmp", std::to_string(_zstrcmp("dbo.a", "dbo.b")));
  char sql[64] = "SELECT a FROM t WHERE a = 1";
  char const* replaced = _zstrNreplace(sql, "a", "col", sizeof sql - 1);
  expect(replaced == sql && std::strcmp(sql, "SELECT col FROM t WHERE col = 1") == 0,
         "_zstrNreplace", sql);
  char const* quoted = _zstrquoted("it's", '"');
  expect(quoted && std::strcmp(quoted, "\"it's\"") == 0, "_zstrquoted", quoted ? quoted : "NULL");
  expect(errsvc::records().empty(), "warnings of good calls", "");

  expect(_zstrlen(nullptr) == 0, "_zstrlen(NULL)", "");
  std::vector<errsvc::Record> const records = errsvc::records();
  expect(records.size() == 1, "number of warnings", std::to_string(records.size()));
  if (!records.empty()) {
    errsvc::Record const& r = records[0];
    expect(r.id == 86 && r.severity == 4, "warning id, severity",
           std::to_string(r.id) + ", " + std::to_string(r.severity));
    expect(r.text ==
               "_zstrlen() - Warning: <string> given in argument was NULL: 0L was returned as "
               "length.",
           "warning text", r.text);
  }

  // The modules the loader found: by their versioned names (the sonames) on
  // Linux, by their names and with their version resources on Windows.
#ifdef _WIN32
  std::string const library = loaded_module("ZelStr32.dll");
  std::string const service = loaded_module("ERRSVC32.dll");
  expect(file_version(library) == ZELSTR_VERSION, "ZelStr32.dll version", file_version(library));
  expect(file_version(service) == ZELSTR_VERSION, "ERRSVC32.dll version", file_version(service));
#else
  std::string const library = loaded_module("libzelstr32.so");
  std::string const service = loaded_module("liberrsvc32.so");
  std::string const soname = ".so." + std::to_string(ZELSTR_VERSION_MAJOR);
  expect(base_name(library) == "libzelstr32" + soname, "string library module", library);
  expect(base_name(service) == "liberrsvc32" + soname, "service module", service);
#endif

  if (failures == 0)
    std::printf("consumer: ZelStr32 %s, %s and %s, warning %d: %s\n", ZELSTR_VERSION,
                base_name(library).c_str(), base_name(service).c_str(), records[0].id,
                records[0].text.c_str());
  return failures == 0 ? 0 : 1;
}
