// searcher.cpp - adding and preparing strings, and the search loop the two
// many-strings searches share.
#include "findmany/searcher.h"

#include <cstdio>
#include <cstring>
#include <new>

#include "chars/setdef.h"
#include "errsvc/errsvc.h"
#include "frame/memory.h"
#include "map/map_handle.h"
#include "zelstr/findmany.h"
#include "zelstr/types.h"

namespace zelstr::findmany {
namespace {

constexpr int kFlags = ZEAL_MANY_ICASE | ZEAL_MANY_SHORTEST | ZEAL_MANY_OVERLAP | ZEAL_MANY_WORDS;
constexpr char kNameCharacters[] = "[A-Za-z0-9_@#$\x80-\xFF]";

}  // namespace

void Searcher::warn(char const* text, char const* member) const {
  char function[64];
  std::snprintf(function, sizeof function, "%s::%s", m_class, member);
  frame::report(m_unit, frame::Message{-1, 4, text}, function);
}

int Searcher::add(char const* string) {
  if (string == nullptr || m_prepared) {
    warn(ErrHand_Msg_ERRSVC_BAD_ARGUMENT(), "Add");
    return -1;
  }
  try {
    m_list.texts.emplace_back(string);
  } catch (std::bad_alloc const&) {
    frame::note_allocation_failure();
    return -1;
  }
  return count() - 1;
}

int Searcher::prepare(int flags, void* map, char const* word_chars) {
  if (m_prepared || (flags & ~kFlags) != 0) {
    warn(m_prepared ? ErrHand_Msg_ERRSVC_BAD_ARGUMENT() : ErrHand_Msg_ERRSVC_INCOHERENT_FLAG(),
         "Prepare");
    return 0;
  }
  unsigned char const* const words =
      chars::compile_members(word_chars != nullptr ? word_chars : kNameCharacters);
  if (words == nullptr) {
    warn(ErrHand_Msg_ERRSVC_BAD_ARGUMENT(), "Prepare");
    return 0;
  }
  for (int c = 0; c < 256; ++c) m_word[c] = words[c];
  if (map::is_bad(map)) {
    warn(ErrHand_Msg_ERRSVC_BAD_ARGUMENT(), "Prepare");  // then as without a map
    map = nullptr;
  }
  for (int c = 0; c < 256; ++c) {
    Byte image = static_cast<Byte>(c);
    if (map != nullptr) image = map::table_of(map)[c];
    if ((flags & ZEAL_MANY_ICASE) && image >= 'A' && image <= 'Z') image += 'a' - 'A';
    m_list.table[c] = image;
  }
  try {
    m_list.images.clear();
    for (std::string const& text : m_list.texts) {
      std::string image = text;
      for (char& b : image) b = static_cast<char>(m_list.table[static_cast<Byte>(b)]);
      m_list.images.push_back(std::move(image));
    }
    if (!build(m_list)) throw std::bad_alloc();
  } catch (std::bad_alloc const&) {
    frame::note_allocation_failure();
    return 0;
  }
  m_flags = flags;
  m_prepared = true;
  return 1;
}

char const* Searcher::string(int index) const {
  if (index < 0 || index >= count()) return nullptr;
  return m_list.texts[static_cast<std::size_t>(index)].c_str();
}

// The string chosen at `p`: with whole words, only those with no word
// character next to them; the longest, or the shortest.
bool Searcher::choose_at(Byte const* p, Hit* hit) const {
  bool const words = (m_flags & ZEAL_MANY_WORDS) != 0;
  if (words && p > m_text && m_word[p[-1]]) return false;
  struct Choice {
    Searcher const* self;
    Byte const* at;
    bool words;
    bool shortest;
    bool found;
    Hit hit;
  } choice{this, p, words, (m_flags & ZEAL_MANY_SHORTEST) != 0, false, Hit{-1, 0}};
  each_at(
      p, m_end,
      [](void* context, Hit h) {
        auto& c = *static_cast<Choice*>(context);
        Byte const* const after = c.at + h.length;
        if (c.words && after < c.self->m_end && c.self->m_word[*after]) return true;
        c.found = true;
        c.hit = h;
        return !c.shortest;
      },
      &choice);
  *hit = choice.hit;
  return choice.found;
}

Byte const* Searcher::next_hit(Byte const* p, Byte const* end, Hit* hit) const {
  for (; p < end; ++p) {
    p = skip(p, end);
    if (p == end) break;
    if (choose_at(p, hit)) return p;
  }
  return end;
}

char const* Searcher::search(Byte const* from, int* index) {
  Hit hit{};
  if (Byte const* const p = next_hit(from, m_end, &hit); p != m_end) {
    if (index != nullptr) *index = hit.index;
    m_next = (m_flags & ZEAL_MANY_OVERLAP) ? p + 1 : p + hit.length;
    return reinterpret_cast<char const*>(p);
  }
  m_next = nullptr;
  if (index != nullptr) *index = -1;
  return nullptr;
}

char const* Searcher::find(char const* text, int* index, long length, char const* from) {
  if (index != nullptr) *index = -1;
  if (!m_prepared || text == nullptr) {
    warn(ErrHand_Msg_ERRSVC_BAD_ARGUMENT(), "Find");
    return nullptr;
  }
  std::size_t const n = length < 0 ? std::strlen(text) : static_cast<std::size_t>(length);
  m_text = reinterpret_cast<Byte const*>(text);
  m_end = m_text + n;
  Byte const* const start = from != nullptr ? reinterpret_cast<Byte const*>(from) : m_text;
  if (start < m_text || start > m_end) {
    warn(ErrHand_Msg_ERRSVC_BAD_ARGUMENT(), "Find");
    m_next = nullptr;
    return nullptr;
  }
  return search(start, index);
}

char const* Searcher::find_next(int* index) {
  if (index != nullptr) *index = -1;
  if (m_next == nullptr) {
    if (m_text == nullptr) warn(ErrHand_Msg_ERRSVC_BAD_ARGUMENT(), "FindNext");
    return nullptr;
  }
  return search(m_next, index);
}

}  // namespace zelstr::findmany
