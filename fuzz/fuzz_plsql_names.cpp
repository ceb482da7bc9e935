// Fuzzes the PL/SQL name conversions, the Oracle upper case and the
// reserved-word tests on any name, kind and version, with the default
// settings.  Small models of the documented rules give the expected name,
// validity and result; the copying conversions must agree with the in-place
// ones, and a system name must come back from its source form.
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
bool is_digit(unsigned char c) { return c >= '0' && c <= '9'; }
bool is_letter(unsigned char c) { return is_upper(c) || is_lower(c); }

// A heap block of `room` bytes holding `text` and its terminator: any
// access past the block is caught.
class Block {
 public:
  Block(std::string const& text, std::size_t room) : m_data(new char[room]) {
    std::memcpy(m_data.get(), text.c_str(), text.size() + 1);
  }
  char* get() { return m_data.get(); }

 private:
  std::unique_ptr<char[]> m_data;
};

// The copy a copying conversion returns for a name that is not empty (an
// empty one gives a shared empty string, which is not released).
struct Copy {
  explicit Copy(char* text) : p(text) {}
  ~Copy() { _zstrdupfree(p); }
  Copy(Copy const&) = delete;
  Copy& operator=(Copy const&) = delete;
  char* p;
};

std::string ascii_case(std::string s, bool to_upper) {
  for (char& c : s) {
    unsigned char const b = static_cast<unsigned char>(c);
    if (to_upper && is_lower(b)) c = static_cast<char>(b - 'a' + 'A');
    if (!to_upper && is_upper(b)) c = static_cast<char>(b - 'A' + 'a');
  }
  return s;
}

// A system name of the default settings: first characters A-Z; the others
// add the digits, "$", "_" and "#".  Lower case is accepted by the validity
// test, not by the test for a regular name.
bool default_other(unsigned char c) {
  return is_upper(c) || is_digit(c) || c == '$' || c == '_' || c == '#';
}

bool valid_model(std::string const& name, int kind, int max_name, int max_link) {
  if (name.empty()) return false;
  int const limit = kind == 2 ? max_link : max_name;
  if (name.size() >= static_cast<std::size_t>(limit)) return false;
  if (kind != 2 && kind != 4 && kind != 8) return true;
  unsigned char const c0 = static_cast<unsigned char>(name[0]);
  if (!is_letter(c0) && !(kind == 8 && is_digit(c0))) return false;
  for (std::size_t i = 1; i < name.size(); ++i) {
    unsigned char const c = static_cast<unsigned char>(name[i]);
    if (!default_other(c) && !is_lower(c) && !(kind == 2 && (c == '.' || c == '@'))) return false;
  }
  return true;
}

bool regular_model(std::string const& name) {
  if (!is_upper(static_cast<unsigned char>(name[0]))) return false;
  for (std::size_t i = 1; i < name.size(); ++i) {
    if (!default_other(static_cast<unsigned char>(name[i]))) return false;
  }
  return true;
}

std::string quoted(std::string const& name) {
  std::string q = "\"";
  for (char const c : name) q += c == '"' ? std::string(2, c) : std::string(1, c);
  return q + '"';
}

bool tsql_handled(int v) {
  return v == 4 || v == 2004 || (v >= 6 && v <= 17) || (v >= 2006 && v <= 2017);
}

bool oracle_handled(int v) {
  return (v >= 102 && v <= 105) || (v >= 107 && v <= 110) || v == 120 || v == 130 || v == 140 ||
         (v >= 150 && v <= 152) || (v >= 1160 && v <= 1165);
}

struct Defaults {
  int version = 0, max_name = 0, max_link = 0;
  Defaults() { _zplsqlgetdefaults(nullptr, &version, &max_name, &max_link, nullptr); }
};

// The Oracle upper case: one byte for one, ASCII as the C locale has it,
// a non-ASCII byte staying non-ASCII, and upper case left as it is.
std::string check_upper(std::string const& name) {
  Block block(name, name.size() + 1);
  require(_zplsqlstrupper(block.get()) == block.get());
  std::string const up(block.get());
  require(up.size() == name.size());
  for (std::size_t i = 0; i < name.size(); ++i) {
    unsigned char const c = static_cast<unsigned char>(name[i]);
    unsigned char const u = static_cast<unsigned char>(up[i]);
    require(c < 0x80 ? u == (is_lower(c) ? c - 'a' + 'A' : c) : u >= 0x80);
  }
  Block again(up, up.size() + 1);
  require(up == _zplsqlstrupper(again.get()));
  return up;
}

