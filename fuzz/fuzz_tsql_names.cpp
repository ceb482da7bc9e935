// Fuzzes the T-SQL name functions on any name: the qualified-name splitter,
// its denormalizer and the conversions between source and system form,
// under settings the input chooses.  Names sit in heap blocks of their exact
// size, so a read past the terminator is caught.  Promises checked: the
// copying conversions agree with the in-place ones; a system name comes
// back from its source form; a name that splits keeps its parts through
// denormalizing, in place and as a copy, unless a part needs delimiters the
// connection does not take; the parts returned number as many
// as the result says.
#include <fuzzer/FuzzedDataProvider.h>

#include <cstdint>
#include <cstring>
#include <memory>
#include <string>
#include <vector>

#include "errsvc/errsvc.h"
#include "require.h"
#include "zelstr/zelstr.h"

namespace {

char g_connection;

std::unique_ptr<char[]> block(std::string const& text, std::size_t room) {
  std::unique_ptr<char[]> data(new char[room]);
  std::memcpy(data.get(), text.c_str(), text.size() + 1);
  return data;
}

std::vector<std::string> split(CHTSQL const& object, char const* name, unsigned long flags) {
  char** parts = nullptr;
  int const n = object.SplitQualCodeName(name, &parts, flags);
  std::vector<std::string> out;
  if (n == 0) {
    require(parts == nullptr);
    return out;
  }
  for (char** p = parts; *p != nullptr; ++p) out.emplace_back(*p);
  require(static_cast<int>(out.size()) == n && n <= 4);
  CHSQL::DeleteComponents(&parts, nullptr);
  return out;
}

void conversions(std::string const& name) {
  // Source to system: the copy agrees with the in-place result.
  auto in_place = block(name, name.size() + 1);
  int const ok = _ztsql2sysname(&g_connection, in_place.get());
  char* copy = _ztsql2sysname(&g_connection, name.c_str());
  require((copy != nullptr) == (ok == 1));
  if (copy != nullptr) require(std::strcmp(copy, in_place.get()) == 0);
  _zstrdupfree(copy);

  // System to source and back.
  std::size_t const room = 2 * name.size() + 3;
  auto source = block(name, room);
  if (_zsysname2tsql(&g_connection, source.get(), 0) == 1) {
    require(_ztsql2sysname(&g_connection, source.get()) == 1);
    require(name == source.get());
  }
}

void qualified(std::string const& name, unsigned long flags) {
  CHTSQL const object(&g_connection);
  std::vector<std::string> const parts = split(object, name.c_str(), flags);
  if (parts.empty() || flags != 0) return;
  auto buffer = block(name, 2 * name.size() + 9);
  int const written = object.DenormalizeQualId(buffer.get(), 0);
  char const* const copy = object.GetDenormalizedQualId(name.c_str(), 0);
  require((copy != nullptr) == (written == 1));
  if (copy == nullptr) return;  // a part the connection cannot delimit
  require(std::strcmp(copy, buffer.get()) == 0);
  char* owned = const_cast<char*>(copy);
  _zstrdupfree(owned);
  if (*buffer.get() != '\0') require(split(object, buffer.get(), 0) == parts);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
  FuzzedDataProvider in(data, size);
  int const version = in.ConsumeBool() ? 2016 : 15;
  int const max_name = in.ConsumeIntegralInRange(2, 140);
  int const quoted = in.ConsumeBool() ? 1 : 0;
  int const bracketed = in.ConsumeBool() ? 1 : 0;
  char const mark = in.ConsumeBool() ? '[' : '"';
  unsigned long const flags = in.ConsumeIntegralInRange(0, 2);
  std::string const name = in.ConsumeRemainingBytesAsString();
  if (std::memchr(name.data(), '\0', name.size()) != nullptr) return 0;
  _ztsqlsetdefaults(&g_connection, version, max_name, quoted, bracketed, mark, nullptr);
  conversions(name);
  qualified(name, flags);
  errsvc::clear();
  return 0;
}
