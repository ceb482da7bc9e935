// define.cpp - _zmapdefine: reading a map definition.
#include <cstring>

#include "frame/memory.h"
#include "map/map_handle.h"
#include "map/marked_definition.h"
#include "platform/map_block.h"
#include "zelstr/map.h"
#include "zelstr/scratch.h"

namespace zelstr::map {
namespace {

constexpr char kFunction[] = "_zmapdefine()";

bool ends_element(char c) { return c == ' ' || c == '\0'; }

// One pass over a definition, filling the table of a fresh map.
class DefinitionReader {
 public:
  DefinitionReader(char const* definition, unsigned char* table)
      : m_def(definition), m_length(std::strlen(definition)), m_table(table) {
    for (int b = 0; b < 256; ++b) m_table[b] = static_cast<unsigned char>(b);
  }

  // False on a syntax error (reported).
  bool read();
  bool maps_nothing() const { return m_bIdentity; }

 private:
  char at(std::size_t i) const { return i < m_length ? m_def[i] : '\0'; }
  bool range(std::size_t& i);
  bool chain(std::size_t& i);
  bool apply(unsigned char s, unsigned char t);
  // The length of the element starting at m_start, to the next blank or
  // the end.
  std::size_t element_length() const;
  // A heap copy of the element (release it with delete[]), or NULL.
  char* element_copy() const;
  bool syntax_error(char const* text);
  void report_marked_copy() const;

