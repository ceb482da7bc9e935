// sort_define.cpp - _zsortdefine: reading a sort order definition into a
// table of weights.
#include <cstring>

#include "frame/memory.h"
#include "map/map_handle.h"
#include "map/marked_definition.h"
#include "platform/map_block.h"
#include "zelstr/scratch.h"
#include "zelstr/sortorder.h"

namespace zelstr::map {
namespace {

constexpr char kFunction[] = "_zsortdefine()";

bool is_blank(char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\n'; }
bool ends_element(char c) { return c == '\0' || is_blank(c); }

int hex_digit(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  if (c >= 'A' && c <= 'F') return c - 'A' + 10;
  return -1;
}

// One member of an element: a character, or a range of them.
struct Member {
  unsigned low, high;
  unsigned length() const { return high - low + 1; }
};

// One pass over a definition.  Weights are handed out from 1 upwards, one
// element after the other; entry 0 of the table stays 0 (the terminator),
// and a 0 elsewhere marks a character not named yet.
class SortDefinitionReader {
 public:
  SortDefinitionReader(char const* definition, unsigned char* weights)
      : m_def(definition), m_length(std::strlen(definition)), m_weights(weights) {}

  // False on a syntax error (reported).
  bool read();
  bool is_byte_order() const;

 private:
  char at(std::size_t i) const { return i < m_length ? m_def[i] : '\0'; }
  bool element(std::size_t& i);
  bool member(std::size_t& i, Member& m);
  bool character(std::size_t& i, unsigned& c);
  bool place(Member const* members, std::size_t count);
  void place_the_others();
  int element_length() const;
  bool syntax_error(char const* text);
  void report_marked_copy() const;

  char const* m_def;
  std::size_t m_length;
  unsigned char* m_weights;
  std::size_t m_start = 0;  // the first byte of the current element
  unsigned m_next = 1;      // the next weight to hand out
};

bool SortDefinitionReader::read() {
  for (std::size_t i = 0;;) {
    while (is_blank(at(i))) ++i;
    if (i >= m_length) break;
    m_start = i;
    if (!element(i)) return false;
  }
  place_the_others();
  return true;
}

bool SortDefinitionReader::is_byte_order() const {
  for (unsigned b = 0; b < 256; ++b) {
    if (m_weights[b] != b) return false;
  }
  return true;
}

// member ('=' member)*, then a blank or the end.  Every character may be
// named once, so a valid group has at most 255 members.
bool SortDefinitionReader::element(std::size_t& i) {
  Member members[256];
  std::size_t count = 0;
  for (;;) {
    if (!member(i, members[count++])) return false;
    if (at(i) != '=' || count == 256) break;  // 256 members name a character twice
    ++i;
  }
  if (count < 256 && !ends_element(at(i))) {
    auto const c = static_cast<unsigned char>(at(i));
    return syntax_error(_zstrprintf(msg::kSortExpectedSeparatorFormat, c, unsigned{c},
                                    element_length(), m_def + m_start));
  }
  for (std::size_t k = 1; k < count; ++k) {
    if (members[k].length() != members[0].length()) {
      return syntax_error(
          _zstrprintf(msg::kSortGroupLengthsFormat, element_length(), m_def + m_start));
    }
  }
  return place(members, count);
}

// c or c1-c2.
bool SortDefinitionReader::member(std::size_t& i, Member& m) {
  if (!character(i, m.low)) return false;
  m.high = m.low;
  if (at(i) != '-') return true;
  ++i;
  if (!character(i, m.high)) return false;
  if (m.high < m.low) {
    return syntax_error(_zstrprintf(msg::kSortRangeOrderFormat, m.low, m.high, m.low, m.high,
                                    element_length(), m_def + m_start));
  }
  return true;
}

// A byte as itself, \xHH, or a backslash and the byte it escapes.
bool SortDefinitionReader::character(std::size_t& i, unsigned& c) {
  if (ends_element(at(i))) {  // after a '-' or an '=
    char const before = i > 0 ? m_def[i - 1] : ' ';
    return syntax_error(
        _zstrprintf(msg::kSortMissingCharacterFormat, before, element_length(), m_def + m_start));
  }
  if (at(i) != '\\') {
    c = static_cast<unsigned char>(m_def[i++]);
    return true;
  }
  if (i + 1 >= m_length) {
    return syntax_error(
        _zstrprintf(msg::kSortMissingCharacterFormat, '\\', element_length(), m_def + m_start));
  }
  if (at(i + 1) != 'x') {
    c = static_cast<unsigned char>(m_def[i + 1]);
    i += 2;
    return true;
  }
  int const high = hex_digit(at(i + 2)), low = high < 0 ? -1 : hex_digit(at(i + 3));
  if (low < 0) {
    return syntax_error(
        _zstrprintf(msg::kSortBadEscapeFormat, element_length(), m_def + m_start));
  }
  c = static_cast<unsigned>(high * 16 + low);
  if (c == 0) {
    return syntax_error(
        _zstrprintf(msg::kSortNulCharacterFormat, element_length(), m_def + m_start));
  }
  i += 4;
  return true;
}

// The k-th characters of all members share the k-th new weight.
bool SortDefinitionReader::place(Member const* members, std::size_t count) {
  unsigned const length = members[0].length();
  for (unsigned k = 0; k < length; ++k) {
    for (std::size_t m = 0; m < count; ++m) {
      unsigned const c = members[m].low + k;
      if (m_weights[c] != 0) {
        return syntax_error(_zstrprintf(msg::kSortTwiceFormat, c, c, element_length(),
                                        m_def + m_start));
      }
      m_weights[c] = static_cast<unsigned char>(m_next);
    }
    ++m_next;
  }
  return true;
}

// The characters the definition did not name, after the named ones.  Each
// of the 255 characters takes at most one new weight, so none exceeds 255.
void SortDefinitionReader::place_the_others() {
  for (unsigned c = 1; c < 256; ++c) {
    if (m_weights[c] == 0) m_weights[c] = static_cast<unsigned char>(m_next++);
  }
}

// From the element's start to the next blank that no backslash escapes.
int SortDefinitionReader::element_length() const {
  std::size_t end = m_start;
  while (end < m_length && !is_blank(m_def[end])) end += m_def[end] == '\\' ? 2 : 1;
  return static_cast<int>((end < m_length ? end : m_length) - m_start);
}

bool SortDefinitionReader::syntax_error(char const* text) {
  warn(frame::Message{-1, 4, text}, kFunction);
  report_marked_copy();
  return false;
}

// "Erroneous sort order is ..." with the current element marked.
void SortDefinitionReader::report_marked_copy() const {
  report_marked_definition(msg::kSortErroneousFormat, kFunction, m_def, m_length, m_start,
                           static_cast<std::size_t>(element_length()));
}

}  // namespace
}  // namespace zelstr::map

using namespace zelstr::map;

void* _zsortdefine(char const* definition) noexcept {
  if (definition == nullptr) {
    warn(msg::kSortDefineNullDefinition, kFunction);
    return nullptr;
  }
  unsigned char* const weights = zelstr::platform::allocate_map_block();
  if (weights == nullptr) {
    zelstr::frame::note_allocation_failure();
    warn(msg::kSortNoRamDefine, kFunction);
    return ZEAL_STR_BAD_MAP;
  }
  SortDefinitionReader reader(definition, weights);
  bool const read = reader.read();
  if (!read || reader.is_byte_order()) {
    zelstr::platform::release_map_block(weights);
    return read ? nullptr : ZEAL_STR_BAD_MAP;
  }
  return weights;
}
