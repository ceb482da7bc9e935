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

Expression::Expression(char const* pattern) : m_re(Tcl_RegExpCompile(pattern)) {}

Expression::~Expression() {
  if (m_re != nullptr) Tcl_DeleteInterp(m_re);
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

LinePrinter::LinePrinter(Invocation& inv, std::span<char const* const> names)
    : m_inv(inv),
      m_with_names(names.size() > 1),
      m_numbers(inv.flag("-n")),
      m_count_only(inv.flag("-c")) {}

// A line is known by its offset in the input (plus one: 0 is no line).
void LinePrinter::count_line(Input const& in) {
  if (m_counted_line == in.line_offset() + 1) return;
  m_counted_line = in.line_offset() + 1;
  m_inv.found();
  ++m_count;
}

// Counts the current line (once, however many parts it prints) and prints
// the prefixes; true when something is to be printed.
bool LinePrinter::prefix(Input const& in) {
  count_line(in);
  if (m_count_only) return false;
  if (m_with_names) std::printf("%s:", in.name());
  if (m_numbers) std::printf("%llu:", static_cast<unsigned long long>(in.line_number()));
  return true;
}

void LinePrinter::print_line(Input const& in, std::string_view line) {
  if (prefix(in)) write_picked_line(in, line);
}

void LinePrinter::print_part(Input const& in, std::string_view part) {
  if (!prefix(in)) return;
  write_out(part);
  write_out("\n");
}

void LinePrinter::end_of(Input const& in) {
  if (m_count_only) {
    if (m_with_names) std::printf("%s:", in.name());
    std::printf("%llu\n", static_cast<unsigned long long>(m_count));
  }
  m_count = 0;
  m_counted_line = 0;
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
