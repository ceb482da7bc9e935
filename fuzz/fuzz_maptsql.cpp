// Fuzzes _zmaptsqlapply: any code, with QUOTED_IDENTIFIER on or off, through
// a lower-casing map, an upper-casing map, no map and the invalid map.  The
// code keeps its length and what follows its terminator; without a usable
// map it is unchanged; a casing map changes only the letters it folds, and
// only to their other case.  What is left alone depends on the punctuation,
// not on the case of the letters, so upper-casing lower-cased code gives the
// upper-cased code; and code with nothing that opens a literal or a comment
// is folded whole.
#include <fuzzer/FuzzedDataProvider.h>

#include <cstdint>
#include <cstring>
#include <memory>
#include <string>

#include "errsvc/errsvc.h"
#include "require.h"
#include "zelstr/zelstr.h"

namespace {

bool is_upper(unsigned char c) { return c >= 'A' && c <= 'Z'; }
bool is_lower(unsigned char c) { return c >= 'a' && c <= 'z'; }

// `code` mapped, in a heap block of exactly its bytes and one terminator so
// that any access past the end is caught.  Bytes after an inner NUL are
// kept in the block, to see that they are not touched.
std::string applied(void* map, std::string const& code, int quoted_id) {
  std::unique_ptr<char[]> const block(new char[code.size() + 1]);
  std::memcpy(block.get(), code.data(), code.size());
  block[code.size()] = '\0';
  _zmaptsqlapply(map, block.get(), quoted_id);
  return std::string(block.get(), code.size());
}

// Every byte of `mapped` is the byte of `code`, or its image under the
// casing map that folds the letters `from` accepts by `shift`.
void require_only_folded(std::string const& code, std::string const& mapped,
                         bool (*from)(unsigned char), int shift) {
  for (std::size_t i = 0; i < code.size(); ++i) {
    unsigned char const c = static_cast<unsigned char>(code[i]);
    unsigned char const m = static_cast<unsigned char>(mapped[i]);
    require(m == c || (from(c) && m == c + shift));
  }
}

std::string ascii_lower(std::string s) {
  for (char& c : s) {
    if (is_upper(static_cast<unsigned char>(c))) c = static_cast<char>(c - 'A' + 'a');
  }
  return s;
}

// Nothing in `text` opens a literal or a comment.
bool all_code(std::string const& text, bool quoted_id) {
  return text.find('\'') == std::string::npos && text.find("--") == std::string::npos &&
         text.find("/*") == std::string::npos && (quoted_id || text.find('"') == std::string::npos);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
  static void* const lower = _zmapdefine("a-z=A-Z");
  static void* const upper = _zmapdefine("A-Z=a-z");
  FuzzedDataProvider in(data, size);
  int const quoted_id = in.ConsumeIntegral<std::int8_t>();
  std::string const code = in.ConsumeRemainingBytesAsString();
  std::size_t const length = std::strlen(code.c_str());  // what the library sees

  require(applied(nullptr, code, quoted_id) == code);
  require(applied(ZEAL_STR_BAD_MAP, code, quoted_id) == code);

  std::string const lowered = applied(lower, code, quoted_id);
  std::string const uppered = applied(upper, code, quoted_id);
  require(lowered.compare(length, std::string::npos, code, length) == 0);
  require(uppered.compare(length, std::string::npos, code, length) == 0);
  require_only_folded(code, lowered, is_upper, 'a' - 'A');
  require_only_folded(code, uppered, is_lower, 'A' - 'a');
  require(applied(upper, lowered, quoted_id) == uppered);

  std::string const seen = code.substr(0, length);
  if (all_code(seen, quoted_id != 0)) require(lowered.substr(0, length) == ascii_lower(seen));
  errsvc::clear();
  return 0;
}