  char const* m_def;
  std::size_t m_length;
  unsigned char* m_table;
  std::size_t m_start = 0;  // the first character of the current element
  bool m_bIdentity = true;
};

bool DefinitionReader::read() {
  for (std::size_t i = 0;;) {
    while (at(i) == ' ') ++i;
    if (i >= m_length) return true;
    // A blank is the source when two blanks stand before an '=' that a
    // character other than a blank follows.
    if (at(i) == '=' && i >= 2 && at(i - 1) == ' ' && at(i - 2) == ' ' &&
        !ends_element(at(i + 1))) {
      --i;
    }
    m_start = i;
    char const next = at(i + 1);
    if (ends_element(next)) {
      ++i;  // a single character: nothing to map
    } else if (next == '-') {
      if (!range(i)) return false;
    } else if (next == '=') {
      if (!chain(i)) return false;
    } else {
      return syntax_error(_zstrprintf(msg::kMapExpectedSymbolFormat, next,
                                      static_cast<unsigned>(static_cast<unsigned char>(next))));
    }
  }
}

// s1-s2=t1-t2, its checks in their order; the bounds compare as signed bytes.
bool DefinitionReader::range(std::size_t& i) {
  auto encountered = [](char const* format, char c) {
    return _zstrprintf(format, c, static_cast<unsigned>(static_cast<unsigned char>(c)));
  };
  if (i + 2 >= m_length) return syntax_error(msg::kMapRangeNoS2);
  if (at(i + 3) != '=') return syntax_error(encountered(msg::kMapRangeNoEqualFormat, at(i + 3)));
  if (i + 4 >= m_length) return syntax_error(msg::kMapRangeNoT1);
  if (at(i + 5) != '-') return syntax_error(encountered(msg::kMapRangeNoDashFormat, at(i + 5)));
  if (i + 6 >= m_length) return syntax_error(msg::kMapRangeNoT2);
  if (!ends_element(at(i + 7))) {
    return syntax_error(encountered(msg::kMapRangeNotEndedFormat, at(i + 7)));
  }
  auto const s1 = static_cast<signed char>(at(i)), s2 = static_cast<signed char>(at(i + 2));
  auto const t1 = static_cast<signed char>(at(i + 4)), t2 = static_cast<signed char>(at(i + 6));
  auto shown = [&](char const* format) { return _zstrprintf(format, s1, s2, t1, t2); };
  if (s1 > s2) return syntax_error(shown(msg::kMapRangeSourceOrderFormat));
  if (t1 > t2) return syntax_error(shown(msg::kMapRangeTargetOrderFormat));
  if (s2 - s1 != t2 - t1) return syntax_error(shown(msg::kMapRangeLengthsFormat));
  if (s1 != t1) m_bIdentity = false;
  for (int k = 0; k <= s2 - s1; ++k) {
    apply(static_cast<unsigned char>(s1 + k), static_cast<unsigned char>(t1 + k));
  }
  i += 7;
  return true;
}

// s=t1[=t2...]; "?" as a target is a placeholder, "?=" at the start skipped.
bool DefinitionReader::chain(std::size_t& i) {
  auto const s = static_cast<unsigned char>(at(i));
  if (s == '?') {
    i += 2;  // the element after '=' starts anew
    return true;
  }
  std::size_t j = i + 1;
  for (; at(j) == '=' && j < m_length; j += 2) {
    if (j + 1 >= m_length) return syntax_error(msg::kMapChainNoTarget);
    auto const t = static_cast<unsigned char>(at(j + 1));
    if (t != '?' && apply(s, t) && s != t) m_bIdentity = false;
  }
  if (!ends_element(at(j))) {
    return syntax_error(_zstrprintf(msg::kMapChainNotEndedFormat, at(j),
                                    static_cast<unsigned>(static_cast<unsigned char>(at(j)))));
  }
  i = j;
  return true;
}

// `t` takes the image of `s`, unless `t` is already mapped elsewhere.  A
// range walked as signed bytes can run through 0 (from 0xC8 to 0x01, say):
// that pair is passed over, so that entry 0 never changes and no other byte
// takes the terminator's image.
bool DefinitionReader::apply(unsigned char s, unsigned char t) {
  if (s == 0 || t == 0) return true;
  if (m_table[t] == t || m_table[t] == s) {
    m_table[t] = m_table[s];
    return true;
  }
  char* const text = element_copy();
  warn(
      frame::Message{-1, 2,
                     _zstrprintf(msg::kMapConflictFormat, text != nullptr ? text : msg::kMapNoCopy,
                                 t, unsigned{t}, m_table[t], unsigned{m_table[t]}, s, unsigned{s})},
      kFunction);
  delete[] text;
  report_marked_copy();
  return false;
}

std::size_t DefinitionReader::element_length() const {
  std::size_t end = m_start + 1;
  while (end < m_length && m_def[end] != ' ') ++end;
  return (end < m_length ? end : m_length) - m_start;
}

char* DefinitionReader::element_copy() const {
  std::size_t const n = element_length();
  char* const copy = frame::new_array<char>(n + 1);
  if (copy == nullptr) return nullptr;
  std::memcpy(copy, m_def + m_start, n);
  copy[n] = '\0';
  return copy;
}

bool DefinitionReader::syntax_error(char const* text) {
  warn(frame::Message{-1, 4, text}, kFunction);
  report_marked_copy();
  return false;
}

// "Erroneous map is ..." with the current element marked.
void DefinitionReader::report_marked_copy() const {
  report_marked_definition(msg::kMapErroneousFormat, kFunction, m_def, m_length, m_start,
                           element_length());
}

}  // namespace
}  // namespace zelstr::map

using namespace zelstr::map;

void* _zmapdefine(char const* definition) noexcept {
  if (definition == nullptr) {
    warn(msg::kMapDefineNullDefinition, kFunction);
    return nullptr;
  }
  if (*definition == '\0') return nullptr;
  unsigned char* const table = zelstr::platform::allocate_map_block();
  if (table == nullptr) {
    zelstr::frame::note_allocation_failure();
    warn(msg::kMapNoRamDefine, kFunction);
    return ZEAL_STR_BAD_MAP;
  }
  DefinitionReader reader(definition, table);
  if (!reader.read()) {
    zelstr::platform::release_map_block(table);
    return ZEAL_STR_BAD_MAP;
  }
  if (reader.maps_nothing()) {
    zelstr::platform::release_map_block(table);
    return nullptr;
  }
  return table;
}
