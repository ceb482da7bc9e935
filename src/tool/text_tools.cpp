// text_tools.cpp - pieces the text subcommands share.
#include "tool/text_tools.h"

#include <cstdio>
#include <cstring>

#include "zelstr/zelstr.h"

namespace zelstr::tool {

char const* null_or(char const* argument) {
  return std::strcmp(argument, "(null)") == 0 ? nullptr : argument;
}

DefinedMap::DefinedMap(Invocation& inv, char const* definition) {
  if (definition == nullptr) return;
  inv.clear_warning();
  void* const map = _zmapdefine(definition);
  if (map == ZEAL_STR_BAD_MAP) {
    inv.error("bad map definition '%s': %s", definition, inv.first_warning().c_str());
    m_bad = true;
    return;
  }
  if (map == nullptr) {
    // Valid, but every byte stays itself: most likely not what was meant.
    inv.error("the map definition '%s' translates no character (see zelstr map --help)",
              definition);
    m_bad = true;
    return;
  }
  m_map = map;
}

DefinedMap::~DefinedMap() {
  if (m_map != nullptr) _zmapfree(m_map);
}

Expression::Expression(char const* pattern, bool fold_case)
    : m_re(fold_case ? Tcl_RegExpCompileNoCase(pattern) : Tcl_RegExpCompile(pattern)) {}

Expression::~Expression() {
  if (m_re != nullptr) Tcl_DeleteInterp(m_re);
}

bool may_match_line_end(char const* pattern, void const* map) {
  auto const* const t = static_cast<unsigned char const*>(map);
  auto const image = [t](char c) {
    auto const b = static_cast<unsigned char>(c);
    return t != nullptr ? t[b] : b;
  };
  for (char const* p = pattern; *p != '\0'; ++p) {
    if (image(*p) == image('\n') || image(*p) == image('\r')) return true;
  }
  return false;
}

std::array<bool, 256> set_members(char const* setdef) {
  std::array<bool, 256> members{};
  for (int c = 1; c < 256; ++c) {
    char const one[] = {static_cast<char>(c), '\0'};
    members[c] = _zstrspnex(one, setdef != nullptr ? setdef : kWordCharacters) == 1;
  }
  return members;
}

bool check_set_definition(Invocation& inv, char const* setdef) {
  inv.clear_warning();
  _zstrspnex("x", setdef);
  if (inv.last_warning().empty()) return true;
  inv.error(
      "bad set definition '%s': it is empty or has a syntax error (a set is written "
      "[members], such as [a-zA-Z_0-9])",
      setdef);
  return false;
}

char const* Replacer::operator()(char const* line, std::size_t length, std::string& buffer) const {
  // Room for the longest result: every FROM-length stretch replaced.
  std::size_t const from_length = std::strlen(from), to_length = std::strlen(to);
  std::size_t room = length;
  if (to_length > from_length) room += length / from_length * (to_length - from_length);
  buffer.assign(line, length);
  buffer.resize(room + 1, '\0');
  char* const b = buffer.data();
  auto const size = static_cast<unsigned long>(room);
  if (first)
    return insensitive ? _zstri1replace(b, from, to, size) : _zstr1replace(b, from, to, size);
  if (last) return _zstrr1replace(b, from, to, size);
  if (delimiters != nullptr) {
    return insensitive ? _zstriNreplaceEx(b, from, to, size, delimiters)
                       : _zstrNreplaceEx(b, from, to, size, delimiters);
  }
  return insensitive ? _zstriNreplace(b, from, to, size) : _zstrNreplace(b, from, to, size);
}

}  // namespace zelstr::tool
