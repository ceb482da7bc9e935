// Fuzzes the set-definition reader through the span functions: whatever the
// definition, the spans must agree with the membership _zchrspnex reports
// for each byte, and a wrong definition must give 0 everywhere.  Through a
// lower-casing map, the span of a set holding no upper-case letter is the
// i form's.
#include <fuzzer/FuzzedDataProvider.h>

#include <cstdint>
#include <cstdlib>
#include <string>

#include "errsvc/errsvc.h"
#include "require.h"
#include "zelstr/zelstr.h"

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
  FuzzedDataProvider input(data, size);
  std::string definition = input.ConsumeRandomLengthString(300);
  std::string const text = input.ConsumeRemainingBytesAsString();
  char const* const s = text.c_str();  // both cut at their first zero byte

  bool member[256];
  for (int b = 0; b < 256; ++b) member[b] = _zchrspnex(static_cast<char>(b), definition.data());
  bool const valid = errsvc::records().empty();  // a wrong definition warns on every call
  require(!member[0]);

  std::size_t run = 0;
  while (s[run] != '\0' && member[static_cast<unsigned char>(s[run])]) ++run;
  std::size_t other = 0;
  while (s[other] != '\0' && !member[static_cast<unsigned char>(s[other])]) ++other;
  if (valid) {
    require(_zstrspnex(s, definition.c_str()) == run);
    require(_zstrcspnex(s, definition.c_str()) == other);
    require(_zstrispnex(s, definition.c_str()) >= run);
    require(_zstricspnex(s, definition.c_str()) <= other);
    static void* const lower = _zmapdefine("a-z=A-Z");
    bool upper_member = false;
    for (int b = 'A'; b <= 'Z'; ++b) upper_member = upper_member || member[b];
    if (!upper_member) {
      require(_zmapstrspnex(lower, s, definition.c_str()) == _zstrispnex(s, definition.c_str()));
      require(_zmapstrcposex(lower, s, definition.c_str()) ==
              _zstricposex(s, definition.c_str()));
    }
  } else {
    require(_zstrspnex(s, definition.c_str()) == 0);
  }
  _zstrposex(s, definition.c_str());
  _zstricposex(s, definition.c_str());
  errsvc::clear();
  return 0;
}
