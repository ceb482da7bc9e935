// searcher.h - what the two many-strings searches share: the strings and
// their images, the options, and the choice among the strings that start
// at one place.  Each search brings an engine that knows two things: where
// the next place is at which a string may start, and which strings start
// at a given place.
#ifndef ZELSTR_FINDMANY_SEARCHER_H
#define ZELSTR_FINDMANY_SEARCHER_H

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "frame/report.h"

namespace zelstr::findmany {

using Byte = unsigned char;

// A string at a place: its index and length.
struct Hit {
  int index;
  std::size_t length;
};

// The strings, as added and as their images.
struct StringList {
  std::vector<std::string> texts;
  std::vector<std::string> images;
  Byte table[256];  // the image of each byte
};

class Searcher {
 public:
  Searcher(frame::Unit unit, char const* class_name) : m_unit(unit), m_class(class_name) {}
  virtual ~Searcher() = default;

  int add(char const* string);
  int prepare(int flags, void* map, char const* word_chars);
  char const* find(char const* text, int* index, long length, char const* from);
  char const* find_next(int* index);
  int count() const { return static_cast<int>(m_list.texts.size()); }
  char const* string(int index) const;

 protected:
  // Builds the engine's tables from the images (empty ones left out);
  // false without memory.
  virtual bool build(StringList const& list) = 0;
  // The first place in [p, end) at which a string may start, else `end`.
  virtual Byte const* skip(Byte const* p, Byte const* end) const = 0;
  // Calls `take` with each string that starts at `p` (and ends by `end`),
  // shortest first, one per image; stops when `take` gives false.
  virtual void each_at(Byte const* p, Byte const* end, bool (*take)(void*, Hit),
                       void* context) const = 0;
  // The first place in [p, end) at which a string is chosen, with it in
  // `*hit`, else `end`: the places skip gives, each tried by choose_at.
  virtual Byte const* next_hit(Byte const* p, Byte const* end, Hit* hit) const;
  // Whether a string is chosen at `p` (the options' choice among those
  // each_at gives), and which.
  bool choose_at(Byte const* p, Hit* hit) const;

 private:
  char const* search(Byte const* from, int* index);
  void warn(char const* text, char const* member) const;

  frame::Unit m_unit;
  char const* m_class;
  StringList m_list{};
  bool m_prepared = false;
  int m_flags = 0;
  Byte m_word[256] = {};
  // The text of the last search and where the next one starts.
  Byte const* m_text = nullptr;
  Byte const* m_end = nullptr;
  Byte const* m_next = nullptr;
};

// The two searches (NULL without memory).
Searcher* make_old_searcher() noexcept;
Searcher* make_hoary_searcher() noexcept;

}  // namespace zelstr::findmany

#endif  // ZELSTR_FINDMANY_SEARCHER_H