// Source form to system form, in place and on a copy, against the model.
void check_to_system(std::string const& name, std::string const& upper, int kind,
                     Defaults const& d) {
  std::string expected;
  bool ok = true;
  if (name[0] == '"') {
    std::string const inner = name.size() < 2 ? "" : name.substr(1, name.size() - 2);
    for (std::size_t i = 0; i < inner.size(); ++i) {
      expected += inner[i];
      if (inner[i] != '"') continue;
      if (i + 1 < inner.size() && inner[i + 1] == '"') {
        ++i;
      } else {
        ok = false;
      }
    }
  } else {
    expected = upper;
    ok = valid_model(upper, kind == 1 ? 4 : kind, d.max_name, d.max_link);
  }
  Block block(name, name.size() + 1);
  require(_zplsql2sysname(block.get(), kind) == (ok ? 1 : 0));
  require(expected == block.get());
  Copy const copy(_zplsql2sysname(name.c_str(), kind));
  require(ok ? copy.p != nullptr && expected == copy.p : copy.p == nullptr);
}

// System form to source form: delimited unless regular and, with flags 0,
// not reserved in the default version.  Returns the source form.
std::string check_to_source(std::string const& name, int flags, Defaults const& d) {
  bool const plain =
      regular_model(name) && (flags != 0 || _zisosqlresword(name.c_str(), d.version) == 0);
  std::string const expected = plain ? name : quoted(name);
  Block block(name, name.size() * 3 + 8);
  require(_zsysname2plsql(block.get(), flags) == 1);
  require(expected == block.get());
  if (flags == 0) {
    Copy const copy(_zsysname2plsql(name.c_str()));
    require(copy.p != nullptr && expected == copy.p);
  }
  return expected;
}

void check_reserved(std::string const& word, int tsql_version, int oracle_version) {
  Block block(word, word.size() + 1);
  char const* const w = block.get();
  errsvc::clear();
  int const t = _zistsqlresword(w, tsql_version);
  bool const t_warned = !errsvc::records().empty();
  errsvc::clear();
  int const o = _zisosqlresword(w, oracle_version);
  bool const o_warned = !errsvc::records().empty();
  require(word == w);  // the caller's word is not changed
  require(t == 0 || t == 1);
  require(o == 0 || o == 1);

  if (word.empty() || !is_letter(static_cast<unsigned char>(word[0]))) {
    require(t == 0 && !t_warned);
  } else if (!tsql_handled(tsql_version)) {
    require(t == 0 && t_warned);
  } else {
    require(!t_warned);
    require(_zistsqlresword(ascii_case(word, true).c_str(), tsql_version) == t);
    require(_zistsqlresword(ascii_case(word, false).c_str(), tsql_version) == t);
    int const other_form = tsql_version < 2000 ? tsql_version + 2000 : tsql_version - 2000;
    require(_zistsqlresword(w, other_form) == t);
  }
  if (!oracle_handled(oracle_version)) {
    require(o == 0 && o_warned);
  } else {
    require(!o_warned);
    require(_zisosqlresword(ascii_case(word, true).c_str(), oracle_version) == o);
    require(_zisosqlresword(ascii_case(word, false).c_str(), oracle_version) == o);
  }
}

constexpr int kKinds[] = {0, 1, 2, 4, 8};
constexpr int kTsqlVersions[] = {4, 5, 6, 8, 10, 14, 15, 17, 18, 2004, 2005, 2008, 2017};
constexpr int kOracleVersions[] = {102, 105, 106, 110, 120, 150, 152, 1160, 1165, 1166};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
  static Defaults const defaults;
  FuzzedDataProvider in(data, size);
  int const kind =
      in.ConsumeBool() ? in.PickValueInArray(kKinds) : in.ConsumeIntegral<std::int8_t>();
  int const flags = in.ConsumeBool() ? 0 : in.ConsumeIntegral<std::int8_t>();
  int const tsql_version =
      in.ConsumeBool() ? in.PickValueInArray(kTsqlVersions) : in.ConsumeIntegral<std::int16_t>();
  int const oracle_version =
      in.ConsumeBool() ? in.PickValueInArray(kOracleVersions) : in.ConsumeIntegral<std::int16_t>();
  std::string const name = in.ConsumeRemainingBytesAsString().c_str();  // up to the first NUL

  require(_zplsqlvalidsysname(name.c_str(), kind) ==
          (valid_model(name, kind, defaults.max_name, defaults.max_link) ? 1 : 0));
  check_reserved(name, tsql_version, oracle_version);
  if (name.empty()) {
    // Nothing to convert: the copies are a shared empty string.
    char* const system = _zplsql2sysname("", kind);
    char* const source = _zsysname2plsql("");
    require(system != nullptr && *system == '\0' && source != nullptr && *source == '\0');
    errsvc::clear();
    return 0;
  }
  std::string const upper = check_upper(name);
  check_to_system(name, upper, kind, defaults);
  std::string const source = check_to_source(name, flags, defaults);

  // The round trip: a delimited source form gives the name back; a regular
  // one is the name itself, given back when it is valid for the kind.
  Block back(source, source.size() + 1);
  int const result = _zplsql2sysname(back.get(), kind);
  if (source[0] == '"') {
    require(result == 1 && name == back.get());
  } else {
    require(name == back.get());
    require(result == _zplsqlvalidsysname(name.c_str(), kind == 1 ? 4 : kind));
  }
  errsvc::clear();
  return 0;
}
